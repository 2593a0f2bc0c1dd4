# Flags, caches and linkers, the same for every target.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_AUTORCC OFF)

# Light optimisation compiles fast and steps well; QT_NO_DEBUG follows from this build type, and the
# plug-in's metadata says "debug: false" only with it.
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O1 -g1")
add_compile_definitions($<$<CONFIG:RelWithDebInfo>:QT_FORCE_ASSERTS>
    QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_DEPRECATED_WARNINGS)
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    -Wold-style-cast -Wcast-qual -Werror)

# Called once the tools that run during the build are declared: they stay without instruments.
macro(zk_enable_instruments)
    if(ZK_SANITIZE)
        add_compile_options(-fsanitize=${ZK_SANITIZE} -fno-omit-frame-pointer)
        if(ZK_SANITIZE MATCHES undefined)
            add_compile_options(-fno-sanitize-recover=undefined)
        endif()
        add_link_options(-fsanitize=${ZK_SANITIZE})
    endif()
    if(ZK_COVERAGE)
        add_compile_options(--coverage -O0)
        add_link_options(--coverage)
    endif()
endmacro()

find_program(ZK_CCACHE ccache)
if(ZK_CCACHE)
    # pch_defines and time_macros: without them ccache refuses whatever includes a precompiled header.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${ZK_CCACHE})
    add_compile_options(-fpch-preprocess)
endif()

find_program(ZK_MOLD mold)
if(ZK_MOLD)
    add_link_options(-fuse-ld=mold)
endif()
