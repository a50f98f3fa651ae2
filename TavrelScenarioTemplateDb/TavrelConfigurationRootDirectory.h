#ifndef TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_CONFIGURATION_ROOT_DIRECTORY_H
#define TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_CONFIGURATION_ROOT_DIRECTORY_H

#include <memory>
#include <string>
#include <vector>

#include <ScenarioTemplateDb/DatabaseDirectory.h>
#include <TavrelScenarioTemplateDb/Export.h>

namespace TavrelScenarioTemplateDb {

class TavrelScenarioTemplateDatabase;

// The top of the tree: one directory for each version of the installation.
class TAVREL_DRIVER_API TavrelConfigurationRootDirectory : public ScenarioTemplateDb::DatabaseDirectory {
public:
    explicit TavrelConfigurationRootDirectory(std::shared_ptr<TavrelScenarioTemplateDatabase> sharedDatabase);

    std::size_t getDirectoryNumber() const override;
    std::shared_ptr<ScenarioTemplateDb::DatabaseDirectory> getDirectory(std::size_t index) const override;
    void
    getDirectories(std::vector<std::shared_ptr<ScenarioTemplateDb::DatabaseDirectory>>& directories) const override;
    std::size_t getScenarioNumber() const override;
    // Always throws (ExceptionCodeInvalidIndex): scenarios stand three levels further down.
    std::shared_ptr<ScenarioTemplateDb::Scenario> getScenario(std::size_t index) const override;
    void getScenarios(std::vector<std::shared_ptr<ScenarioTemplateDb::Scenario>>& scenarios) const override;
    // The installation file in generic form.
    std::string getName() const override;
    // Always throws (ExceptionCodeGeneric).
    virtual std::shared_ptr<ScenarioTemplateDb::Scenario> createScenario() const;

private:
    std::shared_ptr<TavrelScenarioTemplateDatabase> database;
};

} // namespace TavrelScenarioTemplateDb

#endif
