#include <lmkUtils/EnvConfig.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <lmkUtils/ConfigurationError.h>
#include <lmkUtils/paths.h>
#include <support/InstallationBuilder.h>

namespace {

using lmkUtils::EnvConfig;
using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

// What taking a file into use throws, without the path in front; empty if it is taken.
std::string refusalOf(const std::string& path) {
    try {
        EnvConfig::setTavrelConfigFilePath(path);
        return {};
    } catch (const lmkUtils::ConfigurationError& error) {
        const std::string text = error.what();
        EXPECT_TRUE(text.starts_with(path + ":")) << text;
        return text.substr(std::min(text.size(), path.size() + 1));
    }
}

std::string versionOf(const std::string& folder) {
    EnvConfig::Version version;
    std::memset(&version, 0xFF, sizeof version);
    return EnvConfig::getConfigVersion(folder, version) ? version.toString() : "unreadable " + version.toString();
}

class EnvConfigTest : public testing::Test {
protected:
    InstallationBuilder installation;
};

TEST_F(EnvConfigTest, RefusesAnInstallationFileWithItsRow) {
    struct Row {
        const char* why;
        const char* content;
        const char* refusal;
    };
    const Row rows[] = {
        {"empty", "", "1: not XML: the file is empty"},
        {"not XML", "\nplain text", "2: not XML: text outside the top element"},
        {"nothing but a comment", "<!-- \n -->", "2: not XML: no element"},
        {"text around the element", "<tavrel/>\nmore", "2: not XML: text outside the top element"},
        {"two documents", "<tavrel/>\n<tavrel/>", "2: not XML: a second element at the top"},
        {"cut short", "<tavrel>\n<pathVariable name=\"A\"/>\n", "2: not XML: an element is not closed"},
        {"crossed tags", "<tavrel>\n</other>", "2: not XML: the end tag belongs to no open element"},
        {"another root", "<!-- no\ntavrel -->\n<Tavrel/>", "3: the top element is <Tavrel>, not <tavrel>"},
        {"a NUL is no end of the file", nullptr, "2: not XML: a NUL character"},
        {"invalid UTF-8", "<tavrel>\n<!-- \xC3( --></tavrel>", "2: invalid UTF-8"},
        {"a word misspelt", "<tavrel>\n<configuraton/></tavrel>", "2: unknown element <configuraton>"},
        {"nameless configuration", "<tavrel>\n\n<configuration path=\"x\"/></tavrel>",
         "3: <configuration> without a name"},
        {"empty name", "<tavrel><configuration name=\"\" path=\"x\"/></tavrel>", "1: <configuration> without a name"},
        {"no path", "<tavrel><configuration name=\"x\"/></tavrel>", "1: <configuration> without a path"},
        {"one name twice",
         "<tavrel>\n<configuration name=\"x\" path=\"a\"/>\n<configuration name=\"x\" path=\"b\"/></tavrel>",
         "3: a second configuration \"x\""},
        {"a variable that no path can hold", "<tavrel>\n<pathVariable name=\"2nd\"/></tavrel>",
         "2: \"2nd\" is no name of a variable"},
        {"upper and lower case are two names, other encodings their own business",
         "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><tavrel><configuration name=\"\xE9\" path=\"a\"/>"
         "<configuration name=\"\xC9\" path=\"a\"/></tavrel>",
         ""},
    };
    installation.use();
    const std::string before = EnvConfig::ourConfigCfgFile;
    for (const Row& row : rows) {
        const std::string content = row.content ? row.content : std::string("<tavrel/>\n\0", 11);
        const std::string path = installation.write("broken.xml", content);
        EXPECT_EQ(refusalOf(path), row.refusal) << row.why;
        if (row.refusal[0]) {
            EXPECT_EQ(EnvConfig::ourConfigCfgFile, before) << row.why;
        }
    }
}

TEST_F(EnvConfigTest, RefusesWhatIsNoFile) {
    installation.use();
    const std::string folder = installation.path();
    fs::create_symlink("loop", folder + "/loop");
    ASSERT_EQ(mkfifo((folder + "/pipe").c_str(), 0600), 0);
    EXPECT_EQ(refusalOf(folder + "/missing.xml"), "0: no such file");
    EXPECT_EQ(refusalOf(folder), "0: a folder, not a file");
    EXPECT_EQ(refusalOf(folder + "/pipe"), "0: not a plain file") << "and nobody waits for it";
    EXPECT_EQ(refusalOf("/dev/zero"), "0: not a plain file");
    const std::string large = folder + "/large";
    std::ofstream(large).close();
    std::filesystem::resize_file(large, (std::uintmax_t(256) << 20) + 1);
    EXPECT_EQ(refusalOf(large), "0: larger than 256 MiB");
    EXPECT_EQ(refusalOf(folder + "/loop"), "0: symbolic links that lead in a circle");
    EXPECT_EQ(refusalOf(folder + "/tavrel.xml/x"), "0: a part of the path is not a folder");
    EXPECT_EQ(EnvConfig::ourConfigCfgFile, installation.file());
}

TEST_F(EnvConfigTest, AnswersAreOfTheMoment) {
    installation.configuration("One", "1", {"packs/a"});
    installation.use();
    ASSERT_TRUE(EnvConfig::setConfig("One", false));
    installation.configuration("Two", "2", {});
    EXPECT_THAT(EnvConfig::getConfigurationsList(), ElementsAre("One", "Two")) << "in the order of the file";
    installation.configuration("One", "1.5", {"packs/b"});
    EXPECT_EQ(versionOf(EnvConfig::getConfigPath("One")), "1.5");
    EXPECT_THAT(EnvConfig::getSeparatedPath("data"), ElementsAre(installation.path() + "/packs/b/data"));

    const EnvConfig handle;
    installation.write("tavrel.xml", "<tavrel>");
    EXPECT_THAT(EnvConfig::getConfigurationsList(), IsEmpty());
    EXPECT_THAT(EnvConfig::getSeparatedPath("data"), IsEmpty());
    EXPECT_EQ(EnvConfig::getCurrentConfiguration(), "One");
    EXPECT_NO_THROW(EnvConfig()) << "what vanished since is no fault of a new handle";
    fs::remove(installation.file());
    EXPECT_EQ(EnvConfig::getConfigPath("One"), "");

    EnvConfig::ourConfigCfgFile.clear();
    EXPECT_THAT(EnvConfig::getConfigurationsList(), IsEmpty());
    EXPECT_EQ(EnvConfig::transformInGenericPath("\\a\\b", false), "/a/b");
}

TEST_F(EnvConfigTest, AnUnknownConfigurationIsNotMadeCurrent) {
    installation.configuration("One", "1", {"a"});
    installation.use();
    EXPECT_TRUE(EnvConfig::setConfig("One", false));
    EXPECT_FALSE(EnvConfig::setConfig("one", false));
    EXPECT_EQ(EnvConfig::getCurrentConfiguration(), "One");
    EXPECT_EQ(EnvConfig::getConfigPath("one"), "");
    EXPECT_THAT(EnvConfig::getSeparatedPathForConfiguration("one", "data"), IsEmpty());
    EXPECT_FALSE(EnvConfig::setConfig("", false));
    EXPECT_EQ(EnvConfig::getCurrentConfiguration(), "One") << "the empty name is no other than the rest";
    EnvConfig::leaveConfig();
    EXPECT_THAT(EnvConfig::getSeparatedPath("data"), IsEmpty()) << "none is current";
}

// The file of TAVREL_CONFIG is the one in use from the beginning, so only a process of its own can have a wrong one.
TEST_F(EnvConfigTest, AnInitialFileThatWasNeverReadableIsTold) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    setenv("TAVREL_CONFIG", "/nowhere/tavrel.xml", 1);
    const auto ask = [] {
        const auto refused = [](const auto& question) {
            try {
                question();
            } catch (const lmkUtils::ConfigurationError& error) {
                return std::string(error.what()) == "/nowhere/tavrel.xml:0: no such file";
            }
            return false;
        };
        const bool isTold = refused(EnvConfig::getConfigurationsList) && refused(EnvConfig::requireInitialFile) &&
                            refused([] { EnvConfig::setConfig("One", false); }) &&
                            EnvConfig::findInPath("data", "x").empty() && EnvConfig()["x"] == "x";
        bool isKnown = false;
        {
            const InstallationBuilder other;
            other.use();
            EnvConfig::requireInitialFile();
            EnvConfig::ourConfigCfgFile = "/nowhere/tavrel.xml";
            isKnown = EnvConfig::getConfigurationsList().empty();
        }
        std::_Exit(isTold && isKnown ? 0 : 1);
    };
    EXPECT_EXIT(ask(), testing::ExitedWithCode(0), "");
    unsetenv("TAVREL_CONFIG");
}

