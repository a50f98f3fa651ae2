#include "link/DefinitionIndex.h"

#include <bit>
#include <string>
#include <typeinfo>
#include <utility>

#include <scenario/ItemModel.h>

namespace {

constexpr std::uint32_t Bit(std::size_t number) { return std::uint32_t{1} << number; }

template <class Item>
bool IsExactly(const ScenarioItem& item) {
    return &typeid(item) == &typeid(Item);
}

bool IsPlainCondition(const ScenarioItem& item) { return IsExactly<Condition>(item); }

// Those that a model consists of come first.
template <class... Items>
bool IsExactlyOneOf(const ScenarioItem& item) {
    return (IsExactly<Items>(item) || ...);
}
bool IsOfLibrary(const ScenarioItem& item) {
    return IsExactlyOneOf<Parameter, Action, Condition, Enum, Function, Folders, EnumTab, Variable, Rule, Task,
                          Criteria, Include, Evaluation, GeneralParameters, ScenarioLib::Scenario, Group, Program,
                          Config>(item);
}

// The kinds that may stand anywhere below an item, as bits. Calls hold nothing but parameters and further calls; about
// a class of the host nothing is known.
std::uint32_t KindsBelow(const ScenarioItem& item) {
    constexpr std::uint32_t kBelowCall = Bit(KindParameter) | Bit(KindFunction);
    if (IsExactly<Parameter>(item) || IsExactly<Action>(item) || IsExactly<Function>(item)) return kBelowCall;
    if (IsPlainCondition(item)) return kBelowCall | Bit(KindCondition);
    if (IsExactly<Enum>(item) || IsExactly<Variable>(item)) return 0;
    return ~std::uint32_t{0};
}

} // namespace

DefinitionIndex::DefinitionIndex(ScenarioItem* treeRoot, Form treeForm) : root(treeRoot), form(treeForm) {
    if (form == Form::Whole) Walk(root);
}

void DefinitionIndex::Walk(ScenarioItem* item) {
    if (!IsOfLibrary(*item)) hasClassOfHost = true;
    if (hasClassOfHost) return;
    Open(item);
    // Half of a model is the parameters of calls, and nothing that is looked for stands there.
    const std::uint32_t below = wanted & KindsBelow(*item);
    if (below != 0) {
        const std::size_t first = pending.size();
        item->GetChildren(pending, below == Bit(KindCondition) && IsPlainCondition(*item) ? KindCondition : KindNone);
        for (List& list : lists)
            if (list.folder == item) list.units.Reserve(pending.size() - first);
        for (std::size_t at = first; at < pending.size(); ++at) {
            if (pending[at]) Walk(pending[at]);
        }
        pending.resize(first);
    }
    Close(item);
}

void DefinitionIndex::Open(ScenarioItem* item) {
    const bool isFolder = item->kind == KindFolder;
    for (std::uint32_t left = openLists; left != 0; left &= left - 1) {
        const auto at = static_cast<std::size_t>(std::countr_zero(left));
        List& list = lists[at];
        if (!list.openUnit && !isFolder) list.openUnit = item;
        if (form == Form::Whole && list.openUnit && item->kind == kDefinitionLists[at].kind) {
            list.units.InsertIfAbsent(item, list.openUnit);
        }
    }
    if (!isFolder) return;
    const std::size_t list = ListOf(item->name);
    if (list == kListCount || lists[list].folder) return;
    lists[list].folder = item;
    SetOpen(list, true);
}

void DefinitionIndex::Close(ScenarioItem* item) {
    for (std::uint32_t left = openLists; left != 0; left &= left - 1) {
        const auto at = static_cast<std::size_t>(std::countr_zero(left));
        List& list = lists[at];
        if (list.openUnit == item) {
            // A unit may have gained or lost items while it was read, so it is looked through when it is complete.
            if (form == Form::Growing) Enter(list.units, kDefinitionLists[at].kind, item, item);
            list.openUnit = nullptr;
        }
        if (list.folder == item) SetOpen(at, false);
    }
}

void DefinitionIndex::SetOpen(std::size_t list, bool isOpen) {
    openLists = isOpen ? openLists | Bit(list) : openLists & ~Bit(list);
    wanted = 0;
    for (std::size_t at = 0; at < kListCount; ++at) {
        if (!lists[at].folder) wanted |= Bit(KindFolder);
        if ((openLists & Bit(at)) != 0) wanted |= Bit(kDefinitionLists[at].kind);
    }
}

void DefinitionIndex::Enter(NameTable& table, std::uint32_t kind, ScenarioItem* entry, ScenarioItem* item) {
    if (item->kind == kind) table.InsertIfAbsent(item, entry ? entry : item);
    if ((KindsBelow(*item) & Bit(kind)) == 0) return;
    const std::size_t first = pending.size();
    item->GetChildren(pending);
    for (std::size_t at = first; at < pending.size(); ++at) {
        if (pending[at]) Enter(table, kind, entry, pending[at]);
    }
    pending.resize(first);
}

ScenarioItem* DefinitionIndex::Find(std::size_t at, std::string_view name) {
    const List& list = lists[at];
    const std::uint32_t kind = kDefinitionLists[at].kind;
    const NameTable::Entry* const entry = list.units.Find(name);
    ScenarioItem* const unit = entry ? entry->unit : nullptr;
    // The name that was found may be that of the unit itself; then there is nothing to search.
    if (unit && unit == entry->named) return unit;
    const std::string text(name);
    if (unit) {
        if (ScenarioItem* hit = unit->FindItem(kind, text, std::string())) return hit;
        // The match inside the unit has gone since; a later unit may hold another.
        return list.folder->FindItem(kind, text, std::string());
    }
    return list.openUnit ? list.openUnit->FindItem(kind, text, std::string()) : nullptr;
}

ScenarioItem* DefinitionIndex::FindEntry(ScenarioItem* enumTab, std::string_view name) {
    if (lists[kEnumTabList].openUnit) return enumTab->FindItem(KindEnum, std::string(name), std::string());
    auto known = entries.find(enumTab);
    if (known == entries.end()) {
        // Taken in when it is complete: a shared index outlives the text that memory ran out for.
        NameTable table;
        Enter(table, KindEnum, nullptr, enumTab);
        known = entries.emplace(enumTab, std::move(table)).first;
    }
    const NameTable::Entry* const entry = known->second.Find(name);
    return entry ? entry->unit : nullptr;
}
