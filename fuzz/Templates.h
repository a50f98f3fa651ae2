#ifndef FUZZ_TEMPLATES_H
#define FUZZ_TEMPLATES_H

#include <memory>
#include <vector>

#include <ScenarioTemplateDb/ScenarioTemplateDb.h>

#include "Support.h"

// Runs `body`; both forms of the library's exceptions are an answer.
template <class Body>
bool Answers(Body&& body) {
    try {
        body();
        return true;
    } catch (const ScenarioTemplateDb::Exception&) {
    } catch (ScenarioTemplateDb::Exception* failure) {
        delete failure;
    }
    return false;
}

// Opens every folder below `directory`, by its number and in the list of all, and tells `visit` of each scenario.
template <class Visit>
void Browse(const ScenarioTemplateDb::DatabaseDirectory& directory, Visit&& visit) {
    directory.getName();
    std::vector<std::shared_ptr<ScenarioTemplateDb::Scenario>> scenarios;
    Answers([&] { directory.getScenarios(scenarios); });
    Answers([&] { directory.getScenario(scenarios.size()); });
    for (const auto& scenario : scenarios) visit(*scenario);
    std::vector<std::shared_ptr<ScenarioTemplateDb::DatabaseDirectory>> directories;
    Answers([&] { directory.getDirectories(directories); });
    for (std::size_t i = 0; i < directories.size(); ++i) {
        Demand(directory.getDirectoryNumber() == directories.size(), "all directories are listed");
        Demand(directory.getDirectory(i)->getName() == directories[i]->getName(), "a directory has one place");
        Browse(*directories[i], visit);
    }
}

#endif
