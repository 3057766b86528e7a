# What every target of this repository shares: language level, warnings, where results go, tests.

set(CMAKE_CXX_STANDARD 23)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Programs and libraries stand in one folder, plug-ins in its subfolder: the host looks for them
# beside its own executable, in the build tree as well as where it is installed.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CORVANE_PLUGIN_DIRECTORY ${CMAKE_BINARY_DIR}/bin/plugins)

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)

set(CORVANE_SANITIZE "" CACHE STRING "Sanitizers to build everything with, such as thread")
if(CORVANE_SANITIZE)
    add_compile_options(-fsanitize=${CORVANE_SANITIZE} -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${CORVANE_SANITIZE})
endif()

# Debug builds, and with them all that a sanitizer watches, look after who touches the model.
add_compile_definitions($<$<CONFIG:Debug>:CORVANE_CHECK_OWNER>)

find_package(GTest REQUIRED)
include(GoogleTest)

# What only tests need: names and lines for a debugger, which take a third less time to build than
# all that one could ask of a variable.
set(CORVANE_TEST_OPTIONS -g1)

option(CORVANE_PRECOMPILE "Read large headers of others once a target; hides a missing include" OFF)

# corvane_precompile(NAME HEADERS...): where that is wanted.
function(corvane_precompile name)
    if(CORVANE_PRECOMPILE)
        target_precompile_headers(${name} PRIVATE ${ARGN})
    endif()
endfunction()

# Lets CTest list the cases of a GoogleTest program by name, each with the program as its label.
function(corvane_discover_tests name)
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES LABELS ${name})
endfunction()

# corvane_test(NAME SOURCES... LIBRARIES...): one GoogleTest program.
function(corvane_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES;DEFINITIONS")
    add_executable(${name} ${arg_SOURCES})
    # Beside its own headers, what the tests of every piece share.
    target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}
        ${PROJECT_SOURCE_DIR}/platform/utils/tests)
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gtest_main)
    target_compile_definitions(${name} PRIVATE ${arg_DEFINITIONS})
    target_compile_options(${name} PRIVATE ${CORVANE_TEST_OPTIONS})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    corvane_discover_tests(${name})
endfunction()
