# What every target of this project has in common: the language, the warnings, the visibility.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
# Calls into other libraries go straight to their address. Those of a reader are short and many.
add_compile_options(-fno-plt)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Kind of build" FORCE)
endif()

# A line of a script passes through a dozen small functions of as many files, so the library is optimised as a whole.
include(CheckIPOSupported)
check_ipo_supported(RESULT TAVREL_WHOLE_PROGRAM LANGUAGES CXX)

find_program(TAVREL_CCACHE ccache)
if(TAVREL_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${TAVREL_CCACHE})
endif()

# Programs and libraries of the build tree stand together, so that they find one another and the command
# finds the sample installation beside it.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
# They do so by relative paths: one that an installation takes out again would leave a gap of the length of this folder's
# name, and a build id made from it, in binaries that are to be the same from every folder.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

add_library(tavrel-warnings INTERFACE)
target_compile_options(tavrel-warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
  # GCC 12 takes "text" + std::string for an overlapping copy when it optimises.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  $<$<BOOL:${TAVREL_WARNINGS_AS_ERRORS}>:-Werror>)

# Every checked object carries its counters, the tests as well as the libraries, so these are set for the whole tree.
if(TAVREL_SANITIZE)
  add_compile_options(-fsanitize=${TAVREL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${TAVREL_SANITIZE})
  # For programs around the libraries: sooner compiled than optimised, and no coverage that a fuzzer would look at.
  set(TAVREL_UNWATCHED -O0)
  if(TAVREL_BUILD_FUZZERS)
    list(APPEND TAVREL_UNWATCHED -fno-sanitize=fuzzer-no-link)
    # This check branches on a cache of addresses, which a fuzzer would take for behaviour of the input: no two runs would
    # be alike. What the fuzzers find runs with it in the tests that GCC checks.
    add_compile_options(-fno-sanitize=vptr)
  endif()
endif()
if(TAVREL_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()

# tavrel_test(NAME <name> SOURCES <file>... [LIBRARIES <target>...])
# One program of GoogleTest cases; it runs as one test, so that cases find the process state of those before them.
function(tavrel_test)
  cmake_parse_arguments(PARSE_ARGV 0 test "" "NAME" "SOURCES;LIBRARIES")
  add_executable(${test_NAME} ${test_SOURCES})
  target_link_libraries(${test_NAME} PRIVATE ${test_LIBRARIES} tavrel-warnings tavrel-test-main GTest::gmock)
  target_include_directories(${test_NAME} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  add_test(NAME ${test_NAME} COMMAND ${test_NAME})
  set_tests_properties(${test_NAME} PROPERTIES ENVIRONMENT "${TAVREL_TEST_ENVIRONMENT}" TIMEOUT 900)
endfunction()
