#ifndef SCENARIO_DEFINITIONLISTS_H
#define SCENARIO_DEFINITIONLISTS_H

#include <scenario/ItemText.h>

// The folders of a root model in which definitions are looked up.
struct DefinitionList {
    const char* folder;
    ScenarioItemKind kind; // of the definitions that stand in it
};

inline constexpr DefinitionList kDefinitionLists[] = {
    {"PARAMETER_LIST", KindParameter}, {"FUNCTION_LIST", KindFunction}, {"ACTION_LIST", KindAction},
    {"CONDITION_LIST", KindCondition}, {"ENUMTAB_LIST", KindEnumTab},
};

// The folder for the definitions of that kind, which must be one of those above.
constexpr const char* DefinitionListOf(ScenarioItemKind kind) {
    const DefinitionList* list = kDefinitionLists;
    while (list->kind != kind) ++list;
    return list->folder;
}

#endif
