#include "link/Definitions.h"

#include <cstdint>
#include <string>
#include <vector>

#include "link/Lookup.h"
#include "text/Assertion.h"
#include "text/Refusal.h"

Token* RootDefinitionOf(const Token& item) {
    Token* definition = item.model;
    while (definition && definition->model != definition) definition = definition->model;
    return definition;
}

namespace {

constexpr char kSource[] = "token";

// An ELSE_ACTION is the same call in another place, and has no list of its own.
std::uint32_t DefinitionKindOf(const Token& item) {
    return item.kind == KindElseAction ? static_cast<std::uint32_t>(KindAction) : item.kind;
}

[[gnu::cold, gnu::noinline]] bool RefuseUnknownDefinition(const Token& item, std::string_view listName) {
    if (!RefusalsAreTold()) return false;
    const std::uint32_t kind = DefinitionKindOf(item);
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

void LinkModelIn(Token& item, std::string_view listName) {
    if (item.parent && item.parent->name == listName) {
        item.SetModel(&item);
        return;
    }
    ScenarioItem* root = GetModelRoot(&item);
    if (!root) AssertionFailed(kSource, 271);
    const DefinitionPlace place = FindDefinitionPlace(root, listName, DefinitionKindOf(item), item.name);
    if (!place.hasFolder) AssertionFailed(kSource, 275, "the model has no folder " + std::string(listName));
    // Whatever has the kind of a token is one.
    item.SetModel(static_cast<Token*>(place.definition));
}

bool LinkDefinition(Token& item, std::string_view listName) {
    LinkModelIn(item, listName);
    return item.model || RefuseUnknownDefinition(item, listName);
}
