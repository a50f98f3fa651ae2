// What the command says where something cannot be had: each sentence, from a place where a user gets it.

#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/InstallationBuilder.h>

#include "CommandRunner.h"

namespace {

using testing::HasSubstr;

constexpr const char* kPlan = R"({"format": "tavrel-plan/1", "scenario": "a.sce", "script": )";
constexpr const char* kAssignments = R"({"/sce/Scenario/speed": )";

class MessagesTest : public testing::Test {
protected:
    MessagesTest() {
        installation.configuration("Town", "1.0", {"town"});
        installation.model("town");
        const std::string scenario = "TYPEOF SCENARIO (1)\n{\n}\n", config = "TYPEOF CONFIG (c)\n{\n}\n";
        const auto named = [](const std::string& script, const std::string& text) {
            return SectionText("Scenario").parameter("speed", "2.5", "real", "m/s", "Speed").script(script, text);
        };
        installation.scenario("town", "a.sce", named("main", scenario));
        installation.scenario("town", "part.sce", named("part", config));
        installation.write("scenario.sc", scenario);
        installation.write("part.sc", config);
        installation.write("text.sc", "Once upon a time\n");
        installation.write("open.sc", "TYPEOF SCENARIO (1)\nTYPEOF RULE (1)\n");
        std::string deep;
        for (int i = 0; i < 1001; ++i) deep += "TYPEOF RULE (1)\n{\n";
        installation.write("deep.sc", deep);
        installation.write("empty.sce", "<sce version=\"1\"/>");
        installation.write("broken.json", "{");
        installation.write("list.json", "[]");
        installation.write("number.json", std::string(kAssignments) + "60}");
        installation.write("twice.json", std::string(kAssignments) + "\"6\", \"/sce/Scenario/speed\": \"7\"}");
        installation.write("plan.json", std::string(kPlan) + "\"mian\", \"parameters\": {}}");
        installation.write("lines", "1\n");
        const std::string run = ran({"run", "a.sce", "--trace", "json", "--until", "0"}).out;
        installation.write("runs", run + run);
        installation.write("nothing", "\n");
        installation.write("one/tavrel.xml", "<tavrel/>");
        std::filesystem::create_directories(installation.path() + "/bare/data/scenario");
        installation.write("bare/tavrel.xml", "<tavrel><configuration name=\"Bare\" path=\".\"/></tavrel>");
        installation.write("bare/configuration.xml",
                           "<configuration version=\"1\"><dataPath><root>.</root></dataPath></configuration>");
        std::filesystem::resize_file(installation.write("large.sce", ""),
                                     (std::uintmax_t{256} << 20) + 1); // no bytes on disk
    }

    Result ran(const std::vector<std::string>& arguments) {
        CommandRunner run;
        run.folder = installation.path();
        return run(arguments);
    }

