#include <support/DriverTest.h>

namespace {

using Directories = std::vector<std::shared_ptr<DatabaseDirectory>>;
using Scenarios = std::vector<std::shared_ptr<Scenario>>;

class DirectoryTreeTest : public testing::Test {
protected:
    DirectoryTreeTest() {
        installation.configuration("City", "3.2", {"city", "common"});
        installation.configuration("Highway", "10.0", {"highway"});
        installation.configuration("Village", "3.2", {"common"});
        for (const char* root : {"city", "highway"}) fs::create_directories(installation.path() + "/" + root + "/data");
        installation.scenario("city", "a.sce", SectionText("Scenario"));
        installation.scenario("city", "north/b.sce", SectionText("Scenario"));
        installation.scenario("common", "c.sce", SectionText("Scenario"));
        fs::create_directories(installation.path() + "/highway/data/scenario");
    }

    std::shared_ptr<DatabaseDirectory> rootDirectory(const std::string& version = "*",
                                                     const std::string& configuration = "*") {
        return TavrelDatabaseDriver(installation.file(), version, configuration).getRootDirectory();
    }

    // The names below a directory, which are the same one by one and all at once.
    static std::vector<std::string> names(const DatabaseDirectory& directory) {
        Directories directories{nullptr};
        directory.getDirectories(directories);
        std::vector<std::string> result;
        EXPECT_EQ(directories.size(), directory.getDirectoryNumber());
        for (std::size_t index = 0; index < directories.size(); ++index) {
            result.push_back(directories[index]->getName());
            EXPECT_EQ(directory.getDirectory(index)->getName(), result.back());
            EXPECT_NE(directory.getDirectory(index), directories[index]) << "a new object each time";
        }
        return result;
    }

    static std::vector<std::string> paths(const DatabaseDirectory& directory) {
        Scenarios scenarios{nullptr};
        directory.getScenarios(scenarios);
        std::vector<std::string> result;
        EXPECT_EQ(scenarios.size(), directory.getScenarioNumber());
        for (std::size_t index = 0; index < scenarios.size(); ++index) {
            result.push_back(scenarios[index]->getPath());
            EXPECT_EQ(directory.getScenario(index)->getFilePath(), scenarios[index]->getFilePath());
        }
        return result;
    }

