#include <TavrelScenarioTemplateDb/TavrelConfigurationDirectory.h>

#include <utility>

#include <ScenarioTemplateDb/Exception.h>
#include <TavrelScenarioTemplateDb/TavrelConfigurationScenarioDirectory.h>
#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDatabase.h>

namespace TavrelScenarioTemplateDb {

using ScenarioTemplateDb::DatabaseDirectory;
using ScenarioTemplateDb::Exception;
using ScenarioTemplateDb::ExceptionCodeGeneric;
using ScenarioTemplateDb::ExceptionCodeInvalidIndex;
using ScenarioTemplateDb::Scenario;

TavrelConfigurationDirectory::TavrelConfigurationDirectory(
    std::shared_ptr<TavrelScenarioTemplateDatabase> sharedDatabase, const std::string& configurationName)
    : database(std::move(sharedDatabase)), configuration(configurationName) {}

std::size_t TavrelConfigurationDirectory::getDirectoryNumber() const {
    return database->getScenarioDirectoryNumber(configuration);
}

std::shared_ptr<DatabaseDirectory> TavrelConfigurationDirectory::getDirectory(std::size_t index) const {
    const std::string directory = database->getScenarioDirectory(configuration, index);
    if (directory.empty())
        throw Exception("Invalid scenario directory index " + std::to_string(index) + " in configuration " +
                            configuration,
                        ExceptionCodeGeneric);
    return std::make_shared<TavrelConfigurationScenarioDirectory>(database, configuration, index);
}

void TavrelConfigurationDirectory::getDirectories(std::vector<std::shared_ptr<DatabaseDirectory>>& directories) const {
    directories.clear();
    std::vector<std::string> paths;
    database->getConfigurationScenarioDirectories(configuration, paths);
    for (std::size_t index = 0; index < paths.size(); ++index)
        directories.push_back(std::make_shared<TavrelConfigurationScenarioDirectory>(database, configuration, index));
}

std::size_t TavrelConfigurationDirectory::getScenarioNumber() const { return 0; }

std::shared_ptr<Scenario> TavrelConfigurationDirectory::getScenario(std::size_t) const {
    throw Exception("No scenario template can be found in the Tavrel configuration directory!",
                    ExceptionCodeInvalidIndex);
}

void TavrelConfigurationDirectory::getScenarios(std::vector<std::shared_ptr<Scenario>>& scenarios) const {
    scenarios.clear();
}

std::string TavrelConfigurationDirectory::getName() const { return configuration; }

} // namespace TavrelScenarioTemplateDb
