// The sub-commands of vary: plans, and the variants that they make.

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "CommandRunner.h"

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;
using testing::ElementsAre;
using testing::HasSubstr;

const std::string kPlans = TAVREL_PLANS;
std::string sampleFolder() { return TAVREL_SAMPLE; }
const char* const kOvertaking = "rural/Überholen auf der Landstraße.sce";
const char* const kTruck = "/sce/Scenario/Vehicle[id/@ScenarioTreeValue=3]/initialSpeed";
const char* const kFog = "/sce/Scenario/Weather/fog";

Result RunTavrel(std::vector<std::string> arguments) {
    CommandRunner run;
    run.common = {"--config", sampleFile()};
    return run(std::move(arguments));
}

class VaryTest : public testing::Test {
protected:
    VaryTest() { fs::create_directories(folder); }
    ~VaryTest() override { fs::remove_all(folder); }

    // A plan on the overtaking scenario with these members beside format and scenario.
    std::string PlanWith(const std::string& members, const std::string& name = "plan.json") {
        const std::string path = (folder / name).string();
        std::ofstream(path) << R"({"format": "tavrel-plan/1", "configuration": "Highway", "scenario": ")" << kOvertaking
                            << "\", " << members << "}";
        return path;
    }

    static std::vector<Json> Lines(const std::string& text) {
        std::vector<Json> lines;
        std::istringstream stream(text);
        for (std::string line; std::getline(stream, line);) lines.push_back(Json::parse(line));
        return lines;
    }

    std::vector<Json> List(const std::string& members) {
        const Result result = RunTavrel({"vary", "list", PlanWith(members), "--format", "jsonl"});
        EXPECT_EQ(result.status, 0) << result.err;
        return Lines(result.out);
    }

    // The values of one parameter, line by line.
    std::vector<std::string> Values(const std::string& members, const std::string& id = kTruck) {
        std::vector<std::string> values;
        for (const Json& line : List(members)) values.push_back(line["values"][id]);
        return values;
    }

    // What a plan is refused with, behind its path; all sub-commands read it alike.
    std::string Refusal(const std::string& members) {
        const std::string path = PlanWith(members);
        const Result result = RunTavrel({"vary", "count", path});
        EXPECT_EQ(result.status, 2) << members << result.out;
        EXPECT_EQ(result.out, "");
        const std::size_t at = result.err.find(path + ": ");
        return at == std::string::npos
                   ? result.err
                   : result.err.substr(at + path.size() + 2, result.err.size() - at - path.size() - 3);
    }

    const fs::path folder = fs::temp_directory_path() / "vary";
};

TEST_F(VaryTest, MethodsGiveTheirVariantsInOrder) {
    const std::string two = R"("parameters": {"Truck speed": {"count": 3}, "Fog": {}}, "method": {"name": )";
    // The gap from 70 to 75 lies in the middle: 70 is as it is.
    EXPECT_THAT(Values(two + "\"grid\"}"), ElementsAre("50", "50", "70", "70", "90", "90"));
    EXPECT_THAT(Values(two + "\"grid\"}", kFog), ElementsAre("false", "true", "false", "true", "false", "true"));
    EXPECT_THAT(Values(two + "\"defaults\"}"), ElementsAre("60"));
    EXPECT_THAT(Values(two + "\"one-at-a-time\"}"), ElementsAre("60", "50", "70", "90", "60"));
    EXPECT_THAT(Values(R"("method": {"name": "boundary"}, "parameters": {"Truck speed": {"step": 5}})"),
                ElementsAre("60", "50", "55", "65", "70", "75", "80", "85", "90"));
    EXPECT_THAT(Values(R"("method": {"name": "grid"}, "parameters": {"Truck speed": {"step": "12.5"}})"),
                ElementsAre("50", "62.5", "75", "87.5"));
    EXPECT_THAT(Values(R"("method": {"name": "list", "rows": [{"Truck speed": "90"}, {"#0": "25 m/s"}, {}]},
                          "parameters": {"Truck speed": {}}, "constraints": ["[Truck speed] < 80;"])"),
                ElementsAre("90", "90", "60"));
    EXPECT_THAT(Values(R"("method": {"name": "list"}, "parameters": {"Truck speed": {}},
                          "linked": [{"parameters": ["Fog", "Lane of the van"], "rows": [["true", 1], ["false", -1]]}])",
                       kFog),
                ElementsAre("true", "false"));
    // By id a number has the unit of the parameter, which is told without it.
    EXPECT_THAT(Values(std::string(R"("method": {"name": "grid"}, "parameters": {")") + kFog +
                           R"(": {}, "/sce/Scenario/duration": {"values": [60, "2 min"]}})",
                       "/sce/Scenario/duration"),
                ElementsAre("60", "120", "60", "120"));
}

