#include <lmkUtils/EnvConfig.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <iterator>

#include <Commons/FileUtils.h>
#include <Commons/System.h>
#include <lmkUtils/ConfigurationError.h>
#include <lmkUtils/paths.h>

#include "../Commons/Files.h"
#include "Installation.h"
#include "MomentFiles.h"

namespace lmkUtils {

namespace {

using detail::Configuration;
using detail::Installation;

// Of the moment when the process began.
const std::string& InitialFile() {
    static const std::string file = [] {
        const char* const value = std::getenv("TAVREL_CONFIG");
        return std::string(value ? value : "");
    }();
    return file;
}

// Where a path leads from the working directory of this moment.
std::string LocateFile(const std::string& path) {
    std::error_code error;
    const std::string here = std::filesystem::current_path(error).string();
    return detail::AbsolutePath(path, here);
}

// The file in use as a place on disk. It is located once, when it is taken into use, so that a later change of the
// working directory does not move the installation; whoever assigns ourConfigCfgFile by hand locates it anew.
struct Location {
    std::string text;
    std::string path;
};

Location& LocationInUse() {
    static Location location;
    return location;
}

std::string FileInUse() {
    Location& location = LocationInUse();
    if (location.text != EnvConfig::ourConfigCfgFile)
        location = {EnvConfig::ourConfigCfgFile, LocateFile(EnvConfig::ourConfigCfgFile)};
    return location.path;
}

std::string& CurrentConfiguration() {
    static std::string name;
    return name;
}

// Whether the file that the process began with has been read, or given up for another one. Until then nobody knows
// that there is something wrong with it.
bool& IsInitialFileKnown() {
    static bool isKnown = false;
    return isKnown;
}

// What the file in use says now; nothing, if it says nothing readable any more.
Installation ReadInUse() {
    if (EnvConfig::ourConfigCfgFile.empty()) return {};
    try {
        Installation installation = detail::ReadInstallation(FileInUse(), EnvConfig::ourConfigCfgFile);
        IsInitialFileKnown() = true;
        return installation;
    } catch (const ConfigurationError&) {
        if (!IsInitialFileKnown() && EnvConfig::ourConfigCfgFile == InitialFile()) throw;
        return {};
    }
}

std::vector<std::string> DataPathOf(const std::string& configuration) {
    const std::string folder = EnvConfig::getConfigPath(configuration);
    if (folder.empty()) return {};
    try {
        return detail::ReadDataPath(folder);
    } catch (const ConfigurationError&) {
        return {};
    }
}

// Asked by items in the midst of a read, which is no place to tell of the installation.
std::vector<std::string> CurrentDataPath() {
    try {
        return DataPathOf(CurrentConfiguration());
    } catch (const ConfigurationError&) {
        return {};
    }
}

// "3.2" into 3, 2, -1, -1.
bool ParseVersion(const std::string& text, EnvConfig::Version& version) {
    EnvConfig::Version parsed{{-1, -1, -1, -1}};
    const char* at = text.data();
    const char* const end = text.data() + text.size();
    for (std::int32_t& number : parsed.numbers) {
        const auto [next, error] = std::from_chars(at, end, number);
        if (error != std::errc() || *at == '-') return false;
        if (next == end) {
            version = parsed;
            return true;
        }
        if (*next != '.') return false;
        at = next + 1;
    }
    return false;
}

// Steps of a relative path without "." and ".."; false if they lead above their start.
bool ResolveWithin(const std::string& path, std::string& resolved) {
    std::vector<std::string> steps;
    const std::filesystem::path relative = std::filesystem::path(path).relative_path();
    for (const std::filesystem::path& step : relative) {
        if (step == ".." && steps.empty()) return false;
        if (step == "..")
            steps.pop_back();
        else if (!step.empty() && step != ".")
            steps.push_back(step.string());
    }
    resolved.clear();
    for (const std::string& step : steps) resolved += "/" + step;
    return true;
}

// The value of a path variable as the beginning of a path; empty if it cannot be one.
std::string FolderOfVariable(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    std::string folder = value ? Commons::detail::WithForwardSlashes(value) : "";
    while (folder.ends_with('/')) folder.pop_back();
    return folder;
}

bool BeginsWithFolder(const std::string& path, const std::string& folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

} // namespace

std::string EnvConfig::ourConfigCfgFile = InitialFile();

EnvConfig::EnvConfig() = default;
EnvConfig::~EnvConfig() = default;

std::string EnvConfig::Version::toString() const {
    std::string text;
    for (const std::int32_t number : numbers)
        if (number >= 0) text += (text.empty() ? "" : ".") + std::to_string(number);
    return text;
}

void EnvConfig::setTavrelConfigFilePath(const std::string& path) {
    const Location location{path, LocateFile(path)};
    detail::ForgetMomentAnswers();
    detail::ReadInstallation(location.path, path);
    IsInitialFileKnown() = true;
    LocationInUse() = location;
    ourConfigCfgFile = location.text;
}

void EnvConfig::requireInitialFile() {
    if (!IsInitialFileKnown()) ReadInUse();
}

bool EnvConfig::setConfig(const std::string& name, bool) {
    if (getConfigPath(name).empty()) return false;
    CurrentConfiguration() = name;
    return true;
}

void EnvConfig::leaveConfig() { CurrentConfiguration().clear(); }

EnvConfig::InUse EnvConfig::getInUse() { return {ourConfigCfgFile, FileInUse(), CurrentConfiguration()}; }

void EnvConfig::putBack(const InUse& former) {
    ourConfigCfgFile = former.file;
    LocationInUse() = {former.file, former.place};
    CurrentConfiguration() = former.configuration;
}

const std::string& EnvConfig::getCurrentConfiguration() { return CurrentConfiguration(); }

std::vector<std::string> EnvConfig::getConfigurationsList() {
    const Installation installation = ReadInUse();
    std::vector<std::string> names;
    std::transform(installation.configurations.begin(), installation.configurations.end(), std::back_inserter(names),
                   [](const Configuration& configuration) { return configuration.name; });
    return names;
}

std::string EnvConfig::getConfigPath(const std::string& name) {
    if (name.empty()) return {};
    for (const Configuration& configuration : ReadInUse().configurations)
        if (configuration.name == name) return configuration.folder;
    return {};
}

bool EnvConfig::getConfigVersion(const std::string& path, Version& version) {
    if (path.empty()) return false; // an unknown configuration
    try {
        return ParseVersion(detail::ReadVersionText(path), version);
    } catch (const ConfigurationError&) {
        return false;
    }
}

std::vector<std::string> EnvConfig::getSeparatedPathForConfiguration(const std::string& name,
                                                                     const std::string& relative) {
    std::vector<std::string> paths = DataPathOf(name);
    for (std::string& path : paths) path += "/" + Commons::detail::WithForwardSlashes(relative);
    return paths;
}

std::vector<std::string> EnvConfig::getSeparatedPath(const std::string& relative) {
    return getSeparatedPathForConfiguration(CurrentConfiguration(), relative);
}

std::string EnvConfig::transformInGenericPath(const std::string& path, bool) {
    const std::string forward = Commons::detail::WithForwardSlashes(path);
    std::string variable;
    std::string folder;
    for (const std::string& name : ReadInUse().pathVariables) {
        const std::string candidate = FolderOfVariable(name);
        if (candidate.size() > folder.size() && BeginsWithFolder(forward, candidate)) {
            variable = name;
            folder = candidate;
        }
    }
    return folder.empty() ? forward : "${" + variable + "}" + forward.substr(folder.size());
}

std::string EnvConfig::findInPath(const std::string& directory, const std::string& file) {
    using Commons::detail::WithForwardSlashes;
    std::string below;
    if (file.empty() || !ResolveWithin(WithForwardSlashes(directory) + "/" + WithForwardSlashes(file), below))
        return {};
    for (const std::string& root : CurrentDataPath())
        if (Commons::FileUtils::DoesFileExist(root + below)) return root + below;
    return {};
}

std::string EnvConfig::operator[](const std::string& path) const {
    std::string resolved = resolveGenericPath(path, Commons::Encoding::ModeUtf8);
    if (resolved.starts_with('/')) return resolved;
    const std::vector<std::string> roots = CurrentDataPath();
    return roots.empty() ? resolved : roots.front() + "/" + resolved;
}

} // namespace lmkUtils
