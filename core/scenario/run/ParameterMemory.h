#ifndef SCENARIO_PARAMETERMEMORY_H
#define SCENARIO_PARAMETERMEMORY_H

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class Variable;
struct ValueKind;

// What a parameter has found in the tree, beside the texts that it was found for. It holds for one version of
// TreeWatch.
struct FoundItems {
    std::uint64_t version = 0; // 0 is none
    std::string value;
    std::string tabName; // of the enumeration that the entry was looked up in
    const Variable* entry = nullptr;
    std::vector<const Variable*> variables; // outermost first
};

// What the evaluations of one parameter have found out. Everything stands beside the text it was found for and is found
// again when that text has changed. What nearly all parameters are, a literal, takes one line of the processor's cache:
// the next rule's memory is far away, and a step would wait for each line.
struct alignas(64) ParameterMemory {
    const ValueKind* kind = nullptr; // of its own word

    static constexpr std::uint8_t kNoNumber = 0xFF;
    float number = 0.0F;
    std::uint8_t numberSize = kNoNumber;
    std::array<char, 24> numberText; // of that size; a longer one is converted at each use

    std::unique_ptr<FoundItems> found; // null until something was looked up
};

#endif
