#include <TavrelScenarioTemplateDb/TavrelConfigurationScenarioDirectory.h>

#include <string_view>
#include <utility>

#include <Commons/Encoding.h>
#include <ScenarioTemplateDb/Exception.h>
#include <TavrelScenarioTemplateDb/TavrelScenario.h>
#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDatabase.h>
#include <TavrelScenarioTemplateDb/internal/ScenarioPlace.h>
#include <TavrelScenarioTemplateDb/internal/ScenarioWalk.h>
#include <lmkUtils/EnvConfig.h>
#include <lmkUtils/paths.h>

namespace TavrelScenarioTemplateDb {

using ScenarioTemplateDb::DatabaseDirectory;
using ScenarioTemplateDb::Exception;
using ScenarioTemplateDb::ExceptionCodeInvalidIndex;
using ScenarioTemplateDb::Scenario;

TavrelConfigurationScenarioDirectory::TavrelConfigurationScenarioDirectory(
    std::shared_ptr<TavrelScenarioTemplateDatabase> sharedDatabase, const std::string& configurationName,
    std::size_t indexInDataPath)
    : database(std::move(sharedDatabase)), configuration(configurationName), directoryIndex(indexInDataPath) {}

std::size_t TavrelConfigurationScenarioDirectory::getDirectoryNumber() const { return 0; }

std::shared_ptr<DatabaseDirectory> TavrelConfigurationScenarioDirectory::getDirectory(std::size_t) const {
    throw Exception("No directory into the given configuration scenario folder ", ExceptionCodeInvalidIndex);
}

void TavrelConfigurationScenarioDirectory::getDirectories(
    std::vector<std::shared_ptr<DatabaseDirectory>>& directories) const {
    directories.clear();
}

std::size_t TavrelConfigurationScenarioDirectory::getScenarioNumber() const {
    return database->getScenariosNumber(configuration, directoryIndex);
}

std::shared_ptr<Scenario> TavrelConfigurationScenarioDirectory::getScenario(std::size_t index) const {
    const std::pair<std::string, std::string> path = database->getScenarioPath(configuration, directoryIndex, index);
    return std::make_shared<TavrelScenario>(configuration, path.second, path.first);
}

void TavrelConfigurationScenarioDirectory::getScenarios(std::vector<std::shared_ptr<Scenario>>& scenarios) const {
    const auto place = std::make_shared<internal::ScenarioPlace>();
    place->configuration = configuration;
    std::vector<std::shared_ptr<Scenario>> listed;
    const auto found = [&](std::string_view folder, std::string_view name) {
        listed.push_back(std::make_shared<TavrelScenario>(place, internal::relativePath(folder, name)));
        return true;
    };
    place->directory = database->forEachScenario(configuration, directoryIndex, {[&] { listed.clear(); }, found});
    scenarios = std::move(listed);
}

std::string TavrelConfigurationScenarioDirectory::getName() const {
    const std::vector<std::string> paths = lmkUtils::EnvConfig::getSeparatedPath("data");
    // Not the data path of `configuration`, which may be longer than the current one's.
    if (directoryIndex >= paths.size()) return std::string();
    std::string name = lmkUtils::resolveGenericPath(paths[directoryIndex], static_cast<Commons::Encoding::Mode>(1));
    lmkUtils::removePath(name);
    return name;
}

std::string TavrelConfigurationScenarioDirectory::getFilePathFromDataBasePath(const std::string& path,
                                                                              const std::string& directory) {
    return directory + "/" + path;
}

} // namespace TavrelScenarioTemplateDb
