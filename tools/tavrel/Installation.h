#ifndef TAVREL_COMMAND_INSTALLATION_H
#define TAVREL_COMMAND_INSTALLATION_H

#include <memory>
#include <string>
#include <vector>

#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDb.h>

#include "Context.h"

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

// One scenario of a listing. The directories that it points to stay where they are as long as it is used.
struct ListedScenario {
    const ScenarioDirectory* directory;
    const std::string* path;        // below the directory
    const ScenarioDirectory* first; // of the data path of the configuration, in the same list

    std::string File() const { return directory->FileOf(*path); }
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

    // The scenario at that path of the configuration that has it, in whatever Unicode normal form the path is written.
    // Fails if there is none, or more than one that differ in the file or in the root model.
    OpenedScenario Open(const std::string& wanted);

private:
    bool PassesFilter(const Configuration& configuration) const;

    Context& context;
    std::string file;
};

// A scenario by its place, not opened.
struct FoundScenario {
    std::string configuration;
    std::string path; // as the tree shows it
    std::string file;
};

// The scenarios at that path, one of each configuration that the filters let through. None, too, where the installation
// cannot be read, which is told by whoever works with it.
std::vector<FoundScenario> FindScenarios(Context& context, const std::string& path);
// The same, or else those that the path spells in another way.
std::vector<FoundScenario> FindScenariosMeantBy(Context& context, const std::string& written);
// The path of a scenario that is spelt nearly like that; empty if there is none.
std::string NearestScenario(Context& context, const std::string& path);

// What an operand SCENARIO names: a file on disk, in the configuration that it belongs to, or else the scenario at that
// path of the installation. Where there are both, the file is meant, and that is said. With --all it is the one that
// the context says, in the installation file in use, which is not read again for each of them.
OpenedScenario OpenScenario(Context& context, const std::string& operand);
// Whether an operand is a file on disk, and says so if it is a scenario of the installation, too.
bool IsFileOnDisk(Context& context, const std::string& operand);

// The installation file that the command line names, else TAVREL_CONFIG, else the one in the current folder or the
// nearest above, which is said on a terminal, else the sample.
std::string InstallationFileInUse(const Arguments& arguments);
// The "tavrel.xml" in a folder or the nearest above; empty if there is none.
std::string InstallationFileFrom(const std::string& folder);
// The configuration that the command line names, as the installation in use writes it: what is named may be in another
// Unicode normal form. Empty if none is named, and as it is named if there is no such configuration.
std::string ChosenConfiguration(const Arguments& arguments);
// The sample installation that came with this command.
std::string SampleInstallationFile();

} // namespace tavrel

#endif
