#ifndef TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_CONFIGURATION_SCENARIO_DIRECTORY_H
#define TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_CONFIGURATION_SCENARIO_DIRECTORY_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <ScenarioTemplateDb/DatabaseDirectory.h>
#include <TavrelScenarioTemplateDb/Export.h>

namespace TavrelScenarioTemplateDb {

class TavrelScenarioTemplateDatabase;

// The scenarios under one entry of a configuration's data path. It keeps the position of the entry, not its path: when
// the data path changes, the directory follows. A copy shares the database.
class TAVREL_DRIVER_API TavrelConfigurationScenarioDirectory : public ScenarioTemplateDb::DatabaseDirectory {
public:
    TavrelConfigurationScenarioDirectory(std::shared_ptr<TavrelScenarioTemplateDatabase> sharedDatabase,
                                         const std::string& configurationName, std::size_t indexInDataPath);
    TavrelConfigurationScenarioDirectory(const TavrelConfigurationScenarioDirectory& other) = default;
    TavrelConfigurationScenarioDirectory& operator=(const TavrelConfigurationScenarioDirectory& other) = default;

    // 0: folders below are part of a scenario's path.
    std::size_t getDirectoryNumber() const override;
    // Always throws (ExceptionCodeInvalidIndex).
    std::shared_ptr<ScenarioTemplateDb::DatabaseDirectory> getDirectory(std::size_t index) const override;
    void
    getDirectories(std::vector<std::shared_ptr<ScenarioTemplateDb::DatabaseDirectory>>& directories) const override;
    // These three fail as TavrelScenarioTemplateDatabase::getScenarioPaths does; getScenario also with
    // ExceptionCodeGeneric beyond the end. If getScenarios fails, the vector is as it was.
    std::size_t getScenarioNumber() const override;
    std::shared_ptr<ScenarioTemplateDb::Scenario> getScenario(std::size_t index) const override;
    void getScenarios(std::vector<std::shared_ptr<ScenarioTemplateDb::Scenario>>& scenarios) const override;
    // The last step of the folder "data" at this position of the data path, so the same text for all of them: nothing
    // to tell directories apart by. The data path is that of the *current* configuration, which is this one only in a
    // database with a configuration filter; empty if it is shorter.
    std::string getName() const override;

    // The one place that joins a scenario directory and the path of a scenario in it: `directory`, one "/", `path`.
    static std::string getFilePathFromDataBasePath(const std::string& path, const std::string& directory);

private:
    std::shared_ptr<TavrelScenarioTemplateDatabase> database;
    std::string configuration;
    std::size_t directoryIndex;
};

} // namespace TavrelScenarioTemplateDb

#endif
