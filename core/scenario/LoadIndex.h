#ifndef SCENARIO_LOADINDEX_H
#define SCENARIO_LOADINDEX_H

#include <cstdint>
#include <string>
#include <string_view>

#include <scenario/ScenarioItem.h>

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

#endif
