#ifndef TAVREL_COMMAND_DESCRIBE_H
#define TAVREL_COMMAND_DESCRIBE_H

#include <string>
#include <vector>

#include <ScenarioTemplateDb/ScenarioTemplateDb.h>
#include <nlohmann/json.hpp>

namespace tavrel {

// What scenarios hold, as text and as JSON. The members of the objects are documented for scripts to rely on: add some,
// but keep those there are.

using Json = nlohmann::ordered_json;

// Indented text; bytes that are no UTF-8 come out as replacement characters.
std::string DumpJson(const Json& json);
// The same on one line.
std::string DumpJsonLine(const Json& json);

// "boolean", "integer", "real", "literal"; "other" where the interface knows no type.
std::string TypeWord(const ScenarioTemplateDb::ScenarioParameter& parameter);
std::string TypeWord(ScenarioTemplateDb::ParameterType type);

// A number in the shortest spelling that reads back as the same number, under any locale.
std::string ShortNumber(double number);

// The value as text; for a parameter whose type the interface does not know, the text that the file has. Fails as
// getValueAsString does.
std::string ValueText(const ScenarioTemplateDb::ScenarioParameter& parameter);

// The full ids of all parameters of a node and those below it, in the order of the tree.
std::vector<std::string> ParameterIds(const ScenarioTemplateDb::ScenarioNode& node);

// The parameter of that full id. Fails with a Failure that names the nearest one.
const ScenarioTemplateDb::ScenarioParameter& ParameterOf(const ScenarioTemplateDb::Scenario& scenario,
                                                         const std::string& id);

Json ParameterJson(const ScenarioTemplateDb::ScenarioParameter& parameter);
Json NodeJson(const ScenarioTemplateDb::ScenarioNode& node);
Json DeclarationJson(const ScenarioTemplateDb::VariadicParameter& declaration);
Json DeclarationsJson(const ScenarioTemplateDb::Scenario& scenario);

// "real, km/h, default 80, 60 to 90 or 100 to 120"
std::string DeclarationText(const ScenarioTemplateDb::VariadicParameter& declaration);

} // namespace tavrel

#endif
