#ifndef CFG_XMLTEXT_H
#define CFG_XMLTEXT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// The text of an XML file that is known to be one: where elements begin and end in it, and values as its characters.
// All positions are byte offsets. A text that is no XML makes no sense of the answers, but is never read beyond its
// end.
namespace cfg::detail {

bool IsXmlName(std::string_view name);

// The value of an attribute whose text begins at `position`, after the quote, with references resolved.
std::string AttributeText(std::string_view source, size_t position);
// Where that text ends, at the closing quote.
size_t AttributeEnd(std::string_view source, size_t position);

// Where an element stands.
struct ElementExtent {
    size_t begin;        // at "<"
    size_t contentBegin; // after ">"
    size_t contentEnd;   // at "</"; as contentBegin for an empty-element tag
    size_t end;          // after the last ">"
    bool isEmptyTag;     // "<a/>"
};

// The element whose name begins at `name`.
ElementExtent FindElement(std::string_view source, size_t name);
// The end of the element in whose start tag `position` stands, outside of quotes.
size_t FindElementEnd(std::string_view source, size_t position);

// Whether nothing but characters and references stands inside the element whose name begins at `name`: no comment, no
// CDATA section, no other element.
bool HoldsPlainText(std::string_view source, size_t name);

// The text inside an element that holds no other elements.
struct ElementText {
    std::string text;
    std::vector<std::pair<size_t, size_t>> pieces; // of text and CDATA, with its marks, between comments
    bool isOneCData = false;                       // nothing but a CDATA section
    bool hasElements = false;                      // then the rest is of no use
};

ElementText ReadElementText(std::string_view source, size_t name);

// The line end and the blanks right before `position`, if it stands first in its line; else empty.
std::string_view LineStart(std::string_view source, size_t position);

// Characters as they are written between tags and, in quotes of that kind, in an attribute. What a reader of XML would
// change (a carriage return, in attributes also tabs and line feeds) is written as a reference.
std::string EscapedText(std::string_view text);
std::string EscapedAttribute(std::string_view text, char quote);

} // namespace cfg::detail

#endif
