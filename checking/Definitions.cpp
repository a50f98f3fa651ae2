#include "Definitions.h"

#include <algorithm>

#include <scenario/DefinitionLists.h>
#include <scenario/NearestName.h>

#include "TextChecks.h"

namespace TavrelChecking {

// clang-format off
const std::array<ListRow, kListCount> kListRows = {{
    {DefinitionListOf(KindParameter),  KindParameter, "TV2004", "parameter"},
    {DefinitionListOf(KindFunction),   KindFunction,  "TV2003", "function"},
    {DefinitionListOf(KindAction),     KindAction,    "TV2001", "action"},
    {DefinitionListOf(KindCondition),  KindCondition, "TV2002", "condition"},
    {DefinitionListOf(KindEnumTab),    KindEnumTab,   "TV2007", "enumeration"},
}};
// clang-format on

std::size_t ListOf(ScenarioItemKind kind) {
    if (kind == KindElseAction) kind = KindAction;
    if (kind == KindReturn) kind = KindParameter;
    std::size_t list = 0;
    while (list < kListCount && kListRows[list].kind != kind) ++list;
    return list;
}

bool IsCall(ScenarioItemKind kind) {
    return kind == KindAction || kind == KindElseAction || kind == KindCondition || kind == KindFunction;
}

bool IsParameter(ScenarioItemKind kind) { return kind == KindParameter || kind == KindReturn; }

bool IsUnknownPart(const Item& part) {
    return part.isDropped || part.isMalformed || (IsParameter(part.kind) && !part.model);
}

Definitions::Definitions(std::shared_ptr<const ScriptTree> modelTree) : tree(std::move(modelTree)) {
    if (tree->Root()) FindFolders(*tree->Root());
    if (tree->Root()) FindNeeds(*tree->Root());
    for (std::size_t list = 0; list < kListCount; ++list)
        if (!folders[list]) FindMisspelt(list);
    for (std::size_t list = 0; list < kListCount; ++list) {
        if (folders[list]) Enter(list, *folders[list]);
        for (const Item* item : all[list]) byName[list].emplace(item->name, item);
        if (folders[list]) EnterLost(list, *folders[list]);
    }
}

void Definitions::FindFolders(const Item& item) {
    // A list whose kind is misspelt has its finding there.
    if (item.kind == KindFolder || (item.isDropped && item.kind == KindNone))
        for (std::size_t list = 0; list < kListCount; ++list)
            if (!folders[list] && item.name == kListRows[list].folder) folders[list] = &item;
    for (const auto& child : item.children) FindFolders(*child);
}

void Definitions::FindMisspelt(std::size_t list) {
    if (!tree->Root()) return;
    for (const auto& child : tree->Root()->children) {
        const bool isList = std::find(folders.begin(), folders.end(), child) != folders.end();
        const std::string wanted(kListRows[list].folder);
        if (child->kind == KindFolder && !isList && NearestName(child->name, {wanted}) == wanted) {
            folders[list] = child;
            return;
        }
    }
}

void Definitions::FindNeeds(const Item& item) {
    if (const std::size_t list = ListOf(item.kind); list < kEnumTabs) isNeeded[list] = true;
    if (IsParameter(item.kind) && !item.Value("ENUMTAB").empty()) isNeeded[kEnumTabs] = true;
    for (const auto& child : item.children) FindNeeds(*child);
}

// Also what stands inside other items: a search of the tree finds it there.
void Definitions::Enter(std::size_t list, const Item& item) {
    if (item.kind == kListRows[list].kind) {
        all[list].push_back(&item);
        // A call holds parameters, which are definitions of their own list only.
        if (kListRows[list].kind != KindFunction) return;
    }
    for (const auto& child : item.children) Enter(list, *child);
}

// A definition whose kind is misspelt has its finding there, and not where it is used.
void Definitions::EnterLost(std::size_t list, const Item& folder) {
    for (const auto& child : folder.children) {
        if (child->kind == KindNone && !child->name.empty()) byName[list].emplace(child->name, child);
        if (child->kind == KindFolder || child->isDropped) EnterLost(list, *child);
    }
}

const Item* Definitions::Find(std::size_t list, std::string_view name) const {
    const auto found = byName[list].find(name);
    return found == byName[list].end() ? nullptr : found->second;
}

std::vector<std::string> Definitions::Names(std::size_t list) const {
    std::vector<std::string> names;
    for (const Item* item : all[list]) names.emplace_back(item->name);
    return names;
}

ParameterFacts::ParameterFacts(const Item& definition, const Item* enumTab)
    : kinds(WordsOf(definition.Value("KINDLIST"))),
      isListBroken(std::any_of(kinds.begin(), kinds.end(), [](std::string_view word) { return !IsValueKind(word); })),
      type(definition.Value("TYPE")), isByAddress(definition.Value("USAGE") == "BY_ADDRESS"),
      least(definition.Value("MINVALUE")), most(definition.Value("MAXVALUE")), leastNumber(NumberOf(least)),
      mostNumber(NumberOf(most)),
      areLimitsReversed(!least.empty() && !most.empty() && mostNumber <= leastNumber &&
                        definition.Find("MINVALUE")->keyBegin < definition.Find("MAXVALUE")->keyBegin),
      tab(enumTab) {}

ParameterFacts Definitions::ReadFacts(const Item& definition) const {
    return {definition, Find(kEnumTabs, definition.Value("ENUMTAB"))};
}

const ParameterFacts& Definitions::FactsOf(const Item& definition) const {
    const auto known = facts.find(&definition);
    return known != facts.end() ? known->second : facts.emplace(&definition, ReadFacts(definition)).first->second;
}

std::vector<std::string_view> WordsOf(std::string_view value) {
    std::vector<std::string_view> words;
    const auto isWhite = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    for (std::size_t at = 0; at < value.size();) {
        while (at < value.size() && isWhite(value[at])) ++at;
        const std::size_t begin = at;
        while (at < value.size() && !isWhite(value[at])) ++at;
        if (at > begin) words.push_back(value.substr(begin, at - begin));
    }
    return words;
}

bool Holds(const std::vector<std::string_view>& words, std::string_view word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

std::vector<const Item*> ParametersOf(const Item& call) {
    std::vector<const Item*> parameters;
    bool hasReturn = false;
    for (const auto& child : call.children) {
        if (!IsParameter(child->kind)) continue;
        if (child->kind == KindReturn && !hasReturn)
            hasReturn = true;
        else
            parameters.push_back(child);
    }
    return parameters;
}

bool HaveSameParameters(const Item& call, const Item& other) {
    // The next one from there on; the first RETURN is none.
    struct Walk {
        explicit Walk(const Item& walked) : at(walked.children.begin()), end(walked.children.end()) {}
        const Item* Next() {
            for (; at != end; ++at) {
                if (!IsParameter((*at)->kind)) continue;
                const bool isResult = (*at)->kind == KindReturn && !hasReturn;
                hasReturn = hasReturn || isResult;
                if (!isResult) return *at++;
            }
            return nullptr;
        }
        Item* const* at;
        Item* const* end;
        bool hasReturn = false;
    };
    Walk one(call);
    Walk two(other);
    while (true) {
        const Item* const first = one.Next();
        const Item* const second = two.Next();
        if (!first || !second) return first == second;
        if (first->name != second->name) return false;
    }
}

std::string_view TypeOf(const Item& parameter) {
    return parameter.model ? parameter.model->Value("TYPE") : std::string_view();
}

std::string_view ReturnTypeOf(const Item& definition) {
    for (const auto& child : definition.children)
        if (child->kind == KindReturn) return TypeOf(*child);
    switch (definition.kind) {
    case KindCondition:
        return "BOOL";
    case KindAction:
    case KindElseAction:
        return "VOID";
    default:
        return "FLOAT";
    }
}

namespace {

bool IsOneLetterAway(std::string_view a, std::string_view b) {
    if (a.size() > b.size()) std::swap(a, b);
    if (b.size() - a.size() > 1) return false;
    std::size_t front = 0;
    while (front < a.size() && a[front] == b[front]) ++front;
    std::size_t back = 0;
    while (back < a.size() - front && a[a.size() - 1 - back] == b[b.size() - 1 - back]) ++back;
    return front + back + 1 >= b.size() && a != b;
}

} // namespace

std::string OnlyOneLetterAway(std::string_view name, const std::vector<std::string>& candidates) {
    std::string only;
    for (const std::string& candidate : candidates) {
        if (!IsOneLetterAway(name, candidate) || candidate == only) continue;
        if (!only.empty()) return {};
        only = candidate;
    }
    return only;
}

} // namespace TavrelChecking
