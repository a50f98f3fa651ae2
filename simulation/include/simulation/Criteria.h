#ifndef TAVREL_SIMULATION_CRITERIA_H
#define TAVREL_SIMULATION_CRITERIA_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <simulation/Events.h>
#include <simulation/Export.h>

namespace TavrelSimulation {

// A text that is no criterion, or one about something that the script does not have. The sentence quotes the criterion
// and names the column, counted from 1.
class CriterionError : public std::runtime_error {
public:
    CriterionError(const std::string& sentence, std::size_t at) : std::runtime_error(sentence), column(at) {}

    const std::size_t column;
};

// A condition on a run:
//
//     criterion  = ["always" | "eventually" | "never" | "finally"] ["[" time "," time "]"] predicate
//     predicate  = signal ("<" | "<=" | ">" | ">=" | "=" | "!=") number
//                | signal ("=" | "!=") quoted text
//                | "fired(" rule ")" | "entered(" task ")" | "stopped"
//     signal     = "variable(" name ")" | "score(" number ")" | "state(" task ")" | "time"
//
// Without a word in front: `eventually` for the events of the third row, `always` for comparisons.
struct Criterion {
    enum class Mode { Always, Eventually, Never, Finally };
    enum class Subject { Variable, Score, State, Time, Fired, Entered, Stopped };
    enum class Comparison { Less, AtMost, More, AtLeast, Equal, Different };

    std::string text; // as it was written
    Mode mode = Mode::Always;
    std::optional<std::pair<double, double>> window; // seconds, both ends included
    Subject subject = Subject::Stopped;
    std::string name;     // of the variable, rule or task
    bool isLabel = false; // `name` is the label of a variable
    std::int32_t score = 0;
    Comparison comparison = Comparison::Equal;
    std::optional<double> number; // what is compared with, either this
    std::string quoted;           // or this
    std::size_t nameColumn = 1;   // where the name stands in the text, from 1

    bool IsEvent() const { return subject >= Subject::Fired; }
};

// Throws CriterionError.
TAVREL_SIMULATION_API Criterion ParseCriterion(const std::string& text);

// The path of the rule that a text names as a criterion would. Throws CriterionError where there is none or several.
TAVREL_SIMULATION_API std::string RuleNamed(const std::string& rule, const Names& names);

// Judges a run by criteria, event by event, while it happens or from a trace.
class TAVREL_SIMULATION_API Judge {
public:
    // With the names of the script every criterion is held against them: throws CriterionError for a rule, task,
    // variable or score that the script does not have, or has in several places, with the nearest name. Without names
    // what is never shown never happens.
    Judge(std::vector<Criterion> all, const Names* names);
    ~Judge();
    Judge(const Judge&) = delete;
    Judge& operator=(const Judge&) = delete;

    // The events of a run, in order. A start says when the run begins and until when it was to last, an end when it
    // ended; without them the first and the last event do.
    void Hear(const Event& event);

    // One for each criterion, in their order. To be asked after the last event.
    std::vector<Outcome> Outcomes() const;

private:
    friend TAVREL_SIMULATION_API std::string RuleNamed(const std::string& rule, const Names& names);
    struct Watched;
    struct Change;

    std::vector<std::unique_ptr<Watched>> watched;
    std::optional<double> firstTime, lastTime;
    std::optional<double> until;
    bool ended = false;
};

} // namespace TavrelSimulation

#endif
