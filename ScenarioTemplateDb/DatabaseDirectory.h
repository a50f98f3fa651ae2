#ifndef SCENARIO_TEMPLATE_DB_DATABASE_DIRECTORY_H
#define SCENARIO_TEMPLATE_DB_DATABASE_DIRECTORY_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <ScenarioTemplateDb/Export.h>

namespace ScenarioTemplateDb {

class Scenario;

// One level of the tree in which a host browses. A directory answers for the moment of the call: between two calls
// the storage may change, and with it every number and index. All failures leave by value.
class SCENARIO_TEMPLATE_DB_API DatabaseDirectory {
public:
    virtual ~DatabaseDirectory() = default;

    virtual std::size_t getDirectoryNumber() const = 0;
    // A new object at each call, never null. Throws Exception by value for an index beyond the end.
    virtual std::shared_ptr<DatabaseDirectory> getDirectory(std::size_t index) const = 0;
    // Drops what the vector held and fills it with new objects, in the order of the indexes.
    virtual void getDirectories(std::vector<std::shared_ptr<DatabaseDirectory>>& directories) const = 0;

    // Scenarios that stand in this directory itself, not below it.
    virtual std::size_t getScenarioNumber() const = 0;
    // A new object at each call, never null; nothing of its file is read yet. Throws Exception by value for an index
    // beyond the end, and at a level that never holds scenarios.
    virtual std::shared_ptr<Scenario> getScenario(std::size_t index) const = 0;
    // Drops what the vector held and fills it with new objects, in the order of the indexes. The way to get all of
    // them: a loop over getScenario lists the directory once for every index.
    virtual void getScenarios(std::vector<std::shared_ptr<Scenario>>& scenarios) const = 0;

    // What a list shows; not a key.
    virtual std::string getName() const = 0;
};

} // namespace ScenarioTemplateDb

#endif
