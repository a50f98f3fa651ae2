#include "LoadState.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <typeinfo>

#include <scenario/Condition.h>
#include <scenario/Parameter.h>
#include <scenario/action.h>
#include <scenario/function.h>
#include <scenario/program.h>
#include <scenario/variable.h>

#include "LoadIndex.h"
#include "Refusal.h"
#include "TextMatch.h"

namespace {

struct ListRow {
    std::string_view folderName;
    ScenarioItemKind kind; // of the definitions that are looked up in it
};

// clang-format off
constexpr ListRow kLists[] = {
    {"PARAMETER_LIST", KindParameter},
    {"FUNCTION_LIST",  KindFunction},
    {"ACTION_LIST",    KindAction},
    {"CONDITION_LIST", KindCondition},
    {"ENUMTAB_LIST",   KindEnumTab},
};
// clang-format on
constexpr std::size_t kListCount = std::size(kLists);
constexpr std::size_t kEnumTabList = 4;

// kListCount when there is none.
std::size_t ListOf(std::string_view folderName) {
    std::size_t list = 0;
    while (list < kListCount && kLists[list].folderName != folderName) ++list;
    return list;
}

// The same for definitions of that kind, where each item of a script passes.
constexpr auto kListOfKind = [] {
    std::array<std::size_t, KindVariable + 1> lists{};
    lists.fill(kListCount);
    for (std::size_t list = 0; list < kListCount; ++list) lists[kLists[list].kind] = list;
    return lists;
}();
std::size_t ListOf(std::string_view folderName, std::uint32_t kind) {
    const std::size_t list = kind < kListOfKind.size() ? kListOfKind[kind] : kListCount;
    return list < kListCount && SameText(kLists[list].folderName, folderName) ? list : kListCount;
}

constexpr std::uint32_t Bit(std::size_t number) { return std::uint32_t{1} << number; }

template <class Item>
bool IsExactly(const ScenarioItem& item) {
    return &typeid(item) == &typeid(Item);
}

bool IsPlainCondition(const ScenarioItem& item) { return IsExactly<Condition>(item); }

// The kinds that may stand anywhere below an item, as bits. Calls hold nothing but parameters and further calls; about
// a class of the host nothing is known.
std::uint32_t KindsBelow(const ScenarioItem& item) {
    constexpr std::uint32_t kBelowCall = Bit(KindParameter) | Bit(KindFunction);
    if (IsExactly<Parameter>(item) || IsExactly<Action>(item) || IsExactly<Function>(item)) return kBelowCall;
    if (IsPlainCondition(item)) return kBelowCall | Bit(KindCondition);
    if (IsExactly<Enum>(item) || IsExactly<Variable>(item)) return 0;
    return ~std::uint32_t{0};
}

Load* currentLoad = nullptr;

// One index for all texts read while a RootModelUse lives.
int rootModelUses = 0;
std::unique_ptr<DefinitionIndex> sharedIndex;

constexpr std::size_t kWord = sizeof(std::uint64_t);

template <class Word>
std::uint64_t WordAt(const char* at) {
    Word word;
    std::memcpy(&word, at, sizeof word);
    return word;
}

// Each item of a script is looked up by its name, so names are mixed by words of eight bytes.
std::uint32_t HashOf(std::string_view name, const NameTable::Key& key) {
    constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15;
    std::uint64_t hash = key.size;
    const auto add = [&hash](std::uint64_t word) {
        hash = (hash ^ word) * kMix;
        hash ^= hash >> 32; // a product carries upwards only
    };
    add(key.first);
    for (std::size_t at = kWord; at + kWord < name.size(); at += kWord) add(WordAt<std::uint64_t>(name.data() + at));
    add(key.last);
    return static_cast<std::uint32_t>((hash * kMix) >> 32);
}

ScenarioItem* SearchFolder(const ScenarioItem* root, std::string_view listName) {
    return const_cast<ScenarioItem*>(root->FindItem(KindFolder, std::string(listName), std::string()));
}

} // namespace

