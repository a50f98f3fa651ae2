#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDatabase.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <map>
#include <sstream>
#include <string_view>
#include <system_error>
#include <unordered_set>

#include <Poco/DirectoryIterator.h>
#include <Poco/Exception.h>
#include <Poco/Path.h>

#include <Commons/FileUtils.h>
#include <Commons/System.h>
#include <ScenarioTemplateDb/Exception.h>
#include <lmkUtils/ConfigurationError.h>
#include <lmkUtils/EnvConfig.h>

namespace TavrelScenarioTemplateDb {

using ScenarioTemplateDb::Exception;
using ScenarioTemplateDb::ExceptionCodeDirectoryAccess;
using ScenarioTemplateDb::ExceptionCodeGeneric;
using ScenarioTemplateDb::ExceptionCodeInvalidIndex;

namespace {

constexpr const char* kNoFilter = "*";
constexpr const char* kScenarioFolder = "data/scenario";
constexpr std::string_view kScenarioSuffix = ".sce";

// Calls `found` with the path of each scenario file below `root` until it answers false. Lists in the order of Poco's
// siblings-first traversal: a folder to its end, then its subfolders in turn. It does so by hand because that traversal
// asks the disk whether an entry is a folder and keeps the answer to itself, so that asking whether it is a file would
// double the cost of a listing.
//
// Every entry is asked, also those with other names: a broken link stops the walk wherever it lies. A link to a folder
// above itself stops it too, once the system refuses to follow any more links.
template <typename Found>
void forEachScenarioFile(const std::string& root, Found found) {
    const Poco::DirectoryIterator end;
    std::vector<std::string> folders{root}; // those still to be listed, the next one at the end
    while (!folders.empty()) {
        const std::string folder = std::move(folders.back());
        folders.pop_back();
        const auto subfolders = static_cast<std::ptrdiff_t>(folders.size());
        for (Poco::DirectoryIterator entry(folder); entry != end; ++entry) {
            if (entry->isFile()) {
                // The path of an entry ends in its name, so this is the test of the name's extension.
                if (entry->path().ends_with(kScenarioSuffix) && !found(entry->path())) return;
            } else if (entry->isDirectory()) {
                folders.push_back(entry->path());
            }
        }
        std::reverse(folders.begin() + subfolders, folders.end());
    }
}

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

// What of `path` stands below `root`, with forward slashes.
std::string relativePath(const std::string& path, const std::string& root) {
    std::string relative = path.substr(root.size() + 1);
    std::replace(relative.begin(), relative.end(), '\\', '/');
    return relative;
}

} // namespace

TavrelScenarioTemplateDatabase::TavrelScenarioTemplateDatabase(const std::string& configFilePath,
                                                               const std::string& versionFilterText,
                                                               const std::string& configurationFilterText)
    : versionFilter(versionFilterText), configurationFilter(configurationFilterText) {
    try {
        const lmkUtils::EnvConfig environment; // held while the constructor runs
        std::string expanded;
        Commons::System::ExpandLocalEnvironmentVariables(configFilePath, expanded,
                                                         Commons::System::DaemonVariableMatchingPattern,
                                                         std::map<std::string, std::string>());
        if (!configFilePath.empty() && expanded != lmkUtils::EnvConfig::ourConfigCfgFile) {
            if (!Commons::FileUtils::DoesFileExist(expanded))
                throw Exception("Tavrel configuration file [" + expanded + "] doesn't exists!", ExceptionCodeGeneric);
            lmkUtils::EnvConfig::setTavrelConfigFilePath(expanded);
        }
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
    std::vector<std::pair<std::string, std::string>> paths;
    getScenarioPaths(configuration, directoryIndex, paths);
    return paths.size();
}

std::pair<std::string, std::string> TavrelScenarioTemplateDatabase::getScenarioPath(const std::string& configuration,
                                                                                    std::size_t directoryIndex,
                                                                                    std::size_t scenarioIndex) const {
    std::vector<std::pair<std::string, std::string>> paths;
    getScenarioPaths(configuration, directoryIndex, paths);
    // The message shows the scenario's index as the directory's, too. Hosts know it in this form.
    if (scenarioIndex >= paths.size())
        throw Exception("Invalid scenario template index " + std::to_string(scenarioIndex) + " in configuration " +
                            configuration + " directory " + std::to_string(scenarioIndex),
                        ExceptionCodeGeneric);
    return paths[scenarioIndex];
}

int TavrelScenarioTemplateDatabase::getScenarioIndex(const std::string& configuration, std::size_t directoryIndex,
                                                     const std::string& path) const {
    std::vector<std::pair<std::string, std::string>> paths;
    getScenarioPaths(configuration, directoryIndex, paths);
    int index = -1;
    for (const auto& candidate : paths) {
        ++index;
        if (candidate.second == path) break;
    }
    return index; // the last one for a path that is not listed
}

std::string TavrelScenarioTemplateDatabase::getConfigurationFilePath() const {
    return lmkUtils::EnvConfig::transformInGenericPath(lmkUtils::EnvConfig::ourConfigCfgFile, false);
}

void TavrelScenarioTemplateDatabase::getVersions(std::set<std::string>& versions) const {
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
    paths.clear();
    const std::string directory = getScenarioDirectory(configuration, directoryIndex);
    std::string root = walkableRoot(directory);
    std::replace(root.begin(), root.end(), '\\', '/');
    const std::string genericRoot = lmkUtils::EnvConfig::transformInGenericPath(root, false);
    try {
        forEachScenarioFile(root, [&](const std::string& path) {
            paths.emplace_back(genericRoot, relativePath(path, root));
            return true;
        });
    } catch (const Poco::Exception& error) {
        throw Exception("Cannot list scenarios : " + error.displayText(), ExceptionCodeDirectoryAccess);
    }
}

const std::string& TavrelScenarioTemplateDatabase::getScenarioDirectory(const std::string& path) const {
    static const std::string none;
    for (const std::string& directory : scenarioDirectories) {
        const std::string root = walkableRoot(directory);
        bool isThere = false;
        forEachScenarioFile(root, [&](const std::string& candidate) {
            isThere = relativePath(candidate, root) == path;
            return !isThere;
        });
        if (isThere) return directory;
    }
    return none;
}

} // namespace TavrelScenarioTemplateDb
