#include "text/Kinds.h"

#include <array>
#include <cstddef>
#include <iterator>

namespace {

struct KindRow {
    std::string_view keyword;
    int sets;
};

// One row per number of ScenarioItemKind.
// clang-format off
constexpr KindRow kKinds[] = {
    {"",                    kNoSet},
    {"ACTION",              kCallable | kTokenKind},
    {"ELSE_ACTION",         kCallable | kTokenKind},
    {"CATALOG",             kNoSet},
    {"CONDITION",           kCallable | kTokenKind},
    {"CONFIG",              kNoSet},
    {"CRITERIA",            kTokenKind},
    {"ENUM",                kTokenKind},
    {"ENUMTAB",             kNoSet},
    {"EVALUATION",          kTokenKind},
    {"EXERCISE_LOG",        kNoSet},
    {"EXERCISE_NDX",        kNoSet},
    {"FOLDER",              kNoSet},
    {"FUNCTION",            kCallable | kTokenKind},
    {"GENERAL_PARAMETERS",  kFileScope | kTokenKind},
    {"GROUP",               kNoSet},
    {"HISTORY",             kNoSet},
    {"INCLUDE",             kFileScope | kTokenKind},
    {"MODIFIER",            kNoSet},
    {"PARAMETER",           kTokenKind},
    {"PROGRAM",             kNoSet},
    {"RETURN",              kNoSet},
    {"RULE",                kTokenKind},
    {"SCENARIO",            kFileScope | kTokenKind},
    {"SESSION_LOG",         kNoSet},
    {"TASK",                kTokenKind},
    {"TOKEN",               kTokenKind},
    {"VARIABLE",            kTokenKind},
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
        if (kKinds[kind].keyword == keyword) return static_cast<ScenarioItemKind>(kind);
    }
    return KindNone;
}

const char* KindKeyword(std::uint32_t kind) { return kind < std::size(kKinds) ? kKinds[kind].keyword.data() : ""; }

ScenarioItemKind KindFromKeyword(const std::string& keyword) { return KindOfKeyword(keyword); }

bool KindIsIn(std::uint32_t kind, KindSet set) { return kind < std::size(kKinds) && (kKinds[kind].sets & set) != 0; }
