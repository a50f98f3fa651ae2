#ifndef SCENARIO_TEXTMATCH_H
#define SCENARIO_TEXTMATCH_H

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include <scenario/ScenarioItem.h>

// The reader's view of a text, without copies.

// A line ends at its first separator. The blank is none: it is part of whatever it stands in.
constexpr bool IsSeparator(char c) { return c >= '\t' && c <= '\r' && c != '\v'; }

// The byte at the cursor; a NUL when the text is used up.
inline char CharAt(const ScenarioTextStream& stream) { return stream.cursor < stream.end ? *stream.cursor : '\0'; }

inline bool IsUsedUp(const ScenarioTextStream& stream) { return CharAt(stream) == '\0'; }

// Whether two texts are equal. Names and words are short, and there are several for each line of a text, so the call of
// the library costs more than the comparison.
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

// The header at the cursor as it stands in the text; false when there is none.
bool MatchHeader(const ScenarioTextStream& stream, std::string_view& keyword, std::string_view& name);

// What the last look at a line has shown: from `cursor` up to and including `last` nothing ends the line. Good while
// the text stays as it is; each load begins without it.
struct ScannedLine {
    const char* cursor = nullptr;
    const char* last = nullptr;
};
inline ScannedLine scannedLine;

// As NextLine, for a cursor whose line is known to go on up to `last`.
void NextLineBehind(ScenarioTextStream& stream, const char* last);
// As NextLine, without a second look at what was read already.
inline void NextLineAfterReading(ScenarioTextStream& stream) {
    if (scannedLine.cursor == stream.cursor)
        NextLineBehind(stream, scannedLine.last);
    else
        NextLine(stream);
}

// The rest of the line at the cursor.
std::string_view RestOfLine(const ScenarioTextStream& stream);

ScenarioItemKind KindOfKeyword(std::string_view keyword);

// SplitWords of a part of the text.
void AppendWords(std::string_view value, std::vector<std::string>& words);

#endif
