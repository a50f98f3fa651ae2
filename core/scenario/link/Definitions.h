#ifndef SCENARIO_DEFINITIONS_H
#define SCENARIO_DEFINITIONS_H

#include <string_view>

#include <scenario/token.h>

// The definition of an item: the end of the chain of models, which points at itself. Null if the chain is broken.
Token* RootDefinitionOf(const Token& item);

// What Token::LinkModel does.
void LinkModelIn(Token& item, std::string_view listName);

// The same for an item that is being read. False, with the cause, if there is no definition.
bool LinkDefinition(Token& item, std::string_view listName);

#endif
