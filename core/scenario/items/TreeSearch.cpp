// The searches of the item tree. Each pair of a const and a non-const search is one body; only the numbers under which
// a null child is reported differ.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include <scenario/ScenarioItem.h>

#include "text/Assertion.h"
#include "text/Kinds.h"

namespace {

constexpr char kSource[] = "ScenarioItem";

// A snapshot, so that a walk survives the removal of the item that it visits.
std::vector<ScenarioItem*> ChildrenOf(const ScenarioItem& item, std::uint32_t kindFilter = 0) {
    std::vector<ScenarioItem*> children;
    item.GetChildren(children, kindFilter);
    return children;
}

// The same without an allocation for each item that is visited: the children of all levels of a walk stand in one list.
class Visited {
public:
    explicit Visited(const ScenarioItem& item) : first(list.size()) {
        item.GetChildren(list);
        last = list.size();
    }
    ~Visited() { list.resize(first); }
    Visited(const Visited&) = delete;
    Visited& operator=(const Visited&) = delete;

    std::size_t Count() const { return last - first; }
    // By index, since the list moves when a level below makes it longer.
    ScenarioItem* At(std::size_t index) const { return list[first + index]; }
    void SortByLabel() {
        const auto begin = list.begin() + static_cast<std::ptrdiff_t>(first);
        std::sort(begin, list.end(), [](const ScenarioItem* a, const ScenarioItem* b) { return a->label < b->label; });
    }

private:
    inline static std::vector<ScenarioItem*> list;
    std::size_t first;
    std::size_t last = 0;
};

template <class Item>
Item* Checked(Item* child, int line) {
    if (!child) AssertionFailed(kSource, line);
    return child;
}

bool Matches(const ScenarioItem& item, std::uint32_t kind, const std::string& name) {
    return item.kind == kind && item.name == name;
}

template <class Item>
Item* Find(Item& self, std::uint32_t kind, const std::string& name, const std::string& scope, int nullChild) {
    if (kind == KindVariable && self.kind == KindRule) return nullptr;
    bool narrowed = false;
    if (!scope.empty()) {
        const ScenarioItem* unit = KindIsIn(self.kind, kFileScope) ? &self : FindFileScope(self.parent);
        if (!unit || (unit->fileName != scope && unit->kind != KindScenario)) return nullptr;
        // Below anything but a scenario the walk is inside the wanted file and needs no further test.
        narrowed = self.kind != KindScenario;
    }
    if (Matches(self, kind, name)) return &self;
    static const std::string kAnywhere;
    const Visited children(self);
    for (std::size_t at = 0; at < children.Count(); ++at) {
        Item* const child = Checked<Item>(children.At(at), nullChild);
        if (Item* hit = child->FindItem(kind, name, narrowed ? kAnywhere : scope)) return hit;
    }
    return nullptr;
}

template <class Item>
Item* FindUpward(Item& self, std::uint32_t kind, const std::string& name, int nullChild) {
    if (Matches(self, kind, name)) return &self;
    if (!self.parent) return nullptr;
    for (Item* sibling : ChildrenOf(*self.parent)) {
        if (Checked(sibling, nullChild) == &self) continue;
        if (Item* hit = sibling->FindItem(kind, name, std::string())) return hit;
    }
    // The parent's answer is dropped on purpose: a script sees its own siblings, not those of its ancestors.
    Item* parent = self.parent;
    parent->FindItemUpward(kind, name);
    return nullptr;
}

template <class Item>
void Collect(Item& self, std::uint32_t kind, const std::string& name, std::vector<Item*>& out, bool includeSelf,
             bool crossIncludes, int nullChild) {
    if (!crossIncludes && self.kind == KindInclude) return;
    if (includeSelf && Matches(self, kind, name)) out.push_back(&self);
    for (Item* child : ChildrenOf(self)) Checked(child, nullChild)->CollectItems(kind, name, out, true, crossIncludes);
}

template <class Item>
void CollectOfKind(Item& self, std::vector<Item*>& out, std::uint32_t kind, bool includeSelf, bool crossIncludes,
                   int nullChild) {
    if (!crossIncludes && self.kind == KindInclude) return;
    if (self.kind == kind || (kind == KindNone && includeSelf)) out.push_back(&self);
    Visited children(self);
    for (std::size_t at = 0; at < children.Count(); ++at) Checked(children.At(at), nullChild);
    if (children.Count() > 1) children.SortByLabel();
    for (std::size_t at = 0; at < children.Count(); ++at) {
        Item* child = children.At(at);
        child->CollectItemsOfKind(out, kind, true, crossIncludes);
        // Callers treat the result as a set: the parameters of a call come a second time.
        if (kind == KindParameter && KindIsIn(child->kind, kCallable)) {
            const std::vector<ScenarioItem*> parameters = ChildrenOf(*child, KindParameter);
            out.insert(out.end(), parameters.begin(), parameters.end());
        }
    }
}

} // namespace

