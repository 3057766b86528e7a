# The editor: every edit, its way back and forth, and what a view learns of it.
corvane_test(editor-tests
    SOURCES
        CoreTesting.cpp
        EditorImportTest.cpp
        EditorTesting.cpp
        EditorTreeTest.cpp
        EditorValuesTest.cpp
        EditorWalkTest.cpp
    LIBRARIES workbench_core
    DEFINITIONS
        CORVANE_TEST_PLUGINS="${CORVANE_TEST_PLUGIN_DIRECTORY}"
        CORVANE_OWN_PLUGIN="$<TARGET_FILE:CorvaneS7>")
add_dependencies(editor-tests test_plugins CorvaneS7)