TEST_F(VaryTest, ConstraintsLeaveNumbersOfAGridUnused) {
    const auto lines =
        List(R"("method": {"name": "grid"}, "parameters": {"Truck speed": {"values": ["50", "70", "90"]}, "Fog": {}},
        "constraints": ["IF [Fog] = \"true\" THEN [Truck speed] <= 60;"], "include": [{"Fog": "true"}])");
    std::vector<int> numbers;
    for (const Json& line : lines) numbers.push_back(line["number"]);
    EXPECT_THAT(numbers, ElementsAre(0, 1, 2, 3, 5));
    EXPECT_EQ(lines[0]["values"][kTruck], "60"); // the default, though no value of the list
    EXPECT_EQ(RunTavrel({"vary", "count", (folder / "plan.json").string()}).out, "5\n");
    const Result none = RunTavrel({"vary", "show", (folder / "plan.json").string(), "4"});
    EXPECT_EQ(none.status, 2);
    EXPECT_THAT(none.err, HasSubstr("there is no variant 4; the constraints leave it out"));
}

TEST_F(VaryTest, SamplesAreAFunctionOfSeedNumberAndParameter) {
    for (const char* method : {"random", "sobol", "latin-hypercube"}) {
        const std::string head = std::string(R"("seed": 5, "method": {"name": ")") + method +
                                 R"(", "count": 32}, "parameters": {"Truck speed": {)";
        const auto alone = Values(head + "}}");
        EXPECT_EQ(Values(head + R"(}, "Fog": {}, "Lane of the van": {}})"), alone) << method;
        EXPECT_EQ(Values("\"include\": [{\"Truck speed\": \"50\"}], " + head + "}}").back(), alone.back()) << method;
        for (const std::string& text : alone) {
            const double value = std::stod(text);
            EXPECT_TRUE((value >= 50 && value <= 70) || (value >= 75 && value <= 90)) << text;
        }
    }
    // One in each of 35 strata of the length of 35 km/h that both ranges have together.
    std::set<int> strata;
    for (const std::string& text : Values(
             R"("method": {"name": "latin-hypercube", "count": 35}, "parameters": {"Truck speed": {"decimals": 9}})"))
        strata.insert(static_cast<int>(std::stod(text) < 72 ? std::stod(text) - 50 : std::stod(text) - 55));
    EXPECT_EQ(strata.size(), 35u);
    // 2^53 is out of reach, but what lies just below is found at once.
    const std::string far =
        PlanWith(R"("method": {"name": "random", "count": 9007199254740991}, "parameters": {"Truck speed": {}})");
    EXPECT_EQ(RunTavrel({"vary", "show", far, "9007199254740990"}).status, 0);
    EXPECT_EQ(RunTavrel({"vary", "show", far, "9007199254740991"}).status, 2);
}

TEST_F(VaryTest, RepetitionsHaveSeedsOfTheirOwn) {
    const auto lines = List(R"("seed": 3, "repetitions": 3, "method": {"name": "grid"}, "parameters": {"Fog": {}})");
    ASSERT_EQ(lines.size(), 6u);
    std::set<std::uint64_t> seeds;
    for (const Json& line : lines) seeds.insert(line["seed"].get<std::uint64_t>());
    EXPECT_EQ(seeds.size(), 6u);
    EXPECT_EQ(lines[2]["values"][kFog], "false");
    EXPECT_EQ(lines[3]["values"][kFog], "true");
}

