#include "../Describe.h"
#include "../Progress.h"
#include "../Scripts.h"
#include "Commands.h"

#include <cfg/CfgScenario.h>
#include <lmkUtils/ConfigurationError.h>
#include <lmkUtils/EnvConfig.h>
#include <scenario/DefinitionLists.h>
#include <scenario/Parameter.h>
#include <scenario/WhyInvalid.h>
#include <simulation/Trace.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <set>

namespace tavrel {

namespace {

using lmkUtils::EnvConfig;
using TavrelScenarioTemplateDb::TavrelScenarioTemplateDatabase;
namespace fs = std::filesystem;

// One file to look at, in one configuration of one installation.
struct Job {
    std::string path;
    FileKind kind;
    std::string installation;
    std::string configuration; // empty until the file is looked at: then it is looked for
};

// What is wrong, in the form in which it travels from the child and in which --json shows it.
Json Finding(const std::string& file, std::uint32_t row, const std::string& cause) {
    return {{"file", file},   {"script", Json()}, {"row", row},    {"line", ""},
            {"cause", cause}, {"place", ""},      {"display", ""}, {"severity", "error"}};
}

// A message that names the file itself, "Unable to load scenario FILE : FILE:row: reason": the rest of it is the cause.
Json FindingOf(const std::string& message, const std::string& file) {
    const std::size_t place = message.rfind(file + ":");
    if (place == std::string::npos) return Finding(file, 0, message);
    std::string cause = message.substr(place + file.size() + 1);
    std::uint32_t row = 0;
    const auto [end, error] = std::from_chars(cause.data(), cause.data() + cause.size(), row);
    if (error == std::errc() && *end == ':') cause.erase(0, static_cast<std::size_t>(end - cause.data()) + 1);
    return Finding(file, row, cause.substr(std::min(cause.find_first_not_of(' '), cause.size())));
}

Json FindingOf(const LoadProblem& problem, const std::string& file, const Json& script) {
    Json finding = Finding(problem.file.empty() ? file : FileOf(problem), problem.row, OneLine(problem.cause));
    if (problem.file.empty()) finding["script"] = script;
    finding["line"] = OneLine(problem.line);
    if (problem.isWarning) finding["severity"] = "warning";
    return finding;
}

bool HasError(const Json& findings) {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Json& finding) { return finding["severity"] == "error"; });
}

// Where an editor finds the item.
std::string PlaceOf(const ScenarioItem& item) { return item.parent ? TavrelSimulation::PathOf(*item.parent) : ""; }

// Whether the reader has already said that an include could not be had.
bool IsTold(const Json& findings, const std::string& include) {
    return std::any_of(findings.begin(), findings.end(), [&](const Json& finding) {
        return finding["line"].get<std::string>().find("\"" + include + "\"") != std::string::npos;
    });
}

// The invalid parameters and calls below `item`, in the order of the file. Without a scenario around them only those
// count that no scenario could make valid.
void AddInvalid(const ScenarioItem& item, bool whole, const Json& base, Json& findings) {
    const bool reference = item.kind == KindInclude && item.IsIndexEntry();
    const bool counts = reference || dynamic_cast<const Parameter*>(&item) || dynamic_cast<const Function*>(&item);
    if (counts && (whole || !IsJudgedByScenario(item)) && !item.IsValid() &&
        !(reference && IsTold(findings, item.fileName))) {
        Json finding = base;
        finding["cause"] = WhyInvalid(item);
        finding["place"] = PlaceOf(item);
        finding["display"] = OneLine(item.displayText);
        findings.push_back(finding);
    }
    std::vector<ScenarioItem*> children;
    item.GetChildren(children);
    for (const ScenarioItem* child : children) AddInvalid(*child, whole, base, findings);
}

// The library takes a parameters file that it cannot read for an empty one. There need not be any.
void AddUnreadableParameters(const ScenarioLib::Scenario& scenario, Json& findings) {
    if (!scenario.generalParameters) return;
    std::string path = scenario.generalParameters->resolvedPath;
    std::replace(path.begin(), path.end(), '\\', '/');
    std::error_code error;
    if (path.empty() || fs::symlink_status(path, error).type() == fs::file_type::not_found) return;
    const std::string reason = ReasonNotToOpen(path);
    if (!reason.empty()) findings.push_back(Finding(path, 0, "the parameters file cannot be read: " + reason));
}

