#ifndef TAVREL_COMMAND_SHOWNTEXT_H
#define TAVREL_COMMAND_SHOWNTEXT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

// Text of a file as a terminal may get it: what would move the cursor, change the direction of writing or is no UTF-8
// is written out, such as \x1b or \u202e, and so seen.
std::string ShownText(std::string_view text);
// Whether that is the text itself, as it is for nearly all texts. False says nothing.
bool IsShownAsItIs(std::string_view text);

// A row of a file for a terminal, with the place of each of its characters.
struct ShownLine {
    std::string text;
    // For each code point of the row (a byte that is no UTF-8 counts as one), the column in `text` where it begins,
    // from 0; one entry more for the end.
    std::vector<std::size_t> columns;
};

// As ShownText, but the tabs at the beginning become four blanks each, so that what is marked below stands right on any
// terminal.
ShownLine ShownLineOf(std::string_view row);

// Without control characters that XML forbids, which are written out, and with its signs escaped.
std::string XmlText(std::string_view text);

} // namespace tavrel

#endif