    InstallationBuilder installation;
};

TEST_F(MessagesTest, EachFailureHasItsSentence) {
    const struct {
        std::vector<std::string> arguments;
        int status;
        const char* sentence;
    } rows[] = {
        {{"tree", "--config", ""}, 2, "--config takes the path of an installation file"},
        {{"list", "--config", "one/tavrel.xml"}, 3, "one/tavrel.xml has no configuration"},
        {{"show", "--all", "--config", "bare/tavrel.xml"}, 3, "bare/tavrel.xml has no scenario"},
        {{"show", "large.sce"}, 3, "large.sce: with 268435457 bytes it is larger than any file that is read"},
        {{"show", "a.sce", "--configuration", "Twon"}, 3, "no configuration passes the filters, did you mean \"Town\""},
        {{"run", "scenario.sc", "--configuration", "Twon"},
         3,
         "there is no configuration \"Twon\", did you mean \"Town\"; "},
        {{"run", "part.sce"}, 3, "no script of part.sce is a whole scenario; it has part"},
        {{"run", "part.sc"}, 3, "part.sc is no scenario, so it cannot be run by itself"},
        {{"run", "scenario.sc", "--model", "scenario.sc"},
         3,
         "scenario.sc is no root model, since its top item is no FOLDER"},
        {{"run", "scenario.sc", "--set", "a=1"},
         2,
         "scenario.sc is a script by itself; values are set in a scenario file"},
        {{"run", "a.sce", "--until", "1e9", "--step", "1e-9"},
         2,
         "there are too many steps between --from and --until"},
        {{"run", "a.sce", "--seed", "-1"}, 2, "--seed takes a whole number from 0 to 4294967295, not \"-1\""},
        {{"run", "--all", "--output", "x"}, 2, "--all and --output exclude each other"},
        {{"run", "a.sce", "--set-file", "broken.json"}, 2, "broken.json: this is no JSON"},
        {{"run", "a.sce", "--set-file", "list.json"}, 2, "list.json: this is no object of names and values"},
        {{"run", "a.sce", "--set-file", "twice.json"}, 2, "twice.json: \"/sce/Scenario/speed\" is set twice"},
        {{"run", "a.sce", "--set-file", "number.json"},
         2,
         "number.json: the value of \"/sce/Scenario/speed\" is no text, such as \"90 km/h\" or \"true\""},
        {{"judge", "runs"}, 2, "--expect is required: a trace is judged by criteria"},
        {{"judge", "runs", "--expect", "stopped"}, 3, ": a second run begins here, and only one can be judged"},
        {{"judge", "lines", "--expect", "stopped"}, 3, "lines:1: this is no event of a trace: "},
        {{"judge", "nothing", "--expect", "stopped"}, 3, "nothing: there is no event of a run in it"},
        {{"graph", "a.sce", "--trace", "lines"}, 3, "lines:1: this is no event of 'tavrel run --trace json'"},
        {{"graph", "part.sc"}, 3, "part.sc holds no state machine"},
        {{"outline", "part.sc"}, 3, "part.sc holds no states and rules"},
        {{"refs", "a.sce", "x"}, 3, "a.sce, script main has no variable, task, rule or include \"x\""},
        {{"diff", "a.sce", "part.sc"}, 2, " cannot be compared: one is a scenario file, the other is none"},
        {{"diff", "empty.sce", "a.sce"}, 3, "empty.sce:1: no <Scenario>"},
        {{"diff", "text.sc", "part.sc"}, 3, "text.sc:1: here an item should begin"},
        {{"diff", "open.sc", "part.sc"}, 3, "open.sc:2: here the brace of SCENARIO (1) should open"},
        {{"diff", "deep.sc", "part.sc"}, 3, "deep.sc:2001: the blocks are nested too deeply"},
        {{"format", "part.sc", "scenario.sc", "--output", "x"},
         2,
         "--output takes one file; several files, and folders, are written in their places"},
        {{"format", "--check", "part.sc"}, 1, "part.sc is not in the form that format writes"},
        {{"vary", "count", "plan.json"}, 2, "the scenario has no script \"mian\", did you mean main"},
        {{"variadic", "remove", "a.sce", "x"}, 2, "INDEX is a position, counted from 0, not \"x\""},
        {{"variadic", "add", "a.sce", "/sce/Scenario/speed", "--type", "boolean", "--default", "5"},
         2,
         "\"5\" is neither true nor false"},
        {{"variadic", "add", "a.sce", "/sce/Scenario/speed", "--type", "real", "--default", "5", "--range", "5"},
         2,
         "a range is written MIN:MAX, such as 60:90, not \"5\""},
        {{"find", "colour=red"}, 2, "\"colour=red\": nothing is looked for by \"colour\"; the keys are "},
        {{"find", "name<5"}, 2, "\"name<5\": only value is compared by <"},
        {{"find", "value<red"}, 2, "\"value<red\": < compares with a number"},
        {{"words", "x"}, 1, "no condition, action or function has \"x\" in its name or label"},
        {{"explain", "TV2O01"}, 2, "there is no rule \"TV2O01\", did you mean \"TV2001\"; 'tavrel explain' lists all"},
        {{"check", "a.sce", "--configuration", "Twon"},
         3,
         "there is no configuration \"Twon\", did you mean \"Town\"; "},
        {{"check", "--configuration", "Twon"}, 3, "there is no configuration \"Twon\", did you mean \"Town\"; "},
        {{"check", ""}, 2, "an empty PATH is no file and no scenario"},
        {{"check", "--select", "x"}, 2, "--select: no rule has the id \"x\" or begins with it"},
        {{"check", "--json", "--format", "sarif"}, 2, "--json means --format json, and --format sarif says otherwise"},
        {{"check", "a.sce", "--diff", "--format", "json"}, 2, "--diff shows changes and no findings, so it takes "},
        {{"check", "--max-findings", "0"}, 2, "--max-findings takes a whole number above 0, not \"0\""},
        {{"check", "--baseline", "list.json"},
         3,
         "list.json: this is no baseline that 'tavrel check --write-baseline' wrote"},
    };
    for (const auto& row : rows) {
        const Result result = ran(row.arguments);
        EXPECT_EQ(result.status, row.status) << row.sentence << result;
        EXPECT_THAT(result.err, HasSubstr(row.sentence));
        EXPECT_EQ(result.out, "") << row.sentence;
    }
}

TEST_F(MessagesTest, ABareNameIsTheFileHere) {
    CommandRunner run;
    run.folder = installation.path() + "/town/data/scenario";
    for (const std::vector<std::string>& command : std::vector<std::vector<std::string>>{
             {"check"}, {"show"}, {"ids"}, {"run", "--until", "0"}, {"graph"}, {"outline"}, {"vary", "plan"}}) {
        std::vector<std::string> arguments = command;
        arguments.insert(arguments.begin() + (command[0] == "vary" ? 2 : 1), "a.sce");
        const Result result = run(arguments);
        EXPECT_EQ(result.status, 0) << command[0] << result;
    }
}

} // namespace
