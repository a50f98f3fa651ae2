#ifndef SCENARIO_KINDTABLE_H
#define SCENARIO_KINDTABLE_H

#include <cstdint>

// Kinds that recur together.
enum KindSet : std::uint8_t {
    kNoSet = 0,
    kFileScope = 1, // stands for one file
    kCallable = 2,  // a call, or the definition of one
    kTokenKind = 4  // the only kinds of child that a token may walk
};

bool KindIsIn(std::uint32_t kind, KindSet set);

#endif
