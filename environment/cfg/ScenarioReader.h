#ifndef CFG_SCENARIOREADER_H
#define CFG_SCENARIOREADER_H

#include <optional>
#include <string>

#include "../Commons/Xml.h"

namespace cfg::detail {

class Document;

// Fills an empty document from the bytes of a scenario file, which it keeps. The first fault of the file, if it has
// one; the document is then not to be used.
std::optional<Commons::detail::XmlFault> ReadScenario(std::string bytes, Document& document);

} // namespace cfg::detail

#endif
