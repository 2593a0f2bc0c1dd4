# One function for each kind of target, so that a folder's CMakeLists.txt is its list of files.

# zk_precompile(target core|widgets): the lean precompiled header of the kind.
function(zk_precompile target kind)
    target_precompile_headers(${target} PRIVATE
        <QObject> <QString> <QList> <QRect> <QPointF> <QVariant> <QImage> <QColor> <QPainterPath>
        <algorithm> <functional> <memory> <vector>)
    if(kind STREQUAL "widgets")
        target_precompile_headers(${target} PRIVATE
            <QWidget> <QApplication> <QAction> <QGraphicsView> <QGraphicsScene> <QLayout> <QUndoCommand>)
    endif()
endfunction()

# zk_editor_sources(file...): adds files of the current folder to the reference editor.
function(zk_editor_sources)
    list(TRANSFORM ARGN PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
    target_sources(zk_editor PRIVATE ${ARGN})
endfunction()

# zk_host_headers(file...): headers of host/ that the current folder implements; listed so that moc,
# which looks beside the sources, sees them.
function(zk_host_headers)
    list(TRANSFORM ARGN PREPEND "${PROJECT_SOURCE_DIR}/host/")
    target_sources(zk_editor PRIVATE ${ARGN})
endfunction()

# zk_add_tests(folder LINK target... CASES file...): one test program for a folder. Each case is a
# source file without its ending, which registers one test class; CTest runs it as folder.case.
# THREADED names the cases that hammer our own locks; they are what the thread sanitizer runs.
function(zk_add_tests folder)
    cmake_parse_arguments(ARG "" "" "LINK;CASES;SOURCES;THREADED" ${ARGN})
    string(REPLACE "/" "_" program "test_${folder}")
    list(TRANSFORM ARG_CASES APPEND ".cpp" OUTPUT_VARIABLE files)
    add_executable(${program} ${files} ${ARG_SOURCES})
    target_link_libraries(${program} PRIVATE zk_test_support ${ARG_LINK} Qt5::Test)
    zk_precompile(${program} widgets)
    set_property(GLOBAL APPEND PROPERTY ZK_TEST_PROGRAMS ${program})
    if(ARG_THREADED)
        set_property(GLOBAL APPEND PROPERTY ZK_THREADED_TEST_PROGRAMS ${program})
    endif()
    foreach(case IN LISTS ARG_CASES)
        add_test(NAME ${folder}.${case} COMMAND ${program} ${case})
        set_tests_properties(${folder}.${case} PROPERTIES
            ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_LOGGING_RULES=qt.qpa.*=false"
            TIMEOUT 300)
        if(case IN_LIST ARG_THREADED)
            set_tests_properties(${folder}.${case} PROPERTIES LABELS threads)
        endif()
    endforeach()
endfunction()
