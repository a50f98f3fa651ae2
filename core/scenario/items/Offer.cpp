#include "items/Offer.h"

#include <algorithm>
#include <vector>

namespace {

// The one item whose end the reader must not miss: parents differ in what their RemoveChild destroys.
const ScenarioItem* watchedItem = nullptr;

bool Holds(const ScenarioItem& parent, const ScenarioItem* child) {
    std::vector<ScenarioItem*> children;
    parent.GetChildren(children);
    return std::find(children.begin(), children.end(), child) != children.end();
}

} // namespace

// A parent that takes a child in becomes its parent; that is how a child that was ignored is told apart.
bool OfferChild(ScenarioItem& parent, ScenarioItem* child) {
    child->parent = nullptr;
    parent.AddChild(child, nullptr, true);
    const bool taken = child->parent != nullptr || Holds(parent, child);
    if (!child->parent) child->parent = &parent;
    return taken;
}

void TakeBackAndDestroy(ScenarioItem& parent, ScenarioItem* child) {
    watchedItem = child;
    try {
        parent.RemoveChild(child);
    } catch (...) {
        // That of a host class. The read has failed already, which is what the caller is to hear of.
    }
    const bool alive = watchedItem != nullptr;
    watchedItem = nullptr;
    if (!alive) return;
    bool isHeld = child->parent == &parent;
    try {
        isHeld = Holds(parent, child);
    } catch (...) {
        // Rather lost than destroyed twice.
    }
    if (!isHeld) delete child;
}

void NoteEndOf(const ScenarioItem& item) {
    if (watchedItem == &item) watchedItem = nullptr;
}
