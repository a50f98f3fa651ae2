#ifndef TAVREL_SCENARIO_TEMPLATE_DB_INTERNAL_FILE_BYTES_H
#define TAVREL_SCENARIO_TEMPLATE_DB_INTERNAL_FILE_BYTES_H

#include <string>
#include <string_view>

namespace TavrelScenarioTemplateDb::internal {

// Whether a file holds these bytes and no others, which is told without memory for the file. False says nothing: what
// cannot be opened, or may not be read as a plain file, is left to whoever reads it.
bool holdsExactly(const std::string& path, std::string_view bytes);

} // namespace TavrelScenarioTemplateDb::internal

#endif
