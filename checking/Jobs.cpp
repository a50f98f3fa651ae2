// Which files a path stands for, and what is wrong on the way to them.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>

#include <Commons/System.h>
#include <TavrelScenarioTemplateDb/RootModel.h>
#include <checking/Check.h>
#include <lmkUtils/ConfigurationError.h>
#include <lmkUtils/EnvConfig.h>
#include <scenario/include.h>

#include "Examiner.h"

namespace TavrelChecking {

namespace {

namespace fs = std::filesystem;
using cfg::ScenarioText;
using lmkUtils::EnvConfig;

const std::string kByteOrderMark = "\xEF\xBB\xBF";
constexpr const char* kSettingsFile = "/configuration.xml"; // of a configuration, in its folder
constexpr std::size_t kSniffed = 2048;                      // bytes from which the kind of a file shows

std::string FirstBytes(const std::string& path) {
    std::string bytes(kSniffed, '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    return bytes;
}

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

// An XML file of an installation, for the places of its faults.
class InstallationText {
public:
    explicit InstallationText(const std::string& path) {
        std::string content;
        isRead = ReadBytes(path, content, reason);
        bytes = std::make_shared<FileBytes>(path, std::move(content));
        text = std::make_unique<ScenarioText>(bytes->bytes);
    }

    bool IsRead() const { return isRead; }
    const std::string& Reason() const { return reason; }
    const std::vector<ScenarioText::Element>& Elements() const { return text->Elements(); }
    const ScenarioText& Xml() const { return *text; }

    Finding At(const char* rule, std::size_t begin, std::size_t end, std::string message) const {
        return Text(bytes).FindingAt(rule, begin, end, std::move(message));
    }
    Finding AtName(const char* rule, const ScenarioText::Element& element, std::string message) const {
        return At(rule, element.begin + 1, element.begin + 1 + element.name.size(), std::move(message));
    }
    Finding AtContent(const char* rule, const ScenarioText::Element& element, std::string message) const {
        std::size_t begin = element.contentBegin;
        std::size_t end = element.contentEnd;
        const auto isBlank = [&](std::size_t at) {
            return std::string_view(" \t\r\n").find(bytes->bytes[at]) != std::string_view::npos;
        };
        while (begin < end && isBlank(begin)) ++begin;
        while (end > begin && isBlank(end - 1)) --end;
        return At(rule, begin, end, std::move(message));
    }
    Finding AtValue(const char* rule, const ScenarioText::Attribute& attribute, std::string message) const {
        return At(rule, attribute.valueBegin, attribute.valueEnd, std::move(message));
    }
    std::string Value(const ScenarioText::Element& element, std::string_view name) const {
        const auto* attribute = ScenarioText::FindAttribute(element, name);
        return attribute ? text->TextOf(*attribute).Text() : std::string();
    }

private:
    bool isRead = false;
    std::string reason;
    std::shared_ptr<FileBytes> bytes;
    std::unique_ptr<ScenarioText> text;
};

// What is wrong with the file that names the configurations.
void LookAtInstallation(const InstallationText& file, Result& result) {
    const auto tell = [&](Finding finding) { result.findings.push_back(std::move(finding)); };
    if (!file.Xml().IsXml()) {
        const auto& fault = *file.Xml().FirstFault();
        return tell(file.At("TV6013", fault.position, fault.position, fault.reason));
    }
    const ScenarioText::Element& top = file.Elements().front();
    if (top.name != "tavrel")
        return tell(file.AtName("TV6013", top, "the top element is <" + std::string(top.name) + ">, not <tavrel>"));
    std::set<std::string> names;
    for (const std::size_t child : top.children) {
        const ScenarioText::Element& element = file.Elements()[child];
        const std::string tag = "<" + std::string(element.name) + ">";
        if (element.name != "pathVariable" && element.name != "configuration") {
            tell(file.AtName("TV6013", element, "unknown element " + tag));
            continue;
        }
        for (const char* needed : {"name", "path"}) {
            if (element.name == "pathVariable" && std::string_view(needed) == "path") continue;
            if (file.Value(element, needed).empty()) tell(file.AtName("TV6013", element, tag + " without a " + needed));
        }
        const std::string name = file.Value(element, "name");
        if (element.name == "configuration" && !name.empty() && !names.insert(name).second)
            tell(file.AtValue("TV6013", *ScenarioText::FindAttribute(element, "name"),
                              "a second configuration " + Quoted(name)));
    }
}

// False if nothing can be found by it.
bool LookAtConfiguration(const InstallationText& file, const std::string& folder, Result& result) {
    const auto tell = [&](Finding finding) { result.findings.push_back(std::move(finding)); };
    if (!file.Xml().IsXml()) {
        const auto& fault = *file.Xml().FirstFault();
        tell(file.At("TV6013", fault.position, fault.position, fault.reason));
        return false;
    }
    const ScenarioText::Element& top = file.Elements().front();
    if (top.name != "configuration") {
        tell(file.AtName("TV6013", top, "the top element is <" + std::string(top.name) + ">, not <configuration>"));
        return false;
    }
    EnvConfig::Version version;
    const auto* attribute = ScenarioText::FindAttribute(top, "version");
    if (!attribute || file.Value(top, "version").empty())
        tell(file.AtName("TV6013", top, "<configuration> without a version"));
    else if (!EnvConfig::getConfigVersion(folder, version))
        tell(file.AtValue("TV6013", *attribute,
                          Quoted(file.Value(top, "version")) + " is no version, which is up to four numbers"));
    const ScenarioText::Element* dataPath = file.Xml().Child(top, "dataPath");
    if (!dataPath) return true;
    for (const std::size_t child : dataPath->children) {
        const ScenarioText::Element& root = file.Elements()[child];
        if (root.name != "root") continue;
        std::string text = file.Xml().TextOf(root).Text();
        const std::size_t begin = std::min(text.find_first_not_of(" \t\r\n"), text.size());
        text = text.substr(begin, text.find_last_not_of(" \t\r\n") + 1 - begin);
        if (text.empty()) {
            tell(file.AtName("TV6013", root, "<root> without a folder"));
            continue;
        }
        std::string expanded;
        Commons::System::ExpandLocalEnvironmentVariables(text, expanded, Commons::System::DaemonVariableMatchingPattern,
                                                         {});
        std::replace(expanded.begin(), expanded.end(), '\\', '/');
        const fs::path place = fs::path(folder) / expanded;
        std::error_code error;
        const bool isThere = fs::is_directory(place, error);
        if (isThere && fs::is_directory(place / "data/scenario", error)) continue;
        tell(file.AtContent("TV6008", root,
                            isThere ? "the folder " + Quoted(text) + " has no folder data/scenario"
                                    : "the folder " + Quoted(text) + " is not there"));
        if (!isThere) result.omissions.push_back({place.lexically_normal().string(), "there is no such folder"});
    }
    return true;
}

void AddUnreadable(const char* rule, const std::string& path, const std::string& reason, Result& result) {
    result.findings.push_back(WholeFileFinding(rule, path, "it cannot be looked at: " + reason));
    result.omissions.push_back({path, reason});
}

// What is wrong with the folder of a configuration of the installation in use, and with the settings in it. False if
// nothing can be found by it.
bool LookAtFolder(const InstallationText& installation, const std::string& name, Result& result) {
    const std::string folder = EnvConfig::getConfigPath(name);
    std::error_code error;
    if (!fs::is_directory(folder, error)) {
        for (const ScenarioText::Element& element : installation.Elements())
            if (element.name == "configuration" && installation.Value(element, "name") == name)
                if (const auto* path = ScenarioText::FindAttribute(element, "path")) {
                    result.findings.push_back(
                        installation.AtValue("TV6008", *path, "the folder " + Quoted(folder) + " is not there"));
                    result.omissions.push_back({folder, "there is no such folder"});
                }
        return false;
    }
    const std::string settings = folder + kSettingsFile;
    const InstallationText file(settings);
    if (!file.IsRead()) {
        AddUnreadable("TV6001", settings, file.Reason(), result);
        return false;
    }
    if (std::find(result.files.begin(), result.files.end(), settings) == result.files.end())
        result.files.push_back(settings);
    return LookAtConfiguration(file, folder, result);
}

class JobList {
public:
    JobList(const Options& userOptions, Result& target) : options(userOptions), result(target) {}

    void AddPath(const std::string& path) {
        std::error_code error;
        if (fs::is_directory(path, error)) return AddFolder(path);
        const FileKind kind = KindOfFile(path);
        if (kind == FileKind::Installation) return AddInstallation(path);
        Job job;
        job.path = path;
        job.kind = kind == FileKind::Unknown ? FileKind::Script : kind;
        Add(job);
    }

    std::vector<Job> jobs;

private:
    // A scenario has to open in each configuration that lists it. A script that others include is looked at once, in
    // the first configuration that has it: the others may have a root model for which it was not written.
    void Add(const Job& job) {
        const std::string key = Canonical(job.path) + "\n" + (job.kind == FileKind::Scenario ? job.configuration : "");
        if (known.insert(key).second) jobs.push_back(job);
    }

    // Installations first: they know the configuration of each file below them.
    void AddFolder(const std::string& folder) {
        const std::vector<std::pair<std::string, FileKind>> files = FilesBelow(folder, "");
        std::set<std::string> covered;
        for (const auto& [path, kind] : files)
            if (kind == FileKind::Installation) {
                const std::size_t before = jobs.size();
                AddInstallation(path);
                for (std::size_t at = before; at < jobs.size(); ++at) covered.insert(Canonical(jobs[at].path));
            }
        for (const auto& [path, kind] : files) {
            if (kind == FileKind::Installation || covered.count(Canonical(path)) > 0) continue;
            Job job;
            job.path = path;
            job.kind = kind;
            Add(job);
        }
    }

    // All that has a kind, or ends so, in the order of the paths.
    std::vector<std::pair<std::string, FileKind>> FilesBelow(const std::string& folder, const std::string& extension) {
        std::vector<std::pair<std::string, FileKind>> files;
        std::vector<std::string> folders{folder};
        while (!folders.empty()) {
            const std::string walked = std::move(folders.back());
            folders.pop_back();
            std::error_code error, unknown;
            for (fs::directory_iterator entry(walked, error), end; !error && entry != end; entry.increment(error)) {
                const std::string path = entry->path().string();
                const bool isFolder = entry->is_directory(unknown);
                if (isFolder && !entry->is_symlink(unknown)) folders.push_back(path);
                if (!extension.empty()) {
                    if (entry->path().extension() == extension) files.emplace_back(path, FileKind::Scenario);
                    continue;
                }
                const FileKind kind = isFolder ? FileKind::Unknown : KindOfFile(path);
                if (kind != FileKind::Unknown) files.emplace_back(path, kind);
            }
            if (error) AddUnreadable("TV6001", walked, error.message(), result);
        }
        std::sort(files.begin(), files.end());
        return files;
    }

    void AddInstallation(const std::string& path) {
        const InstallationText file(path);
        if (!file.IsRead()) return AddUnreadable("TV6001", path, file.Reason(), result);
        const std::size_t before = result.findings.size();
        LookAtInstallation(file, result);
        try {
            EnvConfig::setTavrelConfigFilePath(path);
        } catch (const lmkUtils::ConfigurationError& error) {
            // The one place of the library if none was found here.
            if (result.findings.size() == before)
                result.findings.push_back(WholeFileFinding("TV6013", path, error.what()));
            return;
        }
        result.files.push_back(path);
        if (EnvConfig::getConfigurationsList().empty())
            result.findings.push_back(WholeFileFinding("TV6013", path, "it names no configuration"));
        for (const std::string& name : EnvConfig::getConfigurationsList())
            if (options.configuration.empty() || options.configuration == name) AddConfiguration(path, name, file);
        EnvConfig::leaveConfig();
    }

    void AddConfiguration(const std::string& installation, const std::string& name, const InstallationText& file) {
        const std::size_t before = result.findings.size();
        if (!LookAtFolder(file, name, result)) return;
        // What is not there may hold the model.
        const bool lacksFolder =
            std::any_of(result.findings.begin() + static_cast<std::ptrdiff_t>(before), result.findings.end(),
                        [](const Finding& finding) { return std::string_view(finding.rule->id) == "TV6008"; });
        EnvConfig::setConfig(name, false);

        const std::string model = TavrelScenarioTemplateDb::RootModel::fileOf(name);
        if (!model.empty())
            Add({model, FileKind::Model, installation, name});
        else if (!lacksFolder)
            result.findings.push_back(WholeFileFinding("TV6007", EnvConfig::getConfigPath(name) + kSettingsFile,
                                                       "configuration " + Quoted(name) + " has no root model " +
                                                           TavrelScenarioTemplateDb::RootModel::kPath));
        std::error_code error;
        std::map<std::string, std::string> found; // the file that a path leads to
        for (const std::string& scripts : EnvConfig::getSeparatedPathForConfiguration(name, Include::kDirectory)) {
            if (!fs::exists(scripts, error)) continue; // a root need not have scripts
            for (const auto& [script, kind] : FilesBelow(scripts, "")) {
                if (kind != FileKind::Script) continue;
                TellHidden(found, script, scripts);
                Add({script, kind, installation, name});
            }
        }
        found.clear();
        for (const std::string& scenarios : EnvConfig::getSeparatedPathForConfiguration(name, "data/scenario")) {
            if (!fs::exists(scenarios, error)) continue; // told already
            for (const auto& [scenario, kind] : FilesBelow(scenarios, ".sce")) {
                TellHidden(found, scenario, scenarios);
                Add({scenario, kind, installation, name});
            }
        }
    }

    void TellHidden(std::map<std::string, std::string>& found, const std::string& path, const std::string& folder) {
        const std::string relative = fs::path(path).lexically_relative(folder).generic_string();
        const auto [first, isNew] = found.emplace(relative, path);
        if (isNew || Canonical(first->second) == Canonical(path)) return;
        result.findings.push_back(
            WholeFileFinding("TV6011", path, Quoted(relative) + " is found in another folder first"));
        result.findings.back().related.push_back({first->second, Span(), "the file that is found"});
    }

    // A file has one path, however it was come by; what is no file has its own.
    static std::string Canonical(const std::string& path) {
        std::error_code error;
        if (fs::is_regular_file(path, error)) return fs::weakly_canonical(path, error).string();
        const fs::path plain = fs::absolute(path).lexically_normal();
        return (fs::weakly_canonical(plain.parent_path(), error) / plain.filename()).string();
    }

    const Options& options;
    Result& result;
    std::set<std::string> known;
};

} // namespace

bool IsAskedFor(const Rule& rule, const Options& options) {
    return (options.select.empty() || IsChosen(rule, options.select)) && !IsChosen(rule, options.ignore);
}

std::vector<Finding> InstallationFindings(const std::string& path) {
    Result result;
    const InstallationText file(path);
    if (file.IsRead()) LookAtInstallation(file, result);
    return std::move(result.findings);
}

std::vector<Finding> ConfigurationFindings(const std::string& installation, const std::string& configuration) {
    Result result;
    const InstallationText file(installation);
    if (file.IsRead()) LookAtFolder(file, configuration, result);
    return std::move(result.findings);
}

FileKind KindOfFile(const std::string& path) {
    const std::string extension = fs::path(path).extension().string();
    if (extension == ".sce") return FileKind::Scenario;
    if (extension == ".mdl") return FileKind::Model;
    if (extension == ".sc") return FileKind::Script;
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return FileKind::Unknown;
    std::string start = FirstBytes(path);
    if (start.starts_with(kByteOrderMark)) start.erase(0, kByteOrderMark.size());
    start.erase(0, std::min(start.find_first_not_of("\t\n\f\r"), start.size()));
    if (start.starts_with("TYPEOF FOLDER")) return FileKind::Model;
    if (start.starts_with("TYPEOF ")) return FileKind::Script;
    if (start.starts_with("<") && start.find("<tavrel") != std::string::npos) return FileKind::Installation;
    return FileKind::Unknown;
}

std::vector<Job> JobsFor(const std::string& path, const Options& options, Result& found) {
    const std::string former = EnvConfig::getCurrentConfiguration();
    const std::string formerFile = EnvConfig::ourConfigCfgFile;
    JobList list(options, found);
    list.AddPath(path);
    EnvConfig::ourConfigCfgFile = formerFile;
    EnvConfig::setConfig(former, false);
    std::erase_if(found.findings, [&](const Finding& finding) { return !IsAskedFor(*finding.rule, options); });
    SortFindings(found.findings);
    return std::move(list.jobs);
}

} // namespace TavrelChecking
