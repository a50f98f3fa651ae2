#include <fstream>
#include <map>
#include <optional>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/InstallationBuilder.h>

#include "CommandRunner.h"

// The small world behind the CODE numbers of the sample's root model, seen through scripts that use it.

namespace {

std::string block(const std::string& header, const std::string& content) {
    return "TYPEOF " + header + "\n{\n" + content + "}\n";
}

std::string attribute(const std::string& key, const std::string& value) { return key + "=\"" + value + "\"\n"; }

// How the script gives a parameter of that name: names in capitals are entries of an enumeration.
std::string kindOf(const std::string& parameter, const std::string& value) {
    static const std::map<std::string, std::string> kinds = {
        {"VHL_NUMBER", "VEHICLE"},
        {"OTHER_VHL_NUMBER", "VEHICLE"},
        {"STATE", "TASK"},
        {"TASK_NUMBER", "TASK"},
        {"VHL_INPUT", "VHC_INPUT"},
        {"VHL_OUTPUT", "VHC_OUTPUT"},
        {"CHANNEL_ID", "EXPORT_CHANNEL"},
        {"TRIGGER_NAME", "TRIGGER"},
        {"OBJECT_REFERENCE", "OBJECT"},
        {"DRIVER_NAME", "DRIVER"},
        {"PROFILE_FILE", "FILE"},
        {"CHANNEL_CATEGORY", "EXPORT_CHANNEL_CATEGORY"},
        {"BARRIER_NUMBER", "BARRIER"},
        {"CHANNEL_KEY", "EXPORT_CHANNEL_NAME"},
        {"ROADSIGN_NUMBER", "ROADSIGN"},
        {"TRAFFIC_LIGHT_NUMBER", "TRAFFIC_LIGHT"},
    };
    if (parameter.ends_with("_REF")) return "VARIABLE";
    if (const auto kind = kinds.find(parameter); kind != kinds.end()) return kind->second;
    return value[0] >= 'A' && value[0] <= 'Z' ? "ENUM" : "USER";
}

std::string argument(const std::string& name, const std::string& kind, const std::string& value) {
    return block("PARAMETER (" + name + ")", attribute("KIND", kind) + value);
}

// A call as "NAME PARAMETER=value PARAMETER=value"; `last` is a further argument.
std::string call(const std::string& kind, const std::string& text, const std::string& last = "") {
    std::istringstream words(text);
    std::string name, word, arguments;
    for (words >> name; words >> word;) {
        const std::string parameter = word.substr(0, word.find('='));
        const std::string value = word.substr(parameter.size() + 1);
        arguments += argument(parameter, kindOf(parameter, value), attribute("VALUE", value));
    }
    return block(kind + " (" + name + ")", arguments + last);
}

std::string actions(std::initializer_list<const char*> texts) {
    std::string all;
    for (const char* text : texts) all += call("ACTION", text);
    return all;
}

// What happens once, at the first step.
std::string once(const std::string& content) {
    return block("RULE (1)", block("CONDITION (ALWAYS)", attribute("MODIFIER", "BECOMES_TRUE")) + content);
}

std::string variable(int number, const std::string& type, const std::string& value) {
    return block("VARIABLE (" + std::to_string(number) + ")", attribute("TYPE", type) + attribute("VALUE", value));
}

struct Value {
    const char* function;
    const char* value;
};

class BuiltinTest : public testing::Test {
protected:
    std::string trace(const std::string& content, const std::string& until, const std::string& form,
                      const std::vector<std::string>& options = {}) {
        const std::string script = block("SCENARIO (1)", content);
        std::vector<std::string> arguments{
            "run",
            around ? folder.write("a.sce", around->script("main", script).file()) : folder.write("script.sc", script),
            "--model",
            TAVREL_SAMPLE "/packs/common/data/tools/nuro/nuro.mdl",
            "--trace",
            form,
            "--until",
            until};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const Result result = run(arguments);
        EXPECT_EQ(result.status, 0) << result;
        EXPECT_EQ(result.err, "");
        return result.out;
    }
    std::vector<nlohmann::json> events(const std::string& content, const std::string& until,
                                       const std::vector<std::string>& options = {}) {
        std::istringstream lines(trace(content, until, "json", options));
        std::vector<nlohmann::json> all;
        for (std::string line; std::getline(lines, line);) all.push_back(nlohmann::json::parse(line));
        return all;
    }
    // When the rule of that name first became true; nothing if it never did.
    static std::optional<double> firstTime(const std::vector<nlohmann::json>& all, const std::string& rule) {
        for (const nlohmann::json& event : all)
            if (event.value("rule", "") == rule && event.value("value", false)) return event["time"];
        return std::nullopt;
    }

