#include <checking/Check.h>

#include <algorithm>
#include <map>
#include <stdexcept>

#include <TavrelScenarioTemplateDb/ShareRootModels.h>
#include <lmkUtils/InstallationMoment.h>
#include <nlohmann/json.hpp>
#include <processes/ChildProcess.h>

#include "Examiner.h"

namespace TavrelChecking {

namespace {

using Json = nlohmann::json;

// Findings travel from a child as JSON; texts are bytes that need not be UTF-8, so they travel in hexadecimal where
// they are none.
Json Packed(const std::string& text) {
    if (FindOtherEncoding(text) == std::string_view::npos) return text;
    Json bytes = Json::array();
    for (const char c : text) bytes.push_back(static_cast<unsigned char>(c));
    return bytes;
}

std::string TextIn(const Json& packed) {
    if (packed.is_string()) return packed.get<std::string>();
    std::string text;
    for (const Json& byte : packed) text += static_cast<char>(byte.get<unsigned>());
    return text;
}

Json Packed(const Span& span) { return {span.row, span.column, span.endRow, span.endColumn}; }

Span SpanIn(const Json& packed) {
    return {packed[0].get<std::uint32_t>(), packed[1].get<std::uint32_t>(), packed[2].get<std::uint32_t>(),
            packed[3].get<std::uint32_t>()};
}

Json Packed(const Finding& finding) {
    Json related = Json::array();
    for (const RelatedPlace& place : finding.related)
        related.push_back({Packed(place.file), Packed(place.span), Packed(place.message)});
    Json fixes = Json::array();
    for (const Fix& fix : finding.fixes) {
        Json edits = Json::array();
        for (const Edit& edit : fix.edits)
            edits.push_back({Packed(edit.file), Packed(edit.span), edit.begin, edit.end, Packed(edit.replacement)});
        fixes.push_back({Packed(fix.title), fix.isSafe, std::move(edits)});
    }
    return {{"rule", finding.rule->id},           {"severity", static_cast<int>(finding.severity)},
            {"file", Packed(finding.file)},       {"span", Packed(finding.span)},
            {"script", Packed(finding.script)},   {"isInScript", finding.isInScript},
            {"scriptRow", finding.scriptRow},     {"place", Packed(finding.place)},
            {"display", Packed(finding.display)}, {"message", Packed(finding.message)},
            {"help", Packed(finding.help)},       {"line", Packed(finding.line)},
            {"related", std::move(related)},      {"fixes", std::move(fixes)}};
}

Finding FindingIn(const Json& packed) {
    Finding finding;
    finding.rule = FindRule(packed["rule"].get<std::string>());
    finding.severity = static_cast<Severity>(packed["severity"].get<int>());
    finding.file = TextIn(packed["file"]);
    finding.span = SpanIn(packed["span"]);
    finding.script = TextIn(packed["script"]);
    finding.isInScript = packed["isInScript"].get<bool>();
    finding.scriptRow = packed["scriptRow"].get<std::uint32_t>();
    finding.place = TextIn(packed["place"]);
    finding.display = TextIn(packed["display"]);
    finding.message = TextIn(packed["message"]);
    finding.help = TextIn(packed["help"]);
    finding.line = TextIn(packed["line"]);
    for (const Json& place : packed["related"])
        finding.related.push_back({TextIn(place[0]), SpanIn(place[1]), TextIn(place[2])});
    for (const Json& fix : packed["fixes"]) {
        Fix made{TextIn(fix[0]), fix[1].get<bool>(), {}};
        for (const Json& edit : fix[2])
            made.edits.push_back({TextIn(edit[0]), SpanIn(edit[1]), edit[2].get<std::size_t>(),
                                  edit[3].get<std::size_t>(), TextIn(edit[4])});
        finding.fixes.push_back(std::move(made));
    }
    return finding;
}

// One file, with only so many findings as are told; errors go before the others.
void Limit(std::vector<Finding>& findings, const Options& options) {
    std::map<std::string, std::vector<Finding>> byFile;
    for (Finding& finding : findings) {
        if (IsAskedFor(*finding.rule, options)) byFile[finding.file].push_back(std::move(finding));
    }
    findings.clear();
    for (auto& [file, ofFile] : byFile) {
        SortFindings(ofFile);
        if (ofFile.size() > options.mostFindings) {
            std::stable_sort(ofFile.begin(), ofFile.end(),
                             [](const Finding& one, const Finding& other) { return one.severity > other.severity; });
            const std::size_t more = ofFile.size() - options.mostFindings;
            ofFile.resize(options.mostFindings);
            ofFile.push_back(WholeFileFinding("TV9002", file,
                                              more == 1
                                                  ? "1 more finding of this file is not told"
                                                  : std::to_string(more) + " more findings of this file are not told"));
        }
        findings.insert(findings.end(), std::make_move_iterator(ofFile.begin()), std::make_move_iterator(ofFile.end()));
    }
}

Json PackedAnswer(Examined examined, const Options& options, bool isForUses) {
    // More than are told at most need not travel; a root model's own findings come with each of its scenarios.
    Options travelling = options;
    travelling.mostFindings = options.mostFindings + 1;
    std::vector<Finding> told = std::move(examined.findings);
    if (told.size() > 4 * (options.mostFindings + 1)) Limit(told, travelling);
    Json findings = Json::array();
    for (const Finding& finding : told) findings.push_back(Packed(finding));
    Json answer = {{"findings", std::move(findings)}, {"unreadable", Packed(examined.unreadable)}};
    if (!isForUses) return answer;
    answer["model"] = Packed(examined.model);
    Json uses = Json::array();
    for (const DefinitionUse& use : examined.uses) uses.push_back({use.list, Packed(use.name)});
    answer["uses"] = std::move(uses);
    Json definitions = Json::array();
    for (const auto& [use, finding] : examined.definitions)
        definitions.push_back({use.list, Packed(use.name), Packed(finding)});
    answer["definitions"] = std::move(definitions);
    return answer;
}

TavrelProcesses::ChildSettings SettingsOf(const Options& options) {
    TavrelProcesses::ChildSettings settings;
    settings.seconds = options.seconds;
    settings.timed = options.seconds > 0;
    settings.memory = options.memory;
    settings.jobs = options.jobs == 0 ? TavrelProcesses::UsableCores() : options.jobs;
    settings.quiet = true;
    return settings;
}

// What the death of a child says of the file that it looked at.
Finding DeathFinding(const Job& job, const TavrelProcesses::Death& death) {
    Finding finding = WholeFileFinding("TV9001", death.file.empty() ? job.path : death.file, death.cause);
    finding.script = death.script;
    finding.place = death.place;
    return finding;
}

// Whether one of the errors names why the process ends.
bool NamesCause(const std::vector<Finding>& findings) {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.severity == Severity::Error; });
}