void CheckTree(ScenarioItem& root, cfg::CfgScenario* file, const Json& base, Json& findings) {
    auto* scenario = dynamic_cast<ScenarioLib::Scenario*>(&root);
    TavrelScenarioTemplateDb::ScenarioTables tables;
    if (scenario && file) tables.fill(*scenario, *file);
    if (scenario) AddUnreadableParameters(*scenario, findings);
    UpdateDisplayTexts(root);
    AddInvalid(root, scenario && file, base, findings);
}

void CheckScript(const std::string& path, cfg::ScenarioScript& script, cfg::CfgScenario& file, Json& findings) {
    const ScriptUnderWay working(script.name);
    ProblemList list;
    std::uint32_t row = 1;
    std::string thrown;
    std::unique_ptr<ScenarioItem> root;
    try {
        root = ReadScriptText(script.text, row);
    } catch (...) {
        thrown = CurrentFailure().sentence;
    }
    for (const LoadProblem& problem : list.problems) findings.push_back(FindingOf(problem, path, script.name));
    Json base = Finding(path, 0, "");
    base["script"] = script.name;
    if (root) return CheckTree(*root, &file, base, findings);
    if (HasError(findings)) return;
    base["row"] = row;
    base["cause"] = thrown.empty() ? "the text is refused here" : thrown;
    findings.push_back(base);
}

// A template is opened as any host opens it, and then each of its scripts is read again, since the template keeps of a
// script no more than its variables.
Json CheckScenario(const Job& job) {
    Json findings = Json::array();
    const fs::path path(job.path);
    const Template scenario(job.configuration, path.filename().string(), path.parent_path().string());
    const auto addFailure = [&] {
        const std::string cause = CurrentFailure().sentence;
        if (!HasError(findings)) findings.push_back(FindingOf(cause, job.path));
    };
    scenarioRootModel = nullptr;
    std::string opening;
    {
        ProblemList list; // of the root model
        try {
            scenario.getName();
        } catch (...) {
            opening = CurrentFailure().sentence;
        }
        for (const LoadProblem& problem : list.problems)
            if (!problem.file.empty()) findings.push_back(FindingOf(problem, job.path, Json()));
    }
    if (scenarioRootModel)
        for (cfg::ScenarioScript* script : TavrelScenarioTemplateDb::scriptsOf(scenario.File()))
            CheckScript(job.path, *script, scenario.File(), findings);
    if (!opening.empty()) {
        if (!HasError(findings)) findings.push_back(FindingOf(opening, job.path));
        return findings;
    }
    try {
        scenario.getRootScenarioNode();
    } catch (...) {
        addFailure();
    }
    return findings;
}

Json CheckText(const Job& job) {
    Json findings = Json::array();
    ProblemList list;
    std::unique_ptr<ScenarioItem> root;
    std::string cause = "the text is refused";
    try {
        root = ReadScriptFile(job.path);
    } catch (...) {
        cause = CurrentFailure().sentence; // a number that does not convert
    }
    for (const LoadProblem& problem : list.problems) findings.push_back(FindingOf(problem, job.path, Json()));
    if (!root) {
        if (!HasError(findings)) findings.push_back(Finding(job.path, 0, cause));
        return findings;
    }
    if (job.kind == FileKind::Script) {
        CheckTree(*root, nullptr, Finding(job.path, 0, ""), findings);
        return findings;
    }
    if (root->kind != KindFolder) findings.push_back(Finding(job.path, 1, "the top item of a root model is a FOLDER"));
    for (const DefinitionList& wanted : kDefinitionLists) // a script that needs a missing one ends its reader
        if (!root->FindItem(KindFolder, wanted.folder, ""))
            findings.push_back(Finding(job.path, 0, fmt::format("the FOLDER ({}) is missing", wanted.folder)));
    return findings;
}

// Looks at one file, in the child. What is in use in the process is put in place first, once for the files that share
// it.
class Examiner {
public:
    explicit Examiner(Context& userContext) : context(userContext) {}

