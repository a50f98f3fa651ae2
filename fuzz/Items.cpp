#include "Items.h"

#include <algorithm>
#include <cstring>
#include <list>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <typeinfo>
#include <vector>

#include <lmkUtils/EnvConfig.h>
#include <scenario/IncludeRepository.h>
#include <scenario/LoadDiagnostics.h>

#include "Support.h"

namespace {

ScenarioLib::Scenario* running = nullptr;

class Observer : public ScenarioItemObserver {
public:
    void OnItemEvent(ScenarioItemObservable* source, std::uint32_t) override {
        Demand(source, "an event has a source");
    }
};
Observer observer;

class Listener : public ScopedLoadProblemListener {
public:
    void OnLoadProblem(const LoadProblem& problem) override {
        Demand(problem.row > 0 && !problem.cause.empty(), "a problem has a place and a cause", problem.line);
        if (!problem.isWarning) ++refusals;
    }
    std::size_t refusals = 0;
};

// The includes that come out of the input: "fuzz.inc" has the text, "broken.inc" fails.
class Repository : public IncludeRepository {
public:
    bool Contains(const std::string& file) override { return file == "fuzz.inc" || file == "broken.inc"; }
    std::string Read(const std::string& file) override {
        if (file == "broken.inc") throw std::runtime_error("broken");
        return text;
    }
    std::string text;
};
Repository repository;

float Sum(const ParameterValues& values) {
    float sum = 0.0F;
    for (const ParameterValue& value : values) sum += value.number;
    return sum;
}

// Implementations that do what hosts do: answer from their arguments, and ask for another state.
void FillTables() {
    constexpr std::size_t kCodes = 200;
    FunctionTable().resize(kCodes, [](const ParameterValues& values) { return Sum(values) + 1.0F; });
    ConditionTable().resize(kCodes, [](const ParameterValues& values) { return values[0].number <= values[1].number; });
    ActionTable().resize(kCodes, [](const ParameterValues& values) {
        if (!running || !running->currentTask) return;
        Task& task = *running->currentTask;
        const float sum = Sum(values);
        task.nextState = sum > -100.0F && sum < 100.0F ? static_cast<std::int32_t>(sum) : Task::kStateEnd;
        task.transitionPending = 1;
    });
}

// Every so many of a large tree, so that searches that are linear each stay affordable together.
std::vector<ScenarioItem*> Sample(const std::vector<ScenarioItem*>& items) {
    constexpr std::size_t kMost = 40;
    std::vector<ScenarioItem*> sample;
    const std::size_t step = items.size() / kMost + 1;
    for (std::size_t i = 0; i < items.size(); i += step) sample.push_back(items[i]);
    return sample;
}

// The tables that parameters are read against, with an entry or two in each.
void FillTables(ScenarioLib::Scenario& scenario) {
    static std::vector<ScenarioItem*> names{CreateItem(KindTask, "light", nullptr), nullptr};
    static std::list<ScenarioLib::Scenario::Point> points{{names[0], 1, 1.0, 2.0, 3.0}, {names[0], 0, 0.0, 0.0, 0.0}};
    scenario.nameList = &names;
    scenario.pointList = &points;
    VEHICLE& vehicle = scenario.GetVehicle(1);
    vehicle.inputs = {{"throttle"}};
    vehicle.outputs = {{"speed"}};
    scenario.stateNames[5] = "channel";
    for (auto* table : {&scenario.triggers, &scenario.images, &scenario.sounds, &scenario.sources, &scenario.sinks,
                        &scenario.trajectories, &scenario.channelNumbers})
        *table = {{"1", 1}, {"D1", 2}};
}

void FillTables(ScenarioItem& root) {
    static ScenarioLib::Scenario* const around = [] {
        auto* scenario = new ScenarioLib::Scenario();
        FillTables(*scenario);
        return scenario;
    }();
    if (auto* scenario = dynamic_cast<ScenarioLib::Scenario*>(&root)) FillTables(*scenario);
    if (auto* evaluation = dynamic_cast<Evaluation*>(&root)) evaluation->owner = around;
}

void Search(ScenarioItem& root, ScenarioItem& item) {
    root.FindItem(item.kind, item.name, "");
    static_cast<const ScenarioItem&>(root).FindItem(item.kind, item.name, root.fileName);
    item.FindItemUpward(item.kind, item.name);
    static_cast<const ScenarioItem&>(item).FindItemUpward(KindVariable, "1");
    root.FindByLabel(item.label);
    root.ContainsItem(&item);
    root.FindFirstOfKind(item.kind);
    item.GetFirstChild();
    FindFileScope(&item);
    FindOwningUnit(&item);
    GetModelRoot(&item);
    Demand(GetTreeRoot(&item) == &root || !root.ContainsItem(&item), "what a tree contains leads up to its root");
    std::vector<ScenarioItem*> found;
    item.CollectVisibleItems(KindVariable, found, "", "");
    item.CollectVisibleItems(KindVariable, found, item.name, item.fileName);
    std::vector<const ScenarioItem*> constant;
    root.CollectItems(item.kind, item.name, constant, true, false);
    root.CollectItemsOfKind(constant, item.kind, true, false);
    if (auto* call = dynamic_cast<Function*>(&item)) {
        call->CollectAllItems(KindParameter, item.name, found);
        call->CollectAllItemsOfKind(KindParameter, found);
        static_cast<const Function*>(call)->CollectAllItems(KindFunction, item.name, constant);
        static_cast<const Function*>(call)->CollectAllItemsOfKind(KindFunction, constant);
    }
}

void Values(ScenarioItem& item) {
    if (auto* parameter = dynamic_cast<Parameter*>(&item)) {
        ParameterValue value;
        parameter->FillValue(value);
        parameter->GetType();
        if (parameter->model) parameter->CheckValueFormat();
        if (parameter->model == parameter && parameter->kind == KindParameter) {
            Parameter copy;
            copy.kind = KindParameter;
            parameter->CopyModelAttributes(&copy);
            Demand(copy.kindList == parameter->kindList, "a definition can be copied");
        }
    } else if (auto* condition = dynamic_cast<Condition*>(&item)) {
        condition->IsValid();
    } else if (auto* function = dynamic_cast<Function*>(&item)) {
        function->Evaluate();
        Function copy;
        copy.kind = KindFunction;
        function->CopyModelAttributes(&copy);
        Demand(copy.codeNumber == function->codeNumber, "a definition can be copied");
    }
}

// Whether each attribute and each name stands in one line. The writer protects neither line ends nor quotes, so other
// texts may come back as something else.
bool IsPlain(const std::string& text) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        line.erase(0, line.find_first_not_of('\t'));
        if (line.empty() || line == "{" || line == "}") continue;
        if (line.find_first_of("\t\f") != std::string::npos) return false; // a line of the format ends there
        if (line.rfind("TYPEOF ", 0) == 0) {
            const std::size_t name = line.find(" (");
            const std::size_t end = line.find_first_of("\t()", name == std::string::npos ? name : name + 2);
            if (end == std::string::npos || end != line.size() - 1 || line[end] != ')') return false;
            continue;
        }
        const std::size_t value = line.find("=\"");
        if (value == std::string::npos || line.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ_") != value) return false;
        if (line.find('"', value + 2) != line.size() - 1) return false;
    }
    return text.find('\r') == std::string::npos && text.find('\0') == std::string::npos;
}

