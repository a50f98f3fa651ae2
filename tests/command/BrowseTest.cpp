#include <filesystem>
#include <fstream>

#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/InstallationBuilder.h>

#include "CommandRunner.h"

namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr const char* kOvertaking = "rural/Überholen auf der Landstraße.sce";

SectionText namedScenario(const std::string& name) {
    return SectionText("Scenario").text("name", name).parameter("speed", "2.5", "real", "m/s", "Speed");
}

// An installation with one configuration "Town" over one root "town", which has a root model.
class BrowseTest : public testing::Test {
protected:
    BrowseTest() {
        installation.configuration("Town", "1.0", {"town"});
        installation.model("town");
        run.common = {"--config", installation.file()};
    }

    InstallationBuilder installation;
    CommandRunner run;
};

TEST_F(BrowseTest, TreeShowsEveryLevelSorted) {
    installation.scenario("town", "b/two.sce", namedScenario("Two"));
    installation.scenario("town", "a.sce", namedScenario("One"));
    const Result result = run({"tree"});
    EXPECT_THAT(result.lines(), ElementsAre(installation.file(), "  1.0", "    Town",
                                            "      " + installation.path() + "/town/data/scenario", "        a.sce",
                                            "        b/two.sce"))
        << result;
    EXPECT_EQ(result.status, 0);
}

TEST_F(BrowseTest, ListWritesConfigurationPathAndNameAndGoesOnAfterABadFile) {
    installation.scenario("town", "a.sce", namedScenario("One"));
    installation.scenario("town", "bad.sce", "<sce version=\"1\"><Scenario>");
    installation.scenario("town", "c.sce", namedScenario("Three"));
    const Result result = run({"list"});
    EXPECT_THAT(result.lines(), ElementsAre("Town\ta.sce\tOne", "Town\tbad.sce\t", "Town\tc.sce\tThree")) << result;
    EXPECT_THAT(result.err, HasSubstr("bad.sce"));
    EXPECT_EQ(result.status, 3);

    const Result json = run({"list", "--json"});
    ASSERT_EQ(json.json().size(), 3U) << json;
    EXPECT_EQ(json.json()[0]["name"], "One");
    EXPECT_TRUE(json.json()[1]["name"].is_null());
    EXPECT_EQ(json.json()[2]["version"], "1.0");
    EXPECT_THAT(run({"list", "--paths"}).lines(), ElementsAre("a.sce", "bad.sce", "c.sce"));
}

TEST_F(BrowseTest, ABadConfigurationOrLinkHidesNoOther) {
    installation.scenario("town", "a.sce", namedScenario("One"));
    installation.configuration("Ruin", "1.0", {"town", "missing"});
    installation.configuration("Nameless version", "", {"town"});
    std::filesystem::create_symlink("nowhere", installation.path() + "/town/data/scenario/broken.sce");
    const Result result = run({"list"});
    EXPECT_THAT(result.lines(), ElementsAre("Town\ta.sce\tOne")) << result;
    EXPECT_THAT(result.err, HasSubstr("Ruin: Data Path ["));
    EXPECT_THAT(result.err, HasSubstr("Unable to get version for configuration Nameless version"));
    EXPECT_THAT(result.err, HasSubstr("broken.sce: there is no such file\n"));
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(run({"show", "a.sce", "--configuration", "Town"}).status, 0) << "the link is not in the way";
    EXPECT_THAT(run({"get", "a.sce", "/sce/Scenario/speed"}).out, "2.500000\n");
}

TEST_F(BrowseTest, AScriptThatEndsTheReaderIsASentence) {
    installation.scenario("town", "fatal.sce", SectionText("Scenario").script("main", "TYPEOF TOKEN (t)\n{\n}\n"));
    const std::string cause = ": it broke an expectation of the library (assertion ScenarioItem:122): a block is of a "
                              "kind that has no items\n";
    const auto expectTold = [&](const std::string& place) {
        for (const std::vector<std::string>& command : std::vector<std::vector<std::string>>{
                 {"show"}, {"ids"}, {"get"}, {"run"}, {"graph"}, {"show", "--all"}, {"run", "--all"}}) {
            std::vector<std::string> arguments = command;
            if (command.size() == 1) arguments.emplace_back("fatal.sce");
            if (command[0] == "get") arguments.emplace_back("/sce/Scenario/speed");
            const Result result = run(arguments);
            EXPECT_EQ(result.status, 3) << command[0];
            EXPECT_THAT(result.err, EndsWith("fatal.sce: " + place + cause)) << command[0];
            EXPECT_EQ(result.out, "");
        }
    };
    expectTold("script main, row 2");
    expectTold(installation.model("town", "TYPEOF FOLDER (f)\n{\n\tTYPEOF TOKEN (t)\n\t{\n\t}\n}\n") + ":4");
}

