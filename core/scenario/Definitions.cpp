#include "Definitions.h"

#include <string>
#include <vector>

#include "LoadIndex.h"
#include "Refusal.h"

Token* RootDefinitionOf(const Token& item) {
    Token* definition = item.model;
    while (definition && definition->model != definition) definition = definition->model;
    return definition;
}

namespace {

[[gnu::cold, gnu::noinline]] bool RefuseUnknownDefinition(const Token& item, std::string_view listName) {
    if (!RefusalsAreTold()) return false;
    const ScenarioItemKind kind = item.kind == KindElseAction ? KindAction : item.kind;
    std::vector<std::string> names;
    if (ScenarioItem* folder = FindDefinitionFolder(GetModelRoot(&item), listName)) {
        std::vector<ScenarioItem*> definitions;
        folder->CollectItemsOfKind(definitions, kind, false, true);
        for (const ScenarioItem* definition : definitions)
            if (definition != &item) names.push_back(definition->name);
    }
    std::string word = KindKeyword(kind);
    // The host's locale may know another small letter for "I".
    for (char& c : word)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return Refuse("unknown ", word, " \"", item.name, "\"", DidYouMean(item.name, names));
}

} // namespace

bool LinkDefinition(Token& item, std::string_view listName) {
    LinkModelIn(item, listName);
    return item.model || RefuseUnknownDefinition(item, listName);
}