// A parameters file beside the scenario.
void StoreDescription(GeneralParameters& parameters) {
    static const Workplace place;
    parameters.description = parameters.label;
    Demand(parameters.Save(place.Path("scenario.sc")), "a parameters file can be written");
    parameters.Load();
    Demand(parameters.description == parameters.label, "a description comes back", parameters.label);
}

bool Holds(const ScenarioItem& parent, const ScenarioItem* child) {
    std::vector<ScenarioItem*> children;
    parent.GetChildren(children);
    return std::find(children.begin(), children.end(), child) != children.end();
}

// The edits of a host. Replaced items go to `replaced`, since others in the tree may have them as their definition.
void EditChildren(ScenarioItem& item, std::vector<Tree>& replaced) {
    std::vector<ScenarioItem*> children;
    item.GetChildren(children);
    if (children.empty()) return;
    item.SwapChildren(children.front(), children.back());
    ScenarioItem* const old = children[children.size() / 2];
    Tree fresh(old->Clone());
    if (!fresh) return;
    item.ReplaceChild(fresh.get(), old);
    if (Holds(item, fresh.get())) {
        Demand(fresh->parent == &item, "a child knows its parent");
        Demand(!Holds(item, old), "what was replaced is gone");
        fresh.release();
        replaced.emplace_back(old);
    }
    if (auto* rule = dynamic_cast<Rule*>(&item); rule && !rule->actions.empty())
        rule->SwitchBranch(rule->actions.back(), 0);
    if (auto* evaluation = dynamic_cast<Evaluation*>(&item)) evaluation->SwapTasks(0, 1);
}

// Another tree of which nothing is needed afterwards.
void Edit(Tree tree) {
    std::vector<Tree> replaced;
    std::vector<ScenarioItem*> items;
    tree->CollectItemsOfKind(items, KindNone, true, true);
    for (ScenarioItem* item : Sample(items)) {
        // An edit above may have taken it out of the tree.
        if (tree->ContainsItem(item)) EditChildren(*item, replaced);
    }
    items.clear();
    tree->CollectItemsOfKind(items, KindNone, true, true);
    for (ScenarioItem* item : Sample(items)) {
        if (auto* task = dynamic_cast<Task*>(item)) task->RenumberVariables();
        if (auto* parameters = dynamic_cast<GeneralParameters*>(item)) StoreDescription(*parameters);
    }
    if (auto* token = dynamic_cast<Token*>(tree.get())) ResetMarks(token);
    tree->UpdateDisplayTextTree();
    Saved(*tree);

    std::vector<ScenarioItem*> children;
    tree->GetChildren(children);
    tree->DetachChildren();
    for (ScenarioItem* child : children) replaced.emplace_back(child);
    tree->RemoveAllChildren();
}