class Run {
public:
    Run(const std::vector<Job>& userJobs, const std::string* userText, const Options& userOptions)
        : jobs(userJobs), text(userText), options(userOptions) {}

    Result Do() {
        const bool isWhole = std::any_of(jobs.begin(), jobs.end(), [](const Job& job) {
            return job.kind == FileKind::Model && !job.installation.empty() && !job.configuration.empty();
        });
        const TavrelScenarioTemplateDb::ShareRootModels sharing; // nothing here changes a root model
        const lmkUtils::InstallationMoment moment;               // one state of the installation for all files
        Examiner examiner(options, isWhole);
        std::vector<std::size_t> dead;
        std::map<std::size_t, TavrelProcesses::Death> deaths;
        const TavrelProcesses::ChildSettings settings = SettingsOf(options);
        std::vector<Json> answers(jobs.size());
        try {
            TavrelProcesses::ForEachInChildren(
                jobs.size(), settings,
                [&](std::size_t at) {
                    return PackedAnswer(examiner.Examine(jobs[at], text, true), options, isWhole).dump();
                },
                [&](std::size_t at, const std::string& answer) {
                    answers[at] = Json::parse(answer);
                    if (options.progress) options.progress(at + 1);
                },
                [&](std::size_t at, const TavrelProcesses::Death& death) {
                    dead.push_back(at);
                    deaths.emplace(at, death);
                    if (options.progress) options.progress(at + 1);
                });
            // Once more without the library's own reading, which is what ends a process. It takes little time by
            // itself.
            TavrelProcesses::ChildSettings once = settings;
            once.seconds = std::max(settings.seconds / 10, std::min(settings.seconds, 1.0));
            TavrelProcesses::ForEachInChildren(
                dead.size(), once,
                [&](std::size_t at) {
                    return PackedAnswer(examiner.Examine(jobs[dead[at]], text, false), options, isWhole).dump();
                },
                [&](std::size_t at, const std::string& answer) { answers[dead[at]] = Json::parse(answer); },
                [](std::size_t, const TavrelProcesses::Death&) {});
        } catch (const TavrelProcesses::ProcessFailure& failure) {
            throw std::runtime_error(failure.what());
        }
        for (std::size_t at = 0; at < jobs.size(); ++at) {
            const auto death = deaths.find(at);
            Take(jobs[at], answers[at], death == deaths.end() ? nullptr : &death->second);
        }
        if (isWhole) AddUnused();
        Merge();
        Limit(result.findings, options);
        SortFindings(result.findings);
        return std::move(result);
    }

private:
    void Take(const Job& job, const Json& answer, const TavrelProcesses::Death* death) {
        result.files.push_back(job.path);
        std::vector<Finding> findings;
        if (answer.is_object())
            for (const Json& packed : answer["findings"]) findings.push_back(FindingIn(packed));
        if (death) {
            const bool isEnded = death->kind == TavrelProcesses::DeathKind::OutOfTime ||
                                 death->kind == TavrelProcesses::DeathKind::OutOfMemory;
            if (isEnded || !NamesCause(findings)) findings.push_back(DeathFinding(job, *death));
            if (isEnded) result.omissions.push_back({job.path, death->cause});
        }
        if (answer.is_object()) {
            const std::string unreadable = TextIn(answer["unreadable"]);
            if (!unreadable.empty()) result.omissions.push_back({job.path, unreadable});
            if (answer.contains("model")) {
                const std::string model = TextIn(answer["model"]);
                for (const Json& use : answer["uses"]) used[model].insert({use[0].get<std::size_t>(), TextIn(use[1])});
                for (const Json& definition : answer["definitions"])
                    definitions.emplace_back(
                        model, std::pair(DefinitionUse{definition[0].get<std::size_t>(), TextIn(definition[1])},
                                         FindingIn(definition[2])));
            }
        }
        result.findings.insert(result.findings.end(), std::make_move_iterator(findings.begin()),
                               std::make_move_iterator(findings.end()));
    }

