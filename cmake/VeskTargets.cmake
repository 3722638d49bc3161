# Helpers that keep each CMakeLists.txt of the tree a few lines long.

set(VESK_WARNINGS -Wall -Wextra -Wpedantic -Wno-unused-parameter)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    list(APPEND VESK_WARNINGS -Wno-maybe-uninitialized) # clang has no such warning (fuzz builds)
endif()

# Core tests: GoogleTest, one executable per folder, found by CTest.
# vesk_add_gtest(<name> SOURCES a.cpp b.cpp [LIBS extra])
function(vesk_add_gtest name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE vesk_core GTest::gtest GTest::gtest_main GTest::gmock ${ARG_LIBS})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests/support)
    target_compile_options(${name} PRIVATE ${VESK_WARNINGS})
    target_compile_definitions(${name} PRIVATE
        VESK_TEST_DATA="${CMAKE_SOURCE_DIR}/tests/data"
        VESK_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
        VESK_BIN_DIR="${CMAKE_BINARY_DIR}/bin")
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES LABELS core)
endfunction()

# Form tests: Qt Test on the offscreen platform, driving the real windows.
# vesk_add_qtest(<name> SOURCES a.cpp [LIBS extra])
function(vesk_add_qtest name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    target_link_libraries(${name} PRIVATE vesk_forms Qt6::Test ${ARG_LIBS})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests/support)
    target_compile_options(${name} PRIVATE ${VESK_WARNINGS})
    target_compile_definitions(${name} PRIVATE
        VESK_TEST_DATA="${CMAKE_SOURCE_DIR}/tests/data"
        VESK_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
        VESK_BIN_DIR="${CMAKE_BINARY_DIR}/bin")
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES LABELS forms ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()

# A test that runs a shell script with the built programs beside it.
# vesk_add_script_test(<name> <script> [args...])
function(vesk_add_script_test name script)
    add_test(NAME ${name} COMMAND bash ${script} ${ARGN})
    set_tests_properties(${name} PROPERTIES LABELS script
        ENVIRONMENT "VESK_BIN_DIR=${CMAKE_BINARY_DIR}/bin;VESK_SOURCE_DIR=${CMAKE_SOURCE_DIR};VESK_TEST_DATA=${CMAKE_SOURCE_DIR}/tests/data")
endfunction()
