#include "Judge.h"

#include <exception>
#include <filesystem>
#include <memory>

#include <ScenarioTemplateDb/Exception.h>
#include <TavrelScenarioTemplateDb/RootModel.h>
#include <TavrelScenarioTemplateDb/ScenarioScripts.h>
#include <TavrelScenarioTemplateDb/ScenarioTables.h>
#include <TavrelScenarioTemplateDb/TavrelScenario.h>
#include <cfg/CfgScenario.h>
#include <cfg/ScenarioScript.h>
#include <processes/ChildProcess.h>
#include <scenario/ItemModel.h>
#include <scenario/LoadDiagnostics.h>
#include <scenario/Parameter.h>
#include <scenario/WhyInvalid.h>

#include "TextChecks.h"

namespace TavrelChecking {

namespace {

// Gathers what the reader says while this object lives, and leaves to the parent process what it says at its end.
class Listener : public ScopedLoadProblemListener {
public:
    void OnLoadProblem(const LoadProblem& problem) override {
        if (!problem.assertion.empty()) {
            TavrelProcesses::Death death;
            death.file = problem.file;
            death.script = problem.script;
            death.row = problem.row;
            TavrelProcesses::DieOfAssertion(problem.assertion, death);
        }
        if (!problem.isWarning) last = problem;
    }