TEST_F(VaryTest, TheExamplePlansAreWhole) {
    const std::map<std::string, std::string> counts = {
        {"overtaking-cover.json", "14\n"}, {"fog-sobol.json", "32\n"}, {"braking-boundary.json", "10\n"}};
    for (const auto& [name, count] : counts)
        EXPECT_EQ(RunTavrel({"vary", "count", kPlans + "/" + name}).out, count) << name;
    const Json coverage = Json::parse(RunTavrel({"vary", "coverage", kPlans + "/overtaking-cover.json", "--json"}).out);
    EXPECT_EQ(coverage["covered"], coverage["possible"]);
    const Json count = Json::parse(RunTavrel({"vary", "count", kPlans + "/fog-sobol.json", "--json"}).out);
    EXPECT_EQ(count, Json::parse(R"({"count": 32, "exact": true})"));
    const Json variant = Json::parse(RunTavrel({"vary", "show", kPlans + "/overtaking-cover.json", "0", "--json"}).out);
    EXPECT_EQ(variant["number"], 0);
    EXPECT_TRUE(variant["values"].at(0).contains("present")) << variant;
    const Result first =
        RunTavrel({"vary", "list", kPlans + "/overtaking-cover.json", "--format", "jsonl", "--to", "0"});
    EXPECT_EQ(Lines(first.out).at(0)["values"][kTruck], "90");
}

TEST_F(VaryTest, ListsInThreeFormsAndInPieces) {
    const std::string plan =
        PlanWith(R"("method": {"name": "grid"}, "parameters": {"Fog": {}, "Truck speed": {"step": 20}})");
    const std::string id = kTruck;
    EXPECT_EQ(RunTavrel({"vary", "list", plan, "--format", "csv", "--from", "1", "--to", "2"}).out,
              "number," + std::string(kFog) + "," + id + "\n1,false,70\n2,false,75\n");
    EXPECT_EQ(RunTavrel({"vary", "list", plan, "--to", "1"}).out,
              "number  Fog    Truck speed\n0       false  50\n1       false  70\n");
    EXPECT_EQ(RunTavrel({"vary", "list", plan, "--format", "jsonl", "--from", "5"}).out,
              "{\"number\":5,\"values\":{\"" + std::string(kFog) + "\":\"true\",\"" + id + "\":\"75\"}}\n");
    EXPECT_EQ(RunTavrel({"vary", "list", plan, "--format", "jsonl", "--from", "6"}).out, "");
    const std::string repeated =
        PlanWith(R"("seed": 3, "repetitions": 2, "method": {"name": "grid"}, "parameters": {"Fog": {}})");
    const auto seed = [&](const char* number) {
        return Json::parse(RunTavrel({"vary", "show", repeated, number, "--json"}).out)["seed"].dump();
    };
    EXPECT_EQ(RunTavrel({"vary", "list", repeated, "--format", "csv", "--to", "1"}).out,
              "number,seed," + std::string(kFog) + "\n0," + seed("0") + ",false\n1," + seed("1") + ",false\n");
    EXPECT_THAT(RunTavrel({"vary", "list", repeated}).out,
                testing::ContainsRegex("^number  seed +Fog\n0 +" + seed("0")));
    EXPECT_THAT(RunTavrel({"vary", "show", repeated, "1"}).out, HasSubstr("variant 1, seed " + seed("1") + "\n"));
    // The last variant stands before 10^9, and no search goes from there to the grid's end at 10^12.
    const std::string sparse = PlanWith(
        R"("method": {"name": "grid"}, "constraints": ["[Truck speed] = 50;"], "parameters": {"Truck speed": {"count": 1000},
            "/sce/Scenario/duration": {"range": [0, 999], "step": 1}, "/sce/Scenario/Weather/hour": {"range": [0, 999], "step": 1},
            "/sce/Scenario/Weather/visibility": {"range": [0, 999], "step": 1}})",
        "sparse.json");
    const auto listed = [&](const char* from, const char* to) {
        return Lines(RunTavrel({"vary", "list", sparse, "--format", "jsonl", "--from", from, "--to", to}).out).size();
    };
    EXPECT_EQ(listed("999999998", "1000000002"), 2u);
    EXPECT_EQ(listed("2000000000", "2000000001"), 0u);
    EXPECT_EQ(RunTavrel({"vary", "list", plan, "--from", "2", "--to", "1"}).status, 2);
    EXPECT_EQ(RunTavrel({"vary", "list", plan, "--from", "-1"}).status, 2);
}

