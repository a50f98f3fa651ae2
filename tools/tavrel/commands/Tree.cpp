#include "../Describe.h"
#include "../Installation.h"
#include "../report/ShownText.h"
#include "Commands.h"

namespace tavrel {

namespace {

// Directories come by version and configuration, so a heading is due where either changes.
void PrintTree(Context& context, const std::string& file, const std::vector<Configuration>& configurations,
               const std::vector<ScenarioDirectory>& directories) {
    Output& out = context.out;
    out.Print("{}\n", out.Strong(ShownText(file)));
    std::string version;
    bool first = true;
    for (const Configuration& configuration : configurations) {
        if (first || configuration.version != version) out.Print("  {}\n", ShownText(configuration.version));
        first = false;
        version = configuration.version;
        out.Print("    {}\n", out.Strong(ShownText(configuration.name)));
        for (const ScenarioDirectory& directory : directories) {
            if (directory.configuration.name != configuration.name) continue;
            out.Print("      {}\n", out.Faint(ShownText(directory.path)));
            for (const std::string& scenario : directory.scenarios) out.Print("        {}\n", ShownText(scenario));
        }
    }
}

void PrintJson(Context& context, const std::string& file, const std::vector<Configuration>& configurations,
               const std::vector<ScenarioDirectory>& directories) {
    Json versions = Json::array();
    for (const Configuration& configuration : configurations) {
        Json directoryList = Json::array();
        for (const ScenarioDirectory& directory : directories) {
            if (directory.configuration.name != configuration.name) continue;
            directoryList.push_back({{"path", directory.path}, {"scenarios", directory.scenarios}});
        }
        if (versions.empty() || versions.back()["version"] != configuration.version)
            versions.push_back({{"version", configuration.version}, {"configurations", Json::array()}});
        versions.back()["configurations"].push_back({{"name", configuration.name}, {"directories", directoryList}});
    }
    const Json tree = {{"installation", file}, {"versions", versions}};
    context.out.Print(DumpJson(tree));
}

} // namespace

int RunTree(Context& context) {
    Installation installation(context);
    std::vector<Configuration> readable;
    std::vector<ScenarioDirectory> directories;
    for (const Configuration& configuration : installation.Configurations()) {
        try {
            for (ScenarioDirectory& directory : installation.Directories(configuration))
                directories.push_back(std::move(directory));
        } catch (...) {
            const Failure failure = CurrentFailure();
            context.Tell({failure.status, configuration.name + ": " + failure.sentence});
        }
        readable.push_back(configuration);
    }
    const auto print = context.arguments.Has("--json") ? PrintJson : PrintTree;
    print(context, installation.File(), readable, directories);
    return context.status;
}

} // namespace tavrel