// A host may start anywhere and move on.
TEST_F(EnvConfigTest, ARelativeInstallationFileStaysWhereItWas) {
    installation.configuration("One", "1", {"pack"});
    const fs::path before = fs::current_path();
    fs::current_path(installation.path());
    EnvConfig::setTavrelConfigFilePath("./tavrel.xml");
    fs::current_path(before);
    EXPECT_EQ(EnvConfig::ourConfigCfgFile, "./tavrel.xml");
    EXPECT_THAT(EnvConfig::getConfigurationsList(), ElementsAre("One"));
    EXPECT_THAT(EnvConfig::getSeparatedPathForConfiguration("One", "x"), ElementsAre(installation.path() + "/pack/x"));
}

TEST_F(EnvConfigTest, Versions) {
    struct Row {
        const char* attribute;
        const char* version;
    };
    const Row rows[] = {
        {"version='3.2'", "3.2"},
        {"version='1.2.3.4'", "1.2.3.4"},
        {"version='10'", "10"},
        {"version='0.0'", "0.0"},
        {"version='2147483647'", "2147483647"},
        {"version='03.2'", "3.2"},
        {"", "unreadable "},
        {"version=''", "unreadable "},
        {"version='2147483648'", "unreadable "},
        {"version='1.2.3.4.5'", "unreadable "},
        {"version='1.'", "unreadable "},
        {"version='.1'", "unreadable "},
        {"version='1..2'", "unreadable "},
        {"version='-1'", "unreadable "},
        {"version='+1'", "unreadable "},
        {"version=' 1'", "unreadable "},
        {"version='1 '", "unreadable "},
        {"version='1.x'", "unreadable "},
    };
    for (const Row& row : rows) {
        installation.write("c/configuration.xml", std::string("<configuration ") + row.attribute + "/>");
        EXPECT_EQ(versionOf(installation.path() + "/c"), row.version) << row.attribute;
    }
    for (const char* content : {"", "<configuration version='1'>", "<other version='1'/>"}) {
        installation.write("c/configuration.xml", content);
        EXPECT_EQ(versionOf(installation.path() + "/c"), "unreadable ") << content;
    }
    EXPECT_EQ(versionOf(installation.path() + "/missing"), "unreadable ");
    EXPECT_EQ(versionOf(""), "unreadable ") << "not the file of the working directory";

    const EnvConfig::Version some{{-1, 2, -1, 4}};
    EXPECT_EQ(some.toString(), "2.4");
}

