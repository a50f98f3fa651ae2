#ifndef SCENARIO_SHORTTEXT_H
#define SCENARIO_SHORTTEXT_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

// Whether two texts are equal, for where that is asked at each evaluation of a short one: the call of the library would
// cost more than the comparison.
inline bool SameText(std::string_view a, std::string_view b) {
    const std::size_t size = a.size();
    if (size != b.size()) return false;
    const auto differ = [&]<class Word>(std::size_t at, Word) {
        Word one;
        Word other;
        std::memcpy(&one, a.data() + at, sizeof one);
        std::memcpy(&other, b.data() + at, sizeof other);
        return one != other;
    };
    // The last word may overlap the one before.
    constexpr std::size_t kWord = sizeof(std::uint64_t);
    constexpr std::size_t kHalf = sizeof(std::uint32_t);
    if (size >= kWord) {
        for (std::size_t at = 0; at + kWord < size; at += kWord)
            if (differ(at, std::uint64_t{})) return false;
        return !differ(size - kWord, std::uint64_t{});
    }
    if (size >= kHalf) return !differ(0, std::uint32_t{}) && !differ(size - kHalf, std::uint32_t{});
    for (std::size_t at = 0; at < size; ++at)
        if (a[at] != b[at]) return false;
    return true;
}

#endif
