# Functions that every folder's CMakeLists.txt uses, so that flags stand in one place.
include_guard(GLOBAL)

option(VONDRAKE_WERROR "Treat warnings in our own code as errors" ON)
set(VONDRAKE_SANITIZE "" CACHE STRING "Sanitizers to build with, for example address;undefined")

# A warm cache makes a rebuild after a switch of branches or presets a matter of seconds.
find_program(VONDRAKE_CCACHE ccache)
if(VONDRAKE_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_C_COMPILER_LAUNCHER ${VONDRAKE_CCACHE})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${VONDRAKE_CCACHE})
endif()

# The system's Python first: Debian's Python packages are for that one, not for a version manager's.
if(VONDRAKE_TESTS OR VONDRAKE_BENCH)
  find_program(VONDRAKE_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH)
  find_program(VONDRAKE_PYTHON python3 REQUIRED)
endif()

# Settings shared by all our targets.
function(vndk_target target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_compile_options(${target} PRIVATE -Wall -Wextra $<$<BOOL:${VONDRAKE_WERROR}>:-Werror>)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # g++ 12 sees overlapping copies inside std::string where a literal and a string are added: false, gone in 13.
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  if(VONDRAKE_SANITIZE)
    string(REPLACE ";" "," kinds "${VONDRAKE_SANITIZE}")
    target_compile_options(${target} PRIVATE -fsanitize=${kinds} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${kinds})
  endif()
  if(VONDRAKE_FUZZ)
    # The layers are instrumented too, or the fuzzer sees no coverage behind its entry function.
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
endfunction()

# vndk_add_layer(target SOURCES ... INCLUDE dir DEPENDS ...): one shared library per layer.
function(vndk_add_layer target)
  cmake_parse_arguments(ARG "" "INCLUDE" "SOURCES;DEPENDS" ${ARGN})
  add_library(${target} SHARED ${ARG_SOURCES})
  vndk_target(${target})
  # Nobody puts functions of his own in the place of a layer's: they call and inline each other directly.
  target_compile_options(${target} PRIVATE -fno-semantic-interposition)
  target_link_options(${target} PRIVATE -Wl,-Bsymbolic-functions)
  target_include_directories(${target} PUBLIC ${ARG_INCLUDE} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${target} PUBLIC ${ARG_DEPENDS})
endfunction()

# vndk_add_test(name SOURCES ... LIBS ... [LABELS ...] [ARGS ...] [TIMEOUT s]): one GoogleTest program, one CTest entry.
function(vndk_add_test name)
  cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;LIBS;LABELS;ARGS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  vndk_target(${name})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gmock GTest::gtest_main)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  add_test(NAME ${name} COMMAND ${name} ${ARG_ARGS} WORKING_DIRECTORY ${CMAKE_BINARY_DIR})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 300)
  endif()
  set_tests_properties(${name} PROPERTIES TIMEOUT ${ARG_TIMEOUT} LABELS "${ARG_LABELS}")
endfunction()

# vndk_add_fuzzer(name SOURCES ... LIBS ... [INCLUDES dir ...]): a libFuzzer program, only where VONDRAKE_FUZZ is on
# (clang). Built by the target `fuzzers`. INCLUDES names the layers whose private headers it tests.
function(vndk_add_fuzzer name)
  if(NOT VONDRAKE_FUZZ)
    return()
  endif()
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS;INCLUDES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  vndk_target(${name})
  target_include_directories(${name} PRIVATE ${ARG_INCLUDES})
  target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  target_link_libraries(${name} PRIVATE ${ARG_LIBS})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/fuzz)
  if(NOT TARGET fuzzers)
    add_custom_target(fuzzers)
  endif()
  add_dependencies(fuzzers ${name})
endfunction()

# vndk_add_bench(name SOURCES ... LIBS ... [INCLUDES dir ...] [ARGS ...]): a Google Benchmark program, run by
# `make bench`. It leaves with a status other than 0 when a figure misses its limit.
function(vndk_add_bench name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS;INCLUDES;ARGS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  vndk_target(${name})
  target_include_directories(${name} PRIVATE ${ARG_INCLUDES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} benchmark::benchmark)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/benchmarks)
  vndk_register_bench(${name} ${name} ${ARG_ARGS})
endfunction()

# vndk_add_bench_script(name SCRIPT file.py [ARGS ...]): a Python program that measures the built programs from
# outside; it finds them in the folder that the environment's VONDRAKE_BIN names.
function(vndk_add_bench_script name)
  cmake_parse_arguments(ARG "" "SCRIPT" "ARGS" ${ARGN})
  vndk_register_bench(${name} ${VONDRAKE_PYTHON} ${CMAKE_CURRENT_SOURCE_DIR}/${ARG_SCRIPT} ${ARG_ARGS})
endfunction()

# Benchmarks run one at a time: two at once would measure each other.
function(vndk_register_bench name)
  add_test(NAME ${name} COMMAND ${ARGN} WORKING_DIRECTORY ${CMAKE_BINARY_DIR})
  set_tests_properties(${name} PROPERTIES
    LABELS bench RUN_SERIAL ON TIMEOUT 1800
    ENVIRONMENT VONDRAKE_BIN=${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
endfunction()

include(${CMAKE_CURRENT_LIST_DIR}/Module.cmake)
