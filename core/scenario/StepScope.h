#ifndef SCENARIO_STEPSCOPE_H
#define SCENARIO_STEPSCOPE_H

#include <cstdint>

// What running items may keep between two looks at the tree. Fields are public, so whatever is kept about names,
// parents and stores is only good until code of the host runs again: between two steps, in an action, in an observer.
//
// Every operation that runs items opens a StepScope; the outermost one begins a new step. An action, and whoever
// calls observers, tells it by HostCodeRan afterwards. Conditions and functions only look, and are not told.
class StepScope {
public:
    StepScope() {
        if (depth++ == 0) ++moment;
    }
    ~StepScope() { --depth; }
    StepScope(const StepScope&) = delete;
    StepScope& operator=(const StepScope&) = delete;

    static void HostCodeRan() { ++moment; }

    // Something looked up is worth another look as soon as this number has moved on.
    static std::uint64_t Moment() { return moment; }

    // Whoever keeps the address of an item asks whether any item has died since.
    static void ItemDied() { ++deaths; }
    static std::uint64_t Deaths() { return deaths; }

private:
    inline static std::uint64_t moment = 0;
    inline static std::uint64_t deaths = 0;
    inline static int depth = 0;
};

#endif
