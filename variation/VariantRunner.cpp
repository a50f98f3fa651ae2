#include <variation/VariantRunner.h>

#include <cerrno>
#include <fstream>
#include <new>
#include <utility>

#include <TavrelScenarioTemplateDb/ScenarioScripts.h>
#include <TavrelScenarioTemplateDb/ScenarioTables.h>
#include <cfg/CfgScenario.h>
#include <cfg/ScenarioScript.h>
#include <fmt/format.h>
#include <lmkUtils/InstallationMoment.h>
#include <scenario/ItemModel.h>
#include <simulation/Inputs.h>
#include <simulation/Scene.h>
#include <simulation/Sha256.h>
#include <simulation/Trace.h>
#include <variation/CampaignError.h>

#include "CampaignFolder.h"
#include "CampaignJson.h"

namespace TavrelVariation {

namespace {

using namespace TavrelSimulation;

constexpr int kError = 4;

std::unique_ptr<ScenarioItem> ReadScript(const cfg::ScenarioScript& script) {
    ScenarioTextStream stream(script.text.c_str(), script.text.size() + 1);
    ItemLoadContext context{nullptr, nullptr};
    return std::unique_ptr<ScenarioItem>(LoadScenarioText(stream, nullptr, &context, nullptr, false));
}

} // namespace

struct VariantRunner::Parts {
    explicit Parts(const Setup& given) : setup(given), settable(*given.file, given.root), inputs(given.inputs) {}

    // A script that is a whole scenario; null where the file has no script at all.
    const cfg::ScenarioScript* FindScript() const {
        const std::vector<cfg::ScenarioScript*> scripts = TavrelScenarioTemplateDb::scriptsOf(*setup.file);
        std::string names;
        for (const cfg::ScenarioScript* candidate : scripts) {
            names += (names.empty() ? "" : ", ") + candidate->name;
            if (!setup.script.empty() && candidate->name != setup.script) continue;
            const std::unique_ptr<ScenarioItem> item = ReadScript(*candidate);
            if (dynamic_cast<const ScenarioLib::Scenario*>(item.get())) return candidate;
            if (!setup.script.empty())
                throw AssignmentError(
                    fmt::format("script {} of {} {}", candidate->name, setup.scenario,
                                item ? "is no whole scenario" : "cannot be read; tavrel check tells why"));
        }
        if (scripts.empty() && setup.script.empty()) return nullptr;
        throw AssignmentError(setup.script.empty()
                                  ? fmt::format("no script of {} is a whole scenario; it has {}", setup.scenario, names)
                                  : fmt::format("{} has no script \"{}\"; it has {}", setup.scenario, setup.script,
                                                names.empty() ? "none" : names));
    }

    void Set(const std::vector<AssignmentText>& values, RunStart* start) {
        const std::vector<Assignment> assignments = ReadAll(settable, values, {});
        settable.Apply(assignments);
        if (!start) return;
        for (const Assignment& assignment : assignments) start->values.emplace_back(assignment.id, assignment.text);
    }

    // The includes, or the files that are no scenario, as they were when this began.
    std::vector<Input> Then(bool rootModel) const {
        std::vector<Input> then = inputs;
        std::erase_if(then, [&](const Input& input) {
            return input.role != "include" && (input.role != "rootModel" || !rootModel);
        });
        return then;
    }
    static void Hold(const std::vector<Input>& then, const std::vector<Input>& now) {
        const std::string difference = DifferenceOf(then, now);
        if (!difference.empty()) throw CampaignError(difference + "; no run was made with it");
    }