    Json Examine(Job job) {
        const std::string reason = ReasonNotToOpen(job.path);
        if (!reason.empty()) return {{"unreadable", fmt::format("{}: {}", job.path, reason)}};
        if (job.installation.empty()) job.installation = InstallationFileFor(context, job.path);
        if (job.installation != installation) {
            EnvConfig::setTavrelConfigFilePath(job.installation);
            installation = job.installation;
            modelOf.clear();
        }
        if (job.configuration.empty()) job.configuration = ConfigurationFor(context, job.path);
        if (job.configuration != EnvConfig::getCurrentConfiguration()) EnvConfig::setConfig(job.configuration, false);
        if (job.kind == FileKind::Scenario) {
            modelOf.clear();
            return {{"findings", CheckScenario(job)}};
        }
        if (job.kind == FileKind::Model) {
            scenarioRootModel = nullptr;
            modelOf.clear();
        } else {
            PrepareModel(job.configuration);
        }
        return {{"findings", CheckText(job)}};
    }

private:
    void PrepareModel(const std::string& configuration) {
        if (!modelOf.empty() && modelOf == configuration) return;
        if (context.arguments.Has("--model"))
            UseRootModelFile(context.arguments.Text("--model"));
        else
            UseRootModel(configuration);
        modelOf = configuration;
    }

    Context& context;
    std::string installation; // in use
    std::string modelOf;      // the configuration whose root model is in use
};

// The files to look at, and what is found on the way to them.
class JobList {
public:
    JobList(Context& userContext, std::function<void(Json)> addFinding)
        : context(userContext), found(std::move(addFinding)) {}

    void AddPath(const std::string& path) {
        if (path.empty()) return context.Tell({ExitUnreadable, "an empty PATH is no file"});
        std::error_code error;
        if (fs::is_directory(path, error)) return AddFolder(path);
        const FileKind kind = KindOfFile(path);
        if (kind == FileKind::Installation) return AddInstallation(path);
        Add({path, kind == FileKind::Unknown ? FileKind::Script : kind, "", ""});
    }

    const std::vector<Job>& Jobs() const { return jobs; }

private:
    // A scenario has to open in each configuration that lists it. A script that others include is looked at once, in
    // the first configuration that has it: the others may have a root model for which it was not written.
    void Add(const Job& job) {
        const std::string key = Canonical(job.path) + "\n" + (job.kind == FileKind::Scenario ? job.configuration : "");
        if (known.insert(key).second) jobs.push_back(job);
    }

    // Installations first: they know the configuration of each file below them.
    void AddFolder(const std::string& folder) {
        const std::vector<std::pair<std::string, FileKind>> files = FilesBelow(folder);
        std::set<std::string> covered;
        for (const auto& [path, kind] : files)
            if (kind == FileKind::Installation) {
                const std::size_t before = jobs.size();
                AddInstallation(path);
                for (std::size_t i = before; i < jobs.size(); ++i) covered.insert(Canonical(jobs[i].path));
            }
        for (const auto& [path, kind] : files)
            if (kind != FileKind::Installation && covered.count(Canonical(path)) == 0) Add({path, kind, "", ""});
    }

    void AddInstallation(const std::string& path) {
        std::unique_ptr<Installation> installation;
        try {
            installation = std::make_unique<Installation>(context, path);
        } catch (const lmkUtils::ConfigurationError& error) {
            return found(Finding(path, 0, OneLine(error.what())));
        }
        if (EnvConfig::getConfigurationsList().empty()) found(Finding(path, 0, "it names no configuration"));
        const TavrelScenarioTemplateDatabase database("", "*", "*");
        for (const std::string& name : EnvConfig::getConfigurationsList()) {
            if (context.arguments.Text("--configuration", name) != name) continue;
            try {
                AddConfiguration(*installation, path, {name, database.getConfigurationVersion(name)});
            } catch (...) {
                found(Finding(path, 0, fmt::format("configuration \"{}\": {}", name, CurrentFailure().sentence)));
            }
        }
    }

    void AddConfiguration(Installation& installation, const std::string& file, const Configuration& configuration) {
        const std::string& name = configuration.name;
        const std::string model = TavrelScenarioTemplateDb::RootModel::fileOf(name);
        if (model.empty())
            found(Finding(file, 0, fmt::format("configuration \"{}\" has no root model", name)));
        else
            Add({model, FileKind::Model, file, name});
        for (const std::string& folder : EnvConfig::getSeparatedPathForConfiguration(name, Include::kDirectory)) {
            std::error_code error;
            if (!fs::exists(folder, error)) continue; // a root need not have scripts
            for (const auto& [script, kind] : FilesBelow(folder))
                if (kind == FileKind::Script) Add({script, kind, file, name});
        }
        for (const ScenarioDirectory& directory : installation.Directories(configuration))
            for (const auto* paths : {&directory.scenarios, &directory.noFiles})
                for (const std::string& scenario : *paths)
                    Add({directory.FileOf(scenario), FileKind::Scenario, file, name});
    }

