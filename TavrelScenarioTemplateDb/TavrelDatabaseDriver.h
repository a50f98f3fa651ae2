#ifndef TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_DATABASE_DRIVER_H
#define TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_DATABASE_DRIVER_H

#include <memory>
#include <string>

#include <ScenarioTemplateDb/DatabaseDriver.h>
#include <TavrelScenarioTemplateDb/Export.h>

namespace TavrelScenarioTemplateDb {

class TavrelScenario;
class TavrelScenarioTemplateDatabase;

// The one object that a host creates by itself: the driver for a Tavrel installation. A copy shares the database of
// the original, as does every directory that either of them hands out. Failures leave by value.
class TAVREL_DRIVER_API TavrelDatabaseDriver : public ScenarioTemplateDb::DatabaseDriver {
public:
    // `configFilePath` is the installation file: variables in it are expanded, and with an empty text the process
    // keeps the installation that it has. A filter of "*" shows everything, any other text the one version or the
    // one configuration that equals it. Fails as TavrelScenarioTemplateDatabase fails.
    TavrelDatabaseDriver(const std::string& configFilePath, const std::string& versionFilter,
                         const std::string& configurationFilter);
    TavrelDatabaseDriver(const TavrelDatabaseDriver& other) = default;
    TavrelDatabaseDriver& operator=(const TavrelDatabaseDriver& other) = default;
    ~TavrelDatabaseDriver() override;

    // "tavrel://", the installation file that the process uses at this moment, and the filters as a query. Nothing
    // is escaped.
    std::string getURI() const override;
    std::shared_ptr<ScenarioTemplateDb::DatabaseDirectory> getRootDirectory() const override;
    // createTavrelScenario in the configuration that the filter names; so without a configuration filter it finds
    // nothing.
    std::shared_ptr<ScenarioTemplateDb::Scenario> getScenario(const std::string& path) const override;

    // A new template that the caller deletes; its file is not opened yet. `path` is relative to a scenario directory,
    // with forward slashes. The search goes through the directories of the configuration filter, whatever
    // `configuration` says: that one only supplies the root model. Throws Exception (ExceptionCodeScenarioLoad)
    // "Could not find scenario : ..."; what stops the search of a directory passes through (Poco::Exception).
    TavrelScenario* createTavrelScenario(const std::string& configuration, const std::string& path) const;

private:
    std::shared_ptr<TavrelScenarioTemplateDatabase> database;
};

} // namespace TavrelScenarioTemplateDb

#endif