    const Setup setup;
    Settable settable;
    const cfg::ScenarioScript* script = nullptr; // stays where it is when its text is set
    std::vector<Input> inputs;
};

VariantRunner::VariantRunner(const Setup& setup) : parts(std::make_unique<Parts>(setup)) {
    parts->script = parts->FindScript();
    if (!parts->script) return;
    const std::unique_ptr<ScenarioItem> item = ReadScript(*parts->script);
    auto& scenario = dynamic_cast<ScenarioLib::Scenario&>(*item);
    for (Input& input : IncludesOf(scenario, setup.installation)) parts->inputs.push_back(std::move(input));
    const Names names = NamesOf(scenario);
    const Judge judge(setup.criteria, &names);
}

VariantRunner::~VariantRunner() = default;

bool VariantRunner::HasScript() const { return parts->script != nullptr; }
std::string VariantRunner::Script() const { return parts->script ? parts->script->name : ""; }
const std::vector<Input>& VariantRunner::Inputs() const { return parts->inputs; }
const Settable& VariantRunner::Values() const { return parts->settable; }
std::uint32_t VariantRunner::OwnSeed() const { return Scene::SeedOf(*parts->setup.file); }

void VariantRunner::HoldFiles() const {
    const std::vector<Input> then = parts->Then(true);
    Parts::Hold(then, AsTheyAreNow(then, parts->setup.installation));
}

RunRecord VariantRunner::Run(const std::vector<AssignmentText>& values, std::optional<std::uint32_t> seed,
                             const std::string& traceFile) {
    RunRecord record;
    if (!parts->script) {
        record.verdict = Verdict::Skipped;
        record.message = parts->setup.scenario + " has no script";
        return record;
    }
    RunSettings settings;
    parts->Set(values, &settings.start);
    settings.span = parts->setup.span;
    settings.criteria = parts->setup.criteria;
    settings.start.scenario = parts->setup.scenario;
    settings.start.script = parts->script->name;
    settings.start.inputs = parts->inputs;
    settings.start.seed = seed ? *seed : OwnSeed();

    const lmkUtils::InstallationMoment moment; // a run sees one state of the installation
    const std::unique_ptr<ScenarioItem> item = ReadScript(*parts->script);
    auto* scenario = dynamic_cast<ScenarioLib::Scenario*>(item.get());
    // Each run reads the includes anew.
    const std::vector<Input> then = parts->Then(false);
    Parts::Hold(then, scenario ? IncludesOf(*scenario, parts->setup.installation)
                               : AsTheyAreNow(then, parts->setup.installation));
    if (!scenario) throw AssignmentError("with these values the script cannot be read");
    TavrelScenarioTemplateDb::ScenarioTables tables;
    tables.fill(*scenario, *parts->setup.file);
    // Display texts place nested calls into the parameters that they fill.
    scenario->UpdateDisplayTextTree();
    World world;
    Scene::FillWorld(world, *parts->setup.file);
    RegisterFunctions(world);
    RegisterConditions(world);
    RegisterActions(world);

    std::string trace, firstError;
    const RunResult result = TavrelSimulation::Run(*scenario, world, settings, [&](const Event& event) {
        ++record.events;
        trace += JsonOf(event);
        trace += '\n';
        const auto* entry = std::get_if<LogEntry>(&event.what);
        if (entry && entry->severity >= kError && firstError.empty()) firstError = entry->text;
    });
    record.verdict = result.verdict;
    record.criteria = result.end.criteria;
    record.trace = Sha256(trace);
    if (VerdictOf(record.criteria) != record.verdict) record.message = firstError;
    if (!traceFile.empty()) {
        std::ofstream file(traceFile, std::ios::binary | std::ios::trunc);
        file << trace;
        file.close();
        if (!file) throw FileError(traceFile, errno);
    }
    return record;
}

void VariantRunner::Save(const std::vector<AssignmentText>& values, const std::string& file) {
    parts->Set(values, nullptr);
    if (parts->setup.file->save(file.c_str(), static_cast<Commons::Encoding::Mode>(1), false)) return;
    // That is the fault of this variant, or of its limit, and not of the folder.
    if (parts->setup.file->lacksMemory()) throw std::bad_alloc();
    throw CampaignFileError(parts->setup.file->errorMessage);
}

} // namespace TavrelVariation
