#ifndef SCENARIO_STEPSCOPE_H
#define SCENARIO_STEPSCOPE_H

#include <cstdint>

// How long running items may keep what they have found in the tree. Fields are public and nothing tells of a change, so
// it is kept for a moment: a stretch of a step in which no code runs that may change names, lists or parents. Code of
// the host may, except conditions and functions, which only look.
//
// Every operation that runs items or looks something up opens a StepScope. One that is opened by the host begins a
// moment, be it between two steps, in an action or in an observer.
class StepScope {
public:
    StepScope() {
        if (depth++ != hostDepth) return;
        ++moment;
        if (depth == 1) ++step;
    }
    ~StepScope() { --depth; }
    StepScope(const StepScope&) = delete;
    StepScope& operator=(const StepScope&) = delete;

    // Never 0.
    static std::uint64_t Moment() { return moment; }
    // Moves on with each outermost step.
    static std::uint64_t Step() { return step; }

    // Whoever keeps the address of an item as a key gives up its memory once items have died; nothing else hangs on it.
    static void ItemDied() { ++deaths; }
    static std::uint64_t Deaths() { return deaths; }

private:
    friend class HostCode;
    inline static std::uint64_t moment = 1;
    inline static std::uint64_t step = 0;
    inline static std::uint64_t deaths = 0;
    inline static int depth = 0;     // of scopes that are open
    inline static int hostDepth = 0; // of them when the host's code was entered that runs now
};

// Stands around each call, in a step, of code of the host that may change the tree: an action, an observer, a class of
// the host's own. The step goes on in a new moment, also when that code ends by an exception.
class HostCode {
public:
    HostCode() : outerDepth(StepScope::hostDepth) { StepScope::hostDepth = StepScope::depth; }
    ~HostCode() {
        StepScope::hostDepth = outerDepth;
        ++StepScope::moment;
    }
    HostCode(const HostCode&) = delete;
    HostCode& operator=(const HostCode&) = delete;

private:
    int outerDepth;
};

#endif