TEST_F(VaryTest, WritesScenariosThatDifferInTheValuesAlone) {
    const std::string plan =
        PlanWith(R"("method": {"name": "grid"}, "parameters": {"Fog": {}, "Truck speed": {"values": ["60", "75"]}})");
    ASSERT_EQ(RunTavrel({"vary", "write", plan, "--output", (folder / "out").string(), "--from", "1"}).status, 0);
    EXPECT_FALSE(fs::exists(folder / "out/000000.sce"));
    const auto lines = [](const std::string& path) {
        std::vector<std::string> read;
        std::ifstream file(path, std::ios::binary);
        for (std::string line; std::getline(file, line);) read.push_back(line);
        return read;
    };
    const auto original = lines(sampleFolder() + "/packs/road/data/scenario/" + kOvertaking);
    const auto written = lines((folder / "out/000003.sce").string());
    ASSERT_EQ(original.size(), written.size());
    std::vector<std::string> changed;
    for (std::size_t i = 0; i < original.size(); ++i)
        if (original[i] != written[i]) changed.push_back(written[i]);
    ASSERT_EQ(changed.size(), 2u);
    EXPECT_THAT(changed[0], HasSubstr("<fog "));
    EXPECT_THAT(changed[1], HasSubstr("<initialSpeed "));
    const Result list = RunTavrel({"vary", "list", plan, "--format", "jsonl", "--from", "1"});
    std::ifstream variants(folder / "out/variants.jsonl");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(variants), {}), list.out);
}

TEST_F(VaryTest, AWriteWhoseDrawsRunOutWritesNothing) {
    // One of 5,000 draws is allowed, and found early.
    const std::string plan = PlanWith(R"("method": {"name": "random", "count": 5}, "parameters": {"Truck speed": {}},
        "constraints": ["[Truck speed] < 50.01;"])");
    const Result write = RunTavrel({"vary", "write", plan, "--output", (folder / "out").string()});
    EXPECT_EQ(write.status, 2);
    EXPECT_THAT(write.err, HasSubstr("method/count: of 5000 draws only 1 "));
    EXPECT_FALSE(fs::exists(folder / "out"));
}

TEST_F(VaryTest, CoverageCountsRunsThatAFileTells) {
    const std::string plan =
        PlanWith(R"("method": {"name": "grid"}, "parameters": {"Fog": {}, "Truck speed": {"values": ["60", "75"]}},
        "constraints": ["NOT ([Fog] = \"true\" AND [Truck speed] = 75);"])");
    const std::string runs = (folder / "runs.jsonl").string();
    std::ofstream(runs) << R"({"number": 9, "verdict": "passed", "values": {")" << kFog << R"(": "false", ")" << kTruck
                        << R"(": "75.0"}})"
                        << "\n\n";
    const Json coverage = Json::parse(RunTavrel({"vary", "coverage", plan, "--runs", runs, "--json"}).out);
    EXPECT_EQ(coverage["possible"], 3);
    EXPECT_EQ(coverage["covered"], 1);
    EXPECT_EQ(coverage["missing"][0][kTruck], "60");
    EXPECT_EQ(RunTavrel({"vary", "coverage", plan, "--runs", runs}).out,
              "1 of 3 combinations of 2 parameters covered by 1 variant\n"
              "missing: " +
                  std::string(kFog) + "=false, " + kTruck + "=60\nmissing: " + kFog + "=true, " + kTruck + "=60\n");
    EXPECT_EQ(Json::parse(RunTavrel({"vary", "coverage", plan, "--strength", "1", "--json"}).out)["covered"], 4);
    // Pairs, where there are any.
    const std::string linked = PlanWith(R"("method": {"name": "list"}, "parameters": {},
        "linked": [{"parameters": ["Fog", "Lane of the van"], "rows": [["true", 1], ["false", -1]]}])");
    EXPECT_THAT(RunTavrel({"vary", "coverage", linked}).out, HasSubstr("2 of 2 combinations of 1 parameter covered"));
}

