#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CommandRunner.h"

// Values in, verdicts out: run --set, --expect and the like, judge, set.

namespace {

using testing::EndsWith;
using testing::HasSubstr;

const std::string kOvertaking = "rural/Überholen auf der Landstraße.sce";
const std::string kFile = "/packs/road/data/scenario/" + kOvertaking;

class ValuesTest : public testing::Test {
protected:
    ValuesTest() { run.common = {"--config", copy.file(), "--configuration", "Highway"}; }

    Result ran(std::vector<std::string> options) {
        options.insert(options.begin(), {"run", kOvertaking, "--until", "40"});
        return run(options);
    }
    std::string write(const std::string& name, const std::string& text) {
        const std::string path = copy.path + "/" + name;
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }

    SampleCopy copy;
    CommandRunner run;
};

TEST_F(ValuesTest, TheExitStatusIsTheVerdict) {
    EXPECT_EQ(ran({"--expect", "never fired(8)", "--expect", "eventually stopped"}).status, 0);
    const Result failed = ran({"--quiet", "--expect", "fired(8)", "--expect", "always variable(1) >= 16.667"});
    EXPECT_EQ(failed.status, 1);
    EXPECT_THAT(failed.out,
                EndsWith("fails  fired(8)\nholds  always variable(1) >= 16.667  (margin 0)\nverdict: failed\n"));
    EXPECT_THAT(failed.out, testing::StartsWith("   39.000  end after 391 steps")) << "the summary alone";
    EXPECT_EQ(ran({"--script", "other"}).status, 3);
    const Result all = run({"run", "--all", "--until", "0", "--quiet"});
    EXPECT_EQ(all.status, 0) << all;
    EXPECT_THAT(all.out, HasSubstr(" skipped\n"));
}

TEST_F(ValuesTest, WhatIsRefusedRunsAndWritesNothing) {
    const std::string output = copy.path + "/trace.jsonl", before = readFile(copy.path + kFile);
    const std::vector<std::vector<std::string>> rows = {
        {"--set", "Truck speed=200"},
        {"--set", "Truck speed=fast"},
        {"--set", "Truck sped=60"},
        {"--set", "Truck speed"},
        {"--set", "Truck speed=60", "--set", "#0=65"},
        {"--set", "Surface=cobbles"},
        {"--set-file", write("twice.json", R"({"Fog":"true","Fog":"false"})")},
        {"--set-file", write("number.json", R"({"Truck speed":60})")},
        {"--set-file", write("list.json", "[1]")},
        {"--set-file", write("broken.json", "{")},
        {"--expect", "alway stopped"},
        {"--expect", "fired(4711)"},
        {"--seed", "-1"},
        {"--explain", "4711"},
    };
    for (std::vector<std::string> row : rows) {
        row.insert(row.end(), {"--output", output});
        const Result result = ran(row);
        EXPECT_EQ(result.status, 2) << row[1] << result;
        EXPECT_EQ(result.out, "") << row[1];
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        EXPECT_FALSE(std::filesystem::exists(output)) << row[1];
    }
    EXPECT_EQ(run({"set", kOvertaking, "Truck speed=60", "Fgo=true"}).status, 2);
    EXPECT_EQ(run({"set", kOvertaking, "Truck speed=60", "--output", copy.path + "/no/such/folder.sce"}).status, 3);
    EXPECT_EQ(readFile(copy.path + kFile), before);
}

TEST_F(ValuesTest, ValuesOfTheFileGiveWayAndTheTraceTellsThem) {
    const std::string file = write("values.json", R"({"Fog":"true","#0":"55"})"), trace = copy.path + "/trace.jsonl";
    const Result result =
        ran({"--set-file", file, "--set", "Truck speed=20 m/s", "--seed", "5", "--trace", "json", "--output", trace});
    EXPECT_EQ(result.status, 2) << "72 km/h lie between the ranges";
    const Result again =
        ran({"--set-file", file, "--set", "Truck speed=19 m/s", "--seed", "5", "--trace", "json", "--output", trace});
    EXPECT_EQ(again.status, 0) << again;
    EXPECT_THAT(again.out, HasSubstr("end after")) << "the summary stays on the screen";
    std::ifstream lines(trace);
    std::string first;
    std::getline(lines, first);
    const nlohmann::json start = nlohmann::json::parse(first);
    EXPECT_EQ(start["seed"], 5);
    EXPECT_EQ(start["script"], "main");
    EXPECT_EQ(start["values"]["/sce/Scenario/Weather/fog"], "true");
    EXPECT_EQ(start["values"]["/sce/Scenario/Vehicle[id/@ScenarioTreeValue=3]/initialSpeed"], "19 m/s");
    ASSERT_GE(start["inputs"].size(), 3U);
    EXPECT_EQ(start["inputs"][0]["file"], kFile.substr(1));
    EXPECT_EQ(start["inputs"][1]["role"], "rootModel");
    EXPECT_EQ(start["inputs"][2]["role"], "include");
    EXPECT_EQ(start["inputs"][0]["sha256"].get<std::string>().size(), 64U);

    // The trace alone gives the same outcomes.
    const std::vector<std::string> criteria = {"--expect", "eventually entered(TASK (3))", "--expect", "fired(8)"};
    std::vector<std::string> judge = {"judge", trace, "--json"};
    judge.insert(judge.end(), criteria.begin(), criteria.end());
    const Result judged = run(judge);
    EXPECT_EQ(judged.status, 1) << judged;
    std::vector<std::string> same = {"--set-file", file,   "--set",  "Truck speed=19 m/s", "--seed", "5",
                                     "--trace",    "json", "--quiet"};
    same.insert(same.end(), criteria.begin(), criteria.end());
    EXPECT_EQ(ran(same).json()["criteria"], judged.json()["criteria"]);
    EXPECT_EQ(run({"judge", trace, "--expect", "fired(4711)"}).status, 2);
    EXPECT_EQ(run({"judge", trace}).status, 2);
    EXPECT_EQ(run({"judge", file, "--expect", "stopped"}).status, 3);
    EXPECT_EQ(run({"judge", copy.path + "/none", "--expect", "stopped"}).status, 3);
}

TEST_F(ValuesTest, SetEditsTheFileAndTellsWhatLeavesItsRanges) {
    const std::string before = readFile(copy.path + kFile), other = copy.path + "/other.sce";
    const Result result = run({"set", kOvertaking, "Truck speed=200", "--output", other});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("50 to 70 or 75 to 90 km/h"));
    EXPECT_EQ(readFile(copy.path + kFile), before);
    std::string wanted = before;
    wanted.replace(wanted.find("16.666666667"), 12, "55.55555555555556");
    EXPECT_EQ(readFile(other), wanted);
    EXPECT_EQ(run({"set", other, "Truck speed=60.0000000012"}).status, 0);
    EXPECT_EQ(run({"set", kOvertaking, "Oncoming traffic=true"}).status, 0);
    EXPECT_EQ(readFile(copy.path + kFile), before) << "what equals the present value changes no byte";
}

TEST_F(ValuesTest, ADeclarationThatLeadsNowhereIsInNobodysWay) {
    std::string text = readFile(copy.path + kFile);
    const std::string id = "/sce/Scenario/Weather/fog</parameterId>";
    ASSERT_NE(text.find(id), std::string::npos);
    std::ofstream(copy.path + kFile, std::ios::binary)
        << text.replace(text.find(id), id.size(), "/sce/Scenario/Weather/fgo</parameterId>");
    const Result told = ran({"--set", "Truck speed=60"});
    EXPECT_EQ(told.status, 0);
    EXPECT_THAT(told.err, HasSubstr(kOvertaking + ": a declaration leads nowhere: "));
    EXPECT_EQ(run({"set", kOvertaking, "Truck speed=60"}).status, 0);
    const Result result = ran({"--set", "Fog=true"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("leads nowhere, did you mean \"/sce/Scenario/Weather/fog\""));
}

TEST_F(ValuesTest, ARuleSaysWhyItDidNotFire) {
    const Result result = ran({"--explain", "8"});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out,
                HasSubstr("SCENARIO (1) / TASK (2) / RULE (8) \"No oncoming traffic wanted\" did not fire"));
    EXPECT_THAT(result.out, HasSubstr("For 28.4 of 39 s nobody looked at it"));
    EXPECT_THAT(result.out, HasSubstr("held the rule back for 10.6 s"));
    EXPECT_THAT(ran({"--explain", "8", "--expect", "fired(8)"}).out, EndsWith("fails  fired(8)\nverdict: failed\n"));
    const nlohmann::json json = ran({"--explain", "8", "--trace", "json"}).json();
    EXPECT_EQ(json["timesFired"], 0);
    EXPECT_EQ(json["looks"].front()["time"], 0.0);
    EXPECT_EQ(json["looks"].back()["time"], 39.0);
    EXPECT_EQ(json["looks"][1]["values"][0][0], "1") << "the value of the variable, and not its number";
}

} // namespace
