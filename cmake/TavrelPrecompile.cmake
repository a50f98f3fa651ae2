# The large headers that many files of a target include, read once for all of them. A file that forgets one of its includes
# compiles all the same then, so this is for builds whose results are thrown away, and never for the only one.

set(standard <algorithm> <array> <charconv> <chrono> <cmath> <cstdint> <cstdlib> <filesystem> <fstream> <functional> <limits>
  <map> <memory> <optional> <random> <set> <sstream> <string> <string_view> <thread> <tuple> <unordered_map> <utility>
  <variant> <vector>)
set(test <gmock/gmock.h> <gtest/gtest.h>)
set(json <nlohmann/json.hpp>)

# precompile(TARGET HEADER...): nothing where the target is not built.
function(precompile target)
  if(TARGET ${target})
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

precompile(tavrel ${standard} ${json} <fmt/format.h>)
precompile(command-test ${standard} ${test} ${json})
# What GCC makes of them is so large that loading it takes as long as reading the headers of the standard library.
if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
  foreach(target IN ITEMS tavrel-environment tavrel-item-model TavrelScenarioTemplateDb)
    precompile(${target} ${standard})
  endforeach()
  foreach(target IN ITEMS tavrel-checking tavrel-simulation tavrel-variation)
    precompile(${target} ${standard} ${json})
  endforeach()
  foreach(target IN ITEMS driver-test environment-test checking-test variation-test containers_test)
    precompile(${target} ${standard} ${test})
  endforeach()
  foreach(subject IN ITEMS item_memory item_tree text_format token variable parameter parameter_text function action
      condition remembered_values rule task include criteria evaluation scenario running)
    if(TARGET ${subject}_test)
      target_precompile_headers(${subject}_test REUSE_FROM containers_test)
    endif()
  endforeach()
endif()
# Its optimisation is its own, and a compiler takes no header that was read with another one.
set_source_files_properties(variation/CoveringArray.cpp DIRECTORY variation PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