    // All that has a kind, in the order of the paths.
    std::vector<std::pair<std::string, FileKind>> FilesBelow(const std::string& folder) {
        std::vector<std::pair<std::string, FileKind>> files;
        const auto take = [&](const std::string& path) {
            const FileKind kind = KindOfFile(path);
            if (kind != FileKind::Unknown) files.emplace_back(path, kind);
        };
        Walk(folder, take, [&](const std::string& sentence) { context.Tell({ExitUnreadable, sentence}); });
        std::sort(files.begin(), files.end());
        return files;
    }

    // A file has one path, however it was come by; what is no file has its own.
    static std::string Canonical(const std::string& path) {
        std::error_code error;
        if (fs::is_regular_file(path, error)) return fs::weakly_canonical(path, error).string();
        const fs::path plain = fs::absolute(path).lexically_normal();
        return (fs::weakly_canonical(plain.parent_path(), error) / plain.filename()).string();
    }

    Context& context;
    const std::function<void(Json)> found;
    std::vector<Job> jobs;
    std::set<std::string> known;
};

std::string FindingText(const Output& out, const Json& finding) {
    const auto text = [&](const char* member) { return finding[member].get<std::string>(); };
    const std::uint32_t row = finding["row"].get<std::uint32_t>();
    const bool script = finding["script"].is_string();
    std::string place = text("file");
    if (script) place += text("script").empty() ? ": unnamed script" : fmt::format(": script {}", text("script"));
    if (row > 0) place += script ? fmt::format(", row {}", row) : fmt::format(":{}", row);
    std::string line =
        fmt::format("{}: {}{}\n", out.Strong(place), text("severity") == "warning" ? "warning: " : "", text("cause"));
    if (!text("line").empty()) line += fmt::format("    {}\n", text("line"));
    if (!text("place").empty()) line += fmt::format("    in {}\n", text("place"));
    if (!text("display").empty()) line += fmt::format("    shown as {}\n", text("display"));
    return line;
}

} // namespace

int RunCheck(Context& context) {
    const bool asJson = context.arguments.Has("--json");
    Json all = Json::array();
    std::set<std::string> told; // the faults of a root model come with each scenario that uses it
    const auto found = [&](Json finding) {
        if (!told.insert(finding.dump(-1, ' ', false, Json::error_handler_t::replace)).second) return;
        if (context.status < ExitFindings) context.status = ExitFindings;
        if (asJson)
            all.push_back(std::move(finding));
        else
            context.out.Print(FindingText(context.out, finding));
    };
    JobList list(context, found);
    for (const std::string& path : context.arguments.Texts("PATH")) list.AddPath(path);
    const std::vector<Job>& jobs = list.Jobs();

    Progress progress(static_cast<double>(jobs.size()), "files");
    Examiner examiner(context);
    EnvConfig::leaveConfig();
    TavrelProcesses::ForEachInChildren(
        jobs.size(), context.Children(),
        [&](std::size_t item) {
            try {
                return DumpJsonLine(examiner.Examine(jobs[item]));
            } catch (...) {
                return DumpJsonLine({{"findings", {Finding(jobs[item].path, 0, CurrentFailure().sentence)}}});
            }
        },
        [&](std::size_t item, const std::string& answer) {
            const Json result = Json::parse(answer);
            progress.Reach(static_cast<double>(item));
            if (result.contains("unreadable")) {
                progress.Hide();
                context.Tell({ExitUnreadable, result["unreadable"].get<std::string>()});
                return;
            }
            for (const Json& finding : result["findings"]) found(finding);
        },
        [&](std::size_t item, const TavrelProcesses::Death& death) {
            Json finding = Finding(death.file.empty() ? jobs[item].path : death.file, death.row, death.cause);
            if (!death.script.empty()) finding["script"] = death.script;
            finding["place"] = death.place;
            found(finding);
        });
    if (asJson) context.out.Print(DumpJson(all));
    return context.status;
}

} // namespace tavrel
