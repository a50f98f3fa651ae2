#ifndef SCENARIO_LOOKUP_H
#define SCENARIO_LOOKUP_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <scenario/ScenarioItem.h>

#include "link/DefinitionIndex.h"

// The folder of that name in the model root of `item`, as FindItem gives it; null if there is none.
ScenarioItem* FindDefinitionFolder(const ScenarioItem* root, std::string_view listName);
// The first item of that kind and name in the folder `listName` of `root`: exactly what
// root->FindItem(FOLDER, listName, "")->FindItem(kind, name, "") gives, null also when there is no such folder. While
// a text is being read an index answers that lives no longer than the load; otherwise the tree is searched.
ScenarioItem* FindDefinition(ScenarioItem* root, std::string_view listName, std::uint32_t kind,
                             const std::string& name);
// Both at once: the definition, or null, and whether the folder is there.
struct DefinitionPlace {
    ScenarioItem* definition;
    bool hasFolder;
};
DefinitionPlace FindDefinitionPlace(ScenarioItem* root, std::string_view listName, std::uint32_t kind,
                                    const std::string& name);
// The first ENUM of that name in `enumTab`, as enumTab->FindItem(ENUM, name, "") gives it.
ScenarioItem* FindEnumEntryIn(ScenarioItem* enumTab, const std::string& name);

// As folders go: another root model may come to stand in their place while an index is shared.
void ForgetIndexOf(const Folders& root);

// The root of the tree of `item` if that is the item whose lines are being read, else null. Saves the way up for each
// of a million items that stand a thousand levels deep.
ScenarioItem* RootOfItemBeingRead(const ScenarioItem* item);

// The index of a root model. It is made anew after code of the host has run, which may have changed the model.
struct ModelIndex {
    std::unique_ptr<DefinitionIndex> index;
    std::uint64_t changes = 0; // of HostCode, when it was made
};

// A tree that is being read, and the indexes that answer for definitions meanwhile. Trees lie within one another, as
// texts do.
class TreeUnderWay {
public:
    // `parent`: what the text is read into, or null for a tree of its own.
    explicit TreeUnderWay(ScenarioItem* parent);
    ~TreeUnderWay();
    TreeUnderWay(const TreeUnderWay&) = delete;
    TreeUnderWay& operator=(const TreeUnderWay&) = delete;

    // The innermost one, or null.
    static TreeUnderWay* Current();

    // Around the reading of one item; items that their parent ignored, and what they hold, are not part of the tree.
    void Open(ScenarioItem* item, bool isInTree);
    void Close(ScenarioItem* item, bool isInTree);

    // The index that answers for definitions below `root`, or null when only a search can tell.
    DefinitionIndex* IndexOf(const ScenarioItem* modelRoot);

    ScenarioItem* root = nullptr;    // of the tree that is being read
    ScenarioItem* current = nullptr; // whose lines are being read

private:
    TreeUnderWay* outer;
    TreeUnderWay* outermost;
    bool isRooted;           // what is read is a tree of its own
    bool isComplete = false; // and it has been read to its end
    bool modelIsStill;       // the root model does not change during this load
    std::size_t itemsOutsideTree = 0;
    std::unique_ptr<DefinitionIndex> ownIndex; // no code of the host knows the tree as long as it is read
    ModelIndex modelIndex;                     // of the outermost load only, and while no index is shared
};

#endif