TEST_F(BrowseTest, ARefusedScriptIsToldWithItsCause) {
    installation.scenario("town", "odd.sce",
                          SectionText("Scenario").script("main", "TYPEOF SCENARIO (1)\n{\n\tTYPEOF RULEX (1)\n}\n"));
    for (const char* command : {"show", "get", "ids", "run", "graph"}) {
        std::vector<std::string> arguments{command, "odd.sce"};
        if (arguments[0] == "get") arguments.emplace_back("/sce/Scenario/speed");
        const Result result = run(arguments);
        EXPECT_EQ(result.status, 3) << command;
        EXPECT_THAT(result.err, StartsWith("tavrel: odd.sce, script main:3: \"RULEX\" is no kind of item")) << command;
    }
}

TEST_F(BrowseTest, NamesThatWouldSteerATerminalAreShown) {
    installation.scenario("town", "es\x1b[2Jc.sce",
                          namedScenario("\xc2\x9b"
                                        "2J"));
    installation.scenario("town", "two\nlines.sce", namedScenario("Two"));
    const std::vector<std::vector<std::string>> calls{{"tree"},
                                                      {"list"},
                                                      {"list", "--paths"},
                                                      {"find", "--places", "text=2J"},
                                                      {"show", "--all"},
                                                      {"check"},
                                                      {"run", "--all"},
                                                      {"show", "es\x1b[2Jc.sce"},
                                                      {"show", "es\x1b"},
                                                      {"find", "x\x1b=1"},
                                                      {"\x1b"}};
    for (const std::vector<std::string>& arguments : calls) {
        const Result result = run(arguments);
        for (const char* sent : {"\x1b", "\xc2\x9b", "two\nlines"})
            EXPECT_THAT(result.out + result.err, Not(HasSubstr(sent))) << arguments[0];
    }
    EXPECT_THAT(run({"list", "--paths"}).lines(), ElementsAre("es\\x1b[2Jc.sce", "two\\nlines.sce"));
}

TEST_F(BrowseTest, OnePathInTwoConfigurationsNeedsAChoice) {
    installation.scenario("town", "a.sce", namedScenario("One"));
    installation.configuration("Village", "2.0", {"town"});
    EXPECT_EQ(run({"show", "a.sce"}).status, 0) << "one file and one root model";
    EXPECT_EQ(run({"graph", "a.sce"}).err.find("all have"), std::string::npos);
    installation.configuration("Village", "2.0", {"village", "town"});
    installation.model("village");
    installation.scenario("village", "b.sce", namedScenario("Two"));
    const Result result = run({"show", "a.sce"});
    EXPECT_EQ(result.status, 2) << "another root model";
    EXPECT_THAT(result.err, HasSubstr("Town, Village all have a scenario \"a.sce\""));
    EXPECT_EQ(run({"show", "a.sce", "--version-filter", "2.0"}).status, 0);
}

TEST_F(BrowseTest, OnePathInTwoFoldersIsShownOnce) {
    installation.configuration("Town", "1.0", {"town", "more"});
    installation.scenario("town", "a.sce", namedScenario("First"));
    installation.scenario("more", "a.sce", namedScenario("Hidden"));
    installation.scenario("more", "b.sce", namedScenario("Second"));
    std::filesystem::create_directories(installation.path() + "/town/data/scenario/c.sce");
    installation.scenario("more", "c.sce", namedScenario("Behind a folder"));
    const Result result = run({"show", "--all", "--json", "--configuration", "Town"});
    std::vector<std::string> names;
    for (const auto& scenario : result.json()) names.push_back(scenario["name"]);
    EXPECT_THAT(names, ElementsAre("First", "Second"));
    EXPECT_THAT(result.err, HasSubstr("c.sce: it is a folder\ntavrel: "));
    EXPECT_EQ(result.status, 3);
}

