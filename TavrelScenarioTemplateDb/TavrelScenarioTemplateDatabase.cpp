#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDatabase.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <map>
#include <sstream>
#include <string_view>
#include <system_error>
#include <unordered_set>

#include <Commons/FileUtils.h>
#include <Commons/System.h>
#include <Poco/Exception.h>
#include <Poco/Path.h>
#include <ScenarioTemplateDb/Exception.h>
#include <TavrelScenarioTemplateDb/internal/ScenarioWalk.h>
#include <lmkUtils/ConfigurationError.h>
#include <lmkUtils/EnvConfig.h>
#include <lmkUtils/InstallationMoment.h>

namespace TavrelScenarioTemplateDb {

using internal::ScenarioVisitor;
using ScenarioTemplateDb::Exception;
using ScenarioTemplateDb::ExceptionCodeDirectoryAccess;
using ScenarioTemplateDb::ExceptionCodeGeneric;
using ScenarioTemplateDb::ExceptionCodeInvalidIndex;

namespace {

constexpr const char* kNoFilter = "*";
constexpr const char* kScenarioFolder = "data/scenario";

// A folder as the walk spells it, so that what stands below it can be cut off. Poco resolves ".." by the text alone;
// behind a link that leads elsewhere than the system goes, so there the system is asked.
std::string walkableRoot(const std::string& folder) {
    if (folder.find("/../") != std::string::npos) {
        std::error_code error;
        const std::filesystem::path resolved = std::filesystem::canonical(folder, error);
        if (!error) return resolved.string();
    }
    return Poco::Path(folder).absolute().toString();
}

// The root of the listings of a scenario directory.
std::string walkedRoot(const std::string& directory) {
    std::string root = walkableRoot(directory);
    std::replace(root.begin(), root.end(), '\\', '/');
    return root;
}

void walkScenarios(const std::string& root, const ScenarioVisitor& visitor) {
    try {
        internal::walkScenarioFiles(root, visitor);
    } catch (const Poco::Exception& error) {
        throw Exception("Cannot list scenarios : " + error.displayText(), ExceptionCodeDirectoryAccess);
    }
}

bool isPathOf(std::string_view path, std::string_view folder, std::string_view name) {
    const auto same = [](char found, char wanted) { return wanted == (found == '\\' ? '/' : found); };
    return path.size() == folder.size() + name.size() && std::equal(folder.begin(), folder.end(), path.begin(), same) &&
           std::equal(name.begin(), name.end(), path.end() - static_cast<std::ptrdiff_t>(name.size()), same);
}

} // namespace

TavrelScenarioTemplateDatabase::TavrelScenarioTemplateDatabase(const std::string& configFilePath,
                                                               const std::string& versionFilterText,
                                                               const std::string& configurationFilterText)
    : versionFilter(versionFilterText), configurationFilter(configurationFilterText) {
    try {
        const lmkUtils::EnvConfig environment; // held while the constructor runs
        const lmkUtils::InstallationMoment moment;
        std::string expanded;
        Commons::System::ExpandLocalEnvironmentVariables(configFilePath, expanded,
                                                         Commons::System::DaemonVariableMatchingPattern,
                                                         std::map<std::string, std::string>());
        if (!configFilePath.empty() && expanded != lmkUtils::EnvConfig::ourConfigCfgFile) {
            if (!Commons::FileUtils::DoesFileExist(expanded))
                throw Exception("Tavrel configuration file [" + expanded + "] doesn't exists!", ExceptionCodeGeneric);
            lmkUtils::EnvConfig::setTavrelConfigFilePath(expanded);
        }
        lmkUtils::EnvConfig::requireInitialFile();
        if (configurationFilter != kNoFilter) {
            // An unknown name leaves the current configuration; the listing below then finds no directory.
            lmkUtils::EnvConfig::setConfig(configurationFilter, false);
            getConfigurationScenarioDirectories(configurationFilter, scenarioDirectories);
        }
    } catch (const lmkUtils::ConfigurationError& error) {
        throw Exception(error.what(), ExceptionCodeGeneric);
    }
}

TavrelScenarioTemplateDatabase::~TavrelScenarioTemplateDatabase() = default;

const std::vector<std::string>& TavrelScenarioTemplateDatabase::getScenarioDirectories() const {
    return scenarioDirectories;
}

const std::string& TavrelScenarioTemplateDatabase::getVersionFilter() const { return versionFilter; }

const std::string& TavrelScenarioTemplateDatabase::getConfigurationFilter() const { return configurationFilter; }

std::size_t TavrelScenarioTemplateDatabase::getVersionNumber() const {
    std::set<std::string> versions;
    getVersions(versions);
    return versions.size();
}

std::string TavrelScenarioTemplateDatabase::getVersion(std::size_t index) const {
    std::set<std::string> versions;
    getVersions(versions);
    if (index >= versions.size()) {
        std::ostringstream message;
        message << "Invalid version index : " << index << "\nCurrent Tavrel installation " << getConfigurationFilePath()
                << " only contain " << versions.size() << " different versions.";
        throw Exception(message.str(), ExceptionCodeInvalidIndex);
    }
    return *std::next(versions.begin(), static_cast<std::ptrdiff_t>(index));
}

std::string TavrelScenarioTemplateDatabase::getConfigurationVersion(const std::string& configuration) const {
    const lmkUtils::InstallationMoment moment;
    const std::string path = lmkUtils::EnvConfig::getConfigPath(configuration);
    lmkUtils::EnvConfig::Version version;
    std::memset(static_cast<void*>(&version), 0xFF, sizeof version); // every number -1: none of them given
    if (!lmkUtils::EnvConfig::getConfigVersion(path, version))
        throw Exception("Unable to get version for configuration " + configuration + " (" + path + ")",
                        ExceptionCodeGeneric);
    return version.toString();
}

std::size_t TavrelScenarioTemplateDatabase::getConfigurationNumber(const std::string& version) const {
    std::vector<std::string> configurations;
    getConfigurationsForVersion(version, configurations);
    return configurations.size();
}

std::string TavrelScenarioTemplateDatabase::getConfiguration(const std::string& version, std::size_t index) const {
    std::vector<std::string> configurations;
    getConfigurationsForVersion(version, configurations);
    if (index >= configurations.size()) {
        std::ostringstream message;
        message << "Invalid configuration index : " << index << "\nCurrent version " << version << " only contain "
                << configurations.size() << " different configurations.";
        throw Exception(message.str(), ExceptionCodeInvalidIndex);
    }
    return configurations[index];
}

std::size_t TavrelScenarioTemplateDatabase::getScenarioDirectoryNumber(const std::string& configuration) const {
    std::vector<std::string> directories;
    getConfigurationScenarioDirectories(configuration, directories);
    return directories.size();
}

std::string TavrelScenarioTemplateDatabase::getScenarioDirectory(const std::string& configuration,
                                                                 std::size_t index) const {
    std::vector<std::string> directories;
    getConfigurationScenarioDirectories(configuration, directories);
    if (index >= directories.size())
        throw Exception("Invalid scenario directory index " + std::to_string(index) + " in configuration " +
                            configuration,
                        ExceptionCodeGeneric);
    return directories[index];
}

std::size_t TavrelScenarioTemplateDatabase::getScenariosNumber(const std::string& configuration,
                                                               std::size_t directoryIndex) const {
    std::size_t number = 0;
    const auto found = [&](std::string_view, std::string_view) {
        ++number;
        return true;
    };
    forEachScenario(configuration, directoryIndex, {[&] { number = 0; }, found});
    return number;
}

std::pair<std::string, std::string> TavrelScenarioTemplateDatabase::getScenarioPath(const std::string& configuration,
                                                                                    std::size_t directoryIndex,
                                                                                    std::size_t scenarioIndex) const {
    std::size_t number = 0;
    std::string path;
    const auto found = [&](std::string_view folder, std::string_view name) {
        if (number++ == scenarioIndex) path = internal::relativePath(folder, name);
        return true; // what fails after it is told as well
    };
    std::string root = forEachScenario(configuration, directoryIndex, {[&] { number = 0; }, found});
    // The message shows the scenario's index as the directory's, too. Hosts know it in this form.
    if (scenarioIndex >= number)
        throw Exception("Invalid scenario template index " + std::to_string(scenarioIndex) + " in configuration " +
                            configuration + " directory " + std::to_string(scenarioIndex),
                        ExceptionCodeGeneric);
    return {std::move(root), std::move(path)};
}

int TavrelScenarioTemplateDatabase::getScenarioIndex(const std::string& configuration, std::size_t directoryIndex,
                                                     const std::string& path) const {
    int number = 0;
    int index = -1;
    const auto begin = [&] {
        number = 0;
        index = -1;
    };
    const auto found = [&](std::string_view folder, std::string_view name) {
        if (index < 0 && isPathOf(path, folder, name)) index = number;
        ++number;
        return true;
    };
    forEachScenario(configuration, directoryIndex, {begin, found});
    return index < 0 ? number - 1 : index; // the last one for a path that is not listed
}

std::string TavrelScenarioTemplateDatabase::getConfigurationFilePath() const {
    return lmkUtils::EnvConfig::transformInGenericPath(lmkUtils::EnvConfig::ourConfigCfgFile, false);
}

void TavrelScenarioTemplateDatabase::getVersions(std::set<std::string>& versions) const {
    const lmkUtils::InstallationMoment moment;
    versions.clear();
    for (const std::string& configuration : lmkUtils::EnvConfig::getConfigurationsList()) {
        if (configurationFilter != kNoFilter && configurationFilter != configuration) continue;
        try {
            const std::string version = getConfigurationVersion(configuration);
            if (versionFilter == kNoFilter || versionFilter == version) versions.insert(version);
        } catch (...) {
            // A configuration without a readable version is left out: one broken folder must not hide the others.
        }
    }
}

void TavrelScenarioTemplateDatabase::getConfigurationsForVersion(const std::string& version,
                                                                 std::vector<std::string>& configurations) const {
    const lmkUtils::InstallationMoment moment;
    configurations.clear();
    if (versionFilter != kNoFilter && versionFilter != version) return;
    for (const std::string& configuration : lmkUtils::EnvConfig::getConfigurationsList()) {
        if (configurationFilter != kNoFilter && configurationFilter != configuration) continue;
        try {
            if (getConfigurationVersion(configuration) == version) configurations.push_back(configuration);
        } catch (...) {
            // Left out, as in getVersions.
        }
    }
}

void TavrelScenarioTemplateDatabase::getConfigurationScenarioDirectories(const std::string& configuration,
                                                                         std::vector<std::string>& directories) const {
    directories = lmkUtils::EnvConfig::getSeparatedPathForConfiguration(configuration, kScenarioFolder);
    std::unordered_set<std::string> inaccessible; // a folder that the data path names twice is told once
    std::erase_if(directories, [&inaccessible](const std::string& directory) {
        if (Commons::FileUtils::IsFolder(directory.c_str())) return false;
        inaccessible.insert(directory);
        return true;
    });
    if (inaccessible.empty()) return;

    std::string message = "Data Path ";
    for (const std::string& directory : inaccessible) message += "[" + directory + "] ";
    throw Exception(message + "is inaccessible!", ExceptionCodeDirectoryAccess);
}

void TavrelScenarioTemplateDatabase::getScenarioPaths(const std::string& configuration, std::size_t directoryIndex,
                                                      std::vector<std::pair<std::string, std::string>>& paths) const {
    const lmkUtils::InstallationMoment moment;
    paths.clear();
    const std::string root = walkedRoot(getScenarioDirectory(configuration, directoryIndex));
    const std::string genericRoot = lmkUtils::EnvConfig::transformInGenericPath(root, false);
    const auto found = [&](std::string_view folder, std::string_view name) {
        paths.emplace_back(genericRoot, internal::relativePath(folder, name));
        return true;
    };
    walkScenarios(root, {[&] { paths.clear(); }, found});
}

std::string TavrelScenarioTemplateDatabase::forEachScenario(const std::string& configuration,
                                                            std::size_t directoryIndex,
                                                            const ScenarioVisitor& visitor) const {
    const lmkUtils::InstallationMoment moment;
    const std::string root = walkedRoot(getScenarioDirectory(configuration, directoryIndex));
    walkScenarios(root, visitor);
    return lmkUtils::EnvConfig::transformInGenericPath(root, false);
}

const std::string& TavrelScenarioTemplateDatabase::getScenarioDirectory(const std::string& path) const {
    static const std::string none;
    for (const std::string& directory : scenarioDirectories) {
        bool isThere = false;
        const auto found = [&](std::string_view folder, std::string_view name) {
            isThere = isPathOf(path, folder, name);
            return !isThere;
        };
        internal::walkScenarioFiles(walkableRoot(directory), {[&] { isThere = false; }, found});
        if (isThere) return directory;
    }
    return none;
}

} // namespace TavrelScenarioTemplateDb
