// The base of all items: observers, life, attributes, cloning, display, and the ways upward.
#include <scenario/ScenarioItem.h>

#include <algorithm>
#include <ostream>
#include <unordered_set>

#include <scenario/Criteria.h>
#include <scenario/include.h>
#include <scenario/program.h>
#include <scenario/scenario.h>

#include "items/AttributeRow.h"
#include "items/Offer.h"
#include "link/Lookup.h"
#include "run/StepScope.h"
#include "text/Assertion.h"
#include "text/Kinds.h"

namespace {

constexpr char kSource[] = "ScenarioItem";

using Row = AttributeRow<ScenarioItem>;

constexpr Row kFlags[] = {
    Row::text<&ScenarioItem::isSelected>("IS_SELECTED"),
    Row::text<&ScenarioItem::isExpanded>("IS_EXPANDED"),
    Row::text<&ScenarioItem::isaIndex>("ISA_INDEX"),
};

// Also past what a class of the host throws.
struct OneDeeper {
    OneDeeper() { ++scenarioDepth; }
    ~OneDeeper() { --scenarioDepth; }
    OneDeeper(const OneDeeper&) = delete;
    OneDeeper& operator=(const OneDeeper&) = delete;
};

const char* FlagText(bool flag) { return flag ? "1" : "0"; }

} // namespace

Folders* scenarioRootModel = nullptr;

ScenarioItemObserver::~ScenarioItemObserver() = default;

ScenarioItemObservable::~ScenarioItemObservable() = default;

void ScenarioItemObservable::AddObserver(ScenarioItemObserver* observer) { observers.push_back(observer); }

void ScenarioItemObservable::RemoveObserver(ScenarioItemObserver* observer) {
    const auto position = std::find(observers.begin(), observers.end(), observer);
    if (position != observers.end()) observers.erase(position);
}

void ScenarioItemObservable::NotifyObservers(std::uint32_t event) {
    for (ScenarioItemObserver* observer : observers) observer->OnItemEvent(this, event);
}

void ScenarioItemObservable::SetObservableId(std::uint32_t id) { observableId = id; }

std::uint32_t ScenarioItemObservable::GetObservableId() const { return observableId; }

ScenarioItem::ScenarioItem(ScenarioItem* parentItem) : parent(parentItem) {}

ScenarioItem::~ScenarioItem() {
    NoteEndOf(*this);
    StepScope::ItemDied();
}

// Children.

void ScenarioItem::GetChildren(std::vector<ScenarioItem*>&, std::uint32_t) const {}

void ScenarioItem::RemoveAllChildren() {
    std::vector<ScenarioItem*> children;
    GetChildren(children);
    for (ScenarioItem* child : children) RemoveChild(child);
}

bool ScenarioItem::AcceptsChildKind(std::uint32_t) const { return true; }

ScenarioItem* ScenarioItem::GetFirstChild() const {
    std::vector<ScenarioItem*> children;
    GetChildren(children);
    return children.empty() ? nullptr : children.front();
}

void ScenarioItem::SetName(const std::string& newName) { name = newName; }

// Reading and writing.

bool ScenarioItem::LoadAttribute(ScenarioTextStream& stream) { return LoadFromRows<kFlags>(*this, stream); }

void ScenarioItem::SaveAttributes(std::ostream& out) const {
    if (IsSelected()) WriteAttribute(out, "IS_SELECTED", isSelected);
    if (IsExpanded()) WriteAttribute(out, "IS_EXPANDED", isExpanded);
    if (IsIndexEntry()) WriteAttribute(out, "ISA_INDEX", isaIndex);
}

void ScenarioItem::SaveChildren(std::ostream& out) const {
    std::vector<ScenarioItem*> children;
    GetChildren(children);
    for (ScenarioItem* child : children) {
        if (!child) AssertionFailed(kSource, 757);
        child->Save(out);
    }
}

bool ScenarioItem::Save(std::ostream& out) {
    WriteHeader(out, kind, name);
    WriteBrace(out, '{');
    {
        const OneDeeper depth;
        SaveAttributes(out);
        if (!IsIndexEntry()) SaveChildren(out);
    }
    WriteBrace(out, '}');
    return true;
}

bool ScenarioItem::OnLoadBegin() {
    if (!parent || parent->AcceptsChildKind(kind)) return true;
    return Refuse(KindKeyword(parent->kind), " (", parent->name, ") takes no ", KindKeyword(kind));
}

bool ScenarioItem::OnLoadEnd() { return true; }

// Copying.

ScenarioItem* ScenarioItem::Clone() const {
    ScenarioItem* copy = CreateItem(kind, name, nullptr);
    if (!copy) return nullptr;
    copy->SetName(name);
    copy->label = label;
    copy->isaIndex = FlagText(IsIndexEntry());
    copy->fileName = fileName;
    copy->resolvedPath = resolvedPath;
    NormalizePath(copy->resolvedPath);
    copy->isSelected = FlagText(IsSelected());
    copy->isExpanded = FlagText(IsExpanded());
    copy->hostWord = hostWord;

    std::vector<ScenarioItem*> children;
    GetChildren(children);
    for (const ScenarioItem* child : children) {
        if (!child) AssertionFailed(kSource, 445);
        ScenarioItem* childCopy = child->Clone();
        if (childCopy && !OfferChild(*copy, childCopy)) delete childCopy;
    }
    return copy;
}

// Display.

void ScenarioItem::UpdateDisplayTextTree() {
    std::vector<ScenarioItem*> children;
    GetChildren(children);
    for (ScenarioItem* child : children) {
        if (!child) AssertionFailed(kSource, 779);
        child->UpdateDisplayTextTree();
    }
    UpdateDisplayText();
}

void ScenarioItem::UpdateDisplayText() { displayText = label; }

bool ScenarioItem::IsValid() const { return true; }

bool ScenarioItem::MakeUniqueLabel() {
    std::vector<ScenarioItem*> rivals;
    CollectVisibleItems(KindVariable, rivals, "", "");
    CollectItemsOfKind(rivals, KindVariable, true, true);
    std::unordered_set<std::string_view> taken;
    for (const ScenarioItem* rival : rivals) {
        if (rival != this) taken.insert(rival->label);
    }
    std::string candidate = label;
    while (taken.contains(candidate)) candidate.insert(candidate.begin(), '_');
    const bool unchanged = candidate == label;
    label = candidate;
    return unchanged;
}

// The ways upward. The results are not const: whoever holds an item may change the tree that it stands in.

ScenarioItem* FindFileScope(const ScenarioItem* item) {
    while (item && !KindIsIn(item->kind, kFileScope)) item = item->parent;
    return const_cast<ScenarioItem*>(item);
}

ScenarioItem* GetTreeRoot(const ScenarioItem* item) {
    while (item && item->parent) item = item->parent;
    return const_cast<ScenarioItem*>(item);
}

ScenarioItem* GetModelRoot(const ScenarioItem* item) {
    if (scenarioRootModel) return scenarioRootModel;
    if (ScenarioItem* root = RootOfItemBeingRead(item)) return root;
    return GetTreeRoot(item);
}

ScenarioItem* FindOwningUnit(const ScenarioItem* item) {
    const auto isUnit = [](const ScenarioItem* candidate) {
        return dynamic_cast<const ScenarioLib::Scenario*>(candidate) || dynamic_cast<const Criteria*>(candidate) ||
               dynamic_cast<const Include*>(candidate);
    };
    while (item && !isUnit(item)) item = item->parent;
    return const_cast<ScenarioItem*>(item);
}
