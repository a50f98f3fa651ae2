#ifndef SCENARIO_DEFINITIONS_H
#define SCENARIO_DEFINITIONS_H

#include <scenario/token.h>

// The definition of an item: the end of the chain of models, which points at itself. Null if the chain is broken.
Token* RootDefinitionOf(const Token& item);

// Always false, with the cause that no definition of the item's kind and name stands in the folder `listName`.
bool RefuseUnknownDefinition(const Token& item, const char* listName);

#endif
