#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <sstream>

#include <lmkUtils/EnvConfig.h>

#include "../Progress.h"
#include "../Saving.h"
#include "../ScenarioFile.h"
#include "../Scripts.h"
#include "Commands.h"

namespace tavrel {

namespace {

std::string ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

// The line ends of the file are kept. A nameless header reads back only with a carriage return behind it, and a file
// that has one has it everywhere, or it could not have been read.
std::string Written(ScenarioItem& root, bool carriageReturns) {
    std::ostringstream out;
    root.Save(out);
    if (!carriageReturns) return out.str();
    std::string text;
    for (const char c : out.str()) {
        if (c == '\n') text += '\r';
        text += c;
    }
    return text;
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        const std::size_t begin = line.find_first_not_of("\t\r\f");
        const std::size_t end = line.find_last_not_of("\t\r\f");
        lines.push_back(begin == std::string::npos ? "" : line.substr(begin, end - begin + 1));
    }
    return lines;
}

// What a line is about: the key of an attribute, or TYPEOF and the kind for the header of an item, since a RETURN that
// is written as a PARAMETER makes another call. Empty for all other lines, and for attributes that say what holds
// without them.
std::string SubjectOf(const std::string& line) {
    if (line.starts_with("TYPEOF")) return line.substr(0, line.find(" ("));
    const std::size_t sign = line.find('=');
    if (sign == std::string::npos) return "";
    const std::string value = line.substr(sign + 1);
    const bool isDefault = value.starts_with("\"\"") || value == "\"0\"" || line == "MODIFIER=\"IS_TRUE\"";
    return isDefault ? "" : line.substr(0, sign);
}

using RowInFile = std::function<std::size_t(std::size_t)>;

// Tells each line that the items read but do not write as it stands. Answers how many of them are lost, such as the
// label of a configuration, and not only written in another form.
int TellLosses(const std::string& path, const RowInFile& rowInFile, const std::string& before,
               const std::string& after) {
    std::map<std::string, int> kept, keptSubjects;
    for (const std::string& line : Lines(after)) {
        ++kept[line];
        ++keptSubjects[SubjectOf(line)];
    }
    int lost = 0;
    std::size_t row = 0;
    std::vector<std::pair<std::size_t, std::string>> others;
    for (const std::string& line : Lines(before)) {
        ++row;
        if (line.empty()) continue;
        if (--kept[line] >= 0)
            --keptSubjects[SubjectOf(line)];
        else
            others.emplace_back(row, line);
    }
    for (const auto& [otherRow, line] : others) {
        const std::string subject = SubjectOf(line);
        const bool isLost = !subject.empty() && --keptSubjects[subject] < 0;
        lost += isLost ? 1 : 0;
        Report(fmt::format("{}:{}: this line is {}: {}", path, rowInFile(otherRow),
                           isLost ? "lost" : "written otherwise", line));
    }
    return lost;
}

// Whether the text can be read, and then written as it stands.
bool ReadsBack(const std::string& text, bool carriageReturns) {
    try {
        ScenarioTextStream stream(text.c_str(), text.size() + 1);
        ItemLoadContext observers{nullptr, nullptr};
        const std::unique_ptr<ScenarioItem> root(ReadItem(stream, nullptr, &observers, false));
        return root && Written(*root, carriageReturns) == text;
    } catch (const std::exception&) {
        return false;
    }
}

// What format made of a file.
struct Formatted {
    std::string before;
    std::string after;
    int lost = 0;          // lines
    bool canBeRead = true; // what was written
};

Formatted FormatText(const std::string& path) {
    Formatted file;
    // First, so that a change between the two is noticed when the file is to be replaced.
    file.before = ReadBytes(path);
    const std::unique_ptr<ScenarioItem> root = ReadScriptFileOrFail(path, ExitFindings);
    const bool carriageReturns = file.before.find("\r\n") != std::string::npos;
    file.after = Written(*root, carriageReturns);
    file.lost = TellLosses(
        path, [](std::size_t row) { return row; }, file.before, file.after);
    file.canBeRead = ReadsBack(file.after, carriageReturns);
    return file;
}

// One script of a scenario file: the change of the bytes of the file, if it has another form.
struct Change {
    std::size_t begin;
    std::size_t end;
    std::string bytes;
};

// Formats the scripts of a scenario file, each in its place. What stands around a script, line ends before and behind
// it included, stays byte for byte.
class ScenarioFormatter {
public:
    explicit ScenarioFormatter(const std::string& filePath) : path(filePath), file(Opened(filePath)) {}