    BuiltinTest() { run.common = {"--config", sampleFile()}; }

    // Each of these functions gives that value once `world` is as it is.
    void expectValues(const std::vector<Value>& rows, const std::string& world) {
        std::string variables = variable(50, "FLOAT", "2.5"), questions;
        int number = 100;
        for (const Value& row : rows) {
            variables += variable(number, "FLOAT", "unset");
            questions += call("ACTION", "SET_VARIABLE VARIABLE_REF=" + std::to_string(number++),
                              argument("VALUE_B", "FUNCTION", call("FUNCTION", row.function)));
        }
        std::map<std::string, std::string> found;
        for (const nlohmann::json& event :
             events(variables + once(world + questions) + block("EVALUATION (1)", ""), "0"))
            if (event["event"] == "variable") found[event["variable"]] = event["to"];
        number = 100;
        for (const Value& row : rows) EXPECT_EQ(found[std::to_string(number++)], row.value) << row.function;
    }

    std::optional<SectionText> around; // the scenario that the script stands in, if any
    InstallationBuilder folder;        // for its folder alone
    CommandRunner run;
};

// Something of everything that functions and conditions ask for.
const std::string kWorld = actions({
    "SET_VHL_POSITION VHL_NUMBER=2 MAP_X=30 MAP_Y=40 HEADING=90",
    "SET_VHL_SPEED VHL_NUMBER=2 SPEED=4",
    "SET_VHL_POSITION VHL_NUMBER=3 MAP_X=10 MAP_Y=40 HEADING=0",
    "SET_VHL_SPEED VHL_NUMBER=3 SPEED=14",
    "SET_VHL_POSITION VHL_NUMBER=4 MAP_X=30 MAP_Y=41 HEADING=0",
    "REMOVE_VHL VHL_NUMBER=4",
    "SET_GEAR VHL_NUMBER=3 GEAR=GEAR_2",
    "SET_VHL_LANE VHL_NUMBER=3 LANE=LANE_MIDDLE",
    "SET_VHL_INPUT VHL_NUMBER=3 VHL_INPUT=1 INPUT_VALUE=0.5",
    "SET_VHL_INDICATOR VHL_NUMBER=3 SIDE=SIDE_LEFT",
    "SET_VHL_LIGHT VHL_NUMBER=3 LIGHT=LIGHT_FOG_REAR ENABLED=YES",
    "SET_VHL_LIGHT VHL_NUMBER=3 LIGHT=LIGHT_BLUE ENABLED=YES",
    "SET_VHL_LIGHT VHL_NUMBER=3 LIGHT=LIGHT_BLUE ENABLED=NO",
    "SET_RAIN INTENSITY=0.25",
    "SET_WIND WIND_SPEED=7 HEADING=0",
    "SET_FRICTION FRICTION=FRICTION_WET",
    "SET_WEATHER WEATHER=WEATHER_FOG",
    "SET_DAY_HOUR DAY_HOUR=DUSK",
    "SET_TRAFFIC_LIGHT TRAFFIC_LIGHT_NUMBER=5 LIGHT_COLOUR=COLOUR_AMBER",
    "SET_BARRIER BARRIER_NUMBER=6 ENABLED=YES",
    "SET_SCORE SCORE_NUMBER=1 POINTS=3",
    "ADD_TO_SCORE SCORE_NUMBER=1 POINTS=0.5",
    "EVALUATION_ADD_POINTS SCORE_NUMBER=1 POINTS=1",
    "EVALUATION_ADD_ERROR LEVEL=LEVEL_SLIGHT COMMENT=late",
    "SET_EXPORTED_CHANNEL CHANNEL_ID=4 INPUT_VALUE=8",
    "SET_CHANNEL CHANNEL_CATEGORY=car CHANNEL_KEY=rpm INPUT_VALUE=9",
    "MOVE_OBJECT OBJECT_REFERENCE=tree#1 MAP_X=10 MAP_Y=45",
    "FIRE_TRIGGER TRIGGER_NAME=gate",
    "FIRE_TRIGGER TRIGGER_NAME=door",
    "ARM_TRIGGER TRIGGER_NAME=door",
    "SET_DRIVER_STYLE DRIVER_NAME=Anna DRIVER_STYLE=STYLE_HASTY",
    "START_TIMER TIMER_NUMBER=7",
});

TEST_F(BuiltinTest, FunctionsGiveWhatTheirTableSays) {
    const std::vector<Value> rows = {
        {"PLUS VALUE_A=1.5 VALUE_B=2", "3.5"},
        {"MINUS VALUE_A=1.5 VALUE_B=2", "-0.5"},
        {"MULTIPLY VALUE_A=1.5 VALUE_B=-2", "-3"},
        {"DIVIDE VALUE_A=3 VALUE_B=2", "1.5"},
        {"DIVIDE VALUE_A=3 VALUE_B=0", "0"},
        {"MODULO VALUE_A=-7 VALUE_B=3", "-1"},
        {"MODULO VALUE_A=7 VALUE_B=0", "0"},
        {"ABSOLUTE INPUT_VALUE=-4", "4"},
        {"MINIMUM VALUE_A=1 VALUE_B=2", "1"},
        {"MAXIMUM VALUE_A=1 VALUE_B=2", "2"},
        {"LIMIT INPUT_VALUE=9 LOW_VALUE=1 HIGH_VALUE=5", "5"},
        {"LIMIT INPUT_VALUE=-9 LOW_VALUE=1 HIGH_VALUE=5", "1"},
        {"ROUND INPUT_VALUE=2.5", "3"},
        {"SQUARE_ROOT INPUT_VALUE=16", "4"},
        {"SQUARE_ROOT INPUT_VALUE=-16", "0"},
        {"POWER VALUE_A=2 VALUE_B=10", "1024"},
        {"INTERPOLATE X_VALUE=3 X_FROM=2 Y_FROM=10 X_TO=4 Y_TO=20", "15"},
        {"INTERPOLATE X_VALUE=9 X_FROM=2 Y_FROM=10 X_TO=4 Y_TO=20", "20"},
        {"INTERPOLATE X_VALUE=9 X_FROM=4 Y_FROM=10 X_TO=4 Y_TO=20", "10"},
        {"RANDOM LOW_VALUE=3 HIGH_VALUE=3", "3"},
        {"RANDOM_INTEGER LOW_VALUE=4 HIGH_VALUE=4", "4"},
        {"GET_EGO_NUMBER", "2"},
        {"GET_VHL_SPEED VHL_NUMBER=3", "14"},
        {"GET_VHL_X VHL_NUMBER=2", "30"},
        {"GET_VHL_Y VHL_NUMBER=2", "40"},
        {"GET_VHL_HEADING VHL_NUMBER=2", "90"},
        {"GET_VHL_LANE VHL_NUMBER=3", "2"},
        {"GET_VHL_ROAD_POSITION VHL_NUMBER=2", "30"},
        {"GET_DISTANCE_BETWEEN VHL_NUMBER=3 OTHER_VHL_NUMBER=2", "20"},
        {"GET_TIME_HEADWAY VHL_NUMBER=3 OTHER_VHL_NUMBER=2", "1.4285715"},
        {"GET_TIME_HEADWAY VHL_NUMBER=0 OTHER_VHL_NUMBER=1", "60"},
        {"GET_TIME_TO_COLLISION VHL_NUMBER=3 OTHER_VHL_NUMBER=2", "2"},
        {"GET_TIME_TO_COLLISION VHL_NUMBER=2 OTHER_VHL_NUMBER=3", "60"},
        {"GET_VHL_GEAR VHL_NUMBER=3", "2"},
        {"GET_VHL_ENGINE_SPEED VHL_NUMBER=3", "2650"},
        {"GET_VHL_INPUT VHL_NUMBER=3 VHL_INPUT=1", "0.5"},
        {"COUNT_VHL_AROUND VHL_NUMBER=2 MAP_RADIUS=20", "1"},
        {"COUNT_VHL_AROUND VHL_NUMBER=2 MAP_RADIUS=19.9", "0"},
        {"GET_SPEED_LIMIT VHL_NUMBER=0", "13.888889"},
        {"GET_VISIBILITY", "10000"},
        {"GET_RAIN", "0.25"},
        {"GET_WIND_SPEED", "7"},
        {"GET_FRICTION", "0.7"},
        {"GET_DAY_HOUR", "19.5"},
        {"GET_TRAFFIC_LIGHT TRAFFIC_LIGHT_NUMBER=5", "2"},
        {"GET_BARRIER BARRIER_NUMBER=6", "1"},
        {"GET_SCORE SCORE_NUMBER=1", "4.5"},
        {"GET_ERROR_COUNT", "1"},
        {"GET_STATE TASK_NUMBER=99", "-1"},
        {"GET_EXPORTED_CHANNEL CHANNEL_ID=4", "8"},
        {"GET_CHANNEL CHANNEL_CATEGORY=car CHANNEL_KEY=rpm", "9"},
        {"GET_VARIABLE VARIABLE_REF=50", "2.5"},
    };
    expectValues(rows, kWorld);
}

TEST_F(BuiltinTest, TheWorldBeginsAsTheScenarioFileSays) {
    around =
        SectionText("Scenario")
            .section(SectionText("Driver").parameter("id", "1").parameter("name", "Anna").parameter("attention", "0.5"))
            .section(SectionText("Vehicle")
                         .parameter("id", "3")
                         .parameter("initialSpeed", "9", "real", "m/s")
                         .parameter("lane", "2", "integer")
                         .parameter("roadPosition", "70", "real", "m")
                         .parameter("y", "4", "real", "m")
                         .section(SectionText("Output").parameter("name", "fuel"))
                         .section(SectionText("Output").parameter("name", "speed")))
            .section(SectionText("Vehicle").parameter("id", "4").parameter("x", "80", "real", "m"))
            .section(
                SectionText("Weather").parameter("rain", "0.25").parameter("hour", "7.5").parameter("windSpeed", "3"))
            .section(SectionText("Road")
                         .section(SectionText("TrafficLight").parameter("number", "2").parameter("colour", "amber"))
                         .section(SectionText("Barrier").parameter("number", "5").parameter("closed", "1")));
    expectValues({{"GET_VHL_SPEED VHL_NUMBER=3", "9"},
                  {"GET_VHL_OUTPUT VHL_NUMBER=3 VHL_OUTPUT=1", "9"},
                  {"GET_VHL_OUTPUT VHL_NUMBER=3 VHL_OUTPUT=0", "0"},
                  {"GET_VHL_LANE VHL_NUMBER=3", "2"},
                  {"GET_VHL_X VHL_NUMBER=3", "70"},
                  {"GET_VHL_Y VHL_NUMBER=3", "4"},
                  {"GET_VHL_X VHL_NUMBER=4", "80"},
                  {"GET_VHL_LANE VHL_NUMBER=4", "1"},
                  {"GET_ATTENTION DRIVER_NAME=Anna", "0.5"},
                  {"GET_RAIN", "0.25"},
                  {"GET_DAY_HOUR", "7.5"},
                  {"GET_WIND_SPEED", "3"},
                  {"GET_TRAFFIC_LIGHT TRAFFIC_LIGHT_NUMBER=2", "2"},
                  {"GET_BARRIER BARRIER_NUMBER=5", "1"}},
                 "");
}

TEST_F(BuiltinTest, ActionsChangeVariables) {
    const std::string changes = actions({
        "ADD_TO_VARIABLE VARIABLE_REF=1 VALUE_B=0.5",
        "MULTIPLY_VARIABLE VARIABLE_REF=1 VALUE_B=4",
        "SET_FLAG BOOL_VARIABLE_REF=2 ENABLED=1",
        "TOGGLE_FLAG BOOL_VARIABLE_REF=3",
        "SET_INTEGER_VARIABLE INTEGER_VARIABLE_REF=4 VALUE_B=-7.9",
        "SET_TEXT_VARIABLE TEXT_VARIABLE_REF=5 TEXT_B=grün,links",
        "SET_VARIABLE VARIABLE_REF=6 VALUE_B=9",
        "RESET_VARIABLE VARIABLE_REF=6",
    });
    std::map<std::string, std::string> found;
    for (const nlohmann::json& event : events(
             variable(1, "FLOAT", "1") + variable(2, "BOOL", "0") + variable(3, "BOOL", "1") +
                 variable(4, "INTEGER", "0") + variable(5, "STRING", "rot") + variable(6, "FLOAT", "3") + once(changes),
             "0"))
        if (event["event"] == "variable") found[event["variable"]] = event["to"];
    const std::map<std::string, std::string> expected{
        {"1", "6"}, {"2", "1"}, {"3", "0"}, {"4", "-7"}, {"5", "grün,links"}};
    EXPECT_EQ(found, expected) << "number 6 is back at its beginning, so nothing is told of it";
}

// A rule for each condition, with numbers from 100 on.
template <typename Rows>
std::string rulesOf(const Rows& rows) {
    std::string rules;
    int number = 100;
    for (const auto& row : rows)
        rules += block("RULE (" + std::to_string(number++) + ")", call("CONDITION", row.condition));
    return rules;
}

TEST_F(BuiltinTest, ConditionsSeeTheWorld) {
    const struct {
        const char* condition;
        bool isTrue;
    } rows[] = {
        {"EQUAL VALUE_A=1 VALUE_B=1", true},
        {"EQUAL VALUE_A=1 VALUE_B=2", false},
        {"NOTEQUAL VALUE_A=1 VALUE_B=1", false},
        {"INFERIOR VALUE_A=1 VALUE_B=1", false},
        {"INFERIOR VALUE_A=1 VALUE_B=2", true},
        {"INFEQUAL VALUE_A=1 VALUE_B=1", true},
        {"INFEQUAL VALUE_A=2 VALUE_B=1", false},
        {"SUPERIOR VALUE_A=1 VALUE_B=1", false},
        {"SUPERIOR VALUE_A=2 VALUE_B=1", true},
        {"SUPEQUAL VALUE_A=1 VALUE_B=1", true},
        {"SUPEQUAL VALUE_A=1 VALUE_B=2", false},
        {"IS_BETWEEN INPUT_VALUE=1 LOW_VALUE=1 HIGH_VALUE=2", true},
        {"IS_BETWEEN INPUT_VALUE=2 LOW_VALUE=1 HIGH_VALUE=2", true},
        {"IS_BETWEEN INPUT_VALUE=2.5 LOW_VALUE=1 HIGH_VALUE=2", false},
        {"CHANCE PROBABILITY=0", false},
        {"CHANCE PROBABILITY=100", true},
        {"IS_VHL_STOPPED VHL_NUMBER=3", false},
        {"IS_VHL_SLOWER VHL_NUMBER=3 SPEED=14", false},
        {"IS_VHL_SLOWER VHL_NUMBER=3 SPEED=14.1", true},
        {"IS_VHL_BEHIND VHL_NUMBER=3 OTHER_VHL_NUMBER=2", true},
        {"IS_VHL_BEHIND VHL_NUMBER=2 OTHER_VHL_NUMBER=3", false},
        {"IS_VHL_CLOSER VHL_NUMBER=2 OTHER_VHL_NUMBER=3 DISTANCE=20", false},
        {"IS_VHL_CLOSER VHL_NUMBER=2 OTHER_VHL_NUMBER=3 DISTANCE=20.1", true},
        {"IS_VHL_INDICATING VHL_NUMBER=3 SIDE=SIDE_LEFT", true},
        {"IS_VHL_INDICATING VHL_NUMBER=3 SIDE=SIDE_BOTH", false},
        {"IS_VHL_LIGHT_ON VHL_NUMBER=3 LIGHT=LIGHT_FOG_REAR", true},
        {"IS_VHL_LIGHT_ON VHL_NUMBER=3 LIGHT=LIGHT_BLUE", false},
        {"HAS_VHL_COLLIDED VHL_NUMBER=3", false},
        {"IS_TRAFFIC_LIGHT TRAFFIC_LIGHT_NUMBER=5 LIGHT_COLOUR=COLOUR_AMBER", true},
        {"IS_TRAFFIC_LIGHT TRAFFIC_LIGHT_NUMBER=5 LIGHT_COLOUR=COLOUR_RED", false},
        {"IS_BARRIER_CLOSED BARRIER_NUMBER=6", true},
        {"IS_BARRIER_CLOSED BARRIER_NUMBER=7", false},
        {"IS_OBJECT_NEAR VHL_NUMBER=3 OBJECT_REFERENCE=tree DISTANCE=5.1", true},
        {"IS_OBJECT_NEAR VHL_NUMBER=3 OBJECT_REFERENCE=tree DISTANCE=5", false},
        {"IS_TRIGGER_FIRED TRIGGER_NAME=gate", true},
        {"IS_TRIGGER_FIRED TRIGGER_NAME=door", false},
        {"IS_WEATHER WEATHER=WEATHER_FOG", true},
        {"IS_WEATHER WEATHER=WEATHER_CLEAR", false},
        {"IS_NIGHT", false},
        {"IS_DRIVER_STYLE DRIVER_NAME=Anna DRIVER_STYLE=STYLE_HASTY", true},
        {"IS_DRIVER_STYLE DRIVER_NAME=Anna DRIVER_STYLE=STYLE_CALM", false},
        {"EVALUATION_SPEED_ABOVE VHL_NUMBER=3 SPEED=13.9", true},
        {"EVALUATION_SPEED_ABOVE VHL_NUMBER=3 SPEED=14", false},
        {"EVALUATION_OFF_LANE VHL_NUMBER=3 LANE=LANE_MIDDLE", false},
        {"EVALUATION_OFF_LANE VHL_NUMBER=3 LANE=LANE_RIGHT", true},
        {"EVALUATION_HEADWAY_BELOW VHL_NUMBER=3 OTHER_VHL_NUMBER=2 HEADWAY=1.5", true},
        {"EVALUATION_HEADWAY_BELOW VHL_NUMBER=3 OTHER_VHL_NUMBER=2 HEADWAY=1.4", false},
        {"EVALUATION_SCORE_BELOW SCORE_NUMBER=1 POINTS=4.5", false},
        {"EVALUATION_SCORE_BELOW SCORE_NUMBER=1 POINTS=4.6", true},
    };
    const auto all = events(once(kWorld) + rulesOf(rows) + block("EVALUATION (1)", ""), "0");
    int number = 100;
    for (const auto& row : rows)
        EXPECT_EQ(firstTime(all, std::to_string(number++)).has_value(), row.isTrue) << row.condition;
}

TEST_F(BuiltinTest, ConditionsComeTrueWhenTheMotionSaysSo) {
    // From a stand at 2 m/s2 up to 20 m/s; the other one drives 20 m/s ahead of it from the place 0, with a lane
    // change.
    const std::string start = actions({
        "SET_VHL_TARGET_SPEED VHL_NUMBER=0 SPEED=20 ACCELERATION=2",
        "SET_VHL_SPEED VHL_NUMBER=1 SPEED=20",
        "CHANGE_LANE VHL_NUMBER=1 SIDE=SIDE_LEFT CHANGE_TIME=3",
        "START_TIMER TIMER_NUMBER=7",
        "SET_VISIBILITY VISIBILITY=0 CHANGE_TIME=10",
        "SET_DAY_HOUR DAY_HOUR=20",
        "APPLY_PROFILE VHL_NUMBER=4 PROFILE_FILE=gentle_start.profile",
    });
    const struct {
        const char* condition;
        double time; // below 0 for never
    } rows[] = {
        {"IS_VHL_FASTER VHL_NUMBER=0 SPEED=10.05", 5.1},
        {"HAS_PASSED VHL_NUMBER=0 DISTANCE=99.99", 10},
        {"HAS_PASSED VHL_NUMBER=1 DISTANCE=99.99", 5},
        {"IS_VHL_ON_LANE VHL_NUMBER=1 LANE=2", 3},
        {"IS_VHL_AT_POSITION VHL_NUMBER=1 MAP_X=200 MAP_Y=0 MAP_RADIUS=1", 10},
        {"IS_VHL_IN_AREA VHL_NUMBER=1 AREA_X1=59.5 AREA_Y1=-1 AREA_X2=150 AREA_Y2=1", 3},
        {"IS_TIMER_ELAPSED TIMER_NUMBER=7 DELAY=4", 4},
        {"IS_TIME_AFTER SCENARIO_TIME=2.5", 2.5},
        {"WAIT DELAY=6", 6},
        {"EVERY PERIOD=2", 0},
        {"IS_VISIBILITY_BELOW VISIBILITY=5050", 5},
        {"IS_VHL_BRAKING VHL_NUMBER=0", -1},
        {"IS_KEY_PRESSED KEY=KEY_START", -1},
        {"IS_VHL_OVER_LIMIT VHL_NUMBER=0 TOLERANCE=10", 7.7},
        {"IS_NIGHT", 0},
        {"IS_VHL_FASTER VHL_NUMBER=4 SPEED=7.9", 9.9},
        {"IS_VHL_FASTER VHL_NUMBER=4 SPEED=13.89", 20}, // the last point of the profile holds from there on
    };
    const std::vector<nlohmann::json> all = events(once(start) + rulesOf(rows), "21", {"--configuration", "City"});
    int number = 100;
    for (const auto& row : rows) {
        const std::optional<double> time = firstTime(all, std::to_string(number++));
        EXPECT_NEAR(time.value_or(-1), row.time, 0.11) << row.condition;
    }
}

TEST_F(BuiltinTest, StatesAreLeftForSiblingsAndTasksEnd) {
    const auto task = [](int number, const char* condition, const char* action) {
        const std::string name = "(" + std::to_string(number) + ")";
        return block("TASK " + name, block("RULE " + name, call("CONDITION", condition) + call("ACTION", action)));
    };
    const std::string first = task(1, "WAIT DELAY=1", "NEXT_STATE STATE=2");
    const std::string second = task(2, "ALWAYS", "NEXT_STATE_AFTER STATE=3 DELAY=2");
    const std::string third = task(3, "WAIT DELAY=1", "STOP_SCENARIO");
    std::vector<std::pair<int, double>> states;
    const std::vector<nlohmann::json> all = events(first + second + third, "60");
    for (const nlohmann::json& event : all)
        if (event["event"] == "state") states.emplace_back(event["to"], event["time"]);
    ASSERT_EQ(states.size(), 3U);
    EXPECT_EQ(states[0].first, 1);
    EXPECT_EQ(states[1].first, 2);
    EXPECT_NEAR(states[1].second, 1.1, 0.11) << "a change takes effect at the next step";
    EXPECT_EQ(states[2].first, 3);
    EXPECT_NEAR(states[2].second, 3.2, 0.21);
    EXPECT_EQ(all.back()["stopped"], true);
    EXPECT_NEAR(all.back()["time"], 4.2, 0.31);
}

TEST_F(BuiltinTest, TheTraceIsWrittenInTwoForms) {
    const std::string script =
        variable(7, "FLOAT", "1") + block("EVALUATION (1)", "") +
        once(actions({"ADD_TO_VARIABLE VARIABLE_REF=7 VALUE_B=0.5", "SET_SCORE SCORE_NUMBER=1 POINTS=2",
                      "ATTACH_DRIVER VHL_NUMBER=2 DRIVER_NAME=Anna", "PAUSE_SCENARIO", "STOP_SCENARIO"})) +
        block("TASK (3)", attribute("LABEL", "Wait"));
    const std::string start = folder.path() + "/script.sc";
    EXPECT_EQ(trace(script, "1", "text"), "    0.000  start of " + start +
                                              R"(
    0.000  state of SCENARIO (1): none -> 3 "Wait"
    0.100  ATTACH_DRIVER "2" "Anna"
    0.100  rule 1 fired in SCENARIO (1)
    0.100  variable 7: 1 -> 1.5 in SCENARIO (1)
    0.100  score 1: 0 -> 2
    0.100  the scenario pauses
    0.100  the scenario stops
    0.100  end after 2 steps, 1 rule fired
scores:
  0: 0
  1: 2
)");
    const std::string version = run({"--version"}).out.substr(7, 5);
    const std::string json = trace(script, "1", "json");
    const std::string inputs = nlohmann::ordered_json::parse(json.substr(0, json.find('\n')))["inputs"].dump();
    EXPECT_EQ(
        json,
        R"json({"time":0.0,"event":"start","format":"tavrel-trace/1","tool":")json" + version +
            R"json(","scenario":")json" + start +
            R"json(","script":"","until":1.0,"step":0.1,"seed":0,"values":{},"names":{"rules":["SCENARIO (1) / RULE (1)"],"tasks":["SCENARIO (1)","SCENARIO (1) / TASK (3)","SCENARIO (1) / EVALUATION (1)"],"variables":[["7","","1"]],"scores":[[0,0.0],[1,0.0]]},"inputs":)json" +
            inputs + R"json(}
{"time":0.0,"event":"state","task":"SCENARIO (1)","from":-1,"to":3,"label":"Wait"}
{"time":0.1,"event":"effect","name":"ATTACH_DRIVER","arguments":["2","Anna"]}
{"time":0.1,"event":"rule","rule":"1","label":"","place":"SCENARIO (1)","value":true}
{"time":0.1,"event":"variable","variable":"7","label":"","place":"SCENARIO (1)","from":"1","to":"1.5"}
{"time":0.1,"event":"score","score":1,"from":0.0,"to":2.0}
{"time":0.1,"event":"pause","value":true}
{"time":0.1,"event":"stop"}
{"time":0.1,"event":"end","steps":2,"stopped":true,"rulesFired":1,"neverTrue":[],"neverEntered":[],"scores":[[0,0.0],[1,2.0]],"evaluation":[],"verdict":"passed","criteria":[]}
)json");
}