TEST_F(VaryTest, ValuesHaveTheirUnitWhereTheDeclarationHasAnother) {
    std::string text = readFile(sampleFolder() + "/packs/road/data/scenario/" + kOvertaking);
    const std::string unit = "<parameterUnit>km/h</parameterUnit>";
    text.replace(text.find(unit), unit.size(), "<parameterUnit>mph</parameterUnit>");
    std::ofstream(folder / "miles.sce", std::ios::binary) << text;
    const std::string plan = (folder / "miles.json").string();
    std::ofstream(plan) << R"({"format": "tavrel-plan/1", "scenario": "miles.sce", "method": {"name": "grid"},
        "parameters": {"Truck speed": {"values": ["50", "120.7008 km/h"]}}, "constraints": ["[Truck speed] > 80 km/h;"]})";
    const Result list = RunTavrel({"vary", "list", plan, "--format", "jsonl"});
    ASSERT_EQ(list.status, 0) << list.err;
    ASSERT_EQ(Lines(list.out).size(), 2u);
    EXPECT_EQ(Lines(list.out)[0]["values"][kTruck], "50 mph");
    EXPECT_EQ(Lines(list.out)[1]["values"][kTruck], "75 mph");
    const Result coverage = RunTavrel({"vary", "coverage", plan, "--strength", "1"});
    EXPECT_THAT(coverage.out, HasSubstr("2 of 2 combinations of 1 parameter covered by 2 variants"));
    EXPECT_THAT(RunTavrel({"vary", "show", plan, "1"}).out, HasSubstr("75 mph"));
}

TEST_F(VaryTest, TheEndsOfADeclarationInAnotherUnitCanBeHad) {
    std::string text = readFile(sampleFolder() + "/packs/road/data/scenario/" + kOvertaking);
    const auto declare = [&](const std::string& name, const std::string& range, const std::string& unit) {
        text.insert(text.rfind("  </Scenario>"), "<VariadicParameter><name>" + name +
                                                     "</name><parameterId>/sce/Scenario/Weather/" + name +
                                                     "</parameterId><RealParameter><default>0</default><RealRange>" +
                                                     range + "</RealRange></RealParameter><parameterUnit>" + unit +
                                                     "</parameterUnit></VariadicParameter>\n");
    };
    declare("windSpeed", "<minimum>0</minimum><maximum>37</maximum>", "km/h");   // the file: m/s
    declare("temperature", "<minimum>0</minimum><maximum>97</maximum>", "degF"); // the file: degC
    std::ofstream(folder / "ends.sce", std::ios::binary) << text;
    const std::string plan = (folder / "ends.json").string();
    const auto lines = [&](const std::string& parameters) {
        std::ofstream(plan) << R"({"format": "tavrel-plan/1", "scenario": "ends.sce", "method": {"name": "grid"},
            "parameters": {)"
                            << parameters << "}}";
        const Result list = RunTavrel({"vary", "list", plan, "--format", "jsonl"});
        EXPECT_EQ(list.status, 0) << list.err;
        return Lines(list.out);
    };
    const std::string wind = "/sce/Scenario/Weather/windSpeed";
    const auto byId = lines(
        "\"" + wind + R"(": {"count": 2}, "/sce/Scenario/Weather/temperature": {"values": ["0 degF", "97 degF"]})");
    ASSERT_EQ(byId.size(), 4u);
    EXPECT_EQ(byId[3]["values"][wind], "10.2777777778");
    EXPECT_EQ(byId[0]["values"]["/sce/Scenario/Weather/temperature"], "-17.7777777778");
    // Each value is read as run reads it.
    const Result write = RunTavrel({"vary", "write", plan, "--output", (folder / "out").string()});
    EXPECT_EQ(write.status, 0) << write.err;
    // The other way round: what is written in the file's unit is the declared end.
    const auto byName = lines(R"("windSpeed": {"values": ["10.2777777778 m/s"]})");
    ASSERT_EQ(byName.size(), 1u);
    EXPECT_EQ(byName[0]["values"][wind], "37 km/h");
    std::ofstream(plan) << R"({"format": "tavrel-plan/1", "scenario": "ends.sce",
        "parameters": {"windSpeed": {"values": ["10.2777777779 m/s"]}}})";
    EXPECT_EQ(RunTavrel({"vary", "count", plan}).status, 2);
}

