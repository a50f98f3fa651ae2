#ifndef SCENARIO_HOSTCODE_H
#define SCENARIO_HOSTCODE_H

#include <cstdint>

// Stands around each call of code of the host that may change a tree while a text is read or a scenario is stepped: an
// include repository, an action, an observer, a class of the host's own. What was found in a tree before
// such a call is looked for again after it. That the library announces its own changes is not asked for: the host may
// change public fields, and calls the library again from there.
class HostCode {
public:
    HostCode() { ++depth; }
    ~HostCode() {
        --depth;
        ++changes;
    }
    HostCode(const HostCode&) = delete;
    HostCode& operator=(const HostCode&) = delete;

    // The calls that are under way.
    static int Depth() { return depth; }
    // Moves on when whatever was known may have changed.
    static std::uint64_t Changes() { return changes; }
    // For an operation that the host may call from such code, when it begins.
    static void Enter() {
        if (depth > 0) ++changes;
    }

private:
    inline static int depth = 0;
    inline static std::uint64_t changes = 0;
};

#endif
