#ifndef SCENARIO_DEFINITIONINDEX_H
#define SCENARIO_DEFINITIONINDEX_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <scenario/ScenarioItem.h>

#include "link/ListNumbers.h"
#include "link/NameTable.h"

// The definitions of one tree by name, for the time of one load. It must give exactly what the search of the tree
// gives: the first match in document order, in sub-folders and inside other items as well.
//
// A unit is an item that stands in a list through folders alone. For each name the index keeps the first unit that
// holds a match somewhere, and asks that unit: so what happens inside units costs no bookkeeping. A unit that is still
// being read is asked last and in full.
//
// It serves the library's own classes. Where an item above the parameters of calls is of a class of the host, which may
// find whatever it likes, only a search can tell. Within calls such a class is not looked for, nor asked.
class DefinitionIndex {
public:
    // `Whole`: the tree stands, and nothing of it changes as long as the index is used. `Growing`: it is what the load
    // builds, and the reader reports each item.
    enum class Form { Whole, Growing };
    DefinitionIndex(ScenarioItem* treeRoot, Form treeForm);

    ScenarioItem* Root() const { return root; }
    // Whether a class of the host was found: then nothing else may be asked.
    bool IsUseless() const { return hasClassOfHost; }
    ScenarioItem* Folder(std::size_t list) const { return lists[list].folder; }
    ScenarioItem* Find(std::size_t list, std::string_view name);
    ScenarioItem* FindEntry(ScenarioItem* enumTab, std::string_view name);

    void Open(ScenarioItem* item);
    void Close(ScenarioItem* item);

private:
    struct List {
        ScenarioItem* folder = nullptr;
        ScenarioItem* openUnit = nullptr; // the unit that is being read or walked
        NameTable units;
    };
    void Walk(ScenarioItem* item);
    void SetOpen(std::size_t list, bool isOpen);
    // Enters every item of that kind in the subtree under its name, as `entry` or, without one, as itself.
    void Enter(NameTable& table, std::uint32_t kind, ScenarioItem* entry, ScenarioItem* item);

    ScenarioItem* root;
    Form form;
    bool hasClassOfHost = false;
    std::array<List, kListCount> lists;
    std::uint32_t openLists = 0;                                // bits of those whose folder is being read or walked
    std::uint32_t wanted = std::uint32_t{1} << KindFolder;      // bits of the kinds that a walk looks for
    std::unordered_map<const ScenarioItem*, NameTable> entries; // of each tab that was asked
    std::vector<ScenarioItem*> pending;                         // the children still to visit, of all levels of a walk
};

#endif