TEST_F(EnvConfigTest, DataPathsAreConcrete) {
    installation.pathVariable("TAVREL_TEST_PACKS", "shared packs/é");
    installation.configuration(
        "C", "1", {"a", "${TAVREL_TEST_PACKS}/b", "${TAVREL_TEST_NOBODY}/c", "./d//e/", "f\\g", "../../up"});
    installation.use();
    const std::string here = installation.path();
    EXPECT_THAT(EnvConfig::getSeparatedPathForConfiguration("C", "data\\scenario"),
                ElementsAre(here + "/a/data/scenario", here + "/shared packs/é/b/data/scenario",
                            EnvConfig::getConfigPath("C") + "/${TAVREL_TEST_NOBODY}/c/data/scenario",
                            here + "/d/e/data/scenario", here + "/f/g/data/scenario",
                            (fs::path(here).parent_path().parent_path() / "up/data/scenario").string()));

    // The way back out of a link is not the way in.
    fs::create_directories(here + "/elsewhere/deep");
    fs::create_directory_symlink(here + "/elsewhere/deep", here + "/link");
    installation.write("elsewhere/pack/data/x", "");
    installation.configuration("Linked", "1", {"link/../pack"});
    const std::vector<std::string> linked = EnvConfig::getSeparatedPathForConfiguration("Linked", "data/x");
    ASSERT_EQ(linked.size(), 1U);
    EXPECT_TRUE(fs::exists(linked.front())) << linked.front();

    for (const char* content : {"", "<configuration><dataPath><root> </root></dataPath></configuration>", "<other/>"}) {
        installation.write("configurations/0/configuration.xml", content);
        EXPECT_THAT(EnvConfig::getSeparatedPathForConfiguration("C", "data"), IsEmpty()) << content;
    }
    installation.write(
        "configurations/0/configuration.xml",
        "<configuration>\n <dataPath>\n <root>\n  a<!-- c --> b\n </root>\n </dataPath></configuration>");
    EXPECT_THAT(EnvConfig::getSeparatedPathForConfiguration("C", "x"),
                ElementsAre(EnvConfig::getConfigPath("C") + "/a b/x"))
        << "no version is needed for a data path";
}

