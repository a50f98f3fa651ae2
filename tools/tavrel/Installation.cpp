#include "Installation.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include <unistd.h>

#include <fmt/format.h>
#include <lmkUtils/EnvConfig.h>
#include <scenario/NearestName.h>

#include "Files.h"
#include "Scripts.h"
#include "Spelling.h"

namespace tavrel {

namespace {

std::string OtherSpelling(Context& context, const std::string& wanted);

using lmkUtils::EnvConfig;
using TavrelScenarioTemplateDb::RootModel;
using TavrelScenarioTemplateDb::TavrelDatabaseDriver;
using TavrelScenarioTemplateDb::TavrelScenario;
using TavrelScenarioTemplateDb::TavrelScenarioTemplateDatabase;

constexpr const char* kAll = "*";
constexpr std::string_view kExtension = ".sce";
constexpr const char* kInstallationFile = "tavrel.xml";

// The library's own join of a scenario directory and the path below it.
std::string FileIn(const std::string& directory, const std::string& path) {
    return TavrelScenarioTemplateDb::TavrelConfigurationScenarioDirectory::getFilePathFromDataBasePath(path, directory);
}

std::string Names(const std::vector<Configuration>& configurations) {
    std::vector<std::string> names;
    for (const Configuration& configuration : configurations) names.push_back(configuration.name);
    return fmt::format("{}", fmt::join(names, ", "));
}

// The template at `path`, in the first folder of the data path that has it. The driver would find the same one by a
// walk through all folders, which takes its time with ten thousand scenarios and is stopped by a broken link on the
// way.
std::unique_ptr<TavrelScenario> Created(const TavrelDatabaseDriver& driver,
                                        const TavrelScenarioTemplateDatabase& database,
                                        const std::string& configuration, const std::string& path) {
    std::vector<std::string> directories;
    database.getConfigurationScenarioDirectories(configuration, directories);
    std::error_code error;
    for (const std::string& directory : directories)
        if (std::filesystem::exists(FileIn(directory, path), error))
            return std::make_unique<TavrelScenario>(configuration, path, directory);
    return std::unique_ptr<TavrelScenario>(driver.createTavrelScenario(configuration, path));
}

// Whether it makes no difference which of the configurations is taken: one file, read with one root model.
bool AreTheSame(const std::vector<Configuration>& holders, const std::vector<std::string>& files) {
    const std::string model = RootModel::fileOf(holders[0].name);
    for (std::size_t i = 1; i < holders.size(); ++i) {
        std::error_code error;
        const std::string other = RootModel::fileOf(holders[i].name);
        if (!std::filesystem::equivalent(files[0], files[i], error)) return false;
        if (model != other && !std::filesystem::equivalent(model, other, error)) return false;
    }
    return true;
}

// Asked of each file of an installation, as is the path below: the text tells both faster than its parts.
bool IsNamedLikeAScenario(std::string_view path) {
    const std::string_view name = path.substr(path.rfind('/') + 1);
    return name.ends_with(kExtension) && name != kExtension;
}

// `path` was found by a walk through `folder`.
std::string PathBelow(const std::string& path, const std::string& folder) {
    if (!folder.empty() && folder.back() != '/' && path.starts_with(folder) && path[folder.size()] == '/')
        return path.substr(folder.size() + 1);
    return std::filesystem::path(path).lexically_relative(folder).generic_string();
}

// What is named like a scenario below a folder, by whether it is a file. The library lists files only, and gives a
// listing up at a link that leads nowhere.
void SortOut(const std::string& folder, std::vector<std::string>& files, std::vector<std::string>& others,
             const std::function<void(const std::string&)>& failed) {
    const auto found = [&](const std::string& path) {
        if (!IsNamedLikeAScenario(path)) return;
        std::error_code error;
        (std::filesystem::is_regular_file(path, error) ? files : others).push_back(PathBelow(path, folder));
    };
    Walk(folder, found, failed);
}

} // namespace

std::string InstallationFileInUse(const Arguments& arguments) {
    if (arguments.Has("--config")) return arguments.Text("--config");
    const char* fromEnvironment = std::getenv("TAVREL_CONFIG");
    if (fromEnvironment && *fromEnvironment) return fromEnvironment;
    std::error_code error;
    const std::string near = InstallationFileFrom(std::filesystem::current_path(error).string());
    if (near.empty()) return SampleInstallationFile();
    static bool isTold = false;
    if (!isTold && isatty(STDERR_FILENO) == 1) Report("the installation is " + near);
    isTold = true;
    return near;
}

std::string InstallationFileFrom(const std::string& folder) {
    std::error_code error;
    for (std::filesystem::path place = folder; !place.empty(); place = place.parent_path()) {
        if (std::filesystem::is_regular_file(place / kInstallationFile, error))
            return (place / kInstallationFile).string();
        if (place == place.root_path()) break;
    }
    return "";
}

std::string ChosenConfiguration(const Arguments& arguments) {
    const std::string wanted = arguments.Text("--configuration");
    const std::vector<std::string> names = EnvConfig::getConfigurationsList();
    return wanted.empty() ? wanted : MeantOf(wanted, names);
}

std::string SampleInstallationFile() {
    std::error_code error;
    const std::filesystem::path command = std::filesystem::read_symlink("/proc/self/exe", error);
    // The place of the sample beside the command is the same in a build tree and where the command is installed.
    return (command.parent_path() / TAVREL_SAMPLE_FROM_COMMAND / "tavrel.xml").lexically_normal().string();
}

Installation::Installation(Context& userContext)
    : Installation(userContext, InstallationFileInUse(userContext.arguments)) {}

Installation::Installation(Context& userContext, const std::string& installationFile)
    : context(userContext), file(installationFile) {
    if (file.empty()) throw Failure{ExitUsage, "--config takes the path of an installation file"};
    // The driver looks at a file only if it is not the one in use, and TAVREL_CONFIG is in use from the beginning; so
    // the file is taken into use by hand, which tells what is wrong with it.
    EnvConfig::setTavrelConfigFilePath(file);
    file = EnvConfig::ourConfigCfgFile;
}

TavrelDatabaseDriver Installation::Driver() const {
    return TavrelDatabaseDriver(file, context.arguments.Text("--version-filter", kAll),
                                context.arguments.Has("--configuration") ? ChosenConfiguration(context.arguments)
                                                                         : kAll);
}

bool Installation::PassesFilter(const Configuration& configuration) const {
    const bool isChosen =
        !context.arguments.Has("--configuration") || ChosenConfiguration(context.arguments) == configuration.name;
    return isChosen && context.arguments.Text("--version-filter", configuration.version) == configuration.version;
}

std::vector<Configuration> Installation::Configurations() {
    const TavrelScenarioTemplateDatabase database(file, kAll, kAll);
    std::vector<Configuration> all, passing;
    for (const std::string& name : EnvConfig::getConfigurationsList()) {
        try {
            all.push_back({name, database.getConfigurationVersion(name)});
            if (PassesFilter(all.back())) passing.push_back(all.back());
        } catch (...) {
            const Failure failure = CurrentFailure();
            if (context.arguments.Text("--configuration", name) == name) context.Tell(failure);
        }
    }
    if (passing.empty() && context.status == ExitClean) {
        const bool filtered = context.arguments.Has("--configuration") || context.arguments.Has("--version-filter");
        std::vector<std::string> names;
        for (const Configuration& configuration : all) names.push_back(configuration.name);
        context.Tell({ExitUnreadable, filtered
                                          ? fmt::format("no configuration passes the filters{}; {} has {}",
                                                        DidYouMean(context.arguments.Text("--configuration"), names),
                                                        file, all.empty() ? "none" : Names(all))
                                          : fmt::format("{} has no configuration", file)});
    }
    std::stable_sort(passing.begin(), passing.end(),
                     [](const Configuration& a, const Configuration& b) { return a.version < b.version; });
    return passing;
}

std::vector<ScenarioDirectory> Installation::Directories(const Configuration& configuration) {
    const TavrelScenarioTemplateDatabase database(file, configuration.version, configuration.name);
    std::vector<ScenarioDirectory> directories;
    for (const std::string& path : database.getScenarioDirectories()) {
        ScenarioDirectory directory{configuration, path, {}, {}};
        std::vector<std::string> files;
        std::vector<Failure> failures;
        SortOut(path, files, directory.noFiles, [&](const std::string& sentence) {
            failures.push_back({ExitUnreadable, sentence});
        });
        std::vector<std::pair<std::string, std::string>> paths;
        try {
            database.getScenarioPaths(configuration.name, directories.size(), paths);
            for (const auto& [folder, scenario] : paths) directory.scenarios.push_back(scenario);
        } catch (...) {
            directory.scenarios = std::move(files);
            if (directory.noFiles.empty() && failures.empty()) failures.push_back(CurrentFailure());
        }
        for (const Failure& failure : failures) context.Tell(failure);
        // A walk gives the order of the file system, which differs from machine to machine.
        std::sort(directory.scenarios.begin(), directory.scenarios.end());
        std::sort(directory.noFiles.begin(), directory.noFiles.end());
        directories.push_back(std::move(directory));
    }
    return directories;
}

std::vector<ScenarioDirectory> Installation::AllDirectories() {
    std::vector<ScenarioDirectory> all;
    for (const Configuration& configuration : Configurations()) {
        try {
            for (ScenarioDirectory& directory : Directories(configuration)) {
                for (const std::string& path : directory.noFiles)
                    context.Tell({ExitUnreadable, fmt::format("{}: {}", directory.FileOf(path),
                                                              ReasonNotToOpen(directory.FileOf(path)))});
                all.push_back(std::move(directory));
            }
        } catch (...) {
            const Failure failure = CurrentFailure();
            context.Tell({failure.status, fmt::format("{}: {}", configuration.name, failure.sentence)});
        }
    }
    return all;
}

OpenedScenario Installation::Open(const std::string& wanted) {
    const TavrelScenarioTemplateDatabase database(file, kAll, kAll);
    std::vector<Configuration> holders;
    std::vector<std::string> files; // the one that each of them has
    const std::vector<Configuration> candidates = Configurations();
    const auto look = [&](const std::string& path, bool isFirst) {
        for (const Configuration& configuration : candidates) {
            try {
                std::vector<std::string> directories;
                database.getConfigurationScenarioDirectories(configuration.name, directories);
                std::error_code error;
                const auto directory = std::find_if(directories.begin(), directories.end(), [&](const auto& folder) {
                    return std::filesystem::exists(FileIn(folder, path), error);
                });
                if (directory == directories.end()) continue;
                holders.push_back(configuration);
                files.push_back(FileIn(*directory, path));
            } catch (...) {
                const Failure failure = CurrentFailure();
                if (isFirst)
                    context.Tell({failure.status, fmt::format("{}: {}", configuration.name, failure.sentence)});
            }
        }
    };
    std::string path = wanted;
    look(path, true);
    if (holders.empty()) {
        path = OtherSpelling(context, wanted);
        if (!path.empty()) look(path, false);
        if (holders.empty()) path = wanted;
    }
    if (holders.empty()) {
        const std::string near = NearestScenario(context, path);
        throw Failure{
            ExitUnreadable,
            fmt::format("there is no scenario \"{}\" in {}{}; 'tavrel list --paths' shows those that are there", path,
                        candidates.size() == 1 ? candidates[0].name : file,
                        near.empty() ? near : ", did you mean \"" + near + "\"")};
    }
    if (holders.size() > 1 && !AreTheSame(holders, files))
        throw Failure{ExitUsage,
                      fmt::format("the configurations {} all have a scenario \"{}\"; choose one of them with "
                                  "--configuration",
                                  Names(holders), path)};

    OpenedScenario opened;
    opened.configuration = holders[0];
    // The filter makes the configuration the current one.
    const TavrelDatabaseDriver driver(file, holders[0].version, holders[0].name);
    opened.scenario = Created(driver, database, holders[0].name, path);
    const std::string filePath = opened.scenario->getFilePath();
    opened.directory = filePath.substr(0, filePath.size() - path.size() - 1);
    const std::string reason = ReasonNotToOpen(filePath);
    if (!reason.empty()) throw Failure{ExitUnreadable, fmt::format("{}: {}", filePath, reason)};
    return opened;
}

namespace {

// Calls `look` with each configuration that the filters let through and the folders of its scenarios. What cannot be
// read is passed over.
void ForEachConfiguration(Context& context,
                          const std::function<void(const std::string&, const std::vector<std::string>&)>& look) {
    try {
        const Installation installation(context);
        const TavrelScenarioTemplateDatabase database(installation.File(), kAll, kAll);
        for (const std::string& name : EnvConfig::getConfigurationsList()) {
            if (context.arguments.Has("--configuration") && ChosenConfiguration(context.arguments) != name) continue;
            try {
                if (context.arguments.Has("--version-filter") &&
                    database.getConfigurationVersion(name) != context.arguments.Text("--version-filter"))
                    continue;
                std::vector<std::string> directories;
                database.getConfigurationScenarioDirectories(name, directories);
                look(name, directories);
            } catch (...) {
                CurrentFailure();
            }
        }
    } catch (...) {
        CurrentFailure();
    }
}

std::set<std::string> ScenarioPaths(Context& context) {
    std::set<std::string> all;
    ForEachConfiguration(context, [&](const std::string&, const std::vector<std::string>& directories) {
        std::vector<std::string> others;
        for (const std::string& directory : directories) {
            std::vector<std::string> files;
            SortOut(directory, files, others, [](const std::string&) {});
            all.insert(files.begin(), files.end());
        }
    });
    return all;
}

// The scenario that a path spells in another way than the file system does; empty if there is none.
std::string OtherSpelling(Context& context, const std::string& wanted) {
    const std::set<std::string> all = ScenarioPaths(context);
    const std::string meant = MeantOf(wanted, {all.begin(), all.end()});
    return meant == wanted ? "" : meant;
}

} // namespace

std::vector<FoundScenario> FindScenarios(Context& context, const std::string& path) {
    std::vector<FoundScenario> found;
    if (path.empty() || std::filesystem::path(path).is_absolute()) return found;
    ForEachConfiguration(context, [&](const std::string& name, const std::vector<std::string>& directories) {
        std::error_code error;
        for (const std::string& directory : directories)
            if (std::filesystem::exists(FileIn(directory, path), error) &&
                !std::filesystem::is_directory(FileIn(directory, path), error)) {
                found.push_back({name, path, FileIn(directory, path)});
                break;
            }
    });
    return found;
}

std::string NearestScenario(Context& context, const std::string& path) {
    const std::set<std::string> all = ScenarioPaths(context);
    const std::string near = NearestName(path, {all.begin(), all.end()});
    if (!near.empty()) return near;
    // Who leaves out the folders means the file.
    std::map<std::string, std::string> pathsByName;
    std::vector<std::string> names;
    for (const std::string& one : all) {
        names.push_back(std::filesystem::path(one).filename().string());
        pathsByName.emplace(names.back(), one);
    }
    const std::string name = NearestName(std::filesystem::path(path).filename().string(), names);
    return name.empty() ? name : pathsByName[name];
}

bool IsFileOnDisk(Context& context, const std::string& operand) {
    std::error_code error;
    const auto type = std::filesystem::symlink_status(operand, error).type();
    if (type == std::filesystem::file_type::not_found || std::filesystem::is_directory(operand, error)) return false;
    for (const FoundScenario& scenario : FindScenarios(context, operand))
        if (!std::filesystem::equivalent(scenario.file, operand, error)) {
            Report(fmt::format("\"{}\" is a file here and a scenario of the installation; the file is meant", operand));
            break;
        }
    return true;
}

std::vector<FoundScenario> FindScenariosMeantBy(Context& context, const std::string& written) {
    const std::vector<FoundScenario> found = FindScenarios(context, written);
    return found.empty() ? FindScenarios(context, OtherSpelling(context, written)) : found;
}

// A scenario in the place where it was listed; none if another one has come to hide it, or hid it all the time: what is
// named like a scenario and is no file is not listed.
static std::optional<OpenedScenario> OpenListed(const ListedScenario& listed) {
    std::error_code error;
    for (const ScenarioDirectory* directory = listed.first; directory != listed.directory; ++directory)
        if (std::filesystem::exists(directory->FileOf(*listed.path), error)) return std::nullopt;
    const std::string& configuration = listed.directory->configuration.name;
    if (!EnvConfig::setConfig(configuration, false)) return std::nullopt;
    return OpenedScenario{listed.directory->configuration, listed.directory->path,
                          std::make_unique<TavrelScenario>(configuration, *listed.path, listed.directory->path)};
}

OpenedScenario OpenScenario(Context& context, const std::string& operand) {
    if (context.listed)
        if (std::optional<OpenedScenario> opened = OpenListed(*context.listed)) return std::move(*opened);
    if (context.arguments.Has("--all") || !IsFileOnDisk(context, operand)) return Installation(context).Open(operand);
    const std::string reason = ReasonNotToOpen(operand);
    if (!reason.empty()) throw Failure{ExitUnreadable, fmt::format("{}: {}", operand, reason)};
    const Installation installation(context, InstallationFileFor(context, operand));
    OpenedScenario opened;
    opened.configuration.name = ConfigurationFor(context, operand);
    EnvConfig::setConfig(opened.configuration.name, false);
    try {
        opened.configuration.version = TavrelScenarioTemplateDatabase(installation.File(), kAll, kAll)
                                           .getConfigurationVersion(opened.configuration.name);
    } catch (...) {
        CurrentFailure(); // a file needs none
    }
    const std::filesystem::path path = std::filesystem::absolute(operand);
    opened.directory = path.parent_path().string();
    opened.scenario =
        std::make_unique<TavrelScenario>(opened.configuration.name, path.filename().string(), opened.directory);
    return opened;
}

} // namespace tavrel