// What text, graph and outline say of the rarer things: a rule that is off or has no condition, a way out of a task.
TEST_F(BuiltinTest, EachPieceOfAnExplanationAGraphAndAnOutline) {
    const std::string script = block(
        "SCENARIO (1)",
        block("RULE (1)", call("CONDITION", "EVERY PERIOD=0.5") + call("ACTION", "SET_SCORE SCORE_NUMBER=1 POINTS=1")) +
            block("TASK (1)",
                  attribute("LABEL", "Out") +
                      block("RULE (3)", block("CONDITION (AND)", call("CONDITION", "EQUAL VALUE_A=1 VALUE_B=3") +
                                                                     call("CONDITION", "ALWAYS")) +
                                            call("ACTION", "END_TASK") + call("ELSE_ACTION", "NEXT_STATE STATE=2")) +
                      block("TASK (2)",
                            block("RULE (4)", attribute("IS_DISABLED", "1") + call("ACTION", "END_PARENT_TASK")))));
    const std::string path = folder.write("script.sc", script);
    const auto told = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin() + 1,
                         {path, "--model", TAVREL_SAMPLE "/packs/common/data/tools/nuro/nuro.mdl"});
        const Result result = run(arguments);
        EXPECT_EQ(result.status, 0) << result;
        return result.out;
    };
    const std::string events = folder.write("events", told({"run", "--until", "1", "--trace", "json"}));
    const struct {
        std::vector<std::string> arguments;
        std::vector<std::string> pieces;
    } rows[] = {
        {{"run", "--until", "1", "--verbose"},
         {"rule 1 fired in SCENARIO (1)\n", "rule 1 became false in SCENARIO (1)\n"}},
        {{"run", "--explain", "1", "--until", "1"}, {"    0.500  the rule is true\n"}},
        {{"run", "--explain", "3", "--until", "1"},
         {"AND: held the rule back for 0 s; at most 1 of its 2 parts held at once\n",
          "1  =  3: held the rule back for 0.1 s; at the nearest the numbers were 2 apart\n"}},
        {{"run", "--explain", "4", "--until", "1"},
         {"\nThe rule is disabled.\nWithout a condition it is true whenever it is looked at.\n"}},
        {{"graph", "--trace", events},
         {"label=\"TASK Out (1)\"; color=\"#2e7d32\"; penwidth=2;\n",
          "end0 [shape=doublecircle, label=\"\", width=0.15];\n", "-> end0 [label=\"4\", style=dashed];\n",
          "[label=\"else: 3\"];\n"}},
        {{"outline"}, {"state Out (1)\n", "rule 4, disabled\n"}},
    };
    for (const auto& row : rows) {
        const std::string out = told(row.arguments);
        for (const std::string& piece : row.pieces) EXPECT_THAT(out, testing::HasSubstr(piece));
    }
}

} // namespace
