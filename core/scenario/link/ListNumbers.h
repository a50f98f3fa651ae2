#ifndef SCENARIO_LISTNUMBERS_H
#define SCENARIO_LISTNUMBERS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

#include <scenario/DefinitionLists.h>

// The numbers under which an index keeps the lists of definitions.

inline constexpr std::size_t kListCount = std::size(kDefinitionLists);
inline constexpr std::size_t kEnumTabList = 4;
static_assert(kDefinitionLists[kEnumTabList].kind == KindEnumTab);

inline constexpr auto kListNames = [] {
    std::array<std::string_view, kListCount> names;
    for (std::size_t list = 0; list < kListCount; ++list) names[list] = kDefinitionLists[list].folder;
    return names;
}();

// kListCount when there is none.
inline std::size_t ListOf(std::string_view folderName) {
    std::size_t list = 0;
    while (list < kListCount && kListNames[list] != folderName) ++list;
    return list;
}

// The same for definitions of that kind, where each item of a script passes.
inline constexpr auto kListOfKind = [] {
    std::array<std::size_t, KindVariable + 1> lists{};
    lists.fill(kListCount);
    for (std::size_t list = 0; list < kListCount; ++list) lists[kDefinitionLists[list].kind] = list;
    return lists;
}();
inline std::size_t ListOf(std::string_view folderName, std::uint32_t kind) {
    const std::size_t list = kind < kListOfKind.size() ? kListOfKind[kind] : kListCount;
    return list < kListCount && kListNames[list] == folderName ? list : kListCount;
}

#endif
