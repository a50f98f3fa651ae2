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
        if (depth++ > 0) return;
        ++moment;
        ++step;
    }
    ~StepScope() { --depth; }
    StepScope(const StepScope&) = delete;
    StepScope& operator=(const StepScope&) = delete;

    static void HostCodeRan() { ++moment; }

    // Something looked up is worth another look as soon as this number has moved on.
    static std::uint64_t Moment() { return moment; }
    // Moves on with each outermost step.
    static std::uint64_t Step() { return step; }

    // What the library itself does to a tree: an item is made, named, placed or taken out.
    static void TreeChanged() { ++changes; }
    static std::uint64_t Changes() { return changes; }
    // Whoever keeps the address of an item asks whether any item has died since.
    static void ItemDied() {
        ++deaths;
        ++changes;
    }
    static std::uint64_t Deaths() { return deaths; }

private:
    inline static std::uint64_t moment = 0;
    inline static std::uint64_t step = 0;
    inline static std::uint64_t changes = 0;
    inline static std::uint64_t deaths = 0;
    inline static int depth = 0;
};

#endif
