#ifndef TAVREL_VARIATION_XMLESCAPE_H
#define TAVREL_VARIATION_XMLESCAPE_H

#include <string>
#include <string_view>

namespace TavrelVariation {

// A text as it stands in an attribute or between the tags of XML and HTML. What XML cannot hold at all, and bytes that
// are no UTF-8, become the replacement character.
std::string XmlEscaped(std::string_view text);

} // namespace TavrelVariation

#endif
