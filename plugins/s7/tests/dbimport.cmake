# The tests of the addresses and of the import.

corvane_test(s7_address_test
    SOURCES AddressTest.cpp AddressMessagesTest.cpp
    LIBRARIES s7_address CorvaneUtils)

corvane_test(s7_dbimport_test
    SOURCES
        DataBlockImportTest.cpp
        DataBlockNumberingTest.cpp
        DbFileParserTest.cpp
        DbFileReaderTest.cpp
        ImportBuffersTest.cpp
        ImportGoldenTest.cpp
        ImportLimitsTest.cpp
        ImportMessagesTest.cpp
        LayoutTest.cpp
        PlainDeclarationTest.cpp
        StringOutputStreamTest.cpp
        TypeTableTest.cpp
    LIBRARIES ${parts} CorvaneWorkbenchPlugin CorvaneUtils
    DEFINITIONS S7_GOLDEN_DIRECTORY="${CMAKE_CURRENT_LIST_DIR}/golden")
