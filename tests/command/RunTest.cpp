#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CommandRunner.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kOvertaking = "rural/Überholen auf der Landstraße.sce";

class RunTest : public testing::Test {
protected:
    RunTest() { run.common = {"--config", sampleFile(), "--configuration", "Highway"}; }

    static std::vector<nlohmann::json> events(const Result& result) {
        std::vector<nlohmann::json> events;
        for (const std::string& line : result.lines()) events.push_back(nlohmann::json::parse(line));
        return events;
    }

    CommandRunner run;
};

TEST_F(RunTest, AnExerciseGoesThroughItsStates) {
    const Result result = run({"run", kOvertaking, "--until", "120", "--trace", "json"});
    ASSERT_EQ(result.status, 0) << result;
    std::vector<std::string> states;
    for (const nlohmann::json& event : events(result))
        if (event["event"] == "state") states.push_back(event["label"]);
    EXPECT_THAT(states, ElementsAre("Approach", "Wait for a gap", "Pull out", "Pull in", "Done"));
    const nlohmann::json last = events(result).back();
    EXPECT_EQ(last["event"], "end");
    EXPECT_EQ(last["stopped"], true) << "the script itself ends the exercise";
    EXPECT_LT(last["time"], 120);
}

TEST_F(RunTest, TheSameRunGivesTheSameTrace) {
    for (const char* form : {"text", "json"}) {
        const std::vector<std::string> arguments{"run",    kOvertaking, "--until", "30",
                                                 "--step", "0.05",      "--trace", form};
        const Result first = run(arguments);
        EXPECT_EQ(first.out, run(arguments).out);
        EXPECT_GT(first.lines().size(), 20U);
    }
}

TEST_F(RunTest, TimesAreThoseOfTheOptions) {
    const std::vector<nlohmann::json> all =
        events(run({"run", kOvertaking, "--from", "5", "--until", "6", "--step", "0.25", "--trace", "json"}));
    EXPECT_EQ(all.front()["time"], 5.0);
    EXPECT_EQ(all.back()["time"], 6.0);
    EXPECT_EQ(all.back()["steps"], 5);
}

TEST_F(RunTest, VariablesScoresAndEffectsAreTold) {
    run.common = {"--config", sampleFile(), "--configuration", "City"};
    const Result result = run({"run", "tests/Fahrprüfung Klasse B.sce", "--until", "300"});
    EXPECT_EQ(result.status, 0) << result.err;
    for (const char* part :
         {"\" fired in SCENARIO (1)", "variable ", "score ", "EVALUATION (1)", "SPEAK \"Bestanden\" \"de\""})
        EXPECT_THAT(result.out, HasSubstr(part));
}

TEST_F(RunTest, EveryExerciseOfTheSampleRuns) {
    run.common = {"--config", sampleFile()};
    for (const char* configuration : {"City", "Highway", "Classic"}) {
        run.common.resize(2);
        run.common.insert(run.common.end(), {"--configuration", configuration});
        for (const std::string& path : run({"list", "--paths"}).lines()) {
            const Result result = run({"run", path, "--until", "10", "--step", "0.5"});
            const bool noScript = result.err.ends_with(" has no script\n");
            EXPECT_EQ(result.status, noScript ? 3 : 0) << path << result;
        }
    }
}

TEST_F(RunTest, AnImplementationThatIsMissingFailsTheRun) {
    SampleCopy copy;
    const std::string model = copy.path + "/packs/common/data/tools/nuro/nuro.mdl";
    std::string text = readFile(model);
    const std::size_t action = text.find("TYPEOF ACTION (DISPLAY_MESSAGE)");
    const std::size_t code = text.find("CODE=\"80\"", action);
    ASSERT_NE(code, std::string::npos);
    std::ofstream(model, std::ios::binary) << text.replace(code, 9, "CODE=\"4711\"");
    run.common = {"--config", copy.file(), "--configuration", "Highway"};
    const Result result = run({"run", kOvertaking, "--until", "2"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("log: "));
    EXPECT_THAT(result.out, HasSubstr("4711"));
}

TEST_F(RunTest, TheGraphIsTextThatDotDraws) {
    SampleCopy copy; // for its folder
    const std::string trace = copy.path + "/trace.json", dot = copy.path + "/graph.dot";
    std::ofstream(trace) << run({"run", kOvertaking, "--trace", "json"}).out;
    EXPECT_EQ(run({"graph", kOvertaking, "--trace", trace, "--output", dot}).status, 0);
    const std::string text = readFile(dot);
    EXPECT_THAT(text, HasSubstr("label=\"Wait for a gap (2)\", color="));
    EXPECT_THAT(text, HasSubstr("[label=\"Van has passed (9)\", color="));
    EXPECT_THAT(text, HasSubstr("[label=\"No oncoming traffic wanted (8)\"];")) << "that rule did not fire";
    EXPECT_EQ(std::system(("dot -Tsvg -o /dev/null '" + dot + "'").c_str()), 0);

    run.common = {"--config", sampleFile(), "--configuration", "City"};
    const std::string nested = run({"graph", "tests/Fahrprüfung Klasse B.sce"}).out;
    EXPECT_THAT(nested, HasSubstr("label=\"TASK Stadtfahrt (2)\""));
    EXPECT_THAT(nested, HasSubstr("label=\"Gurt (5)\", style=\"rounded,dashed\"")) << "a disabled criteria";
    std::ofstream(dot) << nested;
    EXPECT_EQ(std::system(("dot -Tsvg -o /dev/null '" + dot + "'").c_str()), 0);
    EXPECT_EQ(run({"graph", kOvertaking, "--configuration", "Highway", "--trace", dot}).status, 3) << "no trace at all";
}

TEST_F(RunTest, AMissingIncludeIsToldAndTheRestRuns) {
    SampleCopy copy;
    std::filesystem::remove(copy.path + "/packs/common/data/script/include/speed_monitor.sc");
    run.common = {"--config", copy.file(), "--configuration", "Highway"};
    const Result result = run({"run", kOvertaking, "--until", "1"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, HasSubstr("the include \"speed_monitor.sc\" could not be loaded"));
    EXPECT_THAT(result.out, HasSubstr("\"Set off\" fired"));
}

TEST_F(RunTest, AScriptFileNeedsItsRootModelOnly) {
    const std::string include = std::string(TAVREL_SAMPLE) + "/packs/common/data/script/include/speed_monitor.sc";
    run.common.clear();
    EXPECT_EQ(run({"graph", include}).status, 0);
    const Result result = run({"run", include});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, HasSubstr("is no scenario, so it cannot be run by itself"));
}

} // namespace