void EmptySettings(ScenarioItem& item) {
    std::vector<ScenarioItem*> children;
    item.GetChildren(children);
    for (ScenarioItem* child : children) EmptySettings(*child);
    if (item.kind == KindConfig) item.RemoveAllChildren();
}

} // namespace

void TreeDeleter::operator()(ScenarioItem* item) const {
    EmptySettings(*item);
    delete item;
}

void ResetModel(Folders* rootModel) {
    static const bool prepared = [] {
        lmkUtils::EnvConfig::setTavrelConfigFilePath(FUZZ_SAMPLE "/tavrel.xml");
        lmkUtils::EnvConfig::setConfig("City", false);
        FillTables();
        return true;
    }();
    Demand(prepared, "the sample installation is in use");
    scenarioRootModel = rootModel;
    scenarioLog = nullptr;
    scenarioDepth = 0;
    running = nullptr;
    UnregisterIncludeRepository(&repository);
}

void OfferInclude(const std::string& text) {
    repository.text = text;
    RegisterIncludeRepository(&repository);
}

Folders* SampleRootModel() {
    static Folders* const model = [] {
        ResetModel(nullptr);
        auto* read = dynamic_cast<Folders*>(
            LoadScenarioFile(FUZZ_SAMPLE "/packs/common/data/tools/nuro/nuro.mdl", nullptr, false));
        Demand(read, "the root model of the sample can be read");
        return read;
    }();
    return model;
}

Tree ReadScript(const std::string& text, bool headerOnly) {
    const std::unique_ptr<char[]> exact(new char[text.size() + 1]);
    std::memcpy(exact.get(), text.c_str(), text.size() + 1);
    ScenarioTextStream stream(exact.get(), text.size() + 1);
    ItemLoadContext context{&observer, &observer};
    std::optional<Listener> listener;
    if (!headerOnly) listener.emplace();
    Tree item;
    try {
        item.reset(LoadScenarioText(stream, nullptr, &context, nullptr, headerOnly));
    } catch (const std::bad_cast&) {
        // The one exception that a read lets through.
    }
    Demand(item || headerOnly || listener->refusals > 0, "a refusal is told");
    Demand(stream.cursor >= stream.begin && stream.cursor <= stream.end, "the cursor stays in the text");
    Demand(scenarioDepth == 0, "the depth is back at 0");
    return item;
}

std::string Saved(ScenarioItem& item) {
    std::ostringstream out;
    Demand(item.Save(out), "a save answers true");
    Demand(scenarioDepth == 0, "a save leaves the depth as it was");
    return out.str();
}

void Exercise(ScenarioItem& item) {
    FillTables(item);
    item.UpdateDisplayTextTree();
    item.IsValid();
    std::vector<ScenarioItem*> items;
    item.CollectItemsOfKind(items, KindNone, true, true);
    const std::vector<ScenarioItem*> sample = Sample(items);
    for (ScenarioItem* one : sample) Search(item, *one);
    for (ScenarioItem* one : sample) Values(*one);

    const std::string text = Saved(item);
    {
        Tree copy(item.Clone());
        if (copy) {
            copy->UpdateDisplayTextTree();
            Saved(*copy);
            Edit(std::move(copy));
        }
    }
    if (const Tree again = IsPlain(text) ? ReadScript(text) : nullptr) {
        const std::string second = Saved(*again);
        if (const Tree third = ReadScript(second)) {
            Demand(Saved(*third) == second, "what the writer wrote is written alike",
                   second + "\n---\n" + Saved(*third));
        }
    }
    for (ScenarioItem* one : sample) {
        one->MakeUniqueLabel();
        if (auto* token = dynamic_cast<Token*>(one)) token->MakeUniqueName();
    }
    if (auto* token = dynamic_cast<Token*>(&item)) {
        token->UpdateValidity();
    }
}

void Run(ScenarioLib::Scenario& scenario) {
    running = &scenario;
    scenario.stopped = 0;
    FillTables(scenario);
    // Time stands still and runs backwards, too.
    constexpr double kTimes[] = {0.0, 0.1, 0.1, 0.5, 1.0, 0.2, 2.0, 5.0, 5.5, 60.0};
    scenario.Init("workshop/every word.sc", 0.0);
    for (const double time : kTimes) scenario.StepScenario(time);
    scenario.Init("", 3.0);
    for (const double time : kTimes) scenario.StepScenario(time);
    scenario.HighestLevel();
    if (scenario.evaluation) {
        for (std::size_t i = 0; auto* criteria = dynamic_cast<Criteria*>(scenario.evaluation->GetTask(i)); ++i) {
            criteria->RegisterCategory();
            criteria->SetCounter(1.0F, criteria->MaxRuleLevel(), 2.0F);
        }
    }
    running = nullptr;
}