void NameTable::Reserve(std::size_t names) {
    entries.reserve(names);
    if (names * 2 > places.size()) Resize(std::bit_ceil(names * 2));
}

NameTable::Key::Key(std::string_view name) : size(name.size()) {
    constexpr std::size_t kHalf = kWord / 2;
    const char* const begin = name.data();
    if (size >= kWord) {
        first = WordAt<std::uint64_t>(begin);
        last = WordAt<std::uint64_t>(begin + size - kWord); // may overlap the first
    } else if (size >= kHalf) {
        first = WordAt<std::uint32_t>(begin);
        last = WordAt<std::uint32_t>(begin + size - kHalf);
    } else {
        for (const char c : name) first = first << 8 | static_cast<unsigned char>(c);
    }
}

void NameTable::InsertIfAbsent(ScenarioItem* named, ScenarioItem* unit) {
    if ((entries.size() + 1) * 2 > places.size()) {
        Resize(std::max<std::size_t>(64, places.size() * 4));
        entries.reserve(places.size() / 4);
    }
    const Key key(named->name);
    const std::uint32_t hash = HashOf(named->name, key);
    Place& place = places[PlaceOf(named->name, key, hash)];
    if (place.entry != 0) return;
    entries.push_back({key, named, unit});
    place = {hash, static_cast<std::uint32_t>(entries.size())};
}

const NameTable::Entry* NameTable::Find(std::string_view name) const {
    if (places.empty()) return nullptr;
    const Key key(name);
    const std::uint32_t entry = places[PlaceOf(name, key, HashOf(name, key))].entry;
    return entry != 0 ? &entries[entry - 1] : nullptr;
}

std::size_t NameTable::PlaceOf(std::string_view name, const Key& key, std::uint32_t hash) const {
    const auto isThere = [&](const Place& place) {
        if (place.hash != hash) return false;
        const Entry& entry = entries[place.entry - 1];
        return entry.key == key && (key.size <= 2 * kWord || SameText(entry.named->name, name));
    };
    const std::size_t mask = places.size() - 1;
    std::size_t at = hash & mask;
    while (places[at].entry != 0 && !isThere(places[at])) at = (at + 1) & mask;
    return at;
}

void NameTable::Resize(std::size_t size) {
    std::vector<Place> old(size);
    old.swap(places);
    const std::size_t mask = size - 1;
    for (const Place& place : old) {
        if (place.entry == 0) continue;
        std::size_t at = place.hash & mask;
        while (places[at].entry != 0) at = (at + 1) & mask;
        places[at] = place;
    }
}

DefinitionIndex::DefinitionIndex(ScenarioItem* treeRoot, Form treeForm) : root(treeRoot), form(treeForm) {
    if (form == Form::Whole) Walk(root);
}