    LoadProblem last;
};

// A template whose sections can be looked at.
class Template : public TavrelScenarioTemplateDb::TavrelScenario {
public:
    using TavrelScenario::TavrelScenario;
    cfg::CfgScenario& File() const { return *getCfgScenarioSection(); }
};

std::string SentenceOf(const std::exception_ptr& thrown) {
    try {
        std::rethrow_exception(thrown);
    } catch (const ScenarioTemplateDb::Exception* exception) {
        const std::unique_ptr<const ScenarioTemplateDb::Exception> owned(exception);
        return owned->message;
    } catch (const ScenarioTemplateDb::Exception& exception) {
        return exception.message;
    } catch (const std::exception& exception) {
        return exception.what();
    } catch (...) {
        return "an unknown failure";
    }
}

std::string WayOf(const ScenarioItem& item) {
    return WayOfSteps(&item, [](const ScenarioItem& step) {
        return step.name.empty() ? std::string(KindKeyword(step.kind))
                                 : KindKeyword(step.kind) + (" (" + step.name + ")");
    });
}

// How much of what values refer to is there: a script that is included elsewhere has neither the items of its scenario
// nor the vehicles and drivers of the file, a scenario script by itself lacks the latter.
enum class Around { Nothing, Items, File };

// Whether that an item is not valid means something. Of a call with a part that means nothing that part is counted.
bool IsJudged(const ScenarioItem& item, Around around) {
    const auto* parameter = dynamic_cast<const Parameter*>(&item);
    if (around == Around::File || !parameter || !IsJudgedByScenario(item)) return true;
    return around == Around::Items && IsOfItems(parameter->valueKind);
}

// The innermost invalid items; those around them are invalid for them alone. True if there is one, counted or not.
// `pending` holds the children of all items on the way.
bool AddInvalid(const ScenarioItem& item, Around around, const std::string& script,
                std::vector<Verdict::Invalid>& invalid, std::vector<ScenarioItem*>& pending) {
    const std::size_t first = pending.size();
    item.GetChildren(pending);
    const std::size_t last = pending.size();
    bool hasInvalid = false;
    for (std::size_t at = first; at < last; ++at)
        hasInvalid = AddInvalid(*pending[at], around, script, invalid, pending) || hasInvalid;
    pending.resize(first);
    if (item.IsValid() || hasInvalid) return hasInvalid;
    if (!IsJudged(item, around)) return true;
    invalid.push_back({script, WayOf(item), WhyInvalid(item), item.displayText});
    for (char& c : invalid.back().display)
        if (c == '\n' || c == '\r' || c == '\t') c = ' ';
    return true;
}

// Which vehicles there are is not known without the file, so those that are asked for count as present.
void AddVehicles(ScenarioLib::Scenario& scenario) {
    std::vector<ScenarioItem*> parameters;
    scenario.CollectItemsOfKind(parameters, KindParameter, true, true);
    for (const ScenarioItem* item : parameters)
        if (const auto* parameter = dynamic_cast<const Parameter*>(item);
            parameter && parameter->valueKind == "VEHICLE")
            scenario.GetVehicle(WholeNumberOf(parameter->value));
}

// Reads a text and looks at its tree; `file` fills the tables of a scenario in it.
void ReadText(const std::string& text, const std::string& name, cfg::CfgScenario* file, Verdict& verdict) {
    const LoadTextName named(name);
    Listener listener;
    ScenarioTextStream stream(text.c_str(), text.size() + 1);
    ItemLoadContext context{nullptr, nullptr};
    std::unique_ptr<ScenarioItem> root;
    std::string cause;
    try {
        root.reset(LoadScenarioText(stream, nullptr, &context, nullptr, false));
    } catch (...) {
        cause = SentenceOf(std::current_exception());
    }
    if (!root) {
        if (!listener.last.cause.empty()) cause = listener.last.cause;
        verdict.refusals.push_back({"", name, stream.line, cause.empty() ? "the text is refused" : cause});
        return;
    }
    if (root->kind == KindFolder) return;
    auto* scenario = dynamic_cast<ScenarioLib::Scenario*>(root.get());
    TavrelScenarioTemplateDb::ScenarioTables tables;
    if (scenario && file) tables.fill(*scenario, *file);
    if (scenario && !file) AddVehicles(*scenario);
    root->UpdateDisplayTextTree();
    std::vector<ScenarioItem*> pending;
    const Around around = !scenario ? Around::Nothing : file ? Around::File : Around::Items;
    AddInvalid(*root, around, name, verdict.invalid, pending);
}

bool IsModelInUse(const std::string& configuration) {
    using TavrelScenarioTemplateDb::RootModel;
    const Listener listener;
    try {
        const std::string file = RootModel::fileOf(configuration);
        return !file.empty() && RootModel::use(file, nullptr, configuration) == RootModel::Outcome::InUse;
    } catch (...) {
        SentenceOf(std::current_exception()); // told by the load already
        return false;
    }
}

} // namespace

Verdict JudgeScenario(const std::string& path, const std::string& configuration) {
    Verdict verdict;
    std::error_code error;
    const std::filesystem::path file = std::filesystem::absolute(path, error); // a bare name has no folder
    const Template scenario(configuration, file.filename().string(), file.parent_path().string());
    std::string sentence;
    LoadProblem problem;
    {
        Listener listener;
        try {
            scenario.getName();
            scenario.getRootScenarioNode();
        } catch (...) {
            sentence = SentenceOf(std::current_exception());
        }
        problem = listener.last;
    }
    if (!sentence.empty())
        verdict.refusals.push_back(
            {problem.file, problem.script, problem.row, problem.cause.empty() ? sentence : problem.cause});
    // Where the load failed, its root model need not be the one in use.
    if (!sentence.empty() && !IsModelInUse(configuration)) return verdict;
    for (const cfg::ScenarioScript* script : TavrelScenarioTemplateDb::scriptsOf(scenario.File()))
        ReadText(script->text, script->name, &scenario.File(), verdict);
    return verdict;
}

Verdict JudgeScript(const std::string& text, const std::string& rootModel) {
    Verdict verdict;
    {
        Listener listener;
        try {
            if (TavrelScenarioTemplateDb::RootModel::use(rootModel, nullptr) !=
                TavrelScenarioTemplateDb::RootModel::Outcome::InUse)
                verdict.refusals.push_back({rootModel, "", listener.last.row, listener.last.cause});
        } catch (...) {
            verdict.refusals.push_back({rootModel, "", 0, SentenceOf(std::current_exception())});
        }
    }
    if (verdict.IsRead()) ReadText(text, "", nullptr, verdict);
    return verdict;
}

Verdict JudgeModel(const std::string& text) {
    Verdict verdict;
    scenarioRootModel = nullptr;
    Listener listener;
    ScenarioTextStream stream(text.c_str(), text.size() + 1);
    ItemLoadContext context{nullptr, nullptr};
    std::unique_ptr<ScenarioItem> root;
    try {
        root.reset(LoadScenarioText(stream, nullptr, &context, nullptr, false));
    } catch (...) {
        listener.last.cause = SentenceOf(std::current_exception());
    }
    if (!root)
        verdict.refusals.push_back({"", "", stream.line, listener.last.cause});
    else if (!dynamic_cast<Folders*>(root.get()))
        verdict.refusals.push_back({"", "", 1, "the top item of a root model is a FOLDER"});
    return verdict;
}

} // namespace TavrelChecking
