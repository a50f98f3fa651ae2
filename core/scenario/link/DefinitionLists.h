#ifndef SCENARIO_DEFINITIONLISTS_H
#define SCENARIO_DEFINITIONLISTS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

#include <scenario/ItemText.h>

#include "text/ShortText.h"

// The folders of a model in which definitions are looked up, by their names.

struct ListRow {
    std::string_view folderName;
    ScenarioItemKind kind; // of the definitions that are looked up in it
};

// clang-format off
inline constexpr ListRow kLists[] = {
    {"PARAMETER_LIST", KindParameter},
    {"FUNCTION_LIST",  KindFunction},
    {"ACTION_LIST",    KindAction},
    {"CONDITION_LIST", KindCondition},
    {"ENUMTAB_LIST",   KindEnumTab},
};
// clang-format on
inline constexpr std::size_t kListCount = std::size(kLists);
inline constexpr std::size_t kEnumTabList = 4;

// kListCount when there is none.
inline std::size_t ListOf(std::string_view folderName) {
    std::size_t list = 0;
    while (list < kListCount && kLists[list].folderName != folderName) ++list;
    return list;
}

// The same for definitions of that kind, where each item of a script passes.
inline constexpr auto kListOfKind = [] {
    std::array<std::size_t, KindVariable + 1> lists{};
    lists.fill(kListCount);
    for (std::size_t list = 0; list < kListCount; ++list) lists[kLists[list].kind] = list;
    return lists;
}();
inline std::size_t ListOf(std::string_view folderName, std::uint32_t kind) {
    const std::size_t list = kind < kListOfKind.size() ? kListOfKind[kind] : kListCount;
    return list < kListCount && SameText(kLists[list].folderName, folderName) ? list : kListCount;
}

#endif
