#ifndef SCENARIO_TREEWATCH_H
#define SCENARIO_TREEWATCH_H

#include <cstdint>

class ScenarioItem;

// Tells whether a search of the tree would still find what it found. Fields are public, so nothing announces a change;
// the names that such a search depends on are compared with those of the last time. That is a walk over all of them,
// made once at the beginning of a step for all the parameters that are evaluated in it.
//
// After an action within a step the walk is made again where few names are in scope. With a thousand of them a rule
// would cost what a search costs, so there it is made again only if the library changed any tree meanwhile: what an
// action writes into fields by itself, a name or a list of children, is then seen by the next step.
//
// A version that stays the same means that the same search gives the same items, and that they are still alive.
namespace treeWatch {

// Versions are never 0.

// Of the variables that CollectVisibleItems gives from `item`. `item` is no call, nor a parameter.
std::uint64_t VisibleVariables(ScenarioItem* item);

// Of the enumerations in the folder "ENUMTAB_LIST" of `root` and their entries.
std::uint64_t EnumTabs(ScenarioItem* root);

} // namespace treeWatch

#endif
