# The verbs that edit a project, and what an import would change.
corvane_test(editing-tests
    SOURCES
        DryRunTest.cpp
        EditingTest.cpp
        PermissionsTest.cpp
        RemovalTest.cpp
        Sandbox.cpp
        SetTest.cpp
        WeeklyImportTest.cpp
        DbSource.cpp
    LIBRARIES CorvaneUtils
    DEFINITIONS
        CORVANE_PROGRAM="$<TARGET_FILE:corvane>"
        CORVANE_OWN_PLUGIN="$<TARGET_FILE:CorvaneS7>"
        CORVANE_TEST_PLUGINS="${CORVANE_TEST_PLUGIN_DIRECTORY}"
        CORVANE_EXAMPLES="${PROJECT_SOURCE_DIR}/examples"
        CORVANE_EXPECTED="${CMAKE_CURRENT_SOURCE_DIR}/expected"
        CORVANE_SOURCES="${PROJECT_SOURCE_DIR}/plugins/s7/tests/dbimport/golden")
add_dependencies(editing-tests corvane CorvaneS7)
