#ifndef SCENARIO_TEMPLATE_DB_DATABASE_DRIVER_H
#define SCENARIO_TEMPLATE_DB_DATABASE_DRIVER_H

#include <memory>
#include <string>

#include <ScenarioTemplateDb/Export.h>

namespace ScenarioTemplateDb {

class DatabaseDirectory;
class Scenario;

// The way into a database of scenario templates. A host creates the driver of its kind of storage, and from there
// on needs nothing but this interface. All calls come on one thread at a time. Failures leave by value.
class SCENARIO_TEMPLATE_DB_API DatabaseDriver {
public:
    virtual ~DatabaseDriver() = default;

    // Identifies the database and the filters that the driver puts on it. Nothing reads it back.
    virtual std::string getURI() const = 0;
    // A new object at each call. It stays usable after the driver is gone.
    virtual std::shared_ptr<DatabaseDirectory> getRootDirectory() const = 0;
    // A new object at each call, never null, independent of the driver. `path` is what Scenario::getPath gave.
    // Throws Exception by value (ExceptionCodeScenarioLoad) when there is no such scenario.
    virtual std::shared_ptr<Scenario> getScenario(const std::string& path) const = 0;
};

} // namespace ScenarioTemplateDb

#endif
