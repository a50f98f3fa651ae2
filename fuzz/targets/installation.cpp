// An installation file and the configuration file that it leads to, and what a driver asks of them. The parts of the
// input: installation file, configuration file, a path.

#include <cstdlib>

#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDb.h>
#include <environment/Environment.h>

#include "../Support.h"
#include "../Templates.h"

namespace {

using namespace TavrelScenarioTemplateDb;

// What a host sees of the installation in use.
void BrowseInstallation(const std::string& file, const std::string& path) {
    Answers([&] {
        const TavrelDatabaseDriver driver(file, "*", "*");
        driver.getURI();
        Browse(*driver.getRootDirectory(), [&](const ScenarioTemplateDb::Scenario& scenario) {
            Demand(lmkUtils::fileExist(scenario.getFilePath(), Commons::Encoding::ModeUtf8), "a listed file is there",
                   scenario.getFilePath());
        });
    });
    for (const std::string& name : lmkUtils::EnvConfig::getConfigurationsList()) {
        Answers([&] {
            const TavrelDatabaseDriver driver(file, "*", name);
            Answers([&] { Browse(*driver.getRootDirectory(), [](const ScenarioTemplateDb::Scenario&) {}); });
            Answers([&] { driver.getScenario(path); });
            Demand(driver.getScenario("a.sce")->getPath() == "a.sce", "a scenario that is there is found");
        });
        Answers([&] {
            const TavrelScenarioTemplateDatabase database(file, "*", name);
            database.getScenarioDirectories();
            database.getScenarioDirectoryNumber(name);
            database.getScenarioDirectory(name, 0);
            database.getScenarioIndex(name, 0, path);
            database.getScenarioPath(name, 0, database.getScenariosNumber(name, 0));
        });
    }
    Answers([&] {
        const TavrelScenarioTemplateDatabase database(file, path, path);
        database.getConfigurationFilePath();
        for (std::size_t i = 0; i < database.getVersionNumber(); ++i) {
            const std::string version = database.getVersion(i);
            for (std::size_t k = 0; k < database.getConfigurationNumber(version); ++k)
                Demand(database.getConfigurationVersion(database.getConfiguration(version, k)) == version,
                       "a configuration stands under its version", version);
        }
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using lmkUtils::EnvConfig;
    static const Workplace place;
    static const bool prepared = [] {
        ::setenv("TAVREL_FUZZ_ROOT", place.Path("configuration").c_str(), 1);
        place.Write("configuration/data/scenario/a.sce", "<sce/>");
        place.Write("good.xml", "<tavrel><configuration name=\"Good\" path=\"configuration\"/></tavrel>");
        return true;
    }();
    Demand(prepared, "the folder is prepared");

    Input input(data, size);
    const std::string file = place.Write("tavrel.xml", input.NextPart());
    place.Write("configuration/configuration.xml", input.NextPart());
    const std::string path = input.Rest();

    EnvConfig::setTavrelConfigFilePath(place.Path("good.xml"));
    EnvConfig::setConfig("Good", false);
    const std::string inUse = EnvConfig::ourConfigCfgFile;
    try {
        EnvConfig::setTavrelConfigFilePath(file);
    } catch (const lmkUtils::ConfigurationError& failure) {
        const std::string text = failure.what();
        Demand(text.rfind(file + ":", 0) == 0, "a refusal names the file", text);
        Demand(EnvConfig::ourConfigCfgFile == inUse, "a refused file is not in use");
    }
    const EnvConfig installation;
    for (const std::string& name : EnvConfig::getConfigurationsList()) {
        Demand(!name.empty(), "a configuration has a name");
        Demand(EnvConfig::setConfig(name, false), "a listed configuration can be made current", name);
        Demand(EnvConfig::getCurrentConfiguration() == name, "and is current then", name);
        const std::string folder = EnvConfig::getConfigPath(name);
        Demand(!folder.empty() && folder.find('\\') == std::string::npos, "its folder has forward slashes", folder);
        EnvConfig::Version version;
        if (EnvConfig::getConfigVersion(folder, version)) {
            Demand(version.numbers[0] >= 0 && !version.toString().empty(), "a version has a first number");
        }
        Demand(EnvConfig::getSeparatedPathForConfiguration(name, "data/scenario") ==
                   EnvConfig::getSeparatedPath("data/scenario"),
               "the current configuration answers as by its name", name);
        const std::string found = EnvConfig::findInPath("data/scenario", path);
        Demand(found.empty() || lmkUtils::fileExist(found, Commons::Encoding::ModeUtf8), "what was found is there",
               found);
        (void)installation[path];
    }
    BrowseInstallation(file, path);
    const std::string generic = EnvConfig::transformInGenericPath(path, false);
    Demand(generic.find('\\') == std::string::npos, "a generic path has forward slashes", generic);
    (void)lmkUtils::resolveGenericPath(path, Commons::Encoding::ModeUtf8);
    (void)Commons::Encoding::Transcode(path, Commons::Encoding::ModeUtf8);
    std::string cut = path;
    lmkUtils::removePath(cut);
    Demand(cut.find_first_of("/\\") == std::string::npos, "a name without its path has no separator", cut);
    std::string expanded;
    const bool known =
        Commons::System::ExpandLocalEnvironmentVariables(path, expanded, nullptr, {{"A", "${B}"}, {"B", "b"}});
    Demand(known || !path.empty(), "an empty text has no unknown variable");
    return 0;
}
