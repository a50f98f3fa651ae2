#ifndef CFG_SCENARIOWRITER_H
#define CFG_SCENARIOWRITER_H

#include <optional>
#include <string>

#include "../Commons/Xml.h"

namespace cfg::detail {

class Document;

// Why a scenario is not saved that a load would refuse for its size.
inline constexpr const char* kTooLargeToSave = "not saved, since it would be larger than any file that is loaded";

// Gives the bytes of the scenario as it stands: those of its file with the changes put in, every other byte as it was.
// The fault of the first text that was set and cannot be written into this file, if there is one.
std::optional<Commons::detail::XmlFault> WriteScenario(const Document& document, std::string& bytes);

} // namespace cfg::detail

#endif
