#include <TavrelScenarioTemplateDb/TavrelConfigurationRootDirectory.h>

#include <set>
#include <utility>

#include <ScenarioTemplateDb/Exception.h>
#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDatabase.h>
#include <TavrelScenarioTemplateDb/TavrelVersionDirectory.h>

namespace TavrelScenarioTemplateDb {

using ScenarioTemplateDb::DatabaseDirectory;
using ScenarioTemplateDb::Exception;
using ScenarioTemplateDb::ExceptionCodeGeneric;
using ScenarioTemplateDb::ExceptionCodeInvalidIndex;
using ScenarioTemplateDb::Scenario;

TavrelConfigurationRootDirectory::TavrelConfigurationRootDirectory(
    std::shared_ptr<TavrelScenarioTemplateDatabase> sharedDatabase)
    : database(std::move(sharedDatabase)) {}

std::size_t TavrelConfigurationRootDirectory::getDirectoryNumber() const { return database->getVersionNumber(); }

std::shared_ptr<DatabaseDirectory> TavrelConfigurationRootDirectory::getDirectory(std::size_t index) const {
    return std::make_shared<TavrelVersionDirectory>(database, database->getVersion(index));
}

void TavrelConfigurationRootDirectory::getDirectories(
    std::vector<std::shared_ptr<DatabaseDirectory>>& directories) const {
    directories.clear();
    std::set<std::string> versions;
    database->getVersions(versions);
    for (const std::string& version : versions)
        directories.push_back(std::make_shared<TavrelVersionDirectory>(database, version));
}

std::size_t TavrelConfigurationRootDirectory::getScenarioNumber() const { return 0; }

std::shared_ptr<Scenario> TavrelConfigurationRootDirectory::getScenario(std::size_t) const {
    throw Exception("No scenario template can be found in the Tavrel installation root directory!",
                    ExceptionCodeInvalidIndex);
}

void TavrelConfigurationRootDirectory::getScenarios(std::vector<std::shared_ptr<Scenario>>& scenarios) const {
    scenarios.clear();
}

std::string TavrelConfigurationRootDirectory::getName() const { return database->getConfigurationFilePath(); }

std::shared_ptr<Scenario> TavrelConfigurationRootDirectory::createScenario() const {
    throw Exception("Unable to create a scenario template into the Tavrel installation root directory!",
                    ExceptionCodeGeneric);
}

} // namespace TavrelScenarioTemplateDb
