#ifndef SCENARIO_TEXTMATCH_H
#define SCENARIO_TEXTMATCH_H

#include <string_view>

#include <scenario/ScenarioItem.h>

// The reader's view of a text, without copies.

// A line ends at its first separator. The blank is none: it is part of whatever it stands in.
constexpr bool IsSeparator(char c) { return c >= '\t' && c <= '\r' && c != '\v'; }

// The byte at the cursor; a NUL when the text is used up.
inline char CharAt(const ScenarioTextStream& stream) { return stream.cursor < stream.end ? *stream.cursor : '\0'; }

inline bool IsUsedUp(const ScenarioTextStream& stream) { return CharAt(stream) == '\0'; }

// The header at the cursor as it stands in the text; false when there is none.
bool MatchHeader(const ScenarioTextStream& stream, std::string_view& keyword, std::string_view& name);

// The rest of the line at the cursor.
std::string_view RestOfLine(const ScenarioTextStream& stream);

ScenarioItemKind KindOfKeyword(std::string_view keyword);

#endif
