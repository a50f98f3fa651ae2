#ifndef TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_CONFIGURATION_DIRECTORY_H
#define TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_CONFIGURATION_DIRECTORY_H

#include <memory>
#include <string>
#include <vector>

#include <ScenarioTemplateDb/DatabaseDirectory.h>
#include <TavrelScenarioTemplateDb/Export.h>

namespace TavrelScenarioTemplateDb {

class TavrelScenarioTemplateDatabase;

// One directory for each scenario directory in the data path of a configuration.
class TAVREL_DRIVER_API TavrelConfigurationDirectory : public ScenarioTemplateDb::DatabaseDirectory {
public:
    TavrelConfigurationDirectory(std::shared_ptr<TavrelScenarioTemplateDatabase> sharedDatabase,
                                 const std::string& configurationName);

    // The three of them throw (ExceptionCodeDirectoryAccess) if any folder of the data path is missing.
    std::size_t getDirectoryNumber() const override;
    std::shared_ptr<ScenarioTemplateDb::DatabaseDirectory> getDirectory(std::size_t index) const override;
    void
    getDirectories(std::vector<std::shared_ptr<ScenarioTemplateDb::DatabaseDirectory>>& directories) const override;
    std::size_t getScenarioNumber() const override;
    // Always throws (ExceptionCodeInvalidIndex): scenarios stand one level further down.
    std::shared_ptr<ScenarioTemplateDb::Scenario> getScenario(std::size_t index) const override;
    void getScenarios(std::vector<std::shared_ptr<ScenarioTemplateDb::Scenario>>& scenarios) const override;
    // The name of the configuration.
    std::string getName() const override;

private:
    std::shared_ptr<TavrelScenarioTemplateDatabase> database;
    std::string configuration;
};

} // namespace TavrelScenarioTemplateDb

#endif
