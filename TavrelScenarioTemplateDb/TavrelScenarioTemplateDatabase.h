#ifndef TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_SCENARIO_TEMPLATE_DATABASE_H
#define TAVREL_SCENARIO_TEMPLATE_DB_TAVREL_SCENARIO_TEMPLATE_DATABASE_H

#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <TavrelScenarioTemplateDb/Export.h>

namespace TavrelScenarioTemplateDb {

namespace internal {
struct ScenarioVisitor;
}

// One installation as a store of scenario templates: its versions, their configurations, the scenario directories of
// a configuration, the scenario files of a directory. Every answer is that of the installation and of the disk at the
// moment of the call, at the price of asking both each time; only the directories of the configuration filter are
// kept from the construction on.
//
// Which installation file and which configuration are in use is state of the process: a second database changes them
// under the first one. Failures leave as Exception by value; an index beyond the end is one of them.
class TAVREL_DRIVER_API TavrelScenarioTemplateDatabase {
public:
    // Makes `configFilePath`, with its variables expanded, the installation file of the process, and the configuration
    // that the filter names its current one. An empty path, or the one in use, is taken without a look at the disk.
    // A filter of "*" lets everything pass; any other text, the empty one too, is compared whole, byte for byte.
    // Throws Exception with ExceptionCodeGeneric for an installation file that is missing or unusable (the process then
    // keeps the one it had), and with ExceptionCodeDirectoryAccess as getConfigurationScenarioDirectories does (the
    // process then keeps the new one).
    TavrelScenarioTemplateDatabase(const std::string& configFilePath, const std::string& versionFilter,
                                   const std::string& configurationFilter);
    TavrelScenarioTemplateDatabase(const TavrelScenarioTemplateDatabase& other) = default;
    TavrelScenarioTemplateDatabase& operator=(const TavrelScenarioTemplateDatabase& other) = default;
    virtual ~TavrelScenarioTemplateDatabase();

    // The directories of the configuration filter as the constructor found them; empty with the filter "*".
    const std::vector<std::string>& getScenarioDirectories() const;
    const std::string& getVersionFilter() const;
    const std::string& getConfigurationFilter() const;

    // Versions in byte order, which is not the order of numbers: "10" stands before "9".
    std::size_t getVersionNumber() const;
    // ExceptionCodeInvalidIndex beyond the end.
    std::string getVersion(std::size_t index) const;
    // Of any configuration, whatever the filters say. ExceptionCodeGeneric if it cannot be read.
    std::string getConfigurationVersion(const std::string& configuration) const;

    // Configurations of a version, in the order of the installation file.
    std::size_t getConfigurationNumber(const std::string& version) const;
    // ExceptionCodeInvalidIndex beyond the end.
    std::string getConfiguration(const std::string& version, std::size_t index) const;

    // Scenario directories of a configuration, in the order of its data path; both fail as
    // getConfigurationScenarioDirectories does.
    std::size_t getScenarioDirectoryNumber(const std::string& configuration) const;
    // ExceptionCodeGeneric beyond the end.
    std::string getScenarioDirectory(const std::string& configuration, std::size_t index) const;

    // Scenario files of a directory. Each of these walks the whole directory, and fails as getScenarioPaths does.
    std::size_t getScenariosNumber(const std::string& configuration, std::size_t directoryIndex) const;
    // ExceptionCodeGeneric beyond the end. The pair is that of getScenarioPaths.
    std::pair<std::string, std::string> getScenarioPath(const std::string& configuration, std::size_t directoryIndex,
                                                        std::size_t scenarioIndex) const;
    // Where the relative path stands in the listing. For a path that is not there the answer is the last index, or -1
    // in an empty listing: who needs to be sure compares the element.
    int getScenarioIndex(const std::string& configuration, std::size_t directoryIndex, const std::string& path) const;

    // The installation file that the process uses, in generic form.
    std::string getConfigurationFilePath() const;

    // These four drop what the container held. A configuration whose version cannot be read appears in no listing.
    void getVersions(std::set<std::string>& versions) const;
    void getConfigurationsForVersion(const std::string& version, std::vector<std::string>& configurations) const;
    // One folder "data/scenario" for each entry of the configuration's data path. All must be there: otherwise the call
    // throws (ExceptionCodeDirectoryAccess), and the vector keeps those that are.
    void getConfigurationScenarioDirectories(const std::string& configuration,
                                             std::vector<std::string>& directories) const;
    // For each file with the extension "sce", at any depth: the scenario directory in generic form, and the path
    // relative to it with forward slashes. Joined by "/" the two make the path of the file. A folder's own entries come
    // before those of its subfolders; apart from that the order is the file system's, so an index holds only as long
    // as nothing on disk changes. Links are followed. What cannot be read (a broken link, a link that leads back up, a
    // folder without access) ends the listing with ExceptionCodeDirectoryAccess, and the vector keeps what came before.
    // What is gone by the time that the walk comes to it, and the files of a save under way, are passed over.
    void getScenarioPaths(const std::string& configuration, std::size_t directoryIndex,
                          std::vector<std::pair<std::string, std::string>>& paths) const;

    // The same without a list, for this library: each file as the walk finds it. Answers with the scenario directory in
    // generic form, and fails as getScenarioPaths does.
    std::string forEachScenario(const std::string& configuration, std::size_t directoryIndex,
                                const internal::ScenarioVisitor& visitor) const;

    // The first of getScenarioDirectories() under which a scenario file has this relative path, compared byte for byte;
    // an empty text if there is none. The reference lives as long as this object. What stops a walk passes through as
    // Poco::Exception.
    const std::string& getScenarioDirectory(const std::string& path) const;

private:
    std::string versionFilter;
    std::string configurationFilter;
    std::vector<std::string> scenarioDirectories; // set by the constructor, never refreshed
};

} // namespace TavrelScenarioTemplateDb

#endif