ScenarioItem* ScenarioItem::FindItem(std::uint32_t itemKind, const std::string& itemName, const std::string& scope) {
    return Find(*this, itemKind, itemName, scope, 862);
}

const ScenarioItem* ScenarioItem::FindItem(std::uint32_t itemKind, const std::string& itemName,
                                           const std::string& scope) const {
    return Find(*this, itemKind, itemName, scope, 909);
}

ScenarioItem* ScenarioItem::FindItemUpward(std::uint32_t itemKind, const std::string& itemName) {
    return FindUpward(*this, itemKind, itemName, 957);
}

const ScenarioItem* ScenarioItem::FindItemUpward(std::uint32_t itemKind, const std::string& itemName) const {
    return FindUpward(*this, itemKind, itemName, 996);
}

void ScenarioItem::CollectItems(std::uint32_t itemKind, const std::string& itemName, std::vector<ScenarioItem*>& out,
                                bool includeSelf, bool crossIncludes) {
    Collect(*this, itemKind, itemName, out, includeSelf, crossIncludes, 1129);
}

void ScenarioItem::CollectItems(std::uint32_t itemKind, const std::string& itemName,
                                std::vector<const ScenarioItem*>& out, bool includeSelf, bool crossIncludes) const {
    Collect(*this, itemKind, itemName, out, includeSelf, crossIncludes, 1152);
}

void ScenarioItem::CollectItemsOfKind(std::vector<ScenarioItem*>& out, std::uint32_t itemKind, bool includeSelf,
                                      bool crossIncludes) {
    CollectOfKind(*this, out, itemKind, includeSelf, crossIncludes, 1050);
}

void ScenarioItem::CollectItemsOfKind(std::vector<const ScenarioItem*>& out, std::uint32_t itemKind, bool includeSelf,
                                      bool crossIncludes) const {
    CollectOfKind(*this, out, itemKind, includeSelf, crossIncludes, 1086);
}

ScenarioItem* ScenarioItem::FindFirstOfKind(std::uint32_t itemKind) {
    if (kind == itemKind) return this;
    for (ScenarioItem* child : ChildrenOf(*this)) {
        if (ScenarioItem* hit = Checked(child, 1183)->FindFirstOfKind(itemKind)) return hit;
    }
    return nullptr;
}

bool ScenarioItem::ContainsItem(const ScenarioItem* item) const {
    if (item == this) return true;
    for (const ScenarioItem* child : ChildrenOf(*this)) {
        if (Checked(child, 1366)->ContainsItem(item)) return true;
    }
    return false;
}

ScenarioItem* ScenarioItem::FindByLabel(const std::string& itemLabel) {
    if (label == itemLabel) return this;
    for (ScenarioItem* child : ChildrenOf(*this)) {
        if (ScenarioItem* hit = Checked(child, 1422)->FindByLabel(itemLabel)) return hit;
    }
    return nullptr;
}

void ScenarioItem::CollectVisibleItems(std::uint32_t itemKind, std::vector<ScenarioItem*>& out,
                                       const std::string& itemName, const std::string& scope) const {
    if (itemKind != KindNone) {
        const auto isOutside = [&](const ScenarioItem* child) {
            Checked(child, 1442);
            if (!itemName.empty() && child->name != itemName) return true;
            if (scope.empty()) return false;
            const ScenarioItem* unit = KindIsIn(child->kind, kFileScope) ? child : FindFileScope(child->parent);
            return !unit || unit->fileName != scope;
        };
        std::vector<ScenarioItem*> visible = ChildrenOf(*this, itemKind);
        visible.erase(std::remove_if(visible.begin(), visible.end(), isOutside), visible.end());
        out.insert(out.begin(), visible.begin(), visible.end());
    }
    const bool isBorder = kind == KindEvaluation || kind == KindGeneralParameters || kind == KindInclude;
    if (parent && !isBorder) parent->CollectVisibleItems(itemKind, out, itemName, scope);
}