TEST_F(BrowseTest, NamesAreFoundInEitherUnicodeForm) {
    const std::string composed = "\xc3\xbc", decomposed = "u\xcc\x88";
    installation.scenario("town", composed + ".sce", namedScenario("One"));
    installation.configuration("S" + decomposed + "d", "2.0", {"town"});
    for (const std::string& letter : {composed, decomposed}) {
        const Result result =
            run({"get", letter + ".sce", "/sce/Scenario/speed", "--configuration", "S" + letter + "d"});
        EXPECT_EQ(result.out, "2.500000\n") << result;
    }
}

TEST_F(BrowseTest, FilesAndScriptsAreFoundAsTheirNamesAreRead) {
    const std::string composed = "\xc3\xbc", decomposed = "u\xcc\x88", id = "/sce/Scenario/speed";
    const std::string script = "TYPEOF SCENARIO (1)\n{\n\tTYPEOF VARIABLE (1)\n\t{\n\t\tTYPE=\"FLOAT\"\n"
                               "\t\tVALUE=\"5\"\n\t}\n}\n";
    installation.configuration("S" + decomposed + "d", "1.0", {"town"});
    installation.scenario("town", decomposed + "/a.sce",
                          namedScenario("One").script("other", script).script("m" + decomposed + "\tx", script));
    run.folder = installation.path() + "/town/data/scenario";
    const std::string file = composed + "/a.sce", name = "m" + composed + "\tx";
    const std::vector<std::vector<std::string>> calls{
        {"show", file},
        {"get", file, id},
        {"fetch", file},
        {"diff", file, file},
        {"refs", file, "variable:1", "--script", name},
        {"run", file, "--until", "0", "--script", "m" + decomposed + "\\tx"},
        {"graph", file, "--script", name},
        {"outline", file, "--script", name},
        {"vary", "plan", file},
        {"variadic", "add", file, id},
        {"variadic", "list", file},
        {"set", file, id + "=3"},
        {"format", composed},
        {"format", "--check", file}};
    for (const std::vector<std::string>& call : calls) {
        const Result result = run(call);
        EXPECT_EQ(result.status, call[0] == "refs" ? 1 : 0) << call[0] << result;
    }
    for (const std::string& operand : {std::string("."), file}) {
        run.folder = operand == "." ? installation.path() : "/";
        const Result found = run({"check", operand, "--configuration", "S" + composed + "d", "--json"});
        EXPECT_EQ(found.status, 0) << found;
        EXPECT_THAT(found.out, HasSubstr("/a.sce")) << operand;
    }
    // What is written gets the name that was given.
    run.folder = installation.path();
    EXPECT_EQ(run({"fetch", file, "--output", decomposed}).status, 0);
    EXPECT_EQ(run({"fetch", file, "--output", composed}).status, 0);
    EXPECT_TRUE(std::filesystem::exists(run.folder + "/" + composed));

    const std::vector<std::string> ids = run({"ids", file}).lines();
    ASSERT_EQ(ids.size(), 3U);
    EXPECT_THAT(ids.back(), EndsWith("\\tx\"]/Variable[name=1]/value"));
    EXPECT_EQ(run({"get", file, ids.back()}).out, "5\n");
    EXPECT_EQ(run({"set", file, ids.back() + "=6"}).status, 0);
    EXPECT_EQ(run({"get", file, ids.back()}).out, "6\n");
}

TEST_F(BrowseTest, AListFitsTheTerminal) {
    installation.scenario("town", "deep/folder/of/one.sce", namedScenario("The first scenario"));
    installation.scenario("town", "two.sce", namedScenario("\xe8\xa9\xa6\xe8\xa9\xa6")); // each takes two columns
    const auto list = [&](int columns) {
        const std::string line = "script -qec 'stty cols " + std::to_string(columns) +
                                 "; TERM=dumb " TAVREL_COMMAND " list --config \"" + installation.file() +
                                 "\"' /dev/null";
        setenv("LINE", line.c_str(), 1);
        FILE* pipe = popen("bash -c \"$LINE\"", "r");
        std::string out;
        for (int c; (c = fgetc(pipe)) != EOF;)
            if (c != '\r') out += static_cast<char>(c);
        pclose(pipe);
        return out;
    };
    EXPECT_EQ(list(80), "Town  deep/folder/of/one.sce  The first scenario\n"
                        "Town  two.sce                 試試\n");
    EXPECT_EQ(list(42), "Town  deep/folder/of/one.sce  The first s…\n"
                        "Town  two.sce                 試試\n");
    EXPECT_EQ(list(22), "Town  …lder/of/one.sce\n    The first scenario\n"
                        "Town  two.sce\n    試試\n");
}

