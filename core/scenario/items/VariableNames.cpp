#include "items/VariableNames.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <typeinfo>
#include <utility>

#include <scenario/Parameter.h>
#include <scenario/task.h>
#include <scenario/variable.h>

#include "text/Assertion.h"

namespace {

// A variable whose class or place is not the ordinary one is asked itself, and what is known is then looked up anew.
bool IsOrdinary(const Variable& variable, const Task& task) {
    return typeid(variable) == typeid(Variable) && variable.kind == KindVariable && variable.parent == &task;
}

// The number that is written exactly like this, or -1.
std::int32_t NumberWrittenAs(const std::string& text) {
    std::int32_t number = -1;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number < 0 || std::to_string(number) != text) return -1;
    return number;
}

} // namespace

bool VariableNames::MakeUnique() {
    bool anyChanged = false;
    for (std::size_t i = 0; i < task.variables.size(); ++i) {
        Variable* variable = task.variables[i];
        if (!variable) continue;
        const std::string before = variable->name;
        MakeNameUnique(*variable);
        if (variable->name == before) continue;
        anyChanged = true;
        MakeLabelUnique(*variable);
        RenameInParameters(before, variable->name);
    }
    return anyChanged;
}

void VariableNames::MakeNameUnique(Variable& variable) {
    if (!IsOrdinary(variable, task)) {
        variable.MakeUniqueName();
        namesAreIndexed = false;
        return;
    }
    if (variable.model != &variable) return;
    if (!namesAreIndexed) IndexNames();
    const Places places = own[&variable];
    Places& former = names[variable.name];
    if (former.all < 2) return;

    const std::string taken = SmallestFreeNumber();
    former.all -= places.all;
    former.outsideRules -= places.outsideRules;
    if (former.outsideRules == 0) {
        const std::int32_t freed = NumberWrittenAs(variable.name);
        if (freed >= 0) firstPossible = std::min(firstPossible, freed);
    }
    variable.SetName(taken);
    Places& present = names[variable.name];
    present.all += places.all;
    present.outsideRules += places.outsideRules;
}

std::string VariableNames::SmallestFreeNumber() {
    for (std::int32_t number = firstPossible; number < std::numeric_limits<std::int32_t>::max(); ++number) {
        std::string text = std::to_string(number);
        const auto found = names.find(text);
        if (found != names.end() && found->second.outsideRules > 0) continue;
        firstPossible = number;
        return text;
    }
    AssertionFailed("token", 348);
}

void VariableNames::IndexNames() {
    namesAreIndexed = true;
    firstPossible = 0;
    names.clear();
    own.clear();
    for (const Variable* variable : task.variables) own[variable];

    std::vector<std::pair<const ScenarioItem*, bool>> open{{GetTreeRoot(&task), false}};
    std::vector<ScenarioItem*> children;
    while (!open.empty()) {
        const auto [item, inRule] = open.back();
        open.pop_back();
        if (!item) AssertionFailed("ScenarioItem", 1129);
        const bool hidden = inRule || item->kind == KindRule;
        if (item->kind == KindVariable) {
            const auto count = [hidden](Places& places) {
                ++places.all;
                if (!hidden) ++places.outsideRules;
            };
            count(names[item->name]);
            if (const auto found = own.find(item); found != own.end()) count(found->second);
        }
        children.clear();
        item->GetChildren(children);
        for (const ScenarioItem* child : children) open.emplace_back(child, hidden);
    }
}

void VariableNames::MakeLabelUnique(Variable& variable) {
    if (!IsOrdinary(variable, task)) {
        variable.MakeUniqueLabel();
        labelsAreIndexed = false;
        return;
    }
    if (!labelsAreIndexed) IndexLabels();
    const std::int32_t places = visible[&variable];
    const auto takenPlaces = [&](const std::string& candidate) {
        const auto found = labels.find(candidate);
        return found == labels.end() ? 0 : found->second;
    };
    if (takenPlaces(variable.label) <= places) return;

    // Of a hundred variables with one label the last gets ninety-nine underscores; it does not try again what those
    // before it have found taken.
    std::size_t& taken = takenUnderscores[variable.label];
    std::string candidate = std::string(taken + 1, '_') + variable.label;
    for (; takenPlaces(candidate) > 0; ++taken) candidate.insert(candidate.begin(), '_');
    labels[variable.label] -= places; // and is still taken, so what is known of underscores stays true
    labels[candidate] += places;
    variable.label = candidate;
}

void VariableNames::IndexLabels() {
    labelsAreIndexed = true;
    labels.clear();
    visible.clear();
    takenUnderscores.clear();
    std::vector<ScenarioItem*> seen;
    task.CollectVisibleItems(KindVariable, seen, "", "");
    for (const ScenarioItem* item : seen) {
        ++labels[item->label];
        ++visible[item];
    }
}

void VariableNames::RenameInParameters(const std::string& from, const std::string& to) {
    if (!parametersAreIndexed) IndexParameters();
    const auto found = parametersOf.find(from);
    if (found == parametersOf.end()) return;
    // Taken out first: a later variable may get the name that this one gives up, and then takes along only its own.
    const std::vector<Parameter*> moved = std::move(found->second);
    parametersOf.erase(found);
    std::vector<Parameter*>& target = parametersOf[to];
    for (Parameter* parameter : moved) {
        parameter->value = to;
        target.push_back(parameter);
    }
}

void VariableNames::IndexParameters() {
    parametersAreIndexed = true;
    std::vector<ScenarioItem*> found;
    task.CollectItemsOfKind(found, KindParameter, true, true);
    for (ScenarioItem* item : found) {
        auto* parameter = dynamic_cast<Parameter*>(item);
        if (parameter && parameter->valueKind == "VARIABLE") parametersOf[parameter->value].push_back(parameter);
    }
}
