#ifndef TAVREL_COMMAND_INSTALLATION_H
#define TAVREL_COMMAND_INSTALLATION_H

#include "Context.h"

#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDb.h>

#include <memory>
#include <string>
#include <vector>

namespace tavrel {

struct Configuration {
    std::string name;
    std::string version;
};

// One place in the data path of a configuration where scenarios lie, and what lies there.
struct ScenarioDirectory {
    Configuration configuration;
    std::string path;                   // the folder
    std::vector<std::string> scenarios; // relative paths, sorted
    std::vector<std::string> noFiles; // the same of what is named like a scenario and is a folder, a pipe, a dead link

    std::string FileOf(const std::string& scenario) const { return path + "/" + scenario; }
};

// A template that was found by its path. Its configuration is the current one of the process, which is where includes,
// images and the like are looked up, for as long as no other template is opened.
struct OpenedScenario {
    Configuration configuration;
    std::string directory; // the folder of its data path
    std::unique_ptr<TavrelScenarioTemplateDb::TavrelScenario> scenario;
};

// The installation that the command line names, with the filters that it gives.
class Installation {
public:
    // Takes the installation file into use. Fails if it cannot be read.
    explicit Installation(Context& userContext);
    Installation(Context& userContext, const std::string& installationFile);

    const std::string& File() const { return file; }
    // The driver that the filters of the command line describe.
    TavrelScenarioTemplateDb::TavrelDatabaseDriver Driver() const;

    // What the filters let through, by version. A configuration without a readable version has no place in the tree: it
    // is told and left out.
    std::vector<Configuration> Configurations();
    // Its scenario directories. Fails if a folder of its data path is missing; one that cannot be walked is told and
    // left empty.
    std::vector<ScenarioDirectory> Directories(const Configuration& configuration);
    // Those of all configurations. One that fails is told and left out, and so is what is no file in them.
    std::vector<ScenarioDirectory> AllDirectories();

    // The scenario at `path` of the one configuration that has it. Fails if there is none, or more than one.
    OpenedScenario Open(const std::string& path);

private:
    bool PassesFilter(const Configuration& configuration) const;

    Context& context;
    std::string file;
};

// The sample installation that came with this command.
std::string SampleInstallationFile();

} // namespace tavrel

#endif