TEST_F(BrowseTest, NothingOfAnIncludeOutsideOfTheDataPathIsShown) {
    std::ofstream(installation.path() + "/secret") << "root:x:0\n";
    installation.scenario("town", "odd.sce",
                          SectionText("Scenario")
                              .script("main", "TYPEOF SCENARIO (1)\n{\n\tTYPEOF INCLUDE (1)\n\t{\n"
                                              "\t\tISA_INDEX=\"1\"\n\t\tFILE=\"../../../../secret\"\n"
                                              "\t}\n}\n"));
    for (const char* command : {"show", "run", "graph", "outline", "check"}) {
        const Result result = run({command, "odd.sce", "--verbose"});
        EXPECT_THAT(result.out + result.err, Not(HasSubstr("root:x"))) << command;
    }
    EXPECT_THAT(run({"run", "odd.sce"}).err, HasSubstr("secret:1: it is refused, and lies outside of the data path"));
    ASSERT_EQ(mkfifo((installation.path() + "/trace").c_str(), 0600), 0);
    EXPECT_THAT(run({"graph", "odd.sce", "--trace", installation.path() + "/trace"}).err,
                HasSubstr("/trace: it is no regular file"));
}

TEST_F(BrowseTest, FailuresAreOneSentenceEach) {
    installation.scenario("town", "a.sce", namedScenario("One"));
    const struct {
        const char* why;
        std::vector<std::string> arguments;
        int status;
        std::string sentence;
    } rows[] = {
        {"unknown scenario", {"show", "b.sce"}, 3, "there is no scenario \"b.sce\" in Town"},
        {"thrown by pointer",
         {"get", "a.sce", "/sce/Scenario/x"},
         3,
         "a.sce: No child parameter with id=x in scenario element : Scenario"},
        {"an id of the wrong shape", {"get", "a.sce", "/sce/Other"}, 3, "\"/sce/Other\" is no parameter id"},
        {"an unknown configuration", {"tree", "--configuration", "City"}, 3, "no configuration passes the filters"},
        {"a directory above", {"show", "../a.sce"}, 3, "there is no scenario"},
    };
    for (const auto& row : rows) {
        const Result result = run(row.arguments);
        EXPECT_EQ(result.status, row.status) << row.why;
        EXPECT_THAT(result.err, StartsWith("tavrel: " + row.sentence)) << row.why;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << row.why << result;
    }
}

