#ifndef TAVREL_SCENARIO_TEMPLATE_DB_INTERNAL_SCENARIO_WALK_H
#define TAVREL_SCENARIO_TEMPLATE_DB_INTERNAL_SCENARIO_WALK_H

#include <functional>
#include <string>
#include <string_view>

namespace TavrelScenarioTemplateDb::internal {

// What a walk tells. One walk may begin anew, and what it told before then counts for nothing.
struct ScenarioVisitor {
    std::function<void()> begin;
    // A scenario file: the path of its folder below the root, empty or with a slash at its end, and its name. False
    // ends the walk.
    std::function<bool(std::string_view folder, std::string_view name)> found;
};

// Walks the folders below `root`, links followed, in the order of Poco's siblings-first traversal: a folder to its end,
// in the order of the file system, then its subfolders in turn. What cannot be read fails as that traversal fails
// (Poco::Exception): a folder without access, a link that leads nowhere, wherever it lies and whatever its name, or one
// to a folder above itself, once the system refuses to follow any more links. Passes over the files of a save under
// way, and over what is gone by the time that it is looked at.
void walkScenarioFiles(const std::string& root, const ScenarioVisitor& visitor);

// What `found` was told as the path of a scenario, with forward slashes.
std::string relativePath(std::string_view folder, std::string_view name);

} // namespace TavrelScenarioTemplateDb::internal

#endif
