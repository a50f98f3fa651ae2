#ifndef TAVREL_COMMAND_TRACETEXT_H
#define TAVREL_COMMAND_TRACETEXT_H

#include <string>
#include <vector>

#include <simulation/Events.h>
#include <simulation/Explanation.h>

namespace tavrel {

// An event as a line for people.
std::string EventText(const TavrelSimulation::Event& event);

// What a run came to, below its last event: rules that were never true, states that were never entered, scores, rules
// of EVALUATION WARNING and ERROR that fired, and the criteria with the verdict where there are any.
std::string SummaryText(const TavrelSimulation::RunEnd& end);

// One line for each criterion.
std::string OutcomesText(const std::vector<TavrelSimulation::Outcome>& outcomes);

// The criteria with the verdict; empty where there are none.
std::string VerdictText(const TavrelSimulation::RunEnd& end);

// Why a rule did or did not fire, for people or as one object of JSON.
std::string ExplanationText(const TavrelSimulation::Explanation& explanation, bool asJson);

} // namespace tavrel

#endif
