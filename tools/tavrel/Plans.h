#ifndef TAVREL_COMMAND_PLANS_H
#define TAVREL_COMMAND_PLANS_H

#include <memory>
#include <string>

#include <variation/Assignment.h>
#include <variation/Plan.h>
#include <variation/Refused.h>

#include "Context.h"
#include "Installation.h"
#include "Scripts.h"

namespace tavrel {

// A scenario whose parameters are to be set, with all of it that can be.
struct SettableScenario {
    std::string path; // of the scenario in the installation, or of the file
    std::string configuration;
    std::string directory;    // where `path` stands
    std::string installation; // its file
    std::unique_ptr<Template> opened;
    std::unique_ptr<TavrelVariation::Settable> settable;

    // The same, read anew: what is set in one does not show in the other.
    SettableScenario Again() const;
};

// Opens the scenario that an operand names, of the configuration `configuration` if that is not empty.
SettableScenario OpenSettable(Context& context, const std::string& operand, const std::string& configuration = "");

// A plan with its scenario.
struct OpenedPlan {
    std::string path; // of the plan file
    SettableScenario scenario;
    TavrelVariation::Plan plan;
};

// Reads a plan file and opens its scenario, a file beside the plan or one that the operand SCENARIO of other
// sub-commands could name. What the plan refuses ends as a Failure of wrong usage that begins with the path of the
// plan.
OpenedPlan OpenPlan(Context& context, const std::string& path);
// The two steps of it.
TavrelVariation::PlanFile ReadPlanFile(const std::string& path);
OpenedPlan OpenPlan(Context& context, const TavrelVariation::PlanFile& file, const std::string& path);

// What the plan calls its scenario, as it is found from every working directory.
std::string OperandOf(const TavrelVariation::PlanFile& file, const std::string& planPath);

// Runs `work` on a plan; what it refuses ends likewise.
template <typename Work>
auto WithPlanRefusals(const std::string& path, const Work& work) {
    try {
        return work();
    } catch (const TavrelVariation::Refused& refused) {
        throw Failure{ExitUsage, OneLine(path + ": " + refused.what())};
    } catch (const TavrelVariation::AssignmentError& refused) {
        throw Failure{ExitUsage, OneLine(path + ": " + refused.what())};
    }
}

} // namespace tavrel

#endif
