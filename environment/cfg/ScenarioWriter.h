#ifndef CFG_SCENARIOWRITER_H
#define CFG_SCENARIOWRITER_H

#include <string>

namespace cfg::detail {

class Document;

// The bytes of the scenario as it stands: those of its file with the changes put in, every other byte as it was.
std::string WriteScenario(const Document& document);

} // namespace cfg::detail

#endif
