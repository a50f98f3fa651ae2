#ifndef SCENARIO_CALLARGUMENTS_H
#define SCENARIO_CALLARGUMENTS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <scenario/ParameterValue.h>
#include <scenario/function.h>

// The arguments of one call while it runs. The records are used again by later calls, whose texts then need no new
// memory; a call within a call has records of its own.
class CallArguments {
public:
    // Fills the records in order. Parameters beyond the twelfth are not handed on, which is told once for each call.
    explicit CallArguments(const Function& call);
    ~CallArguments();
    CallArguments(const CallArguments&) = delete;
    CallArguments& operator=(const CallArguments&) = delete;

    const ParameterValues& Values() const { return level.values; }

private:
    // A level that is entered is left whatever an implementation throws.
    struct Level {
        Level();
        ~Level();
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;

        ParameterValues& values;
        std::size_t filled = 0;
    };
    static void TellTooLong(const Function& call);

    Level level;
    const Function* outerCall; // whose implementation or arguments this call belongs to
};

// Logs that a CODE has no implementation.
void LogMissingEntry(const Function& call, std::int32_t code);

// The implementation of a CODE, or null. A number beyond the table, and a place in it that was left empty, are a fault
// of the model or of the host, and are told.
template <class Entry>
const Entry* FindImplementation(const std::vector<Entry>& table, const Function& call, std::int32_t code) {
    if (code >= 0 && static_cast<std::size_t>(code) < table.size() && table[static_cast<std::size_t>(code)])
        return &table[static_cast<std::size_t>(code)];
    LogMissingEntry(call, code);
    return nullptr;
}

#endif
