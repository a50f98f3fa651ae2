#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <tuple>

#include <Commons/WholeFile.h>
#include <lmkUtils/ConfigurationError.h>
#include <lmkUtils/EnvConfig.h>
#include <scenario/NearestName.h>

#include "../Files.h"
#include "../Progress.h"
#include "../Scripts.h"
#include "../Spelling.h"
#include "../report/Baseline.h"
#include "../report/Fixes.h"
#include "../report/TextDiff.h"
#include "Commands.h"

namespace tavrel {

namespace {

using TavrelChecking::Finding;
using TavrelChecking::Job;
using TavrelChecking::Options;
using TavrelChecking::Result;
using TavrelChecking::Rule;
using TavrelChecking::Severity;
namespace fs = std::filesystem;

constexpr const char* kMoreFindings = "TV9002";
// A baseline must see all findings, whatever is told of them.
constexpr std::size_t kMostBehindBaseline = 10000;

struct Form {
    const char* word;
    bool isForPeople;
    std::string (*write)(const CheckReport&);
};
// clang-format off
constexpr Form kForms[] = {
    {"json",   false, JsonForm},
    {"jsonl",  false, JsonLinesForm},
    {"sarif",  false, SarifForm},
    {"junit",  false, JunitForm},
    {"github", false, GithubForm},
};
// clang-format on

// Null for the text that people read.
const Form* FormOf(const Arguments& arguments) {
    const std::string word = arguments.Text("--format", arguments.Has("--json") ? "json" : "text");
    if (arguments.Has("--json") && word != "json")
        throw Failure{ExitUsage, "--json means --format json, and --format " + word + " says otherwise"};
    for (const Form& form : kForms)
        if (word == form.word) return &form;
    return nullptr;
}

// Ids of rules or their beginnings, separated by commas.
std::vector<std::string> RuleChoices(const Arguments& arguments, const std::string& option) {
    std::vector<std::string> choices;
    for (const std::string& list : arguments.Texts(option)) {
        for (std::size_t begin = 0; begin <= list.size();) {
            const std::size_t end = std::min(list.find(',', begin), list.size());
            const std::string choice = list.substr(begin, end - begin);
            begin = end + 1;
            const std::vector<Rule>& rules = TavrelChecking::Rules();
            const bool known = std::any_of(rules.begin(), rules.end(),
                                           [&](const Rule& rule) { return TavrelChecking::IsChosen(rule, {choice}); });
            if (!known) {
                std::vector<std::string> ids;
                for (const Rule& rule : rules) ids.emplace_back(rule.id);
                throw Failure{ExitUsage, fmt::format("{}: no rule has the id \"{}\" or begins with it{}", option,
                                                     choice, DidYouMean(choice, ids))};
            }
            choices.push_back(choice);
        }
    }
    return choices;
}

std::size_t NumberAboveZero(const Arguments& arguments, const std::string& option, std::size_t fallback) {
    int number = 0;
    if (!arguments.Has(option)) return fallback;
    if (!ReadNumber(arguments.Text(option), number) || number < 1)
        throw Failure{ExitUsage,
                      fmt::format("{} takes a whole number above 0, not \"{}\"", option, arguments.Text(option))};
    return static_cast<std::size_t>(number);
}

bool IsInstallationNamed(const Arguments& arguments) {
    const char* fromEnvironment = std::getenv("TAVREL_CONFIG");
    return arguments.Has("--config") || (fromEnvironment && *fromEnvironment);
}

// The configuration that is meant, as the first installation of those that are looked at writes it. Below a folder
// there may be others, which have it.
std::string ConfigurationMeant(Context& context, const Options& options) {
    if (!context.arguments.Has("--configuration")) return "";
    const std::string wanted = context.arguments.Text("--configuration");
    std::vector<std::string> installations{options.installation};
    bool mayBeBelow = false;
    for (const std::string& operand : context.arguments.Texts("PATH")) {
        std::error_code error;
        mayBeBelow = mayBeBelow || fs::is_directory(operand, error);
        installations.push_back(operand + "/tavrel.xml");
        installations.push_back(KindOfFile(operand) == FileKind::Installation ? operand
                                                                              : InstallationFileFor(context, operand));
    }
    std::vector<std::string> names;
    for (const std::string& file : installations) {
        try {
            lmkUtils::EnvConfig::setTavrelConfigFilePath(file);
        } catch (const lmkUtils::ConfigurationError&) {
            continue; // there is none, or it is told where it is looked at
        }
        names = lmkUtils::EnvConfig::getConfigurationsList();
        const std::string meant = MeantOf(wanted, names);
        if (std::find(names.begin(), names.end(), meant) != names.end()) return meant;
    }
    if (!mayBeBelow && !names.empty())
        throw Failure{ExitUnreadable,
                      fmt::format("there is no configuration \"{}\"{}; {} has {}", wanted, DidYouMean(wanted, names),
                                  lmkUtils::EnvConfig::ourConfigCfgFile, fmt::join(names, ", "))};
    return wanted;
}

Options OptionsOf(Context& context) {
    const Arguments& arguments = context.arguments;
    Options options;
    options.mostFindings = NumberAboveZero(arguments, "--max-findings", options.mostFindings);
    options.select = RuleChoices(arguments, "--select");
    options.ignore = RuleChoices(arguments, "--ignore");
    options.installation = InstallationFileInUse(arguments);
    options.isInstallationFixed = IsInstallationNamed(arguments);
    options.configuration = ConfigurationMeant(context, options);
    options.modelFile = arguments.Text("--model");
    options.jobs = static_cast<unsigned>(NumberAboveZero(arguments, "--jobs", 0));
    options.seconds = context.Children().seconds;
    return options;
}

Severity FailOn(const Arguments& arguments) {
    const std::string word = arguments.Text("--fail-on", "error");
    return word == "note" ? Severity::Note : word == "warning" ? Severity::Warning : Severity::Error;
}

// What the operands name: files and folders, and scenarios of the installation.
std::vector<Job> JobsOf(Context& context, const Options& options, Result& found) {
    std::vector<Job> jobs;
    const auto add = [&](const std::string& path) {
        const std::vector<Job> more = TavrelChecking::JobsFor(path, options, found);
        jobs.insert(jobs.end(), more.begin(), more.end());
    };
    std::vector<std::string> operands = context.arguments.Texts("PATH");
    if (operands.empty()) add(options.installation);
    for (const std::string& operand : operands) {
        if (operand.empty()) throw Failure{ExitUsage, "an empty PATH is no file and no scenario"};
        std::error_code error;
        if (IsFileOnDisk(context, operand) || fs::is_directory(operand, error)) {
            add(operand);
            continue;
        }
        const std::vector<FoundScenario> scenarios = FindScenariosMeantBy(context, operand);
        for (const FoundScenario& scenario : scenarios)
            jobs.push_back(
                {scenario.file, TavrelChecking::FileKind::Scenario, options.installation, scenario.configuration});
        if (!scenarios.empty()) continue;
        const std::string near = NearestScenario(context, operand);
        if (!near.empty())
            Report(fmt::format("there is no file and no scenario \"{}\", did you mean \"{}\"", operand, near));
        add(operand); // it is told as any file that cannot be opened
    }
    return jobs;
}

Result Checked(const std::vector<Job>& jobs, Options options) {
    Progress progress(static_cast<double>(jobs.size()), "files");
    options.progress = [&](std::size_t done) { progress.Reach(static_cast<double>(done)); };
    return TavrelChecking::Check(jobs, options);
}

void Append(Result& to, const Result& more) {
    to.findings.insert(to.findings.end(), more.findings.begin(), more.findings.end());
    to.omissions.insert(to.omissions.end(), more.omissions.begin(), more.omissions.end());
    to.files.insert(to.files.end(), more.files.begin(), more.files.end());
}

// The nearest folder above a file that holds `name`; empty if there is none.
std::string FolderAbove(const fs::path& file, const char* name) {
    std::error_code error;
    for (fs::path folder = file; folder != folder.root_path();) {
        folder = folder.parent_path();
        if (fs::exists(folder / name, error)) return folder.generic_string();
    }
    return "";
}

// Where the paths of SARIF start: the folder under version control that holds what was looked at, else that of the
// installation.
std::string BaseFolder(const CheckReport& report, const Options& options) {
    const fs::path first =
        report.files.empty() ? AbsolutePath(options.installation) : AbsolutePath(report.files.front());
    std::string folder = FolderAbove(first, ".git");
    if (folder.empty() && !options.isInstallationFixed) folder = FolderAbove(first, "tavrel.xml");
    if (folder.empty()) folder = fs::path(AbsolutePath(options.installation)).parent_path().generic_string();
    return folder.empty() || folder.back() == '/' ? folder : folder + "/";
}

// At most so many findings of each file that the baseline does not hold, the gravest first; one note says that there
// are more.
void CutToMost(CheckReport& report, std::size_t most) {
    std::map<std::string, std::vector<ToldFinding*>> files;
    for (ToldFinding& told : report.findings)
        if (!told.isHeld && std::string_view(told.finding.rule->id) != kMoreFindings)
            files[told.finding.file].push_back(&told);
    std::set<const ToldFinding*> dropped;
    std::vector<ToldFinding> notes;
    for (auto& [file, told] : files) {
        if (told.size() <= most) continue;
        std::stable_sort(told.begin(), told.end(), [](const ToldFinding* one, const ToldFinding* other) {
            return one->finding.severity > other->finding.severity;
        });
        dropped.insert(told.begin() + static_cast<std::ptrdiff_t>(most), told.end());
        const bool isNoted =
            std::any_of(report.findings.begin(), report.findings.end(), [&, &named = file](const ToldFinding& one) {
                return one.finding.file == named && std::string_view(one.finding.rule->id) == kMoreFindings;
            });
        if (isNoted) continue;
        Finding note;
        note.rule = TavrelChecking::FindRule(kMoreFindings);
        note.severity = note.rule->severity;
        note.file = file;
        note.message = fmt::format("{} more {} in this file", told.size() - most,
                                   told.size() - most == 1 ? "finding is" : "findings are");
        note.help = note.rule->remedy;
        notes.push_back({note, fmt::format("{}:1", kMoreFindings), false});
    }
    if (dropped.empty()) return;
    std::vector<ToldFinding> left;
    for (ToldFinding& told : report.findings)
        if (dropped.count(&told) == 0) left.push_back(std::move(told));
    for (ToldFinding& note : notes) {
        const auto place = std::find_if(
            left.begin(), left.end(), [&](const ToldFinding& told) { return told.finding.file >= note.finding.file; });
        left.insert(place, std::move(note));
    }
    report.findings = std::move(left);
}

// Keeps what was there when the file was looked at from being lost, should someone else have saved meanwhile.
void Save(const FixedFile& file) {
    std::string reason;
    if (!Commons::ReplaceFileWhole(file.path, file.before, file.after, reason))
        throw Failure{ExitUnreadable, fmt::format("cannot write {}: {}", file.path, reason)};
}

// Makes the fixes and answers how many files they changed; with --diff they are only shown.
std::size_t MakeFixes(Context& context, const std::vector<Job>& jobs, const Result& found, const Options& options) {
    const bool shown = context.arguments.Has("--diff");
    std::size_t fixes = 0, files = 0;
    for (const FixedFile& file : FixFiles(jobs, found, options, context.arguments.Has("--unsafe-fixes"))) {
        if (file.takenBack > 0)
            Report(fmt::format("{}: {} would make a new error and {} left out", file.path,
                               file.takenBack == 1 ? "one fix" : fmt::format("{} fixes", file.takenBack),
                               file.takenBack == 1 ? "is" : "are"));
        if (file.after == file.before) continue;
        fixes += file.fixes;
        ++files;
        if (shown)
            context.out.Print(UnifiedDiff(file.path, file.before, file.after));
        else
            Save(file);
    }
    if (!shown)
        Report(fmt::format("{} {} made in {} {}", fixes, fixes == 1 ? "fix" : "fixes", files,
                           files == 1 ? "file" : "files"));
    return files;
}

int StatusOf(Context& context, const CheckReport& report) {
    const bool omits =
        !report.omissions.empty() || std::any_of(report.findings.begin(), report.findings.end(),
                                                 [](const ToldFinding& told) { return TellsOfOmission(told.finding); });
    const bool fails = std::any_of(report.findings.begin(), report.findings.end(), [&](const ToldFinding& told) {
        return !told.isHeld && told.finding.severity >= report.failOn;
    });
    if (omits) return ExitUnreadable;
    return std::max<int>(context.status, fails && !context.arguments.Has("--exit-zero") ? ExitFindings : ExitClean);
}

// The baseline that the options name, brought up to date if they ask for it.
void ApplyBaseline(const Arguments& arguments, CheckReport& report) {
    if (arguments.Has("--write-baseline")) {
        Baseline baseline(arguments.Text("--write-baseline"));
        const bool isPart = arguments.Has("--select") || arguments.Has("--ignore");
        if (std::error_code error; isPart && fs::exists(arguments.Text("--write-baseline"), error)) baseline.Read();
        baseline.Take(report);
        baseline.Save();
        baseline.Apply(report);
    } else if (arguments.Has("--baseline")) {
        Baseline baseline(arguments.Text("--baseline"));
        baseline.Read();
        baseline.Apply(report);
    }
    for (const std::string& note : report.notes) Report("note: " + note);
}

} // namespace

int RunCheck(Context& context) {
    const Arguments& arguments = context.arguments;
    const Form* const form = FormOf(arguments);
    if (arguments.Has("--diff") && (form || arguments.Has("--output")))
        throw Failure{ExitUsage, "--diff shows changes and no findings, so it takes neither --format nor --output"};
    Options options = OptionsOf(context);
    const std::size_t most = options.mostFindings;
    const bool hasBaseline = arguments.Has("--baseline") || arguments.Has("--write-baseline");
    if (hasBaseline) options.mostFindings = std::max(most, kMostBehindBaseline);

    Result found;
    const std::vector<Job> jobs = JobsOf(context, options, found);
    const Result onTheWay = found;
    Append(found, Checked(jobs, options));
    if (arguments.Has("--fix") || arguments.Has("--unsafe-fixes") || arguments.Has("--diff")) {
        const std::size_t changed = MakeFixes(context, jobs, found, options);
        if (changed > 0 && !arguments.Has("--diff")) {
            found = onTheWay;
            Append(found, Checked(jobs, options));
        }
    }
    std::vector<std::string> given = arguments.Texts("PATH");
    if (given.empty()) given.push_back(options.installation);
    CheckReport report = ReportOf(std::move(found), form ? Spelling(AbsolutePath) : SpellingOf(given));
    report.failOn = FailOn(arguments);
    report.base = BaseFolder(report, options);
    for (const Rule& rule : TavrelChecking::Rules())
        if (TavrelChecking::IsAskedFor(rule, options)) report.rules.push_back(&rule);
    for (const TavrelChecking::Omission& omission : report.omissions)
        Report(fmt::format("{}: {}", omission.file, omission.reason));
    ApplyBaseline(arguments, report);
    CutToMost(report, most); // also what was found on the way to the files
    if (arguments.Has("--diff")) return StatusOf(context, report);

    const bool toFile = arguments.Has("--output");
    if (toFile) context.out.WithoutStyles();
    const std::string text = form ? form->write(report) : TextForm(report, context.out);
    if (toFile)
        SaveFile(arguments.Text("--output"), text);
    else
        context.out.Print(std::string_view(text));
    return StatusOf(context, report);
}

} // namespace tavrel
