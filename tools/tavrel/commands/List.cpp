#include <cfg/CfgScenario.h>

#include "../Describe.h"
#include "../Files.h"
#include "../Installation.h"
#include "../Progress.h"
#include "../ScenarioLines.h"
#include "../report/ShownText.h"
#include "Commands.h"

namespace tavrel {

namespace {

struct Entry {
    const ScenarioDirectory* directory;
    std::string path;
    std::string file;
    std::string name;
    std::string description;
    bool read = false;
};

std::vector<Entry> Entries(const std::vector<ScenarioDirectory>& directories) {
    std::vector<Entry> entries;
    for (const ScenarioDirectory& directory : directories)
        for (const std::string& scenario : directory.scenarios)
            entries.push_back({&directory, scenario, directory.FileOf(scenario), "", "", false});
    return entries;
}

// Name and description, or the fault. A listing needs neither the scripts of a scenario nor the root model, which an
// opened template would read anew for each of ten thousand files; so the file alone is read.
Json ReadName(const std::string& file) {
    const std::string reason = ReasonNotToOpen(file);
    if (!reason.empty()) return {{"fault", fmt::format("{}: {}", file, reason)}};
    cfg::CfgScenario scenario;
    if (!scenario.load(file.c_str(), static_cast<Commons::Encoding::Mode>(1), nullptr, nullptr, false, true, true))
        return {{"fault", PlacedLine(scenario.errorMessage)}};
    return {{"name", scenario.getRootSection()->name}, {"description", scenario.getRootSection()->description}};
}

void ReadNames(Context& context, std::vector<Entry>& entries) {
    Progress progress(static_cast<double>(entries.size()), "scenarios");
    const auto tell = [&](const std::string& sentence) {
        progress.Hide();
        context.Tell({ExitUnreadable, sentence});
    };
    TavrelProcesses::ForEachInChildren(
        entries.size(), context.Children(),
        [&](std::size_t item) {
            try {
                return DumpJsonLine(ReadName(entries[item].file));
            } catch (...) {
                return DumpJsonLine({{"fault", entries[item].file + ": " + CurrentFailure().sentence}});
            }
        },
        [&](std::size_t item, const std::string& answer) {
            const Json found = Json::parse(answer);
            progress.Reach(static_cast<double>(item));
            if (found.contains("fault")) return tell(found["fault"].get<std::string>());
            entries[item].name = found["name"].get<std::string>();
            entries[item].description = found["description"].get<std::string>();
            entries[item].read = true;
        },
        [&](std::size_t item, const TavrelProcesses::Death& death) {
            tell(TavrelProcesses::DeathSentence(entries[item].file, death));
        });
}

void PrintText(Output& out, const std::vector<Entry>& entries) {
    ScenarioLines lines(out);
    for (const Entry& entry : entries) lines.Add(entry.directory->configuration.name, entry.path, entry.name);
    for (std::size_t i = 0; i < lines.Count(); ++i) lines.Print(i);
}

// A scenario that could not be read has neither name nor description.
void PrintJson(Output& out, const std::vector<Entry>& entries) {
    Json list = Json::array();
    for (const Entry& entry : entries)
        list.push_back({{"configuration", entry.directory->configuration.name},
                        {"version", entry.directory->configuration.version},
                        {"directory", entry.directory->path},
                        {"path", entry.path},
                        {"file", entry.file},
                        {"name", entry.read ? Json(entry.name) : Json()},
                        {"description", entry.read ? Json(entry.description) : Json()}});
    out.Print(DumpJson(list));
}

} // namespace

int RunList(Context& context) {
    Installation installation(context);
    const std::vector<ScenarioDirectory> directories = installation.AllDirectories();
    std::vector<Entry> entries = Entries(directories);
    if (context.arguments.Has("--paths")) {
        for (const Entry& entry : entries) context.out.Print("{}\n", ShownText(entry.path));
        return context.status;
    }
    ReadNames(context, entries);
    if (context.arguments.Has("--json"))
        PrintJson(context.out, entries);
    else
        PrintText(context.out, entries);
    return context.status;
}

} // namespace tavrel