TEST_F(BrowseTest, TheInstallationComesFromTheOptionThenTheVariableThenTheSample) {
    run.common.clear();
    EXPECT_THAT(run({"uri"}).out, EndsWith("installation/tavrel.xml\n"));
    run.folder = installation.path() + "/town/data";
    EXPECT_EQ(run({"uri"}).out, "tavrel://" + installation.file() + "\n") << "the nearest above";
    EXPECT_EQ(run({"uri", "--config", sampleFile()}).out, "tavrel://" + sampleFile() + "\n");
    run.environment["TAVREL_CONFIG"] = sampleFile();
    EXPECT_EQ(run({"uri"}).out, "tavrel://" + sampleFile() + "\n");
    run.folder.clear();
    run.environment["TAVREL_CONFIG"] = installation.file();
    EXPECT_EQ(run({"uri"}).out, "tavrel://" + installation.file() + "\n");
    EXPECT_EQ(run({"uri", "--config", sampleFile(), "--configuration", "City", "--version-filter", "3.2"}).out,
              "tavrel://" + sampleFile() + "?version=3.2&config=City\n");
    run.environment["TAVREL_CONFIG"] = "/nowhere/tavrel.xml";
    const Result result = run({"tree"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.err, "tavrel: /nowhere/tavrel.xml: no such file\n");
}

// What a person and a script see of one rich scenario.
class SampleTest : public testing::Test {
protected:
    SampleTest() { run.common = {"--config", sample.file(), "--configuration", "Highway"}; }

    SampleCopy sample;
    CommandRunner run;
};

TEST_F(SampleTest, ShowTellsNodesParametersVariablesAndDeclarations) {
    const Result text = run({"show", kOvertaking});
    EXPECT_EQ(text.status, 0);
    EXPECT_EQ(text.err, "") << "what the library logs stays away";
    EXPECT_THAT(text.out, StartsWith("Überholen auf der Landstraße\n"));
    EXPECT_THAT(text.out, HasSubstr("\n  Vehicle[3] - Truck\n"));
    EXPECT_THAT(text.out, HasSubstr("    initialSpeed = 60.000000 km/h  (real, Initial speed)\n"));
    EXPECT_THAT(text.out, HasSubstr("    Truck speed = 16.667  (real)\n"));
    EXPECT_THAT(text.out, HasSubstr("  0  Truck speed  (real, km/h, default 60, 50 to 70 or 75 to 90)\n"));

    const nlohmann::json json = run({"show", kOvertaking, "--json"}).json();
    EXPECT_EQ(json["configuration"], "Highway");
    EXPECT_EQ(json["root"]["nodeId"], "/sce/Scenario");
    EXPECT_EQ(json["variadicParameters"][3]["literals"], nlohmann::json({"asphalt", "concrete", "cobbles"}));
    EXPECT_EQ(json["root"]["parameters"][0]["value"], 180.0);
    EXPECT_EQ(json["root"]["children"][1]["children"][2]["nodeId"], "/sce/Scenario/Road/RoadSign");
    EXPECT_EQ(json["root"]["parameters"][1]["type"], "other");
    EXPECT_TRUE(json["root"]["parameters"][1]["value"].is_null());
    EXPECT_EQ(json["root"]["parameters"][1]["text"], "medium");
    EXPECT_THAT(text.out, HasSubstr("  difficulty = medium  (other, Difficulty)\n"));
    EXPECT_EQ(run({"get", kOvertaking, "/sce/Scenario/startPosition"}).out, "0 1.75 0\n");
}

TEST_F(SampleTest, EveryIdThatIsListedCanBeAsked) {
    const std::vector<std::string> ids = run({"ids", kOvertaking}).lines();
    EXPECT_GT(ids.size(), 60U);
    EXPECT_THAT(ids, testing::Contains("/sce/Scenario/ScenarioScript[scriptName=\"main\"]/Variable[name=3]/value"));
    for (const std::size_t i : {std::size_t(0), ids.size() / 2, ids.size() - 1}) {
        const Result result = run({"get", kOvertaking, ids[i], "--json"});
        EXPECT_EQ(result.json()["parameterId"], ids[i]) << result;
    }
}

TEST_F(SampleTest, FetchGivesTheBytesOfTheFile) {
    const std::string bytes = readFile(sample.path + "/packs/road/data/scenario/" + kOvertaking);
    EXPECT_EQ(run({"fetch", kOvertaking}).out, bytes);
    const std::string copy = sample.path + "/copy of ü.sce";
    EXPECT_THAT(run({"fetch", kOvertaking, "--output", copy}).out, IsEmpty());
    EXPECT_EQ(readFile(copy), bytes);
}

TEST_F(SampleTest, FolderAndLocaleChangeNothing) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"tree"},
                                               {"list"},
                                               {"show", kOvertaking},
                                               {"show", kOvertaking, "--json"},
                                               {"run", kOvertaking, "--until", "20"}}) {
        const Result usual = run(arguments);
        CommandRunner german = run;
        german.folder = "/";
        german.environment = {{"LC_ALL", "de_DE.UTF-8"}, {"LANG", "de_DE.UTF-8"}};
        EXPECT_EQ(german(arguments).out, usual.out) << arguments[0];
        EXPECT_EQ(usual.status, 0) << usual;
    }
    CommandRunner inside = run;
    inside.folder = sample.path;
    inside.common = {"--config", "tavrel.xml", "--configuration", "Highway"};
    EXPECT_EQ(inside({"list"}).out, run({"list"}).out);
}

TEST_F(SampleTest, ResultsThatCannotBeWrittenAreTold) {
    const Result result = run({"fetch", kOvertaking, "--output", sample.path + "/missing/copy.sce"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, HasSubstr("cannot write " + sample.path + "/missing/copy.sce: its folder does not exist"));
    EXPECT_THAT(run({"fetch", kOvertaking, "--output", "/dev/full"}).err, HasSubstr("No space left on device"));
}

} // namespace
