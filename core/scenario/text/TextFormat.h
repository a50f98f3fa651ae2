#ifndef SCENARIO_TEXTFORMAT_H
#define SCENARIO_TEXTFORMAT_H

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <scenario/ItemText.h>

// The reader's view of a text, without copies.

// A line ends at its first separator. The blank is none: it is part of whatever it stands in.
constexpr bool IsSeparator(char c) { return c >= '\t' && c <= '\r' && c != '\v'; }

// The byte at the cursor; a NUL when the text is used up.
inline char CharAt(const ScenarioTextStream& stream) { return stream.cursor < stream.end ? *stream.cursor : '\0'; }

inline bool IsUsedUp(const ScenarioTextStream& stream) { return CharAt(stream) == '\0'; }

// The header at the cursor as it stands in the text; false when there is none.
bool MatchHeader(const ScenarioTextStream& stream, std::string_view& keyword, std::string_view& name);

// The key, when the line has the form of an attribute.
std::optional<std::string_view> KeyOf(std::string_view line);

// What stands in the quotes after a key of that length, without a copy: the value lies in the text of the stream.
bool MatchValue(const ScenarioTextStream& stream, std::size_t keyLength, std::string_view& value);
// The same for a first look, which does not count for what the text under way may take.
bool FindValue(const ScenarioTextStream& stream, std::size_t keyLength, std::string_view& value);

// What the last look at a line has shown: from `cursor` up to and including `last` nothing ends the line. Good while
// the text stays as it is; each load begins without it.
struct ScannedLine {
    const char* cursor = nullptr;
    const char* last = nullptr;
};
inline ScannedLine scannedLine;

// As NextLine, for a cursor whose line is known to go on up to `last`.
void NextLineFrom(ScenarioTextStream& stream, const char* last);
// As NextLine, without a second look at what was read already.
inline void NextLineAfterReading(ScenarioTextStream& stream) {
    if (scannedLine.cursor == stream.cursor)
        NextLineFrom(stream, scannedLine.last);
    else
        NextLine(stream);
}

// The rest of the line at the cursor.
std::string_view RestOfLine(const ScenarioTextStream& stream);

// Writes the line that opens or closes a block.
void WriteBrace(std::ostream& out, char brace);

// SplitWords of a part of the text.
void AppendWords(std::string_view value, std::vector<std::string>& words);

#endif
