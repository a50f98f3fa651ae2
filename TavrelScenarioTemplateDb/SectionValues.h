#ifndef TAVREL_SCENARIO_TEMPLATE_DB_SECTION_VALUES_H
#define TAVREL_SCENARIO_TEMPLATE_DB_SECTION_VALUES_H

#include <string>

#include <TavrelScenarioTemplateDb/Export.h>

namespace cfg {
class Section;
}

namespace TavrelScenarioTemplateDb {

// The number that a text begins with, after blanks and signs of plus; 0 for none. Independent of the locale.
TAVREL_DRIVER_API double leadingNumber(const std::string& text);

// The parameter of that name as a number in the stored unit: a boolean as 0 or 1, a text by its leading number.
// `fallback` without such a parameter, and for a null section.
TAVREL_DRIVER_API double numberOf(cfg::Section* section, const std::string& name, double fallback);

// The parameter of that name as a text; empty without one, and for a null section.
TAVREL_DRIVER_API std::string textOf(cfg::Section* section, const std::string& name);

} // namespace TavrelScenarioTemplateDb

#endif
