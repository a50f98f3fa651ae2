#include "run/TreeWatch.h"

#include <algorithm>
#include <string>
#include <typeinfo>
#include <unordered_map>
#include <utility>
#include <vector>

#include <scenario/Criteria.h>
#include <scenario/evaluation.h>
#include <scenario/rule.h>
#include <scenario/scenario.h>
#include <scenario/variable.h>

#include "run/StepScope.h"

namespace {

using ScenarioLib::Scenario;

// So many names are met in about the time that a rule takes.
constexpr std::size_t kFewNames = 64;

// The names along a walk, as they were the last time.
class Names {
public:
    void Begin() { at = 0; }
    void Meet(const ScenarioItem* item, std::size_t depth = 0) {
        if (at < entries.size() && entries[at].item == item && entries[at].depth == depth &&
            entries[at].name == item->name) {
            ++at;
            return;
        }
        // What follows a difference is taken down anew.
        entries.resize(at);
        entries.push_back({item, depth, item->name});
        ++at;
        changed = true;
    }
    // Whether the walk differed from the one before.
    bool End() {
        if (at < entries.size()) {
            entries.resize(at);
            changed = true;
        }
        return std::exchange(changed, false);
    }

    bool AreFew() const { return entries.size() <= kFewNames; }

private:
    struct Entry {
        const ScenarioItem* item;
        std::size_t depth;
        std::string name;
    };
    std::vector<Entry> entries;
    std::size_t at = 0;
    bool changed = false;
};

// One place that was asked about.
struct Watch {
    Names names;
    const ScenarioItem* above = nullptr;
    std::uint64_t versionAbove = 0;
    std::uint64_t moment = 0;  // of the last look
    std::uint64_t step = 0;    // of the last walk
    std::uint64_t changes = 0; // of the trees, as of the last walk
    std::uint64_t version = 0; // 0 until the first walk

    bool IsFresh() const { return version != 0 && moment == StepScope::Moment(); }
    // Whether what the library knows of is to say that another walk would meet the same.
    bool IsUndisturbed() const {
        return version != 0 && step == StepScope::Step() && changes == StepScope::Changes() && !names.AreFew();
    }
};

struct Watches {
    std::unordered_map<const ScenarioItem*, Watch> variables;
    std::unordered_map<const ScenarioItem*, Watch> enumTabs;
    std::uint64_t lastVersion = 0;
    std::uint64_t deaths = 0;

    // Once an item is gone, every address kept may be that of another one.
    void ForgetTheDead() {
        if (deaths == StepScope::Deaths()) return;
        deaths = StepScope::Deaths();
        variables.clear();
        enumTabs.clear();
    }
    void Settle(Watch& watch, bool changed) {
        if (changed || watch.version == 0) watch.version = ++lastVersion;
        watch.moment = StepScope::Moment();
        watch.step = StepScope::Step();
        watch.changes = StepScope::Changes();
    }
};

Watches& TheWatches() {
    static Watches watches;
    return watches;
}

// Whether a place shows its own variables and then, unconditionally, what its parent shows. All others are asked for
// the whole of it.
bool IsPlainLevel(const ScenarioItem& item) {
    return typeid(item) == typeid(Task) || typeid(item) == typeid(Rule) || typeid(item) == typeid(Criteria);
}

template <class Class>
bool IsNullOrExactly(const ScenarioItem* item) {
    return !item || typeid(*item) == typeid(Class);
}

// Whether nothing above the scenario, and no class of the host in it, has a say in what it shows.
bool IsPlainScenario(const ScenarioItem& item) {
    if (typeid(item) != typeid(Scenario) || item.parent) return false;
    const auto& scenario = static_cast<const Scenario&>(item);
    return IsNullOrExactly<Evaluation>(scenario.evaluation) &&
           IsNullOrExactly<GeneralParameters>(scenario.generalParameters) &&
           std::all_of(scenario.includes.begin(), scenario.includes.end(), IsNullOrExactly<Include>);
}

void MeetAll(Names& names, const std::vector<Variable*>& variables) {
    for (const Variable* variable : variables)
        if (variable) names.Meet(variable);
}

// In the order of CollectVisibleItems. The lists of the ordinary classes are looked at where they are, as this is done
// after each action.
void MeetVariables(Names& names, const ScenarioItem& item) {
    if (typeid(item) == typeid(Rule)) {
        MeetAll(names, static_cast<const Rule&>(item).variables);
    } else if (IsPlainLevel(item)) {
        MeetAll(names, static_cast<const Task&>(item).variables);
    } else if (IsPlainScenario(item)) {
        const auto& scenario = static_cast<const Scenario&>(item);
        if (scenario.evaluation) MeetAll(names, scenario.evaluation->variables);
        for (auto include = scenario.includes.rbegin(); include != scenario.includes.rend(); ++include)
            if (*include) MeetAll(names, (*include)->variables);
        MeetAll(names, scenario.variables);
    } else {
        std::vector<ScenarioItem*> variables;
        item.CollectVisibleItems(KindVariable, variables, std::string(), std::string());
        for (const ScenarioItem* variable : variables) names.Meet(variable);
    }
}

std::uint64_t LookAtVariables(Watches& watches, ScenarioItem* item) {
    Watch& watch = watches.variables[item];
    if (watch.IsFresh()) return watch.version;
    const bool isPlain = IsPlainLevel(*item);
    const std::uint64_t versionAbove = isPlain && item->parent ? LookAtVariables(watches, item->parent) : 0;
    if (watch.above == item->parent && watch.versionAbove == versionAbove && watch.IsUndisturbed()) {
        watch.moment = StepScope::Moment();
        return watch.version;
    }
    bool changed = isPlain && (watch.above != item->parent || watch.versionAbove != versionAbove);
    watch.above = item->parent;
    watch.versionAbove = versionAbove;
    watch.names.Begin();
    MeetVariables(watch.names, *item);
    if (watch.names.End()) changed = true;
    watches.Settle(watch, changed);
    return watch.version;
}

// Every item below the folder but the entries of enumerations can hold a further enumeration.
void MeetEnumTabs(Names& names, const ScenarioItem* item, std::size_t depth) {
    names.Meet(item, depth);
    if (item->kind == KindEnum) return;
    std::vector<ScenarioItem*> children;
    item->GetChildren(children);
    for (const ScenarioItem* child : children)
        if (child) MeetEnumTabs(names, child, depth + 1);
}

} // namespace

std::uint64_t treeWatch::VisibleVariables(ScenarioItem* item) {
    Watches& watches = TheWatches();
    watches.ForgetTheDead();
    return LookAtVariables(watches, item);
}

std::uint64_t treeWatch::EnumTabs(ScenarioItem* root) {
    Watches& watches = TheWatches();
    watches.ForgetTheDead();
    Watch& watch = watches.enumTabs[root];
    if (watch.IsFresh()) return watch.version;
    if (watch.IsUndisturbed()) {
        watch.moment = StepScope::Moment();
        return watch.version;
    }
    watch.names.Begin();
    if (const ScenarioItem* folder = root->FindItem(KindFolder, "ENUMTAB_LIST", std::string()))
        MeetEnumTabs(watch.names, folder, 0);
    watches.Settle(watch, watch.names.End());
    return watch.version;
}