TEST_F(VaryTest, IntegersThatTheFileCannotStoreAreRefused) {
    std::string text = readFile(sampleFolder() + "/packs/road/data/scenario/" + kOvertaking);
    text.insert(text.rfind("  </Scenario>"),
                "<VariadicParameter><name>Mass</name><parameterId>/sce/Scenario/Vehicle[id/@ScenarioTreeValue=3]/mass"
                "</parameterId><IntegerParameter><default>1000</default><IntegerRange><minimum>1000</minimum>"
                "<maximum>3001</maximum></IntegerRange></IntegerParameter><parameterUnit>g</parameterUnit>"
                "</VariadicParameter>\n"); // the file: kg
    std::ofstream(folder / "grams.sce", std::ios::binary) << text;
    const std::string plan = (folder / "grams.json").string();
    const auto list = [&](const std::string& method, const std::string& mass) {
        std::ofstream(plan) << R"({"format": "tavrel-plan/1", "scenario": "grams.sce", "method": {"name": ")" << method
                            << R"(}, "parameters": {"Mass": {)" << mass << "}}}";
        return RunTavrel({"vary", "list", plan});
    };
    EXPECT_EQ(list("grid\"", "\"step\": 1000").out, "number  Mass\n0       1000 g\n1       2000 g\n2       3000 g\n");
    const char* const kTail = " would not read back as itself";
    const struct {
        const char* method;
        const char* mass;
        const char* value;
    } rows[] = {{"grid\"", "\"count\": 2", "3001 g"},
                {"boundary\"", "", "1001 g"},
                {"random\", \"count\": 1", "", "1001 g"},
                {"sobol\", \"count\": 1", R"("distribution": {"name": "normal", "expectedValue": 2000, "variance": 4})",
                 "1001 g"}};
    for (const auto& row : rows) {
        const Result refused = list(row.method, row.mass);
        EXPECT_EQ(refused.status, 2) << row.method << refused.out;
        EXPECT_THAT(refused.err, HasSubstr(std::string("parameters/Mass: \"") + row.value)) << row.method;
        EXPECT_THAT(refused.err, HasSubstr(kTail));
    }
    const Result starter = RunTavrel({"vary", "plan", "--configuration", "Highway", (folder / "grams.sce").string()});
    EXPECT_THAT(starter.err, HasSubstr("Mass is left out: "));
    EXPECT_FALSE(Json::parse(starter.out)["parameters"].contains("Mass"));
}

TEST_F(VaryTest, ValuesAndRowsCountOnceInTheirOrder) {
    Json values = Json::array(), rows = Json::array();
    for (int i = 0; i < 6; ++i) {
        const int mixed = i * 5 % 4; // 0 1 2 3 0 1
        values.push_back("place " + std::to_string(3 - mixed));
        rows.push_back({std::to_string(mixed / 2), i == 5 ? "1.0" : std::to_string(mixed % 2)});
    }
    EXPECT_THAT(Values(R"("method": {"name": "grid"}, "parameters": {"/sce/Scenario/Road/name": {"values": )" +
                           values.dump() + "}}",
                       "/sce/Scenario/Road/name"),
                ElementsAre("place 3", "place 2", "place 1", "place 0"));
    EXPECT_THAT(Values(R"("method": {"name": "grid"}, "parameters": {}, "linked": [{"parameters":
                          ["/sce/Scenario/duration", "/sce/Scenario/Weather/rain"], "rows": )" +
                           rows.dump() + "}]",
                       "/sce/Scenario/duration"),
                ElementsAre("0", "0", "1", "1"));
}

TEST_F(VaryTest, EveryDeclarationOfAParameterBinds) {
    std::string text = readFile(sampleFolder() + "/packs/road/data/scenario/" + kOvertaking);
    const auto declare = [&](const std::string& id, const std::string& typed) {
        text.insert(text.rfind("  </Scenario>"), "<VariadicParameter><name>Again</name><parameterId>" + id +
                                                     "</parameterId>" + typed + "</VariadicParameter>\n");
    };
    declare(kTruck, "<RealParameter><default>18</default><RealRange><minimum>18</minimum><maximum>22</maximum>"
                    "</RealRange></RealParameter><parameterUnit>m/s</parameterUnit>");
    std::ofstream(folder / "twice.sce", std::ios::binary) << text;
    const std::string plan = (folder / "twice.json").string();
    std::ofstream(plan) << R"({"format": "tavrel-plan/1", "scenario": "twice.sce", "method": {"name": "grid"},
        "parameters": {"Truck speed": {"step": "4"}}})";
    const Result list = RunTavrel({"vary", "list", plan});
    // 18 to 22 m/s are 64.8 to 79.2 km/h, and a gap is left from 70 to 75.
    EXPECT_EQ(list.out, "number  Truck speed\n0       64.8\n1       68.8\n2       75\n3       79\n") << list.err;
}

