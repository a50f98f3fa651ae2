#include <fstream>
#include <map>
#include <optional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <support/InstallationBuilder.h>

#include "CommandRunner.h"

// The small world behind the CODE numbers of the sample's root model, seen through scripts that use it.

namespace {

struct Argument {
    std::string name;
    std::string kind;
    std::string value;
};

std::string block(const std::string& header, const std::string& content) {
    return "TYPEOF " + header + "\n{\n" + content + "}\n";
}

std::string attribute(const std::string& key, const std::string& value) { return key + "=\"" + value + "\"\n"; }

std::string call(const std::string& header, const std::vector<Argument>& arguments) {
    std::string content;
    for (const Argument& argument : arguments)
        content += block("PARAMETER (" + argument.name + ")",
                         attribute("KIND", argument.kind) +
                             (argument.kind == "FUNCTION" ? argument.value : attribute("VALUE", argument.value)));
    return block(header, content);
}

Argument user(const std::string& name, const std::string& value) { return {name, "USER", value}; }
Argument vehicle(const std::string& value) { return {"VHL_NUMBER", "VEHICLE", value}; }

// What happens once, at the first step.
std::string once(const std::string& actions) {
    return block("RULE (1)", block("CONDITION (ALWAYS)", attribute("MODIFIER", "BECOMES_TRUE")) + actions);
}

std::string variable(int number, const std::string& type, const std::string& value) {
    return block("VARIABLE (" + std::to_string(number) + ")", attribute("TYPE", type) + attribute("VALUE", value));
}

class BuiltinTest : public testing::Test {
protected:
    std::vector<nlohmann::json> events(const std::string& content, const std::string& until) {
        const std::string file = folder.write("script.sc", block("SCENARIO (1)", content));
        const Result result = run({"run", file, "--model", TAVREL_SAMPLE "/packs/common/data/tools/nuro/nuro.mdl",
                                   "--config", sampleFile(), "--trace", "json", "--until", until});
        EXPECT_EQ(result.status, 0) << result;
        EXPECT_EQ(result.err, "");
        std::vector<nlohmann::json> all;
        for (const std::string& line : result.lines()) all.push_back(nlohmann::json::parse(line));
        return all;
    }
    // When the rule of that name first became true; nothing if it never did.
    static std::optional<double> firstTime(const std::vector<nlohmann::json>& all, const std::string& rule) {
        for (const nlohmann::json& event : all)
            if (event["event"] == "rule" && event["rule"] == rule && event["value"] == true) return event["time"];
        return std::nullopt;
    }

