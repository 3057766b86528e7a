# The tests of the addresses and of the import.

corvane_test(s7_address_test
    SOURCES address/AddressTest.cpp address/AddressMessagesTest.cpp
    LIBRARIES s7_address CorvaneUtils)

corvane_test(s7_dbimport_test
    SOURCES
        dbimport/DataBlockImportTest.cpp
        dbimport/DataBlockNumberingTest.cpp
        dbimport/DbFileParserTest.cpp
        dbimport/DbFileReaderTest.cpp
        dbimport/ForeignNamesTest.cpp
        dbimport/ImportBuffersTest.cpp
        dbimport/ImportGoldenTest.cpp
        dbimport/ImportLimitsTest.cpp
        dbimport/ImportMessagesTest.cpp
        dbimport/ImportPlacesTest.cpp
        dbimport/ImportWarningsTest.cpp
        dbimport/ItemTextTest.cpp
        dbimport/LayoutTest.cpp
        dbimport/PlainDeclarationTest.cpp
        dbimport/TypeTableTest.cpp
    LIBRARIES ${parts} CorvaneWorkbenchPlugin CorvaneUtils
    DEFINITIONS S7_GOLDEN_DIRECTORY="${CMAKE_CURRENT_LIST_DIR}/dbimport/golden")

corvane_test(s7_prepare_test
    SOURCES
        prepare/PrepareFormsTest.cpp
        prepare/PrepareGoldenTest.cpp
        prepare/PrepareLayoutTest.cpp
        prepare/PrepareLeftOutTest.cpp
    LIBRARIES ${parts} CorvaneWorkbenchPlugin CorvaneUtils
    DEFINITIONS
        S7_GOLDEN_DIRECTORY="${CMAKE_CURRENT_LIST_DIR}/dbimport/golden"
        S7_PREPARE_DIRECTORY="${CMAKE_CURRENT_LIST_DIR}/prepare/golden")