TEST_F(VaryTest, AStarterPlanIsAPlan) {
    const Result starter = RunTavrel({"vary", "plan", "--configuration", "Highway", kOvertaking});
    ASSERT_EQ(starter.status, 0) << starter.err;
    std::ofstream(folder / "starter.json") << starter.out;
    EXPECT_EQ(RunTavrel({"vary", "count", (folder / "starter.json").string()}).status, 0);
    EXPECT_THAT(starter.err, HasSubstr("Surface is left out"));
    const Result judged =
        RunTavrel({"vary", "plan", "--configuration", "Highway", kOvertaking, "--expect", "never fired(8)"});
    EXPECT_EQ(Json::parse(judged.out)["criteria"], Json::array({"never fired(8)"}));
    EXPECT_EQ(RunTavrel({"vary", "plan", "--configuration", "Highway", kOvertaking, "--expect", "never"}).status, 2);
}

TEST_F(VaryTest, RefusalsNameTheirPlace) {
    const struct {
        const char* members;
        const char* refusal;
    } rows[] = {
        {R"("seed": 1)",
         "parameters: missing, and not every declaration can vary: declaration \"Surface\", whose id is "},
        {R"("parameters": {"Fog": {"stepp": 5}})", "parameters/Fog/stepp: unknown, did you mean step"},
        {R"("metod": {})", "metod: unknown, did you mean method"},
        {R"("method": {"name": "gird"})", "method/name: \"gird\" is unknown, did you mean grid"},
        {R"("method": {"name": "random"})", "method/count: missing"},
        {R"("method": {"name": "random", "count": 0})", "method/count: must be from 1 to 9007199254740991"},
        {R"("method": {"name": "cover", "strength": 7})", "method/strength: must be from 1 to 6"},
        {R"("method": {"name": "grid", "count": 3})", "method/count: unknown"},
        {R"("seed": -1)", "seed: must be from 0 to 18446744073709551615"},
        {R"("seed": "1")", "seed: must be a whole number, not a text"},
        {R"("seed": 1, "seed": 2)", "seed: is there twice"},
        {R"("parameters": [])", "parameters: must be an object, not a list"},
        {R"("parameters": {"Fogg": {}})", "parameters/Fogg: "},
        {R"("parameters": {"Fog": {}, "#2": {}})", "parameters/#2: is the same parameter as parameters/Fog"},
        {R"("parameters": {"Truck speed": {"range": ["80", "60"]}})",
         "parameters/Truck speed/range: the range from 80 to 60 has its ends the wrong way round"},
        {R"("parameters": {"Truck speed": {"range": ["60", "80"]}})",
         "parameters/Truck speed/range: the range from 60 to 80 does not lie within what is declared, 50 to 70 or 75 "
         "to 90"},
        {R"("parameters": {"Truck speed": {"values": ["72"]}})", "parameters/Truck speed/values/0: "},
        {R"("parameters": {"Truck speed": {"step": 0}})", "parameters/Truck speed/step: must be greater than 0"},
        {R"("method": {"name": "grid"}, "parameters": {"Truck speed": {}})",
         "parameters/Truck speed: is real; add step, count or values"},
        {R"("method": {"name": "grid"}, "parameters": {"Truck speed": {"count": 3, "distribution": {"name": "uniform"}}})",
         "parameters/Truck speed/distribution: grid takes a list of values; random, latin-hypercube and sobol take a "
         "distribution"},
        {R"("method": {"name": "random", "count": 3}, "parameters": {"Truck speed": {"distribution": {"name": "normal", "expectedValue": 60}}})",
         "parameters/Truck speed/distribution/variance: missing"},
        {R"("method": {"name": "random", "count": 3}, "parameters": {"Fog": {"distribution": {"name": "poisson", "expectedValue": 60}}})",
         "parameters/Fog/distribution: a boolean takes uniform or probability-set"},
        {R"("method": {"name": "latin-hypercube", "count": 3}, "parameters": {"Fog": {}}, "constraints": ["[Fog] = \"true\";"])",
         "constraints: latin-hypercube takes none"},
        {R"("parameters": {"Fog": {}}, "constraints": ["[Foq] = \"true\";"])",
         "constraints/0: column 1: [Foq] is no parameter of the plan, did you mean [Fog]"},
        {R"("method": {"name": "grid"}, "parameters": {"Fog": {}}, "constraints": ["[Fog] = \"maybe\";"])",
         "constraints: no variant is allowed"},
        {R"("method": {"name": "random", "count": 3}, "parameters": {"Truck speed": {"decimals": 9}}, "constraints": ["[Truck speed] = 50;"])",
         "constraints: no variant is allowed"},
        {R"("linked": [{"parameters": ["Fog"], "rows": [["true", "1"]]}])",
         "linked/0/rows/0: must have 1 values, one for each parameter, not 2"},
        {R"("include": [{"Truck speed": "10"}], "parameters": {"Truck speed": {}})", "include/0/Truck speed: "},
        {R"("criteria": ["never fired("], "parameters": {"Fog": {}})", "criteria/0: "},
        {R"("repetitions": 9007199254740991, "method": {"name": "grid"}, "parameters": {"Fog": {}})",
         "method: makes 2^53 variants or more, which is too many to number"},
        {R"("method": {"name": "list"}, "parameters": {"Fog": {}})", "method/rows: missing"},
    };
    for (const auto& row : rows) EXPECT_THAT(Refusal(row.members), testing::StartsWith(row.refusal)) << row.members;
    std::ofstream(folder / "broken.json") << "{\"format\": \"tavrel-plan/1\",\n \"scenario\": }";
    const Result broken = RunTavrel({"vary", "count", (folder / "broken.json").string()});
    EXPECT_EQ(broken.status, 2);
    EXPECT_THAT(broken.err, HasSubstr("line 2, column 14: is no JSON"));
    EXPECT_EQ(RunTavrel({"vary", "count", (folder / "none.json").string()}).status, 3);
}

