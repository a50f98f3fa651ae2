#include "../Saving.h"
#include "../Scripts.h"
#include "Commands.h"

#include <lmkUtils/EnvConfig.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>

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

// What a line is about: the key of an attribute, or TYPEOF for the header of an item. Empty for all other lines, and
// for attributes that say what holds without them.
std::string SubjectOf(const std::string& line) {
    if (line.starts_with("TYPEOF")) return "TYPEOF";
    const std::size_t sign = line.find('=');
    if (sign == std::string::npos) return "";
    const std::string value = line.substr(sign + 1);
    const bool isDefault = value.starts_with("\"\"") || value == "\"0\"" || line == "MODIFIER=\"IS_TRUE\"";
    return isDefault ? "" : line.substr(0, sign);
}

// Tells each line that the items read but do not write as it stands. Answers how many of them are lost, such as the
// label of a configuration, and not only written in another form.
int TellLosses(const std::string& path, const std::string& before, const std::string& after) {
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
        Report(fmt::format("{}:{}: this line is {}: {}", path, otherRow, isLost ? "lost" : "written otherwise", line));
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

// Puts the text where --output says. Nothing is replaced by what cannot be read again, and the file itself only by
// what holds all of it, or with --force.
void Save(Context& context, const std::string& path, const std::string& before, const std::string& after,
          bool carriageReturns, int lost) {
    const std::string target = context.arguments.Text("--output");
    std::error_code error;
    const bool isInput = std::filesystem::equivalent(path, target, error);
    if (!ReadsBack(after, carriageReturns))
        throw Failure{ExitFindings,
                      fmt::format("{} is not written: the form that format writes could not be read again, "
                                  "which the header of an item without a name can bring about",
                                  target)};
    if (isInput && lost > 0 && !context.arguments.Has("--force"))
        throw Failure{ExitFindings,
                      fmt::format("{} is not written: {} of its lines would be lost; --force writes it all "
                                  "the same, another --output keeps it",
                                  target, lost)};
    if (!isInput) return SaveFile(target, after);
    std::string reason;
    if (!Commons::ReplaceFileWhole(target, before, after, reason))
        throw Failure{ExitUnreadable, fmt::format("cannot write {}: {}", target, reason)};
}

void PrepareModel(Context& context, const std::string& path) {
    if (context.arguments.Has("--model")) return UseRootModelFile(context.arguments.Text("--model"));
    const Installation installation(context, InstallationFileFor(context, path));
    const std::string configuration = ConfigurationFor(context, path);
    lmkUtils::EnvConfig::setConfig(configuration, false);
    UseRootModel(configuration);
}

} // namespace

int RunFormat(Context& context) {
    const std::string path = context.arguments.Text("FILE");
    const std::string reason = ReasonNotToOpen(path);
    if (!reason.empty()) throw Failure{ExitUnreadable, fmt::format("{}: {}", path, reason)};
    if (KindOfFile(path) != FileKind::Model) PrepareModel(context, path);

    std::optional<EditLock> lock;
    if (context.arguments.Has("--output")) lock.emplace(context.arguments.Text("--output"));
    // First, so that a change between the two is noticed when the file is to be replaced.
    const std::string before = ReadBytes(path);
    const std::unique_ptr<ScenarioItem> root = ReadScriptFileOrFail(path, ExitFindings);
    const bool carriageReturns = before.find("\r\n") != std::string::npos;
    const std::string after = Written(*root, carriageReturns);
    const int lost = TellLosses(path, before, after);
    if (context.arguments.Has("--check")) {
        if (after != before) Report(path + " is not in the form that format writes");
        return after == before ? ExitClean : ExitFindings;
    }
    if (context.arguments.Has("--output"))
        Save(context, path, before, after, carriageReturns, lost);
    else
        context.out.Print(std::string_view(after));
    return context.status;
}

} // namespace tavrel