    Formatted Run() {
        Formatted result;
        result.before = result.after = file.Bytes();
        const std::vector<FileScript> scripts = file.Scripts();
        for (const FileScript& script : scripts) Add(script, result);
        for (auto change = changes.rbegin(); change != changes.rend(); ++change)
            result.after.replace(change->begin, change->end - change->begin, change->bytes);
        if (!changes.empty() && !HasTexts(result.after)) result.canBeRead = false;
        return result;
    }

private:
    // A file that is no scenario is a finding, as a script that cannot be read is one.
    static ScenarioFile Opened(const std::string& path) {
        try {
            return ScenarioFile(path);
        } catch (Failure& failure) {
            failure.status = ExitFindings;
            throw;
        }
    }

    void Add(const FileScript& script, Formatted& result) {
        constexpr const char* kSeparators = "\t\n\f\r";
        const std::string& text = script.text.Text();
        const std::size_t begin = text.find_first_not_of(kSeparators);
        const std::size_t end = text.find_last_not_of(kSeparators) + 1;
        texts.push_back(text);
        if (begin == std::string::npos) return; // check tells of a text without an item
        const std::vector<std::uint32_t> rows = file.RowsOf(script);
        const RowInFile rowInFile = [&](std::size_t row) {
            return rows[std::clamp<std::size_t>(row, 1, rows.size()) - 1];
        };
        const bool carriageReturns = text.find("\r\n") != std::string::npos;
        std::string after = Written(*Read(script, rowInFile), carriageReturns);
        result.lost += TellLosses(path, rowInFile, text, after);
        result.canBeRead = result.canBeRead && ReadsBack(after, carriageReturns);
        after.erase(after.find_last_not_of(kSeparators) + 1);
        after.erase(0, after.find_first_not_of(kSeparators));
        if (after == text.substr(begin, end - begin)) return;
        Change change;
        std::tie(change.begin, change.end) = script.text.InFile(begin, end);
        if (!script.text.Write(after, begin, end, change.bytes))
            throw Failure{ExitFindings, fmt::format("{}:{}: script {} is not written: its text ends a CDATA section",
                                                    path, rowInFile(1), script.name)};
        changes.push_back(std::move(change));
        texts.back() = text.substr(0, begin) + after + text.substr(end);
    }

    std::unique_ptr<ScenarioItem> Read(const FileScript& script, const RowInFile& rowInFile) const {
        const ScriptUnderWay working(script.name);
        ProblemList list;
        std::uint32_t row = 1;
        std::string cause = "the text is refused";
        std::unique_ptr<ScenarioItem> root;
        try {
            root = ReadScriptText(script.text.Text(), row);
        } catch (...) {
            cause = CurrentFailure().sentence; // a number that does not convert
        }
        for (const LoadProblem& problem : list.problems)
            if (!problem.isWarning && problem.file.empty()) {
                row = problem.row;
                cause = problem.cause;
            }
        if (!root)
            throw Failure{ExitFindings,
                          fmt::format("{}:{}: script {}: {}", path, rowInFile(row), script.name, OneLine(cause))};
        return root;
    }

    // Whether these bytes are a scenario file with the scripts that were made.
    bool HasTexts(const std::string& bytes) const {
        const cfg::ScenarioText read(bytes);
        if (read.FirstFault()) return false;
        const std::vector<FileScript> scripts = ScriptsIn(read);
        return scripts.size() == texts.size() &&
               std::equal(scripts.begin(), scripts.end(), texts.begin(),
                          [](const FileScript& script, const std::string& text) { return script.text.Text() == text; });
    }

    const std::string path;
    const ScenarioFile file;
    std::vector<Change> changes; // in the order of the file
    std::vector<std::string> texts;
};

// What is in use in the process, so that files of one configuration share their root model.
class ModelInUse {
public:
    explicit ModelInUse(Context& userContext) : context(userContext) {}

