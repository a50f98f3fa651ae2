// Declares that a parameter of a scenario may be varied, and saves the scenario under another name beside the old one.
//
//     declare INSTALLATION-FILE CONFIGURATION SCENARIO PARAMETER-ID NEW-SCENARIO
//
// A number may be varied by a tenth in both directions, a text keeps the value it has as its only choice.

#include <cmath>
#include <cstdio>
#include <memory>
#include <string>

#include <ScenarioTemplateDb/ScenarioTemplateDb.h>
#include <TavrelScenarioTemplateDb/Failures.h>
#include <TavrelScenarioTemplateDb/TavrelDatabaseDriver.h>
#include <TavrelScenarioTemplateDb/TavrelScenario.h>
#include <TavrelScenarioTemplateDb/TavrelVariadicParameter.h>

#include "Report.h"

namespace {

using ScenarioTemplateDb::ScenarioParameter;
using TavrelScenarioTemplateDb::TavrelVariadicParameter;

// The order matters: the type, then the default, which makes the section that the ranges stand in, then the ranges.
void declareDomain(TavrelVariadicParameter& declaration, const ScenarioParameter& target) {
    if (target.isInteger()) {
        const int value = static_cast<int>(target.getIntegerValue());
        declaration.setType(ScenarioTemplateDb::ParameterTypeInteger);
        declaration.setIntegerDefaultValue(value);
        auto& range = declaration.insertIntegerRange(0);
        range.setMinimum(value - std::abs(value) / 10);
        range.setMaximum(value + std::abs(value) / 10);
    } else if (target.isReal()) {
        const double value = target.getRealValue();
        declaration.setType(ScenarioTemplateDb::ParameterTypeReal);
        declaration.setRealDefaultValue(value);
        auto& range = declaration.insertRealRange(0);
        range.setMinimum(value - std::abs(value) / 10);
        range.setMaximum(value + std::abs(value) / 10);
    } else if (target.isBoolean()) {
        declaration.setType(ScenarioTemplateDb::ParameterTypeBoolean);
        declaration.setBooleanDefaultValue(target.getBooleanValue());
    } else {
        declaration.setType(ScenarioTemplateDb::ParameterTypeLiteral);
        declaration.setLiteralDefaultValue(target.getLiteralValue());
        declaration.insertLiteral(0) = target.getLiteralValue();
    }
}

void declare(const std::string& installation, const std::string& configuration, const std::string& path,
             const std::string& id, const std::string& newPath) {
    const TavrelScenarioTemplateDb::TavrelDatabaseDriver driver(installation, "*", configuration);
    // The interface cannot edit declarations; the driver's own scenario can.
    const auto scenario = TavrelScenarioTemplateDb::createScenario(driver, configuration, path);

    const ScenarioParameter* target = scenario->getParameterFromId(id);
    if (!target) throw ScenarioTemplateDb::Exception("This is no parameter id: " + id, -1);

    TavrelVariadicParameter* declaration = scenario->addNewVariadicParameter();
    declaration->setName(target->getDescription().empty() ? target->getName() : target->getDescription());
    declaration->setDescription("Declared by an example");
    declaration->setParameterId(target->getParameterId());
    declaration->setParameterUnit(target->getParameterUnit());
    declareDomain(*declaration, *target);

    scenario->setPath(newPath);
    TavrelScenarioTemplateDb::saveOrThrow(*scenario);
    const auto saved = driver.getScenario(newPath);
    const std::size_t number = saved->getVariadicParameterNumber();
    std::printf("%s declares %zu variadic parameters, the last one \"%s\"\n", saved->getFilePath().c_str(), number,
                saved->getVariadicParameter(number - 1)->getName().c_str());
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 6) {
        std::fprintf(stderr, "usage: %s INSTALLATION-FILE CONFIGURATION SCENARIO PARAMETER-ID NEW-SCENARIO\n", argv[0]);
        return 2;
    }
    return reportFailures([&] { declare(argv[1], argv[2], argv[3], argv[4], argv[5]); });
}
