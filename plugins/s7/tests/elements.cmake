# The tests of the elements, their forms and the finished module.

set(S7_LIBRARIES ${parts} CorvaneWorkbenchPlugin)

corvane_test(s7_elements_test
    SOURCES
        elements/CommandTest.cpp
        elements/DataBlockTest.cpp
        plugin/ElementClassesTest.cpp
        elements/ItemTest.cpp
        elements/ItemValidationTest.cpp
        elements/MembersTest.cpp
        elements/MemoryTest.cpp
        elements/PlcTest.cpp
        plugin/SkillTest.cpp
        elements/StructTest.cpp
    LIBRARIES ${S7_LIBRARIES})

corvane_test(s7_forms_test
    SOURCES
        forms/DataBlockFormTest.cpp
        forms/EmptyFormsTest.cpp
        forms/ItemFormTest.cpp
        forms/PlcFormTest.cpp
    LIBRARIES ${S7_LIBRARIES})

# Knows of the plug-in what a host knows: the file.
corvane_test(s7_module_test
    SOURCES plugin/AtExitRecorder.cpp plugin/ModuleTest.cpp
    LIBRARIES CorvaneWorkbenchPlugin ${CMAKE_DL_LIBS}
    DEFINITIONS
        S7_MODULE="$<TARGET_FILE:CorvaneS7>"
        WORKBENCH_LIBRARY="$<TARGET_FILE:CorvaneWorkbenchPlugin>"
        NM="${CMAKE_NM}")
add_dependencies(s7_module_test CorvaneS7)
# The module must find the program's __cxa_atexit.
set_target_properties(s7_module_test PROPERTIES ENABLE_EXPORTS ON)