    InstallationBuilder folder; // for its folder alone
    CommandRunner run;
};

TEST_F(BuiltinTest, FunctionsGiveWhatTheirTableSays) {
    const struct {
        const char* function;
        std::vector<Argument> arguments;
        const char* value;
    } rows[] = {
        {"PLUS", {user("VALUE_A", "1.5"), user("VALUE_B", "2")}, "3.5"},
        {"MINUS", {user("VALUE_A", "1.5"), user("VALUE_B", "2")}, "-0.5"},
        {"MULTIPLY", {user("VALUE_A", "1.5"), user("VALUE_B", "-2")}, "-3"},
        {"DIVIDE", {user("VALUE_A", "3"), user("VALUE_B", "2")}, "1.5"},
        {"DIVIDE", {user("VALUE_A", "3"), user("VALUE_B", "0")}, "0"},
        {"MODULO", {user("VALUE_A", "-7"), user("VALUE_B", "3")}, "-1"},
        {"MODULO", {user("VALUE_A", "7"), user("VALUE_B", "0")}, "0"},
        {"ABSOLUTE", {user("INPUT_VALUE", "-4")}, "4"},
        {"MINIMUM", {user("VALUE_A", "1"), user("VALUE_B", "2")}, "1"},
        {"MAXIMUM", {user("VALUE_A", "1"), user("VALUE_B", "2")}, "2"},
        {"LIMIT", {user("INPUT_VALUE", "9"), user("LOW_VALUE", "1"), user("HIGH_VALUE", "5")}, "5"},
        {"LIMIT", {user("INPUT_VALUE", "-9"), user("LOW_VALUE", "1"), user("HIGH_VALUE", "5")}, "1"},
        {"SQUARE_ROOT", {user("INPUT_VALUE", "16")}, "4"},
        {"SQUARE_ROOT", {user("INPUT_VALUE", "-16")}, "0"},
        {"POWER", {user("VALUE_A", "2"), user("VALUE_B", "10")}, "1024"},
        {"INTERPOLATE",
         {user("X_VALUE", "3"), user("X_FROM", "2"), user("Y_FROM", "10"), user("X_TO", "4"), user("Y_TO", "20")},
         "15"},
        {"INTERPOLATE",
         {user("X_VALUE", "9"), user("X_FROM", "2"), user("Y_FROM", "10"), user("X_TO", "4"), user("Y_TO", "20")},
         "20"},
        {"GET_SPEED_LIMIT", {vehicle("0")}, "13.888889"},
        {"GET_VISIBILITY", {}, "10000"},
        {"GET_TIME_HEADWAY", {vehicle("0"), {"OTHER_VHL_NUMBER", "VEHICLE", "1"}}, "60"},
        {"GET_VARIABLE", {{"VARIABLE_REF", "VARIABLE", "50"}}, "2.5"},
    };
    std::string variables = variable(50, "FLOAT", "2.5"), actions;
    int number = 100;
    for (const auto& row : rows) {
        variables += variable(number, "FLOAT", "unset");
        actions += call("ACTION (SET_VARIABLE)",
                        {{"VARIABLE_REF", "VARIABLE", std::to_string(number++)},
                         {"VALUE_B", "FUNCTION", call(std::string("FUNCTION (") + row.function + ")", row.arguments)}});
    }
    std::map<std::string, std::string> found;
    for (const nlohmann::json& event : events(variables + once(actions), "0"))
        if (event["event"] == "variable") found[event["variable"]] = event["to"];
    number = 100;
    for (const auto& row : rows) EXPECT_EQ(found[std::to_string(number++)], row.value) << row.function;
}

TEST_F(BuiltinTest, ActionsChangeVariables) {
    const auto reference = [](const char* name, const char* number) { return Argument{name, "VARIABLE", number}; };
    const std::string actions =
        call("ACTION (ADD_TO_VARIABLE)", {reference("VARIABLE_REF", "1"), user("VALUE_B", "0.5")}) +
        call("ACTION (MULTIPLY_VARIABLE)", {reference("VARIABLE_REF", "1"), user("VALUE_B", "4")}) +
        call("ACTION (SET_FLAG)", {reference("BOOL_VARIABLE_REF", "2"), user("ENABLED", "1")}) +
        call("ACTION (TOGGLE_FLAG)", {reference("BOOL_VARIABLE_REF", "3")}) +
        call("ACTION (SET_INTEGER_VARIABLE)", {reference("INTEGER_VARIABLE_REF", "4"), user("VALUE_B", "-7.9")}) +
        call("ACTION (SET_TEXT_VARIABLE)", {reference("TEXT_VARIABLE_REF", "5"), user("TEXT_B", "grün, links")}) +
        call("ACTION (SET_VARIABLE)", {reference("VARIABLE_REF", "6"), user("VALUE_B", "9")}) +
        call("ACTION (RESET_VARIABLE)", {reference("VARIABLE_REF", "6")});
    std::map<std::string, std::string> found;
    for (const nlohmann::json& event : events(
             variable(1, "FLOAT", "1") + variable(2, "BOOL", "0") + variable(3, "BOOL", "1") +
                 variable(4, "INTEGER", "0") + variable(5, "STRING", "rot") + variable(6, "FLOAT", "3") + once(actions),
             "0"))
        if (event["event"] == "variable") found[event["variable"]] = event["to"];
    const std::map<std::string, std::string> expected{
        {"1", "6"}, {"2", "1"}, {"3", "0"}, {"4", "-7"}, {"5", "grün, links"}};
    EXPECT_EQ(found, expected) << "number 6 is back at its beginning, so nothing is told of it";
}

TEST_F(BuiltinTest, ConditionsComeTrueWhenTheMotionSaysSo) {
    // From a stand at 2 m/s2 up to 20 m/s; the other one drives 20 m/s ahead of it from the place 0, with a lane
    // change.
    const std::string start =
        call("ACTION (SET_VHL_TARGET_SPEED)", {vehicle("0"), user("SPEED", "20"), user("ACCELERATION", "2")}) +
        call("ACTION (SET_VHL_SPEED)", {vehicle("1"), user("SPEED", "20")}) +
        call("ACTION (CHANGE_LANE)", {vehicle("1"), {"SIDE", "ENUM", "SIDE_LEFT"}, user("CHANGE_TIME", "3")}) +
        call("ACTION (START_TIMER)", {user("TIMER_NUMBER", "7")}) +
        call("ACTION (SET_VISIBILITY)", {user("VISIBILITY", "0"), user("CHANGE_TIME", "10")});
    const struct {
        const char* condition;
        std::vector<Argument> arguments;
        double time; // below 0 for never
    } rows[] = {
        {"IS_VHL_FASTER", {vehicle("0"), user("SPEED", "10.05")}, 5.1},
        {"HAS_PASSED", {vehicle("0"), user("DISTANCE", "99.99")}, 10},
        {"HAS_PASSED", {vehicle("1"), user("DISTANCE", "99.99")}, 5},
        {"IS_VHL_ON_LANE", {vehicle("1"), user("LANE", "2")}, 3},
        {"IS_VHL_AT_POSITION", {vehicle("1"), user("MAP_X", "200"), user("MAP_Y", "0"), user("MAP_RADIUS", "1")}, 10},
        {"IS_VHL_IN_AREA",
         {vehicle("1"), user("AREA_X1", "59.5"), user("AREA_Y1", "-1"), user("AREA_X2", "150"), user("AREA_Y2", "1")},
         3},
        {"IS_TIMER_ELAPSED", {user("TIMER_NUMBER", "7"), user("DELAY", "4")}, 4},
        {"IS_TIME_AFTER", {user("SCENARIO_TIME", "2.5")}, 2.5},
        {"WAIT", {user("DELAY", "6")}, 6},
        {"EVERY", {user("PERIOD", "2")}, 0},
        {"IS_VISIBILITY_BELOW", {user("VISIBILITY", "5050")}, 5},
        {"IS_VHL_BRAKING", {vehicle("0")}, -1},
        {"IS_KEY_PRESSED", {{"KEY", "ENUM", "KEY_START"}}, -1},
        {"IS_VHL_OVER_LIMIT", {vehicle("0"), user("TOLERANCE", "10")}, 7.7},
    };
    std::string rules = once(start);
    int number = 100;
    for (const auto& row : rows)
        rules += block("RULE (" + std::to_string(number++) + ")",
                       call(std::string("CONDITION (") + row.condition + ")", row.arguments));
    const std::vector<nlohmann::json> all = events(rules, "12");
    number = 100;
    for (const auto& row : rows) {
        const std::optional<double> time = firstTime(all, std::to_string(number++));
        EXPECT_NEAR(time.value_or(-1), row.time, 0.11) << row.condition;
    }
}

TEST_F(BuiltinTest, StatesAreLeftForSiblingsAndTasksEnd) {
    const auto state = [](const std::string& name) { return Argument{"STATE", "TASK", name}; };
    const std::string first = block("TASK (1)", block("RULE (1)", call("CONDITION (WAIT)", {user("DELAY", "1")}) +
                                                                      call("ACTION (NEXT_STATE)", {state("2")})));
    const std::string second =
        block("TASK (2)", block("RULE (2)", call("CONDITION (ALWAYS)", {}) +
                                                call("ACTION (NEXT_STATE_AFTER)", {state("3"), user("DELAY", "2")})));
    const std::string third = block("TASK (3)", block("RULE (3)", call("CONDITION (WAIT)", {user("DELAY", "1")}) +
                                                                      call("ACTION (STOP_SCENARIO)", {})));
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

} // namespace
