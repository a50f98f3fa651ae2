#ifndef TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_VERSION_DIRECTORY_H
#define TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_VERSION_DIRECTORY_H

#include <memory>
#include <string>
#include <vector>

#include <ScenarioTemplateDb/DatabaseDirectory.h>
#include <TavrelScenarioTemplateDb/Export.h>

namespace TavrelScenarioTemplateDb {

class TavrelScenarioTemplateDatabase;

// One directory for each configuration of a version. No folder on disk stands for it.
class TAVREL_DRIVER_API TavrelVersionDirectory : public ScenarioTemplateDb::DatabaseDirectory {
public:
    TavrelVersionDirectory(std::shared_ptr<TavrelScenarioTemplateDatabase> sharedDatabase,
                           const std::string& versionText);

    std::size_t getDirectoryNumber() const override;
    std::shared_ptr<ScenarioTemplateDb::DatabaseDirectory> getDirectory(std::size_t index) const override;
    void
    getDirectories(std::vector<std::shared_ptr<ScenarioTemplateDb::DatabaseDirectory>>& directories) const override;
    std::size_t getScenarioNumber() const override;
    // Always throws (ExceptionCodeInvalidIndex): scenarios stand two levels further down.
    std::shared_ptr<ScenarioTemplateDb::Scenario> getScenario(std::size_t index) const override;
    void getScenarios(std::vector<std::shared_ptr<ScenarioTemplateDb::Scenario>>& scenarios) const override;
    // The version.
    std::string getName() const override;

private:
    std::shared_ptr<TavrelScenarioTemplateDatabase> database;
    std::string version;
};

} // namespace TavrelScenarioTemplateDb

#endif