TEST_F(EnvConfigTest, GenericPathsTakeTheLongestVariableAtAFolder) {
    installation.pathVariable("TAVREL_TEST_A", "packs");
    installation.pathVariable("TAVREL_TEST_B", "packs/city");
    installation.pathVariable("TAVREL_TEST_C", "c");
    installation.use();
    setenv("TAVREL_TEST_C", "\\c\\", 1);
    const std::string packs = installation.path() + "/packs";
    struct Row {
        const char* why;
        std::string path;
        std::string generic;
    };
    const Row rows[] = {
        {"the value itself", packs, "${TAVREL_TEST_A}"},
        {"below it", packs + "/common/x", "${TAVREL_TEST_A}/common/x"},
        {"the longer one", packs + "/city/x", "${TAVREL_TEST_B}/x"},
        {"only whole folders", packs + "/citytrip", "${TAVREL_TEST_A}/citytrip"},
        {"only at the beginning", "x" + packs, "x" + packs},
        {"backslashes in the path", "\\c\\d", "${TAVREL_TEST_C}/d"},
        {"none of them", "/other/x", "/other/x"},
        {"empty", "", ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(EnvConfig::transformInGenericPath(row.path, false), row.generic) << row.why;
        const std::string back = lmkUtils::resolveGenericPath(row.generic, Commons::Encoding::ModeUtf8);
        if (row.why[0] != 'b') {
            EXPECT_EQ(back, row.path) << row.why;
        }
    }
    setenv("TAVREL_TEST_A", "/", 1);
    setenv("TAVREL_TEST_B", "", 1);
    EXPECT_EQ(EnvConfig::transformInGenericPath("/x", false), "/x")
        << "neither the top nor nothing is a folder to name";
    setenv("TAVREL_TEST_HOME", "/x", 1);
    EXPECT_EQ(EnvConfig::transformInGenericPath("/x", false), "/x") << "only variables that the installation names";
    unsetenv("TAVREL_TEST_HOME");
}

TEST_F(EnvConfigTest, FindsFilesWithinTheRoots) {
    installation.configuration("C", "1", {"a", "missing", "b", "loop/x"});
    installation.use();
    ASSERT_TRUE(EnvConfig::setConfig("C", false));
    const std::string here = installation.path();
    installation.write("outside.txt", "");
    installation.write("a/outside.txt", "");
    installation.write("a/data/images/only-a.png", "");
    installation.write("b/data/images/only-b.png", "");
    installation.write("a/data/images/both.png", "");
    installation.write("b/data/images/both.png", "");
    installation.write("a/data/images/folder/x.png", "");
    installation.write("b/data/images/folder.d", "");
    installation.write("b/data/secret", "");
    fs::create_symlink("loop", here + "/loop");
    fs::create_symlink(here + "/outside.txt", here + "/b/data/images/linked.txt");
    struct Row {
        const char* why;
        const char* directory;
        const char* file;
        std::string found;
    };
    const Row rows[] = {
        {"in the first root", "data/images", "only-a.png", here + "/a/data/images/only-a.png"},
        {"in a later one", "data/images", "only-b.png", here + "/b/data/images/only-b.png"},
        {"the earlier wins", "data/images", "both.png", here + "/a/data/images/both.png"},
        {"backslashes", "data\\images", "folder\\x.png", here + "/a/data/images/folder/x.png"},
        {"a folder is no file", "data/images", "folder", ""},
        {"nothing is no file", "data/images", "", ""},
        {"unknown", "data/images", "none.png", ""},
        {"up and down within the root", "data/images", "../secret", here + "/b/data/secret"},
        {"out of the root", "data/images", "../../../outside.txt", ""},
        {"out of it and back", "data/images", "../../../b/data/secret", ""},
        {"out of it by the folder", "..", "outside.txt", ""},
        {"what looks absolute stands below the root", "/data/images", "/only-a.png",
         here + "/a/data/images/only-a.png"},
        {"a link that the installation holds", "data/images", "linked.txt", here + "/b/data/images/linked.txt"},
    };
    for (const Row& row : rows) EXPECT_EQ(EnvConfig::findInPath(row.directory, row.file), row.found) << row.why;

    setenv("TAVREL_TEST_VALUE", "in", 1);
    const EnvConfig environment;
    EXPECT_EQ(environment["data\\script\\${TAVREL_TEST_VALUE}"], here + "/a/data/script/in");
    EXPECT_EQ(environment["\\data\\x"], "/data/x");
    unsetenv("TAVREL_TEST_VALUE");
    EnvConfig::leaveConfig();
    EXPECT_EQ(environment["data\\x"], "data/x");
    EXPECT_EQ(EnvConfig::findInPath("data/images", "only-a.png"), "");
}

} // namespace
