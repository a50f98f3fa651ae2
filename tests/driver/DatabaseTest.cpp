#include <unordered_set>

#include <Poco/Exception.h>
#include <Poco/RecursiveDirectoryIterator.h>
#include <support/DriverTest.h>

namespace {

using Paths = std::vector<std::pair<std::string, std::string>>;

void touch(const fs::path& file) {
    fs::create_directories(file.parent_path());
    std::ofstream(file) << "x";
}

class DatabaseTest : public testing::Test {
protected:
    DatabaseTest() {
        installation.configuration("City", "3.2", {"packs/city", "packs/common"});
        installation.configuration("Highway", "10.0", {"packs/highway"});
        installation.configuration("Village", "3.2", {"packs/village"});
        for (const char* pack : {"city", "common", "highway", "village"}) fs::create_directories(scenarios(pack));
    }

    fs::path scenarios(const std::string& pack) const {
        return fs::path(installation.path()) / "packs" / pack / "data/scenario";
    }

    TavrelScenarioTemplateDatabase database(const std::string& version = "*", const std::string& configuration = "*") {
        return TavrelScenarioTemplateDatabase(installation.file(), version, configuration);
    }

    static std::vector<std::string> versions(const TavrelScenarioTemplateDatabase& database) {
        std::set<std::string> result{"from before"};
        database.getVersions(result);
        std::vector<std::string> byIndex;
        for (std::size_t index = 0; index < database.getVersionNumber(); ++index)
            byIndex.push_back(database.getVersion(index));
        EXPECT_THAT(result, ElementsAreArray(byIndex));
        return byIndex;
    }

    static std::vector<std::string> configurations(const TavrelScenarioTemplateDatabase& database,
                                                   const std::string& version) {
        std::vector<std::string> result{"from before"};
        database.getConfigurationsForVersion(version, result);
        std::vector<std::string> byIndex;
        for (std::size_t index = 0; index < database.getConfigurationNumber(version); ++index)
            byIndex.push_back(database.getConfiguration(version, index));
        EXPECT_EQ(result, byIndex);
        return byIndex;
    }

    static std::vector<std::string> relativePaths(const TavrelScenarioTemplateDatabase& database,
                                                  const std::string& configuration, std::size_t directory) {
        Paths paths{{"from", "before"}};
        database.getScenarioPaths(configuration, directory, paths);
        std::vector<std::string> result;
        for (const auto& path : paths) result.push_back(path.second);
        return result;
    }