    void AddUnused() {
        for (auto& [model, definition] : definitions)
            if (!used[model].count(definition.first)) result.findings.push_back(std::move(definition.second));
    }

    // A fault of a file that several others include, or of a root model, comes with each of them.
    void Merge() {
        std::stable_sort(result.findings.begin(), result.findings.end(),
                         [](const Finding& one, const Finding& other) { return Key(one) < Key(other); });
        std::vector<Finding> merged;
        constexpr std::size_t kMostPlaces = 10;
        for (Finding& finding : result.findings) {
            if (merged.empty() || Key(merged.back()) != Key(finding)) {
                merged.push_back(std::move(finding));
                continue;
            }
            Finding& first = merged.back();
            // The hardest one counts: a file may be read in one place and refused in another.
            first.severity = std::max(first.severity, finding.severity);
            for (RelatedPlace& place : finding.related) {
                const bool isThere = std::any_of(first.related.begin(), first.related.end(), [&](const auto& known) {
                    return known.file == place.file && known.span == place.span;
                });
                if (!isThere && first.related.size() < kMostPlaces) first.related.push_back(std::move(place));
            }
        }
        result.findings = std::move(merged);
    }

    static std::tuple<std::string_view, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t, std::string_view,
                      std::string_view>
    Key(const Finding& finding) {
        const Span& span = finding.span;
        return {finding.file, span.row, span.column, span.endRow, span.endColumn, finding.rule->id, finding.message};
    }

    const std::vector<Job>& jobs;
    const std::string* text;
    const Options& options;
    Result result;
    std::map<std::string, std::set<DefinitionUse>> used;
    std::vector<std::pair<std::string, std::pair<DefinitionUse, Finding>>> definitions;
};

} // namespace

Result Check(const std::vector<Job>& jobs, const Options& options) { return Run(jobs, nullptr, options).Do(); }

Result CheckText(const std::string& text, const Job& job, const Options& options) {
    Job one = job;
    if (one.kind == FileKind::Unknown) one.kind = KindOfFile(job.path);
    const std::vector<Job> jobs{one};
    return Run(jobs, &text, options).Do();
}

} // namespace TavrelChecking
