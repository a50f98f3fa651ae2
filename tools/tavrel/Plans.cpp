#include "Plans.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include <lmkUtils/EnvConfig.h>
#include <scenario/NearestName.h>

#include "Files.h"
#include "Spelling.h"

namespace tavrel {

namespace {

namespace fs = std::filesystem;
using namespace TavrelVariation;

std::string BytesOf(const std::string& path) {
    const std::string reason = ReasonNotToOpen(path);
    if (!reason.empty()) throw Failure{ExitUnreadable, fmt::format("{}: {}", path, reason)};
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void MakeSettable(SettableScenario& scenario) {
    scenario.opened = std::make_unique<Template>(scenario.configuration, scenario.path, scenario.directory);
    OpenDespiteDeclarations(*scenario.opened);
    scenario.settable = std::make_unique<Settable>(scenario.opened->File(), scenario.opened->getRootScenarioNode());
}

void CheckScript(const PlanFile& file, Template& scenario) {
    if (!file.script) return;
    std::vector<std::string> names;
    for (const cfg::ScenarioScript* script : TavrelScenarioTemplateDb::scriptsOf(scenario.File())) {
        if (script->name == *file.script) return;
        names.push_back(script->name);
    }
    const std::string near = NearestName(*file.script, names);
    throw Refused("script", fmt::format("the scenario has no script \"{}\"{}", *file.script,
                                        near.empty() ? "" : ", did you mean " + near));
}

} // namespace

// A file that stands beside the plan is named from there, and every file by its whole path.
std::string OperandOf(const PlanFile& file, const std::string& planPath) {
    std::error_code error;
    const std::string here = MeantOnDisk(file.scenario);
    if (fs::exists(here, error)) return fs::absolute(here).string();
    const fs::path beside = MeantOnDisk((fs::path(planPath).parent_path() / file.scenario).string());
    return fs::exists(beside, error) ? fs::absolute(beside).string() : file.scenario;
}

SettableScenario SettableScenario::Again() const {
    SettableScenario again{path, configuration, directory, installation, nullptr, nullptr};
    MakeSettable(again);
    return again;
}

SettableScenario OpenSettable(Context& context, const std::string& operand, const std::string& configuration) {
    Arguments arguments = context.arguments;
    if (!configuration.empty()) arguments.values["--configuration"] = {configuration};
    Context narrowed{arguments, context.out};
    OpenedScenario found = OpenScenario(narrowed, operand);
    SettableScenario scenario{found.scenario->getPath(),
                              found.configuration.name,
                              found.directory,
                              lmkUtils::EnvConfig::ourConfigCfgFile,
                              nullptr,
                              nullptr};
    MakeSettable(scenario);
    context.status = std::max(context.status, narrowed.status);
    return scenario;
}

PlanFile ReadPlanFile(const std::string& path) {
    const std::string text = BytesOf(path);
    return WithPlanRefusals(path, [&] { return PlanFile::Read(text); });
}

OpenedPlan OpenPlan(Context& context, const std::string& path) { return OpenPlan(context, ReadPlanFile(path), path); }

OpenedPlan OpenPlan(Context& context, const PlanFile& file, const std::string& path) {
    return WithPlanRefusals(path, [&] {
        SettableScenario scenario = OpenSettable(context, OperandOf(file, path), file.configuration.value_or(""));
        CheckScript(file, *scenario.opened);
        Plan plan(file, *scenario.settable);
        return OpenedPlan{path, std::move(scenario), std::move(plan)};
    });
}

} // namespace tavrel
