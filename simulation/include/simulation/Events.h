#ifndef TAVREL_SIMULATION_EVENTS_H
#define TAVREL_SIMULATION_EVENTS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <simulation/Export.h>

namespace TavrelSimulation {

// What happens in a run, as plain records. A trace is a list of them: a start, what happened in the order in which it
// did, an end. Items are named by their way from the top, "SCENARIO (1) / TASK (2)". Times are seconds.

// What a script has, so that a trace can be judged without it.
struct Names {
    struct Variable {
        std::string name; // its number where that is unique, else with its place before it
        std::string label;
        std::string start; // the value that the script gives; empty if it gives none
        std::string place; // what it stands in; a trace does not tell it
    };
    struct Score {
        std::int32_t number;
        double start;
    };
    std::vector<std::string> rules; // "PLACE / RULE (8)"
    std::vector<std::string> tasks; // "SCENARIO (1) / TASK (2)"
    std::vector<Variable> variables;
    std::vector<Score> scores;
};

// A file that a run was made of.
struct Input {
    std::string role;   // "scenario", "script", "rootModel" or "include"
    std::string file;   // relative to the folder of the installation file
    std::string sha256; // of its bytes, 64 digits in lower case; empty if they cannot be read
};

struct RunStart {
    std::string tool; // the version of what ran it; empty for that of this library
    std::string scenario;
    std::string script;
    double until = 0;
    double step = 0;
    std::uint32_t seed = 0;
    std::vector<std::pair<std::string, std::string>> values; // what was set: parameter ids and value texts
    std::optional<Names> names;                              // empty in a trace that does not tell them
    std::vector<Input> inputs;
};
struct RuleChange {
    std::string rule; // its name, which may be empty
    std::string label;
    std::string place; // of what it stands in
    bool value = false;
};
struct StateChange {
    std::string task;
    std::int32_t from = 0; // -1 none, -3 the end
    std::int32_t to = 0;
    std::string label; // of the new state
};
struct VariableChange {
    std::string variable;
    std::string label;
    std::string place;
    std::string from;
    std::string to;
};
struct ScoreChange {
    std::int32_t score = 0;
    double from = 0;
    double to = 0;
};
// An action did what only people see or hear.
struct Effect {
    std::string name;
    std::vector<std::string> arguments;
};
struct Pause {
    bool value = false; // whether it begins
};
struct Stop {};
struct LogEntry {
    int severity = 0; // 3 warning, 4 error, below that information
    std::string text;
};
// A criterion after a run.
struct Outcome {
    std::string criterion; // its text
    bool holds = false;
    std::optional<double> margin; // by how much; empty where there is no such number
};
// A rule of EVALUATION WARNING or ERROR that fired.
struct Finding {
    std::string rule; // "PLACE / RULE (8)"
    std::string label;
    std::string evaluation; // "WARNING" or "ERROR"
};
struct RunEnd {
    std::size_t steps = 0;
    bool stopped = false; // by the script
    std::size_t rulesFired = 0;
    std::vector<std::string> neverTrue;    // rules, as in Names
    std::vector<std::string> neverEntered; // sub-tasks, as in Names
    std::vector<std::pair<std::int32_t, double>> scores;
    std::vector<Finding> evaluation;
    std::string verdict; // see Verdict.h; empty in a trace that does not tell it
    std::vector<Outcome> criteria;
};

struct Event {
    double time = 0;
    std::variant<RunStart, RuleChange, StateChange, VariableChange, ScoreChange, Effect, Pause, Stop, LogEntry, RunEnd>
        what;
};

// A line that is no event. The sentence says why.
class TraceError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// An event as one line of JSON, without a line end. Bytes that are no UTF-8 come out as replacement characters.
TAVREL_SIMULATION_API std::string JsonOf(const Event& event);
// The event of such a line, which anybody may have written: members that are missing are empty, those that are not
// known are passed over. Empty for a kind of event that is not known. Throws TraceError for what is no event, and for a
// member of another type.
TAVREL_SIMULATION_API std::optional<Event> EventOf(const std::string& json);

} // namespace TavrelSimulation

#endif
