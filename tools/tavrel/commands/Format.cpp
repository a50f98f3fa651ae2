#include "../Scripts.h"
#include "Commands.h"

#include <lmkUtils/EnvConfig.h>

#include <fstream>
#include <map>
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

// Tells each line that the items read but do not write, such as the label of a configuration.
void TellLosses(const std::string& path, const std::string& before, const std::string& after) {
    std::map<std::string, int> kept;
    for (const std::string& line : Lines(after)) ++kept[line];
    std::size_t row = 0;
    for (const std::string& line : Lines(before)) {
        ++row;
        if (!line.empty() && --kept[line] < 0)
            Report(fmt::format("{}:{}: this line is written otherwise: {}", path, row, line));
    }
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

    const std::unique_ptr<ScenarioItem> root = ReadScriptFileOrFail(path, ExitFindings);
    const std::string before = ReadBytes(path);
    const std::string after = Written(*root, before.find("\r\n") != std::string::npos);
    TellLosses(path, before, after);
    if (context.arguments.Has("--check")) {
        if (after != before) Report(path + " is not in the form that format writes");
        return after == before ? ExitClean : ExitFindings;
    }
    if (context.arguments.Has("--output"))
        SaveFile(context.arguments.Text("--output"), after);
    else
        context.out.Print(std::string_view(after));
    return context.status;
}

} // namespace tavrel
