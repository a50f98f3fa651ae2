#include <TavrelScenarioTemplateDb/TavrelDatabaseDriver.h>

#include <Commons/Encoding.h>
#include <ScenarioTemplateDb/Exception.h>
#include <TavrelScenarioTemplateDb/TavrelConfigurationRootDirectory.h>
#include <TavrelScenarioTemplateDb/TavrelScenario.h>
#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDatabase.h>
#include <lmkUtils/paths.h>

namespace TavrelScenarioTemplateDb {

using ScenarioTemplateDb::Exception;
using ScenarioTemplateDb::ExceptionCodeScenarioLoad;

namespace {

constexpr const char* kNoFilter = "*";

} // namespace

TavrelDatabaseDriver::TavrelDatabaseDriver(const std::string& configFilePath, const std::string& versionFilter,
                                           const std::string& configurationFilter)
    : database(std::make_shared<TavrelScenarioTemplateDatabase>(configFilePath, versionFilter, configurationFilter)) {}

TavrelDatabaseDriver::~TavrelDatabaseDriver() = default;

std::string TavrelDatabaseDriver::getURI() const {
    std::string version;
    if (database->getVersionFilter() != kNoFilter) version = "?version=" + database->getVersionFilter();
    std::string configuration;
    if (database->getConfigurationFilter() != kNoFilter)
        configuration = (version.empty() ? "?" : "&") + ("config=" + database->getConfigurationFilter());
    return "tavrel://" + database->getConfigurationFilePath() + version + configuration;
}

std::shared_ptr<ScenarioTemplateDb::DatabaseDirectory> TavrelDatabaseDriver::getRootDirectory() const {
    return std::make_shared<TavrelConfigurationRootDirectory>(database);
}

std::shared_ptr<ScenarioTemplateDb::Scenario> TavrelDatabaseDriver::getScenario(const std::string& path) const {
    return std::shared_ptr<ScenarioTemplateDb::Scenario>(
        createTavrelScenario(database->getConfigurationFilter(), path));
}

TavrelScenario* TavrelDatabaseDriver::createTavrelScenario(const std::string& configuration,
                                                           const std::string& path) const {
    const std::string directory = database->getScenarioDirectory(path);
    if (directory.empty() || !lmkUtils::fileExist(directory + "/" + path, static_cast<Commons::Encoding::Mode>(1)))
        throw Exception("Could not find scenario : \"" + path + "\" in the data path of the configuration : \"" +
                            configuration + "\". Please ensure that your configuration is correct.",
                        ExceptionCodeScenarioLoad);
    return new TavrelScenario(configuration, path, directory);
}

} // namespace TavrelScenarioTemplateDb
