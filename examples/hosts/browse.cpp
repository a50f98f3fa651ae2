// Walks an installation from its root down to the scenarios: versions, configurations, scenario directories.
//
//     browse INSTALLATION-FILE

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <ScenarioTemplateDb/ScenarioTemplateDb.h>
#include <TavrelScenarioTemplateDb/TavrelDatabaseDriver.h>

#include "Report.h"

namespace {

using ScenarioTemplateDb::DatabaseDirectory;
using ScenarioTemplateDb::Scenario;

void list(const DatabaseDirectory& directory, int depth) {
    std::printf("%*s%s\n", 2 * depth, "", directory.getName().c_str());

    // All at once: asking for one scenario after the other walks the folders anew each time.
    std::vector<std::shared_ptr<Scenario>> scenarios;
    directory.getScenarios(scenarios);
    for (const auto& scenario : scenarios) std::printf("%*s%s\n", 2 * depth + 2, "", scenario->getPath().c_str());

    std::vector<std::shared_ptr<DatabaseDirectory>> directories;
    directory.getDirectories(directories);
    for (const auto& child : directories) list(*child, depth + 1);
}

// The name of a scenario directory is that of the current configuration's data path, and a filter is what makes a
// configuration current. So every configuration is browsed through a driver of its own.
void browse(const std::string& installation) {
    const TavrelScenarioTemplateDb::TavrelDatabaseDriver all(installation, "*", "*");
    std::printf("%s\n", all.getURI().c_str());

    std::vector<std::shared_ptr<DatabaseDirectory>> versions;
    all.getRootDirectory()->getDirectories(versions);
    for (const auto& version : versions) {
        std::vector<std::shared_ptr<DatabaseDirectory>> configurations;
        version->getDirectories(configurations);
        for (const auto& configuration : configurations) {
            const TavrelScenarioTemplateDb::TavrelDatabaseDriver one(installation, version->getName(),
                                                                     configuration->getName());
            list(*one.getRootDirectory()->getDirectory(0), 1);
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s INSTALLATION-FILE\n", argv[0]);
        return 2;
    }
    return reportFailures([&] { browse(argv[1]); });
}