TEST_F(VaryTest, TheSubCommandsSayWhatIsMissingOrTooMuch) {
    const std::string grid = PlanWith(R"("method": {"name": "grid"}, "parameters": {"Truck speed": {"count": 2}})"),
                      big = (folder / "big.json").string(), runs = (folder / "runs.jsonl").string(),
                      bad = (folder / "bad.jsonl").string();
    std::ofstream(big) << R"({"format": "tavrel-plan/1", "scenario": "motorway/Emergency braking.sce",
        "configuration": "Highway", "method": {"name": "grid"}, "constraints": ["[Gap] > 15;"],
        "parameters": {"Gap": {"count": 100000}, "Deceleration": {"count": 100000}}})";
    std::ofstream(runs) << "{\"number\": 1}\n";
    std::ofstream(bad) << "\n{\"values\": {\"" << kTruck << "\": \"fast\"}}\n";
    const struct {
        std::vector<std::string> arguments;
        int status;
        std::string sentence;
    } rows[] = {
        {{"vary", "show", grid, "x"}, 2, "N must be the number of a variant, 0 or more, not \"x\""},
        {{"vary", "show", grid, "2"}, 2, "there is no variant 2; the numbers end before 2"},
        {{"vary", "write", grid}, 2, "--output names the folder to write to; it is missing"},
        {{"vary", "coverage", grid, "--strength", "7"}, 2, "--strength is from 1 to 6, not 7"},
        {{"vary", "coverage", grid, "--runs", runs}, 3, runs + ":1: the line is no object with \"values\""},
        {{"vary", "coverage", grid, "--runs", bad}, 3, bad + ":2: " + kTruck + " has a value that it cannot have: "},
        {{"vary", "coverage", big}, 2, "method: makes too many variants to look at them all; write some with list"},
        {{"vary", "count", big}, 0, "the constraints may allow fewer; so many are not counted one by one"},
    };
    for (const auto& row : rows) {
        const Result result = RunTavrel(row.arguments);
        EXPECT_EQ(result.status, row.status) << row.sentence << result;
        EXPECT_THAT(result.err, HasSubstr(row.sentence));
    }
}

} // namespace
