#ifndef FUZZ_ITEMS_H
#define FUZZ_ITEMS_H

#include <memory>
#include <string>

#include <scenario/ItemModel.h>

// What the targets that read scripts share. Call each within Outlives.

// Puts the state that the process shares back to that of a fresh one, with `rootModel` as the root model: an assertion
// may have left it anywhere. Files that a script names are looked up in the sample installation.
void ResetModel(Folders* rootModel);

// The root model of the sample installation; read once, never freed.
Folders* SampleRootModel();

// From now on, until the next reset, the include "fuzz.inc" has this text.
void OfferInclude(const std::string& text);

// A tree and all below it: a settings item forgets its children when it dies, so these are taken out before.
struct TreeDeleter {
    void operator()(ScenarioItem* item) const;
};
using Tree = std::unique_ptr<ScenarioItem, TreeDeleter>;

// Reads `text` from memory that ends right after its NUL. Null if it is refused, or if a number of a variable is none.
Tree ReadScript(const std::string& text, bool headerOnly = false);

std::string Saved(ScenarioItem& item);

// Searches, shows, judges, clones, saves, reads again. `item` is changed: names and labels become unique.
void Exercise(ScenarioItem& item);

// Starts a scenario and steps it some times, with an implementation behind every CODE.
void Run(ScenarioLib::Scenario& scenario);

#endif
