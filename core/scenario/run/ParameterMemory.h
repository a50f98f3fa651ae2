#ifndef SCENARIO_PARAMETERMEMORY_H
#define SCENARIO_PARAMETERMEMORY_H

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "text/ShortText.h"

class Variable;
struct ValueKind;

// What only some parameters need besides.
struct FoundItems {
    std::string value; // the entry's name, and the enumeration that it was looked up in
    std::string tabName;
    std::vector<const Variable*> variables; // outermost first, where it is not exactly one
};

// What the evaluations of one parameter have found out. Everything stands beside the text it was found for and is found
// again when that text has changed. What nearly all parameters are, a literal or the number of one variable, takes one
// line of the processor's cache: the next rule's memory is far away, and a step would wait for each line.
struct alignas(64) ParameterMemory {
    const ValueKind* kind = nullptr; // of its own word, and what the rest was found for
    std::uint64_t version = 0;       // of TreeWatch, for which the items found hold; 0 is none
    const Variable* item = nullptr;  // the entry, or the one variable
    std::unique_ptr<FoundItems> found;

    static constexpr std::uint8_t kNoText = 0xFF;
    float number = 0.0F;
    std::uint8_t textSize = kNoText;
    std::uint8_t nameSize = 0; // of the variable
    std::array<char, 24> text; // of the number, or that names the variable; a longer one is not kept

    bool IsFor(std::string_view other) const { return SameText({text.data(), textSize}, other); }
    void Keep(std::string_view other) {
        textSize = kNoText;
        if (other.size() > text.size()) return;
        std::copy(other.begin(), other.end(), text.begin());
        textSize = static_cast<std::uint8_t>(other.size());
    }
    FoundItems& More() {
        if (!found) found = std::make_unique<FoundItems>();
        return *found;
    }
};
static_assert(sizeof(ParameterMemory) == 64);

#endif
