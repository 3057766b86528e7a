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

option(CORVANE_SANITIZE "Build everything with the address and undefined-behaviour sanitizers" OFF)
if(CORVANE_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

find_package(GTest REQUIRED)
include(GoogleTest)

# corvane_test(NAME SOURCES... LIBRARIES...): one GoogleTest program whose cases CTest lists by name.
function(corvane_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES;DEFINITIONS")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gtest_main)
    target_compile_definitions(${name} PRIVATE ${arg_DEFINITIONS})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60)
endfunction()
