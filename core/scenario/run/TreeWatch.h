#ifndef SCENARIO_TREEWATCH_H
#define SCENARIO_TREEWATCH_H

#include <cstddef>
#include <cstdint>

class ScenarioItem;

// Tells whether a search of the tree would still find what it found. Whatever such a search depends on, items, their
// order and their names, is compared with what it was the last time. That is one walk for all the parameters that are
// evaluated in a moment of StepScope, and a fraction of what their searches would cost.
//
// A version that stays the same means that the same search gives the same items, and that they are alive. 0 means that
// a class of the host has a say in what is found, and that only a search can tell.
//
// `item` is what the look begins at and `root` what holds the definitions; both are called in a StepScope.
namespace treeWatch {

// Of the variables that CollectVisibleItems gives from `item` for a name of that size.
std::uint64_t VisibleVariables(const ScenarioItem* item, std::size_t nameSize);

// Of the enumerations in the folder "ENUMTAB_LIST" of `root` and their entries.
std::uint64_t EnumTabs(const ScenarioItem* root);

} // namespace treeWatch

#endif