void DefinitionIndex::Walk(ScenarioItem* item) {
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
        if (form == Form::Whole && list.openUnit && item->kind == kLists[at].kind) {
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
            if (form == Form::Growing) Enter(list.units, kLists[at].kind, item, item);
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
        if ((openLists & Bit(at)) != 0) wanted |= Bit(kLists[at].kind);
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
    const std::uint32_t kind = kLists[at].kind;
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

Load::Load(ScenarioTextStream& text, ScenarioItem* parent)
    : stream(text), outerDepth(currentLoad ? currentLoad->outerDepth + currentLoad->depth : 0), outer(currentLoad),
      outermost(outer ? outer->outermost : this), isRooted(parent == nullptr),
      modelIsStill(!outer || outer->modelIsStill) {
    if (parent) {
        root = GetTreeRoot(parent);
        if (root == GetTreeRoot(scenarioRootModel)) modelIsStill = false;
        // That of a tree which is no root model yet, or no longer, as well.
        if (sharedIndex && root == GetTreeRoot(sharedIndex->Root())) sharedIndex.reset();
    }
    currentLoad = this;
    scannedLine = {};
}

Load::~Load() {
    currentLoad = outer;
    // A text that was read whole may become the root model of the next one, and its index is that of the model then.
    if (isComplete && ownIndex && rootModelUses > 0 && root->kind == KindFolder) sharedIndex = std::move(ownIndex);
}

Load* Load::Current() { return currentLoad; }

bool Load::TakeLong(std::size_t bytes) {
    constexpr std::size_t kTimesTheText = 16;
    longBytes += bytes;
    return longBytes / kTimesTheText <= static_cast<std::size_t>(stream.end - stream.begin) ||
           Refuse("values without a closing quote hold the same text over and over");
}

void Load::Open(ScenarioItem* item, bool isInTree) {
    if (!root) {
        root = item;
        if (!scenarioRootModel) ownIndex = std::make_unique<DefinitionIndex>(item, DefinitionIndex::Form::Growing);
    }
    current = item;
    if (!isInTree) ++itemsOutsideTree;
    if (ownIndex && itemsOutsideTree == 0) ownIndex->Open(item);
}

void Load::Close(ScenarioItem* item, bool isInTree) {
    current = item->parent;
    if (ownIndex && itemsOutsideTree == 0) ownIndex->Close(item);
    isComplete = item == root;
    if (!isInTree) --itemsOutsideTree;
}

DefinitionIndex* Load::IndexOf(const ScenarioItem* modelRoot) {
    if (!modelRoot) return nullptr;
    if (modelRoot == scenarioRootModel) {
        if (!modelIsStill) return nullptr;
        std::unique_ptr<DefinitionIndex>& index = rootModelUses > 0 ? sharedIndex : outermost->modelIndex;
        if (!index || index->Root() != modelRoot) {
            index = std::make_unique<DefinitionIndex>(scenarioRootModel, DefinitionIndex::Form::Whole);
        }
        return index.get();
    }
    return modelRoot == root && isRooted ? ownIndex.get() : nullptr;
}

void ForgetIndexOf(const Folders& root) {
    if (sharedIndex && sharedIndex->Root() == &root) sharedIndex.reset();
}

RootModelUse::RootModelUse() { ++rootModelUses; }

RootModelUse::~RootModelUse() {
    if (--rootModelUses == 0) sharedIndex.reset();
}

ScenarioItem* RootOfItemBeingRead(const ScenarioItem* item) {
    return currentLoad && item && item == currentLoad->current ? currentLoad->root : nullptr;
}

ScenarioItem* FindDefinitionFolder(const ScenarioItem* root, std::string_view listName) {
    const std::size_t list = ListOf(listName);
    DefinitionIndex* index = currentLoad && list < kListCount ? currentLoad->IndexOf(root) : nullptr;
    return index ? index->Folder(list) : SearchFolder(root, listName);
}

DefinitionPlace FindDefinitionPlace(ScenarioItem* root, std::string_view listName, std::uint32_t kind,
                                    const std::string& name) {
    if (currentLoad) {
        const std::size_t list = ListOf(listName, kind);
        DefinitionIndex* index = list < kListCount ? currentLoad->IndexOf(root) : nullptr;
        if (index) return {index->Find(list, name), index->Folder(list) != nullptr};
    }
    ScenarioItem* folder = SearchFolder(root, listName);
    return {folder ? folder->FindItem(kind, name, std::string()) : nullptr, folder != nullptr};
}

ScenarioItem* FindDefinition(ScenarioItem* root, std::string_view listName, std::uint32_t kind,
                             const std::string& name) {
    return FindDefinitionPlace(root, listName, kind, name).definition;
}

ScenarioItem* FindEnumEntryIn(ScenarioItem* enumTab, const std::string& name) {
    DefinitionIndex* index = currentLoad ? currentLoad->IndexOf(GetModelRoot(currentLoad->current)) : nullptr;
    return index ? index->FindEntry(enumTab, name) : enumTab->FindItem(KindEnum, name, std::string());
}
