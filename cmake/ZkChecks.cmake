# Targets of the checks; none is part of a plain build.

# zk_header_check: each header compiles alone. One source a header, which includes nothing else.
function(zk_check_headers target link)
    set(sources)
    foreach(header IN LISTS ARGN)
        string(MAKE_C_IDENTIFIER "${header}" name)
        set(source "${CMAKE_BINARY_DIR}/header_check/${name}.cpp")
        file(CONFIGURE OUTPUT "${source}" CONTENT "#include \"${PROJECT_SOURCE_DIR}/${header}\"\n")
        list(APPEND sources "${source}")
    endforeach()
    if(NOT sources)
        return()
    endif()
    add_library(${target} OBJECT EXCLUDE_FROM_ALL ${sources})
    set_target_properties(${target} PROPERTIES AUTOMOC OFF AUTOUIC OFF)
    target_compile_options(${target} PRIVATE -O0 -g0)
    foreach(linked IN LISTS link)
        target_link_libraries(${target} PRIVATE ${linked})
        # Where uic writes the forms' headers.
        target_include_directories(${target} PRIVATE "$<TARGET_PROPERTY:${linked},BINARY_DIR>/${linked}_autogen/include")
        add_dependencies(${target} ${linked}_autogen)
    endforeach()
    add_dependencies(zk_header_check ${target})
endfunction()

# zk_autogen: everything that moc and uic write, for clang-tidy, which reads but doesn't build. The generator is
# called straight, for the target "<name>_autogen" waits until the libraries that <name> links are built.
add_custom_target(zk_autogen)
add_custom_target(zk_header_check)
get_property(zk_test_programs GLOBAL PROPERTY ZK_TEST_PROGRAMS)
foreach(target zk_editor basictools_logic basictools_tools basictools ${zk_test_programs})
    if(TARGET ${target})
        get_target_property(binary_dir ${target} BINARY_DIR)
        add_custom_target(zk_autogen_${target}
            COMMAND "${CMAKE_COMMAND}" -E cmake_autogen
                "${binary_dir}/CMakeFiles/${target}_autogen.dir/AutogenInfo.json" "$<CONFIG>"
            VERBATIM)
        add_dependencies(zk_autogen zk_autogen_${target})
    endif()
endforeach()

file(GLOB_RECURSE host_headers RELATIVE "${PROJECT_SOURCE_DIR}" CONFIGURE_DEPENDS host/*.h)
file(GLOB_RECURSE editor_headers RELATIVE "${PROJECT_SOURCE_DIR}" CONFIGURE_DEPENDS editor/*.h)
file(GLOB_RECURSE tool_headers RELATIVE "${PROJECT_SOURCE_DIR}" CONFIGURE_DEPENDS src/*.h)
# Kernels read these once for each instruction set, with its definitions around them.
list(FILTER editor_headers EXCLUDE REGEX "-inl\\.h$")
zk_check_headers(zk_editor_headers zk_editor ${host_headers} ${editor_headers})
if(TARGET basictools_tools)
    zk_check_headers(zk_tool_headers basictools_tools ${tool_headers})
endif()
