#ifndef SCENARIO_CHILDSTORE_H
#define SCENARIO_CHILDSTORE_H

#include <algorithm>
#include <cstddef>
#include <new>
#include <utility>
#include <vector>

#include <scenario/ScenarioItem.h>

#include "text/Assertion.h"

// The one way in which items keep children: a vector of pointers in text order. Containers with several vectors choose
// the vector by kind, so that the cast to the element's class holds.
namespace childStore {

// Where a null child is reported; the numbers differ from class to class.
struct NullChildSite {
    const char* source;
    int line;
};
inline constexpr NullChildSite kAnyStore = {"core/include/scenario/ScenarioItem", 251};

// Appends all for filter 0, else those of that kind.
template <class Item>
void Append(const std::vector<Item*>& store, std::vector<ScenarioItem*>& out, std::uint32_t kindFilter) {
    if (kindFilter == 0) {
        out.insert(out.end(), store.begin(), store.end());
        return;
    }
    for (Item* child : store) {
        if (child && child->kind == kindFilter) out.push_back(child);
    }
}

template <class Item>
typename std::vector<Item*>::iterator Find(std::vector<Item*>& store, const ScenarioItem* child) {
    return std::find_if(store.begin(), store.end(), [child](const Item* held) { return held == child; });
}

// Directly before or after `reference` if it is here; otherwise at the end when `after`, else at the front.
template <class Item>
void Place(ScenarioItem* owner, std::vector<Item*>& store, ScenarioItem* child, const ScenarioItem* reference,
           bool after, NullChildSite site = kAnyStore) {
    if (!child) AssertionFailed(site.source, site.line);
    auto position = reference ? Find(store, reference) : store.end();
    if (position == store.end()) {
        position = after ? store.end() : store.begin();
    } else if (after) {
        ++position;
    }
    if (store.capacity() == 0) {
        // Most stores hold two or none.
        store.reserve(2);
        position = store.end();
    }
    store.insert(position, static_cast<Item*>(child));
    child->parent = owner;
}

// Takes out the first entry and destroys the child when `owner` is its parent. False: it was not here.
template <class Item>
bool Remove(const ScenarioItem* owner, std::vector<Item*>& store, ScenarioItem* child) {
    const auto position = Find(store, child);
    if (!child || position == store.end()) return false;
    store.erase(position);
    if (child->parent == owner) delete child;
    return true;
}

// Every position of `oldChild`; it is not destroyed. The new parent is set even when there was no position.
template <class Item>
void Replace(ScenarioItem* owner, std::vector<Item*>& store, ScenarioItem* newChild, const ScenarioItem* oldChild) {
    for (Item*& held : store) {
        if (held == oldChild) held = static_cast<Item*>(newChild);
    }
    if (newChild) newChild->parent = owner;
}

template <class Item>
void Swap(std::vector<Item*>& store, const ScenarioItem* a, const ScenarioItem* b) {
    const auto first = Find(store, a);
    const auto second = Find(store, b);
    if (first == store.end() || second == store.end()) return;
    std::swap(*first, *second);
}

// In order; empty places are skipped.
template <class Item>
void Destroy(std::vector<Item*>& store) {
    for (Item* child : store) delete child;
    store.clear();
}

// The same for children that nest in their own class, where `Below` is the store: all levels in one list, parents
// first, are destroyed from its end, so that no depth needs a stack. What memory runs out for goes with its parent.
template <auto Below, class Item>
void DestroyAllLevels(std::vector<Item*>& store) {
    std::vector<Item*> items;
    items.swap(store);
    try {
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (!items[i]) continue;
            std::vector<Item*>& below = items[i]->*Below;
            items.insert(items.end(), below.begin(), below.end());
            below.clear();
        }
    } catch (const std::bad_alloc&) {
    }
    for (; !items.empty(); items.pop_back()) delete items.back();
}

} // namespace childStore

#endif
