#ifndef TAVREL_SCENARIO_TEMPLATE_DB_INTERNAL_STANDARD_NUMBER_H
#define TAVREL_SCENARIO_TEMPLATE_DB_INTERNAL_STANDARD_NUMBER_H

#include <cstdint>
#include <optional>
#include <string>

namespace TavrelScenarioTemplateDb {

// The numbers of a script as std::stoll and std::stod read them: blanks and a sign before the number, anything after
// it. Unlike those two they do not depend on the locale of the host, they answer nothing where there is no number, and
// the std::out_of_range that they throw says the same with every standard library: "stoll argument out of range" and
// "stod argument out of range".
std::optional<std::int64_t> standardWholeNumber(const std::string& text);
std::optional<double> standardNumber(const std::string& text);

} // namespace TavrelScenarioTemplateDb

#endif
