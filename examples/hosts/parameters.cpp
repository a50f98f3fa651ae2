// Prints every parameter of one scenario by its full id, with its value, its type and its unit.
//
//     parameters INSTALLATION-FILE CONFIGURATION SCENARIO
//
// SCENARIO is the path that browse prints.

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <ScenarioTemplateDb/ScenarioTemplateDb.h>
#include <TavrelScenarioTemplateDb/TavrelDatabaseDriver.h>

#include "Report.h"

namespace {

using ScenarioTemplateDb::ScenarioNode;
using ScenarioTemplateDb::ScenarioParameter;

std::string typeOf(const ScenarioParameter& parameter) {
    if (parameter.isBoolean()) return "boolean";
    if (parameter.isInteger()) return "integer";
    if (parameter.isReal()) return "real";
    if (parameter.isLiteral()) return "literal";
    return "";
}

void print(const ScenarioNode& node) {
    std::vector<ScenarioParameter*> parameters;
    node.getParameters(parameters);
    for (const ScenarioParameter* parameter : parameters) {
        const std::string type = typeOf(*parameter);
        // Vectors, lists and enumerations are none of the four types, and asking for their value is a failure.
        const std::string value = type.empty() ? "(of a type that is not shown)" : parameter->getValueAsString();
        const std::string unit = parameter->hasParameterUnit() ? " " + parameter->getParameterUnit() : "";
        std::printf("%s = %s%s  %s\n", parameter->getParameterId().c_str(), value.c_str(), unit.c_str(), type.c_str());
    }

    // A script node has no children and refuses even the question for all of them, so the number comes first.
    if (node.getChildNumber() == 0) return;
    std::vector<ScenarioNode*> children;
    node.getChildren(children);
    for (const ScenarioNode* child : children) print(*child);
}

void show(const std::string& installation, const std::string& configuration, const std::string& path) {
    // Only a driver with a configuration filter finds scenarios by their path.
    const TavrelScenarioTemplateDb::TavrelDatabaseDriver driver(installation, "*", configuration);
    const auto scenario = driver.getScenario(path);
    std::printf("%s\n%s\n\n", scenario->getName().c_str(), scenario->getDescription().c_str());
    print(*scenario->getRootScenarioNode());
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s INSTALLATION-FILE CONFIGURATION SCENARIO\n", argv[0]);
        return 2;
    }
    return reportFailures([&] { show(argv[1], argv[2], argv[3]); });
}
