#ifndef TAVREL_VARIATION_VARIANTRUNNER_H
#define TAVREL_VARIATION_VARIANTRUNNER_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <simulation/Criteria.h>
#include <simulation/Events.h>
#include <simulation/Runner.h>
#include <variation/Assignment.h>
#include <variation/Export.h>
#include <variation/RunRecord.h>

namespace ScenarioTemplateDb {
class ScenarioNode;
}

namespace TavrelVariation {

// Runs an opened scenario with values, in the small world, again and again: each call of Run in a process of its own,
// since a run changes the opened file. The trace is the same bytes as that of `tavrel run --set`.
class TAVREL_VARIATION_API VariantRunner {
public:
    struct Setup {
        cfg::CfgScenario* file = nullptr;                 // must outlive this object; its root model is in use
        ScenarioTemplateDb::ScenarioNode* root = nullptr; // of its node tree, if there is one
        std::string scenario;                             // as the trace names it
        std::string script;                               // name of the script; empty: the first whole one
        std::string installation;                         // its file
        std::vector<TavrelSimulation::Input> inputs;      // the scenario file and the root model
        TavrelSimulation::Span span;
        std::vector<TavrelSimulation::Criterion> criteria;
    };
    // Reads the script once, to learn its includes and to hold the criteria against it. Throws AssignmentError for a
    // script that cannot be read or is not there, and CriterionError for a criterion about what the script does not
    // have.
    explicit VariantRunner(const Setup& setup);
    ~VariantRunner();
    VariantRunner(const VariantRunner&) = delete;
    VariantRunner& operator=(const VariantRunner&) = delete;

    // False for a scenario without a script: there is nothing to run, and Run answers Verdict::Skipped.
    bool HasScript() const;
    // Its name; empty where there is none.
    std::string Script() const;
    // What a run is made from, includes among it.
    const std::vector<TavrelSimulation::Input>& Inputs() const;
    const Settable& Values() const;
    // The seed of the world that the scenario gives.
    std::uint32_t OwnSeed() const;
    // Throws CampaignError, which names it, if the root model or an include is not what it was when this object was
    // made, for whoever has let others read them. Run, which has the model in memory, does so for the includes by
    // itself.
    void HoldFiles() const;

    // Sets the values and runs. The trace is written to `traceFile` unless that is empty. Number, seed and values of
    // the record are left to the caller. Throws AssignmentError for a value that cannot be had, CampaignFileError for a
    // trace that cannot be written, CampaignError for an include that is not what it was.
    RunRecord Run(const std::vector<AssignmentText>& values, std::optional<std::uint32_t> seed,
                  const std::string& traceFile);
    // Sets the values and saves the scenario as another file, for a simulator that reads it. Throws AssignmentError,
    // CampaignFileError, and std::bad_alloc where memory is too short.
    void Save(const std::vector<AssignmentText>& values, const std::string& file);

private:
    struct Parts;
    std::unique_ptr<Parts> parts;
};

} // namespace TavrelVariation

#endif