    void PrepareFor(const std::string& path, FileKind kind) {
        if (kind == FileKind::Model) {
            scenarioRootModel = nullptr; // a model is linked within itself
            configuration.reset();
            return;
        }
        const std::string file = InstallationFileFor(context, path);
        if (file != installation) {
            const Installation taken(context, file);
            installation = file;
            configuration.reset();
        }
        const std::string name = ConfigurationFor(context, path);
        if (configuration == name) return;
        lmkUtils::EnvConfig::setConfig(name, false);
        if (context.arguments.Has("--model"))
            UseRootModelFile(context.arguments.Text("--model"));
        else
            UseRootModel(name);
        configuration = name;
    }

private:
    Context& context;
    std::string installation;
    std::optional<std::string> configuration; // whose root model is in use
};

// Puts the text where it is wanted. Nothing is replaced by what cannot be read again, and the file itself only by what
// holds all of it, or with --force.
void Save(Context& context, const std::string& path, const std::string& target, const Formatted& file) {
    std::error_code error;
    const bool isInput = std::filesystem::equivalent(path, target, error);
    if (!file.canBeRead)
        throw Failure{ExitFindings,
                      fmt::format("{} is not written: the form that format writes could not be read again, "
                                  "which the header of an item without a name can bring about",
                                  target)};
    if (isInput && file.lost > 0 && !context.arguments.Has("--force"))
        throw Failure{ExitFindings,
                      fmt::format("{} is not written: {} of its lines would be lost; --force writes it all "
                                  "the same, another --output keeps it",
                                  target, file.lost)};
    if (!isInput) return SaveFile(target, file.after);
    if (file.after == file.before) return;
    std::string reason;
    if (!Commons::ReplaceFileWhole(target, file.before, file.after, reason))
        throw Failure{ExitUnreadable, fmt::format("cannot write {}: {}", target, reason)};
}

// A file to format. One that was named is told if it is none; of a folder, only what is one is taken.
struct FormatJob {
    std::string path;
    FileKind kind;
};

std::vector<FormatJob> JobsOf(Context& context) {
    std::vector<FormatJob> jobs;
    for (const std::string& path : context.arguments.Texts("PATH")) {
        std::error_code error;
        if (!std::filesystem::is_directory(path, error)) {
            jobs.push_back({path, KindOfFile(path)});
            continue;
        }
        std::vector<FormatJob> below;
        Walk(
            path,
            [&](const std::string& found) {
                const FileKind kind = KindOfFile(found);
                const bool isText = kind == FileKind::Scenario || kind == FileKind::Model || kind == FileKind::Script;
                if (isText && !std::filesystem::is_directory(found, error)) below.push_back({found, kind});
            },
            [&](const std::string& sentence) {
                context.Tell({ExitUnreadable, sentence});
            });
        // A walk gives the order of the file system, which differs from machine to machine.
        std::sort(below.begin(), below.end(), [](const FormatJob& a, const FormatJob& b) { return a.path < b.path; });
        jobs.insert(jobs.end(), below.begin(), below.end());
    }
    return jobs;
}

enum class Puts { OnOutput, IntoFile, InPlace, Nowhere };

// One file, in the child. `text` receives what is to stand on the standard output.
int FormatOne(Context& context, ModelInUse& model, const FormatJob& job, Puts puts, std::string& text) {
    const std::string reason = ReasonNotToOpen(job.path);
    if (!reason.empty()) throw Failure{ExitUnreadable, fmt::format("{}: {}", job.path, reason)};
    model.PrepareFor(job.path, job.kind);
    const std::string target = puts == Puts::InPlace ? job.path : context.arguments.Text("--output");
    std::optional<EditLock> lock;
    if (!target.empty()) lock.emplace(target);
    const Formatted file = job.kind == FileKind::Scenario ? ScenarioFormatter(job.path).Run() : FormatText(job.path);
    switch (puts) {
    case Puts::Nowhere:
        if (file.after != file.before) Report(job.path + " is not in the form that format writes");
        return file.after == file.before ? ExitClean : ExitFindings;
    case Puts::OnOutput:
        text = file.after;
        return ExitClean;
    case Puts::IntoFile:
    case Puts::InPlace:
        Save(context, job.path, target, file);
        break;
    }
    return ExitClean;
}

} // namespace

int RunFormat(Context& context) {
    const std::vector<std::string> paths = context.arguments.Texts("PATH");
    std::error_code error;
    const bool isOne = paths.size() == 1 && !std::filesystem::is_directory(paths[0], error);
    const bool inPlace = context.arguments.Has("--in-place") || !isOne;
    const Puts puts = context.arguments.Has("--check")    ? Puts::Nowhere
                      : context.arguments.Has("--output") ? Puts::IntoFile
                      : inPlace                           ? Puts::InPlace
                                                          : Puts::OnOutput;
    if (context.arguments.Has("--output") && inPlace)
        throw Failure{ExitUsage, "--output takes one file; several files, and folders, are written in their places"};
    const std::vector<FormatJob> jobs = JobsOf(context);
    Progress progress(static_cast<double>(jobs.size()), "files");
    ModelInUse model(context);
    TavrelProcesses::ForEachInChildren(
        jobs.size(), context.Children(),
        [&](std::size_t item) {
            std::string text;
            int status = ExitClean;
            try {
                status = FormatOne(context, model, jobs[item], puts, text);
            } catch (...) {
                const Failure failure = CurrentFailure();
                Report(failure.sentence);
                status = failure.status;
            }
            return static_cast<char>('0' + status) + text;
        },
        [&](std::size_t item, const std::string& answer) {
            progress.Reach(static_cast<double>(item));
            context.status = std::max(context.status, answer[0] - '0');
            context.out.Print(std::string_view(answer).substr(1));
        },
        [&](std::size_t item, const TavrelProcesses::Death& death) {
            progress.Hide();
            context.Tell({ExitUnreadable, TavrelProcesses::DeathSentence(jobs[item].path, death)});
        });
    return context.status;
}

} // namespace tavrel