    InstallationBuilder installation;
};

TEST_F(DirectoryTreeTest, VersionsConfigurationsDirectoriesScenarios) {
    const auto root = rootDirectory("*", "City");
    EXPECT_EQ(root->getName(), lmkUtils::EnvConfig::transformInGenericPath(installation.file(), false));
    EXPECT_THAT(names(*root), ElementsAre("3.2")) << "a filter narrows a level and never removes one";
    const auto version = root->getDirectory(0);
    EXPECT_THAT(names(*version), ElementsAre("City"));
    const auto configuration = version->getDirectory(0);
    EXPECT_THAT(names(*configuration), ElementsAre("data", "data"));
    EXPECT_THAT(paths(*configuration->getDirectory(0)), ElementsAre("a.sce", "north/b.sce"));
    EXPECT_THAT(paths(*configuration->getDirectory(1)), ElementsAre("c.sce"));
    EXPECT_EQ(configuration->getDirectory(0)->getScenario(1)->getFilePath(),
              installation.path() + "/city/data/scenario/north/b.sce");

    const auto all = rootDirectory();
    EXPECT_THAT(names(*all), ElementsAre("10.0", "3.2"));
    EXPECT_THAT(names(*all->getDirectory(1)), ElementsAre("City", "Village"));
    EXPECT_EQ(rootDirectory("5")->getDirectoryNumber(), 0U);
}

TEST_F(DirectoryTreeTest, EachLevelRefusesInItsOwnWords) {
    installation.configuration("City", "3.2", {"city"});
    const auto root = rootDirectory();
    const auto version = root->getDirectory(1);
    const auto configuration = version->getDirectory(0);
    const auto directory = configuration->getDirectory(0);
    struct Row {
        const char* why;
        std::shared_ptr<DatabaseDirectory> directory;
        Failure scenario;
        Failure beyond;
    };
    const Row rows[] = {
        {"root", root, byValue(4, "No scenario template can be found in the Tavrel installation root directory!"),
         byValue(4, "Invalid version index : 2\nCurrent Tavrel installation " + root->getName() +
                        " only contain 2 different versions.")},
        {"version", version, byValue(4, "No scenario template can be found in the Tavrel virtual version directory!"),
         byValue(4, "Invalid configuration index : 2\nCurrent version 3.2 only contain 2 different configurations.")},
        {"configuration", configuration,
         byValue(4, "No scenario template can be found in the Tavrel configuration directory!"),
         byValue(-1, "Invalid scenario directory index 2 in configuration City")},
        {"scenario directory", directory,
         byValue(-1, "Invalid scenario template index 2 in configuration City directory 2"),
         byValue(4, "No directory into the given configuration scenario folder ")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(failureOf([&] { row.directory->getScenario(2); }), row.scenario);
        EXPECT_EQ(failureOf([&] { row.directory->getDirectory(2); }), row.beyond);
        Directories directories{nullptr};
        Scenarios scenarios{nullptr};
        row.directory->getDirectories(directories);
        row.directory->getScenarios(scenarios);
        EXPECT_EQ(directories.size(), row.directory->getDirectoryNumber());
        EXPECT_EQ(scenarios.size(), row.directory->getScenarioNumber());
    }
    EXPECT_EQ(failureOf([&] { dynamic_cast<TavrelConfigurationRootDirectory&>(*root).createScenario(); }),
              byValue(-1, "Unable to create a scenario template into the Tavrel installation root directory!"));
}

TEST_F(DirectoryTreeTest, AMissingFolderFailsAtBothLevelsBelowIt) {
    const auto configuration = rootDirectory()->getDirectory(1)->getDirectory(0);
    const auto directory = configuration->getDirectory(0);
    fs::remove_all(installation.path() + "/common");
    const Failure expected =
        byValue(16, "Data Path [" + installation.path() + "/common/data/scenario] is inaccessible!");
    Directories directories;
    Scenarios scenarios{nullptr};
    EXPECT_EQ(failureOf([&] { configuration->getDirectoryNumber(); }), expected);
    EXPECT_EQ(failureOf([&] { configuration->getDirectory(0); }), expected);
    EXPECT_EQ(failureOf([&] { configuration->getDirectories(directories); }), expected);
    EXPECT_EQ(failureOf([&] { directory->getScenarioNumber(); }), expected);
    EXPECT_EQ(failureOf([&] { directory->getScenario(0); }), expected);
    EXPECT_EQ(failureOf([&] { directory->getScenarios(scenarios); }), expected);
    EXPECT_EQ(scenarios.size(), 1U) << "a listing that fails leaves the vector alone";
}

TEST_F(DirectoryTreeTest, ADirectoryKeepsItsPlaceNotItsPath) {
    const auto database = std::make_shared<TavrelScenarioTemplateDatabase>(installation.file(), "*", "City");
    TavrelConfigurationScenarioDirectory directory(database, "City", 0);
    const TavrelConfigurationScenarioDirectory copy = directory;
    installation.configuration("City", "3.2", {"common", "city"});
    EXPECT_THAT(paths(directory), ElementsAre("c.sce"));
    directory = TavrelConfigurationScenarioDirectory(database, "Village", 0);
    EXPECT_THAT(paths(directory), ElementsAre("c.sce"));
    EXPECT_THAT(paths(copy), ElementsAre("c.sce"));
    // The name is that of the current configuration, whose data path may be shorter.
    EXPECT_EQ(directory.getName(), "data");
    EXPECT_EQ(TavrelConfigurationScenarioDirectory(database, "City", 2).getName(), "");
    EXPECT_EQ(TavrelConfigurationScenarioDirectory::getFilePathFromDataBasePath("/b/", "a/"), "a///b/");
}

TEST_F(DirectoryTreeTest, DirectoriesAndScenariosOutliveTheDriver) {
    std::shared_ptr<Scenario> scenario;
    std::shared_ptr<DatabaseDirectory> version;
    {
        TavrelDatabaseDriver driver(installation.file(), "*", "City");
        version = driver.getRootDirectory()->getDirectory(0);
        scenario = driver.getScenario("north/b.sce");
    }
    EXPECT_THAT(names(*version), ElementsAre("City"));
    EXPECT_EQ(scenario->getPath(), "north/b.sce");
}

// The tree is usable without a configuration filter; the search by path is not.
TEST_F(DirectoryTreeTest, ScenariosAreFoundByPathInTheFilteredConfigurationOnly) {
    const auto notFound = [](const std::string& path, const std::string& configuration) {
        return byValue(24, "Could not find scenario : \"" + path + "\" in the data path of the configuration : \"" +
                               configuration + "\". Please ensure that your configuration is correct.");
    };
    const TavrelDatabaseDriver city(installation.file(), "*", "City");
    EXPECT_EQ(city.getScenario("c.sce")->getFilePath(), installation.path() + "/common/data/scenario/c.sce");
    for (const char* path : {"b.sce", "north\\b.sce", "", "../scenario/a.sce"})
        EXPECT_EQ(failureOf([&] { city.getScenario(path); }), notFound(path, "City"));
    // The configuration only shows in the message and goes to the template.
    EXPECT_EQ(failureOf([&] { city.createTavrelScenario("Other", "d.sce"); }), notFound("d.sce", "Other"));
    const std::unique_ptr<TavrelScenario> created(city.createTavrelScenario("Other", "a.sce"));
    EXPECT_EQ(created->getPath(), "a.sce");

    const TavrelDatabaseDriver all(installation.file(), "*", "*");
    EXPECT_EQ(failureOf([&] { all.getScenario("a.sce"); }), notFound("a.sce", "*"));
    fs::remove(installation.path() + "/city/data/scenario/a.sce");
    EXPECT_EQ(failureOf([&] { city.getScenario("a.sce"); }), notFound("a.sce", "City"));
}

TEST_F(DirectoryTreeTest, TheUriTellsTheFiltersThatDiffer) {
    struct Row {
        const char* why;
        const char* version;
        const char* configuration;
        const char* query;
    };
    const Row rows[] = {
        {"none", "*", "*", ""},
        {"version", "3.2", "*", "?version=3.2"},
        {"configuration", "*", "City", "?config=City"},
        {"both", "3.2", "City", "?version=3.2&config=City"},
        {"the empty version is a filter", "", "*", "?version="},
        {"two asterisks are a filter", "**", "", "?version=**&config="},
        {"nothing is escaped", "a b&c", "*", "?version=a b&c"},
    };
    for (const Row& row : rows) {
        const TavrelDatabaseDriver driver(installation.file(), row.version, row.configuration);
        EXPECT_EQ(driver.getURI(), "tavrel://" + driver.getRootDirectory()->getName() + row.query) << row.why;
        TavrelDatabaseDriver copy("", "*", "*");
        copy = driver;
        EXPECT_EQ(copy.getURI(), driver.getURI()) << "a copy shares the database";
    }
    const TavrelDatabaseDriver driver(installation.file(), "*", "*");
    InstallationBuilder other;
    other.use();
    EXPECT_EQ(driver.getURI(), "tavrel://" + lmkUtils::EnvConfig::transformInGenericPath(other.file(), false))
        << "the file is that of the process at this moment";
}

TEST_F(DirectoryTreeTest, GenericPathsGoIntoScenariosAndOut) {
    installation.pathVariable("TAVREL_TEST_PACK", "city");
    installation.configuration("City", "3.2", {"${TAVREL_TEST_PACK}"});
    installation.model("city");
    installation.scenario("city", "named.sce", SectionText("Scenario").text("name", "Rain"));
    const auto directory = rootDirectory("3.2")->getDirectory(0)->getDirectory(0)->getDirectory(0);
    Scenarios scenarios;
    directory->getScenarios(scenarios);
    for (const auto& scenario : scenarios) {
        EXPECT_EQ(scenario->getFilePath(), "${TAVREL_TEST_PACK}/data/scenario/" + scenario->getPath());
        if (scenario->getPath() == "named.sce") {
            EXPECT_EQ(scenario->getName(), "Rain");
        }
        std::vector<unsigned char> bytes;
        EXPECT_NO_THROW(scenario->fetch(bytes));
    }
    EXPECT_EQ(scenarios.size(), 3U);
}

} // namespace
