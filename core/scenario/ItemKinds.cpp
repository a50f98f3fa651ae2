// The kinds of item: their keywords, the sets they belong to, and the factory.
#include <array>
#include <memory>
#include <string_view>

#include <lmkUtils/AssertAbort.h>
#include <scenario/ItemModel.h>

#include "KindTable.h"
#include "TextMatch.h"

namespace {

constexpr char kSource[] = "ScenarioItem";

using Maker = ScenarioItem* (*)(ItemLoadContext*);

template <class Item>
ScenarioItem* Make(ItemLoadContext*) {
    return new Item();
}

// The load context names one observer for tasks and all that derives from them, and another for rules.
template <class Item>
ScenarioItem* MakeWatchedByFirst(ItemLoadContext* context) {
    return new Item(context ? context->first : nullptr);
}
template <class Item>
ScenarioItem* MakeWatchedBySecond(ItemLoadContext* context) {
    return new Item(context ? context->second : nullptr);
}

struct KindRow {
    std::string_view keyword;
    Maker make; // null: a kind that has a word and no class
    int sets;
};

// One row per number of ScenarioItemKind.
// clang-format off
constexpr KindRow kKinds[] = {
    {"",                   nullptr,                                  kNoSet},
    {"ACTION",             Make<Action>,                             kCallable | kTokenKind},
    {"ELSE_ACTION",        Make<Action>,                             kCallable | kTokenKind},
    {"CATALOG",            nullptr,                                  kNoSet},
    {"CONDITION",          Make<Condition>,                          kCallable | kTokenKind},
    {"CONFIG",             Make<Config>,                             kNoSet},
    {"CRITERIA",           MakeWatchedByFirst<Criteria>,             kTokenKind},
    {"ENUM",               Make<Enum>,                               kTokenKind},
    {"ENUMTAB",            Make<EnumTab>,                            kNoSet},
    {"EVALUATION",         MakeWatchedByFirst<Evaluation>,           kTokenKind},
    {"EXERCISE_LOG",       nullptr,                                  kNoSet},
    {"EXERCISE_NDX",       nullptr,                                  kNoSet},
    {"FOLDER",             Make<Folders>,                            kNoSet},
    {"FUNCTION",           Make<Function>,                           kCallable | kTokenKind},
    {"GENERAL_PARAMETERS", Make<GeneralParameters>,                  kFileScope | kTokenKind},
    {"GROUP",              Make<Group>,                              kNoSet},
    {"HISTORY",            nullptr,                                  kNoSet},
    {"INCLUDE",            MakeWatchedByFirst<Include>,              kFileScope | kTokenKind},
    {"MODIFIER",           nullptr,                                  kNoSet},
    {"PARAMETER",          Make<Parameter>,                          kTokenKind},
    {"PROGRAM",            Make<Program>,                            kNoSet},
    {"RETURN",             Make<Parameter>,                          kNoSet},
    {"RULE",               MakeWatchedBySecond<Rule>,                kTokenKind},
    {"SCENARIO",           MakeWatchedByFirst<ScenarioLib::Scenario>,kFileScope | kTokenKind},
    {"SESSION_LOG",        nullptr,                                  kNoSet},
    {"TASK",               MakeWatchedByFirst<Task>,                 kTokenKind},
    {"TOKEN",              nullptr,                                  kTokenKind},
    {"VARIABLE",           Make<Variable>,                           kTokenKind},
};
// clang-format on
static_assert(std::size(kKinds) == KindVariable + 1);

// Every header of a text is looked up, so the words are found by their first letter.
constexpr std::size_t kLetters = 26;
constexpr auto kFirstOfLetter = [] {
    std::array<std::uint8_t, kLetters> first{};
    for (std::uint32_t kind = std::size(kKinds); --kind > 0;) {
        first[static_cast<std::size_t>(kKinds[kind].keyword[0] - 'A')] = static_cast<std::uint8_t>(kind);
    }
    return first;
}();

} // namespace

ScenarioItemKind KindOfKeyword(std::string_view keyword) {
    if (keyword.empty() || keyword[0] < 'A' || keyword[0] > 'Z') return KindNone;
    const std::uint32_t first = kFirstOfLetter[static_cast<std::size_t>(keyword[0] - 'A')];
    if (first == 0) return KindNone;
    for (std::uint32_t kind = first; kind < std::size(kKinds); ++kind) {
        if (SameText(kKinds[kind].keyword, keyword)) return static_cast<ScenarioItemKind>(kind);
    }
    return KindNone;
}

const char* KindKeyword(std::uint32_t kind) { return kind < std::size(kKinds) ? kKinds[kind].keyword.data() : ""; }

ScenarioItemKind KindFromKeyword(const std::string& keyword) { return KindOfKeyword(keyword); }

bool KindIsIn(std::uint32_t kind, KindSet set) { return kind < std::size(kKinds) && (kKinds[kind].sets & set) != 0; }

ScenarioItem* CreateItem(std::uint32_t kind, const std::string& name, ItemLoadContext* context) {
    if (kind >= std::size(kKinds) || !kKinds[kind].make) AssertAbort(kSource, 122);
    std::unique_ptr<ScenarioItem> item(kKinds[kind].make(context));
    item->kind = static_cast<ScenarioItemKind>(kind);
    item->SetName(name);
    return item.release();
}
