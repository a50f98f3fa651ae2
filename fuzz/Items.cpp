#include "Items.h"

#include <algorithm>
#include <cstring>
#include <sstream>
#include <typeinfo>
#include <vector>

#include <lmkUtils/EnvConfig.h>

#include "Support.h"

namespace {

ScenarioLib::Scenario* running = nullptr;

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
}

void Values(ScenarioItem& item) {
    if (auto* parameter = dynamic_cast<Parameter*>(&item)) {
        ParameterValue value;
        parameter->FillValue(value);
        parameter->GetType();
        if (parameter->model) parameter->CheckValueFormat();
    } else if (auto* condition = dynamic_cast<Condition*>(&item)) {
        condition->IsValid();
    } else if (auto* function = dynamic_cast<Function*>(&item)) {
        function->Evaluate();
    }
}

// Whether each attribute and each name stands in one line. The writer protects neither line ends nor quotes, so other
// texts may come back as something else.
bool IsPlain(const std::string& text) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        line.erase(0, line.find_first_not_of('\t'));
        if (line.empty() || line == "{" || line == "}") continue;
        if (line.rfind("TYPEOF ", 0) == 0) {
            const std::size_t name = line.find(" (");
            if (name == std::string::npos || line.find_first_of("\t()", name + 2) != line.size() - 1) return false;
            continue;
        }
        const std::size_t value = line.find("=\"");
        if (value == std::string::npos || line.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ_") != value) return false;
        if (line.find('"', value + 2) != line.size() - 1) return false;
    }
    return text.find('\r') == std::string::npos && text.find('\0') == std::string::npos;
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
    Tree item;
    try {
        item.reset(LoadScenarioText(stream, nullptr, nullptr, nullptr, headerOnly));
    } catch (const std::bad_cast&) {
        // The one exception that a read lets through.
    }
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
    item.UpdateDisplayTextTree();
    item.IsValid();
    std::vector<ScenarioItem*> items;
    item.CollectItemsOfKind(items, KindNone, true, true);
    const std::vector<ScenarioItem*> sample = Sample(items);
    for (ScenarioItem* one : sample) Search(item, *one);
    for (ScenarioItem* one : sample) Values(*one);

    const std::string text = Saved(item);
    {
        const Tree copy(item.Clone());
        if (copy) {
            copy->UpdateDisplayTextTree();
            Saved(*copy);
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
    scenario.GetVehicle(1);
    scenario.channelNumbers["D1"] = 1;
    // Time stands still and runs backwards, too.
    constexpr double kTimes[] = {0.0, 0.1, 0.1, 0.5, 1.0, 0.2, 2.0, 5.0, 5.5, 60.0};
    scenario.Init("workshop/every word.sc", 0.0);
    for (const double time : kTimes) scenario.StepScenario(time);
    scenario.Init("", 3.0);
    for (const double time : kTimes) scenario.StepScenario(time);
    scenario.HighestLevel();
    running = nullptr;
}
