#ifndef SCENARIO_STEPSCOPE_H
#define SCENARIO_STEPSCOPE_H

#include <cstdint>

#include "text/HostCode.h"

// How long running items may keep what they have found in the tree. Fields are public and nothing tells of a change, so
// it is kept for a moment: a stretch of a step in which no code runs that may change names, lists or parents. Code of
// the host may, except conditions and functions, which only look.
//
// Every operation that runs items or looks something up opens a StepScope. One that is opened by the host begins a
// moment, be it between two steps, in an action or in an observer.
class StepScope {
public:
    StepScope() : outer(innermost) {
        if (innermost == HostCode::Depth()) return;
        ++opened;
        if (innermost == kNone) ++step;
        innermost = HostCode::Depth();
    }
    ~StepScope() { innermost = outer; }
    StepScope(const StepScope&) = delete;
    StepScope& operator=(const StepScope&) = delete;

    // Never 0.
    static std::uint64_t Moment() { return opened + HostCode::Changes(); }
    // Moves on with each outermost step.
    static std::uint64_t Step() { return step; }

    // Whoever keeps the address of an item as a key gives up its memory once items have died; nothing else hangs on it.
    static void ItemDied() { ++deaths; }
    static std::uint64_t Deaths() { return deaths; }

private:
    static constexpr int kNone = -1;
    int outer;
    inline static int innermost = kNone; // how deep in code of the host the innermost scope was opened
    inline static std::uint64_t opened = 1;
    inline static std::uint64_t step = 0;
    inline static std::uint64_t deaths = 0;
};

#endif
