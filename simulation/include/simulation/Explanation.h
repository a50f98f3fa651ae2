#ifndef TAVREL_SIMULATION_EXPLANATION_H
#define TAVREL_SIMULATION_EXPLANATION_H

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <scenario/ItemModel.h>
#include <simulation/Export.h>

namespace TavrelSimulation {

// Why a rule did or did not fire in a run.
struct Explanation {
    // The condition of the rule, and each condition in it, outer ones first.
    struct Part {
        std::string text;      // as people read it
        std::size_t depth = 0; // 0 for the condition of the rule
        double heldBack = 0;   // seconds in which it kept the rule from being true
        // Of a comparison of two numbers: how far these were apart at the nearest while it held the rule back.
        std::optional<double> nearest;
        std::size_t parts = 0;    // conditions directly in it
        std::size_t mostHeld = 0; // how many of these held at once, at most
    };
    // What was found at one step.
    struct Look {
        double time = 0;
        bool isLookedAt = false; // whether the rule was stepped: its task was the active one, and it is not disabled
        bool value = false;      // of the rule
        std::vector<bool> holds; // of each part, as its modifier reads it
        std::vector<std::vector<std::string>> values; // the arguments of each part; empty where it was never asked
    };

    std::string rule; // its path
    std::string label;
    bool isDisabled = false;
    std::size_t timesFired = 0;
    double seconds = 0;      // of the run
    double lookedAt = 0;     // seconds in which the rule was stepped
    std::vector<Part> parts; // none for a rule without a condition, which is always true
    std::vector<Look> looks; // the first, each in which a truth changed, and the last
};

// Watches one rule while a scenario runs. To be made when the implementations of conditions are registered, and
// destroyed before they are changed: it stands before those that the rule uses and hands on what it hears.
class TAVREL_SIMULATION_API Explainer {
public:
    // `rule` as criteria name rules. Throws CriterionError where the script has none or several of that name.
    Explainer(const ScenarioLib::Scenario& scenario, const std::string& rule);
    ~Explainer();
    Explainer(const Explainer&) = delete;
    Explainer& operator=(const Explainer&) = delete;

    // To be called after each step.
    void AfterStep(double time);
    // After the last one.
    const Explanation& Finish();

private:
    struct Watched;
    std::unique_ptr<Watched> watched;
};

} // namespace TavrelSimulation

#endif