    InstallationBuilder installation;
};

TEST_F(DatabaseTest, FiltersAreComparedWhole) {
    struct Row {
        const char* why;
        const char* version;
        const char* configuration;
        std::vector<std::string> versions;
        std::vector<std::string> configurationsOf32;
    };
    const Row rows[] = {
        {"no filter: versions in byte order, each once", "*", "*", {"10.0", "3.2"}, {"City", "Village"}},
        {"one version", "3.2", "*", {"3.2"}, {"City", "Village"}},
        {"one configuration", "*", "Highway", {"10.0"}, {}},
        {"both, and they agree", "3.2", "City", {"3.2"}, {"City"}},
        {"both, and they do not", "10.0", "City", {}, {}},
        {"a version that nobody has", "3", "*", {}, {}},
        {"the empty version is a filter", "", "*", {}, {}},
        {"two asterisks are a filter", "**", "*", {}, {}},
        {"no wildcards", "3.*", "*", {}, {}},
        {"upper and lower case differ", "*", "city", {}, {}},
        {"the empty configuration is a filter", "*", "", {}, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.why);
        const TavrelScenarioTemplateDatabase filtered = database(row.version, row.configuration);
        EXPECT_EQ(versions(filtered), row.versions);
        EXPECT_EQ(configurations(filtered, "3.2"), row.configurationsOf32);
    }
}

TEST_F(DatabaseTest, AConfigurationWithoutReadableVersionIsLeftOut) {
    installation.configuration("Broken", "three", {"packs/city"});
    const TavrelScenarioTemplateDatabase all = database();
    EXPECT_THAT(versions(all), ElementsAre("10.0", "3.2"));
    EXPECT_THAT(configurations(all, "3.2"), ElementsAre("City", "Village"));
    for (const char* name : {"Broken", "Nobody"})
        EXPECT_EQ(failureOf([&] { all.getConfigurationVersion(name); }),
                  byValue(-1, std::string("Unable to get version for configuration ") + name + " (" +
                                  lmkUtils::EnvConfig::getConfigPath(name) + ")"));
    EXPECT_EQ(database("10.0", "Highway").getConfigurationVersion("City"), "3.2") << "whatever the filters say";
}

TEST_F(DatabaseTest, AnIndexOfNothingFailsAsOneBeyondTheEnd) {
    touch(scenarios("city") / "a.sce");
    EXPECT_EQ(failureOf([&] { database().getScenariosNumber("Nobody", 0); }),
              byValue(-1, "Invalid scenario directory index 0 in configuration Nobody"));
    EXPECT_EQ(failureOf([&] { database().getScenarioPath("City", 0, 7); }),
              byValue(-1, "Invalid scenario template index 7 in configuration City directory 7"));
    const TavrelScenarioTemplateDatabase none = database("4");
    EXPECT_EQ(failureOf([&] { none.getVersion(0); }),
              byValue(4, "Invalid version index : 0\nCurrent Tavrel installation " + none.getConfigurationFilePath() +
                             " only contain 0 different versions."));
}

TEST_F(DatabaseTest, TheInstallationFileOfTheProcess) {
    database();
    const std::string inUse = lmkUtils::EnvConfig::ourConfigCfgFile;
    EXPECT_EQ(inUse, installation.file());
    const std::string missing = installation.file() + ".missing";
    EXPECT_EQ(failureOf([&] { TavrelScenarioTemplateDatabase(missing, "*", "*"); }),
              byValue(-1, "Tavrel configuration file [" + missing + "] doesn't exists!"));
    EXPECT_EQ(failureOf([&] { TavrelScenarioTemplateDatabase("${TAVREL_TEST_UNKNOWN}/x", "*", "*"); }),
              byValue(-1, "Tavrel configuration file [${TAVREL_TEST_UNKNOWN}/x] doesn't exists!"));
    EXPECT_EQ(lmkUtils::EnvConfig::ourConfigCfgFile, inUse);

    TavrelScenarioTemplateDatabase("", "*", "*");
    EXPECT_EQ(lmkUtils::EnvConfig::ourConfigCfgFile, inUse) << "an empty path keeps what the process has";

    InstallationBuilder other;
    other.configuration("Other", "1", {});
    setenv("TAVREL_TEST_FOLDER", other.path().c_str(), 1);
    const std::string name = fs::path(other.file()).filename();
    const TavrelScenarioTemplateDatabase changed("${TAVREL_TEST_FOLDER}/" + name, "*", "*");
    EXPECT_EQ(lmkUtils::EnvConfig::ourConfigCfgFile, other.path() + "/" + name) << "kept expanded";
    EXPECT_THAT(versions(changed), ElementsAre("1"));

    fs::remove(other.file());
    EXPECT_NO_THROW(TavrelScenarioTemplateDatabase(other.file(), "*", "*")) << "the one in use is taken unseen";
    EXPECT_THAT(versions(changed), IsEmpty());
    unsetenv("TAVREL_TEST_FOLDER");
}

TEST_F(DatabaseTest, AnUnusableInstallationFileTellsFileAndRow) {
    database();
    const std::string inUse = lmkUtils::EnvConfig::ourConfigCfgFile;
    const std::string broken = installation.path() + "/broken.xml";
    for (const char* content : {"", "no XML", "<other/>", "<tavrel>"}) {
        std::ofstream(broken) << content;
        const Failure failure = failureOf([&] { TavrelScenarioTemplateDatabase(broken, "*", "*"); });
        EXPECT_EQ(failure.form, Failure::ByValue) << content;
        EXPECT_EQ(failure.code, -1);
        EXPECT_EQ(failure.message.rfind(broken + ":", 0), 0U) << failure.message;
        EXPECT_EQ(lmkUtils::EnvConfig::ourConfigCfgFile, inUse);
    }
}

TEST_F(DatabaseTest, AConfigurationFilterIsMadeCurrentAndItsDirectoriesAreKept) {
    const TavrelScenarioTemplateDatabase city = database("*", "City");
    EXPECT_EQ(lmkUtils::EnvConfig::getCurrentConfiguration(), "City");
    EXPECT_THAT(city.getScenarioDirectories(), ElementsAre(scenarios("city").string(), scenarios("common").string()));
    EXPECT_THAT(database().getScenarioDirectories(), IsEmpty());
    EXPECT_THAT(database("*", "Nobody").getScenarioDirectories(), IsEmpty());
    EXPECT_EQ(lmkUtils::EnvConfig::getCurrentConfiguration(), "City") << "an unknown name changes nothing";

    fs::remove_all(scenarios("common"));
    EXPECT_EQ(city.getScenarioDirectories().size(), 2U) << "what was found is kept";
    EXPECT_EQ(failureOf([&] { city.getScenarioDirectoryNumber("City"); }).code, 16) << "what is listed is not";
    const TavrelScenarioTemplateDatabase copy = city;
    EXPECT_EQ(copy.getScenarioDirectories(), city.getScenarioDirectories());
}

TEST_F(DatabaseTest, OneMissingFolderMakesAConfigurationUnusable) {
    installation.configuration("Holes", "1",
                               {"packs/city", "packs/gone", "packs/common", "packs/gone", "packs/file", "packs/loop"});
    touch(scenarios("file"));
    fs::create_directory_symlink("loop", fs::path(installation.path()) / "packs/loop");
    const std::string gone = scenarios("gone").string();
    const std::string file = scenarios("file").string();
    std::string list;
    for (const std::string& path : std::unordered_set<std::string>{gone, file, scenarios("loop").string()})
        list += "[" + path + "] ";
    const Failure expected = byValue(16, "Data Path " + list + "is inaccessible!");

    const TavrelScenarioTemplateDatabase all = database();
    std::vector<std::string> directories;
    EXPECT_EQ(failureOf([&] { all.getConfigurationScenarioDirectories("Holes", directories); }), expected)
        << "each folder is named once";
    EXPECT_THAT(directories, ElementsAre(scenarios("city").string(), scenarios("common").string()));
    EXPECT_EQ(failureOf([&] { all.getScenarioDirectoryNumber("Holes"); }), expected);
    EXPECT_EQ(failureOf([&] { all.getScenarioDirectory("Holes", 0); }), expected);
    EXPECT_EQ(failureOf([&] { relativePaths(all, "Holes", 0); }), expected);
    EXPECT_EQ(failureOf([&] { all.getScenarioIndex("Holes", 0, "a"); }), expected);

    InstallationBuilder other;
    other.configuration("Holes", "1", {"packs/gone"});
    const std::string otherGone = other.path() + "/packs/gone/data/scenario";
    EXPECT_EQ(failureOf([&] { TavrelScenarioTemplateDatabase(other.file(), "*", "Holes"); }),
              byValue(16, "Data Path [" + otherGone + "] is inaccessible!"));
    EXPECT_EQ(lmkUtils::EnvConfig::ourConfigCfgFile, other.file()) << "the process has changed all the same";
}

TEST_F(DatabaseTest, ScenariosAreTheFilesWithTheExtension) {
    struct Row {
        const char* why;
        const char* path;
        bool isScenario;
    };
    const Row rows[] = {
        {"plain", "a.sce", true},
        {"below a folder", "north/a.sce", true},
        {"far below", "north/sea/deep/b.sce", true},
        {"blanks and more than one dot", "two words.v2.sce", true},
        {"not ASCII", "fjord/\xC3\xB8st.sce", true},
        {"nothing but an extension", ".sce", true},
        {"in capitals", "c.SCE", false},
        {"no dot", "sce", false},
        {"the dot belongs to the folder", "folder.sce/plain", false},
        {"a further extension", "d.sce.bak", false},
        {"a dot behind it", "e.sce.", false},
        {"a longer extension", "f.xsce", false},
    };
    std::vector<std::string> expected;
    for (const Row& row : rows) {
        touch(scenarios("city") / row.path);
        if (row.isScenario) expected.push_back(row.path);
    }
    touch(scenarios("common") / "elsewhere.sce");
    fs::create_symlink(scenarios("city") / "a.sce", scenarios("city") / "link.sce");
    expected.push_back("link.sce");
    fs::create_directory_symlink(scenarios("common"), scenarios("city") / "shared");
    expected.push_back("shared/elsewhere.sce");

    const TavrelScenarioTemplateDatabase all = database();
    const std::vector<std::string> listed = relativePaths(all, "City", 0);
    EXPECT_THAT(listed, testing::UnorderedElementsAreArray(expected));
    EXPECT_EQ(all.getScenariosNumber("City", 0), expected.size());
    const auto third = all.getScenarioPath("City", 0, 3);
    EXPECT_EQ(third.first, lmkUtils::EnvConfig::transformInGenericPath(scenarios("city").string(), false));
    EXPECT_EQ(third.second, listed[3]);
    EXPECT_THAT(relativePaths(all, "City", 1), ElementsAre("elsewhere.sce"));
    EXPECT_THAT(relativePaths(all, "Village", 0), IsEmpty());
}

// The order of an index is that of Poco's traversal on this very file system.
TEST_F(DatabaseTest, FoldersAreListedSiblingsFirst) {
    for (int folder = 0; folder < 4; ++folder)
        for (int sub = 0; sub < 3; ++sub)
            for (int file = 0; file < 3; ++file) {
                const fs::path outer = scenarios("city") / ("folder" + std::to_string(folder));
                touch(outer / ("x" + std::to_string(file) + ".sce"));
                touch(outer / ("sub" + std::to_string(sub)) / ("y" + std::to_string(file) + ".sce"));
                touch(outer / "sub1" / "deep" / ("z" + std::to_string(file) + ".sce"));
                touch(scenarios("city") / ("top" + std::to_string(file) + ".sce"));
            }
    fs::create_directories(scenarios("city") / "folder1" / "empty");
    const std::string root = scenarios("city").string();
    std::vector<std::string> expected;
    const Poco::SiblingsFirstRecursiveDirectoryIterator end;
    for (Poco::SiblingsFirstRecursiveDirectoryIterator entry(root); entry != end; ++entry)
        if (entry->isFile()) expected.push_back(entry->path().substr(root.size() + 1));
    ASSERT_EQ(expected.size(), 3U + 4U * (3U + 9U + 3U));
    EXPECT_EQ(relativePaths(database(), "City", 0), expected);
}

TEST_F(DatabaseTest, ListingsAreOfTheMoment) {
    const TavrelScenarioTemplateDatabase all = database();
    EXPECT_EQ(all.getScenarioIndex("City", 0, "a.sce"), -1) << "an empty listing";
    touch(scenarios("city") / "a.sce");
    EXPECT_EQ(all.getScenarioIndex("City", 0, "a.sce"), 0);
    touch(scenarios("city") / "b.sce");
    touch(scenarios("city") / "sub/c.sce");
    EXPECT_EQ(all.getScenarioIndex("City", 0, "sub/c.sce"), 2);
    EXPECT_EQ(all.getScenarioIndex("City", 0, "absent.sce"), 2) << "looks like the last one";
    const std::vector<std::string> listed = relativePaths(all, "City", 0);
    for (std::size_t index = 0; index < listed.size(); ++index)
        EXPECT_EQ(all.getScenarioIndex("City", 0, listed[index]), static_cast<int>(index));
    fs::remove(scenarios("city") / "a.sce");
    EXPECT_EQ(all.getScenariosNumber("City", 0), 2U);
    installation.configuration("Late", "7", {"packs/village"});
    EXPECT_THAT(configurations(all, "7"), ElementsAre("Late"));
}

TEST_F(DatabaseTest, WhatCannotBeReadEndsTheListing) {
    const TavrelScenarioTemplateDatabase all = database("*", "City");
    touch(scenarios("city") / "a.sce");
    fs::create_directories(scenarios("city") / "sub");
    fs::create_symlink("nowhere", scenarios("city") / "sub/broken.txt");
    const std::string broken = (scenarios("city") / "sub/broken.txt").string();
    Paths paths;
    EXPECT_EQ(failureOf([&] { all.getScenarioPaths("City", 0, paths); }),
              byValue(16, "Cannot list scenarios : File not found: " + broken));
    ASSERT_EQ(paths.size(), 1U) << "what came before stays";
    EXPECT_EQ(paths[0].second, "a.sce");
    EXPECT_EQ(all.getScenarioDirectory("a.sce"), scenarios("city").string()) << "found before the link is reached";
    EXPECT_THROW(all.getScenarioDirectory("b.sce"), Poco::Exception) << "not translated here";

    fs::remove(broken);
    fs::create_directory_symlink("..", scenarios("city") / "sub/up");
    const Failure loop = failureOf([&] { all.getScenarioPaths("City", 0, paths); });
    EXPECT_EQ(loop.form, Failure::ByValue);
    EXPECT_EQ(loop.code, 16) << "a link that leads back up ends, too";
    EXPECT_EQ(loop.message.rfind("Cannot list scenarios : ", 0), 0U) << loop.message;
}

// Seen as text the root would be "packs/city"; followed as a path it is not.
TEST_F(DatabaseTest, DotsBehindALinkLeadWhereTheSystemGoes) {
    touch(scenarios("city") / "wrong.sce");
    touch(fs::path(installation.path()) / "elsewhere/city/data/scenario/north/right.sce");
    fs::create_directories(fs::path(installation.path()) / "elsewhere/inner");
    fs::create_directory_symlink("../elsewhere/inner", fs::path(installation.path()) / "packs/link");
    installation.configuration("Linked", "1", {"packs/link/../city"});
    const TavrelScenarioTemplateDatabase linked = database("*", "Linked");
    EXPECT_THAT(relativePaths(linked, "Linked", 0), ElementsAre("north/right.sce"));
    const auto found = linked.getScenarioPath("Linked", 0, 0);
    EXPECT_TRUE(fs::exists(found.first + "/" + found.second));
    EXPECT_TRUE(fs::exists(linked.getScenarioDirectory("north/right.sce") + "/north/right.sce"));
    EXPECT_EQ(linked.getScenarioDirectory("wrong.sce"), "");
}

TEST_F(DatabaseTest, TheDirectoryOfAPathIsTheFirstThatHoldsIt) {
    touch(scenarios("city") / "north/a.sce");
    touch(scenarios("common") / "north/a.sce");
    touch(scenarios("common") / "b.sce");
    const TavrelScenarioTemplateDatabase city = database("*", "City");
    EXPECT_EQ(&city.getScenarioDirectory("north/a.sce"), &city.getScenarioDirectories()[0]);
    EXPECT_EQ(&city.getScenarioDirectory("b.sce"), &city.getScenarioDirectories()[1]);
    for (const char* absent : {"north\\a.sce", "a.sce", "north/A.sce", "/north/a.sce", "", "north"})
        EXPECT_EQ(city.getScenarioDirectory(absent), "") << absent;
    EXPECT_EQ(database().getScenarioDirectory("b.sce"), "") << "without a configuration filter there is no directory";
}

} // namespace
