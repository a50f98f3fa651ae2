#ifndef SCENARIO_KINDS_H
#define SCENARIO_KINDS_H

#include <cstdint>
#include <string_view>

#include <scenario/ItemText.h>

// Kinds that recur together.
enum KindSet : std::uint8_t {
    kNoSet = 0,
    kFileScope = 1, // stands for one file
    kCallable = 2,  // a call, or the definition of one
    kTokenKind = 4  // the only kinds of child that a token may walk
};

bool KindIsIn(std::uint32_t kind, KindSet set);

// KindFromKeyword of a part of a text.
ScenarioItemKind KindOfKeyword(std::string_view keyword);

#endif
