#ifndef TAVREL_COMMAND_VALUES_H
#define TAVREL_COMMAND_VALUES_H

#include <string>
#include <vector>

#include <simulation/Criteria.h>
#include <variation/Assignment.h>

#include "Context.h"

namespace tavrel {

// The assignments and criteria of a command line. All of these fail with a Failure for wrong usage.

std::vector<TavrelVariation::AssignmentText> ReadAssignments(const std::vector<std::string>& texts);
// Puts the names that the scenario has into the place of those that are written.
void NameAsInScenario(const TavrelVariation::Settable& settable,
                      std::vector<TavrelVariation::AssignmentText>& assignments);
// Those of a file that holds an object of texts. Fails as unreadable where there is no such file.
std::vector<TavrelVariation::AssignmentText> ReadAssignmentFile(const std::string& path);

std::vector<TavrelSimulation::Criterion> ReadCriteria(const std::vector<std::string>& texts);

// Runs `work`; what it refuses is wrong usage.
template <typename Work>
auto WithRefusals(const Work& work) {
    try {
        return work();
    } catch (const TavrelVariation::AssignmentError& error) {
        throw Failure{ExitUsage, OneLine(error.what())};
    } catch (const TavrelSimulation::CriterionError& error) {
        throw Failure{ExitUsage, OneLine(error.what())};
    }
}

} // namespace tavrel

#endif
