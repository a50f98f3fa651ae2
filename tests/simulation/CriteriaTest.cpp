#include <simulation/Criteria.h>

#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace TavrelSimulation;
using testing::HasSubstr;

constexpr std::optional<double> kNone;

// A run from 0 to 10 s of 20 that were written: variable 1 from 5 to 8 at 2 s and to 3 at 6 s, variable 2 a text, state
// 1 at 0 s and 2 at 4 s, rule 8 at 5 s and 7 s, a score, a stop at 10 s.
std::vector<Event> run() {
    RunStart start;
    start.until = 20;
    start.names = Names{
        {"SCENARIO (1) / RULE (8)", "SCENARIO (1) / TASK (2) / RULE (9)", "SCENARIO (1) / INCLUDE (1) / RULE (9)"},
        {"SCENARIO (1)", "SCENARIO (1) / TASK (1)", "SCENARIO (1) / TASK (2)"},
        {{"1", "Speed (set)", "5", ""},
         {"2", "Name", "Anna", ""},
         {"3", "Empty", "", ""},
         {"SCENARIO (1) / TASK (1) / 4", "Twice", "1", ""},
         {"SCENARIO (1) / TASK (2) / 4", "Twice", "2", ""}},
        {{0, 0}, {1, 1.5}}};
    const auto variable = [](const char* name, const char* from, const char* to) {
        return VariableChange{name, "", "SCENARIO (1)", from, to};
    };
    return {{0, start},
            {0, StateChange{"SCENARIO (1)", -1, 1, ""}},
            {2, variable("1", "5", "8")},
            {4, StateChange{"SCENARIO (1)", 1, 2, ""}},
            {5, RuleChange{"8", "", "SCENARIO (1)", true}},
            {5.5, RuleChange{"8", "", "SCENARIO (1)", false}},
            {6, variable("1", "8", "3")},
            {6, ScoreChange{1, 1.5, 4}},
            {7, RuleChange{"8", "", "SCENARIO (1)", true}},
            {8, variable("2", "Anna", "7.0")},
            {9, VariableChange{"4", "Twice", "SCENARIO (1) / TASK (2)", "2", "6"}},
            {10, Stop{}},
            {10, RunEnd{}}};
}

Outcome judged(const std::string& text) {
    const std::vector<Event> events = run();
    Judge judge({ParseCriterion(text)}, &*std::get<RunStart>(events.front().what).names);
    for (const Event& event : events) judge.Hear(event);
    return judge.Outcomes().front();
}

TEST(CriteriaTest, HoldAndHaveAMargin) {
    const struct {
        const char* criterion;
        bool holds;
        std::optional<double> margin;
    } rows[] = {
        // Comparisons: the smallest, largest, last distance, and the negated largest.
        {"variable(1) < 9", true, 1},
        {"always variable(1) < 8", false, 0},
        {"always variable(1) <= 8", true, 0},
        {"variable(\"Speed (set)\") > 2.5", true, 0.5},
        {"eventually variable(1) >= 8", true, 0},
        {"eventually variable(1) > 8", false, 0},
        {"finally variable(1) < 4", true, 1},
        {"never variable(1) > 10", true, 2},
        {"never variable(1) > 7", false, -1},
        {"eventually variable(1) = 8", true, kNone},
        {"never variable(1) = 8.0", false, kNone},
        {"always variable(1) != 9", true, kNone},
        // Windows hold both ends; the value at the begin is that of the last change.
        {"always[2,5] variable(1) > 7", true, 1},
        {"always[1.9,5] variable(1) > 7", false, -2},
        {"eventually [6 , 6] variable(1) < 4", true, 1},
        {"always[6,100] variable(1) < 4", true, 1},
        {"finally[0,5] variable(1) = 8", true, kNone},
        {"finally[0,100] variable(1) = 3", true, kNone},
        {"always[11,12] variable(1) < 0", true, kNone},
        {"never[11,12] variable(1) < 0", true, kNone},
        {"eventually[11,12] variable(1) > 0", false, kNone},
        // Texts.
        {"variable(2) < 100", false, kNone},
        {"eventually variable(2) < 100", true, 93},
        {"always variable(2) != 7", false, kNone},
        {"always[0,7] variable(2) != 7", true, kNone},
        {"finally variable(2) = 7", true, kNone},
        {"finally variable(2) = \"7\"", false, kNone},
        {"eventually variable(2) = \"Anna\"", true, kNone},
        {"never variable(2) != \"Anna\"", false, kNone},
        {"variable(3) = 0", true, kNone},
        // States, scores, the time.
        {"eventually[0,0] state(SCENARIO (1)) = 1", true, kNone},
        {"finally state(SCENARIO (1)) = 2", true, kNone},
        {"always state(TASK (1)) = -1", true, kNone},
        {"always score(1) >= 1.5", true, 0},
        {"finally score(1) > 3", true, 1},
        {"always time < 20", true, 10},
        {"eventually time = 5.05", true, kNone},
        {"never time > 10", true, 0},
        // Events: the seconds that were left of the window as it was written.
        {"fired(8)", true, 15},
        {"eventually[0,30] fired(RULE (8))", true, 25},
        {"eventually[5.1,9] fired(8)", true, 2},
        {"eventually[8,9] fired(8)", false, kNone},
        {"never fired(SCENARIO (1) / 8)", false, -15},
        {"never[0,4] fired(8)", true, kNone},
        {"never fired(INCLUDE (1) / 9)", true, kNone},
        {"entered(TASK (2))", true, 16},
        {"entered(SCENARIO (1) / TASK (1))", true, 20},
        {"stopped", true, 10},
        {"never stopped", false, -10},
        // Placed variables.
        {"finally variable(SCENARIO (1) / TASK (2) / 4) = 6", true, kNone},
        {"always variable(TASK (1) / 4) = 1", true, kNone},
    };
    for (const auto& row : rows) {
        const Outcome outcome = judged(row.criterion);
        EXPECT_EQ(outcome.holds, row.holds) << row.criterion;
        EXPECT_EQ(outcome.margin.has_value(), row.margin.has_value()) << row.criterion;
        if (outcome.margin && row.margin) {
            EXPECT_NEAR(*outcome.margin, *row.margin, 1e-9) << row.criterion;
        }
    }
}

TEST(CriteriaTest, MistakesAreToldWithTheirPlace) {
    const struct {
        const char* criterion;
        std::size_t column;
        const char* part;
    } rows[] = {
        {"", 1, "a predicate is missing"},
        {"alway variable(1) < 3", 1, "did you mean \"always\""},
        {"always fired(8)", 1, "an event is a moment"},
        {"  finally stopped", 3, "an event is a moment"},
        {"always[5,2] time < 3", 7, "the window ends before it begins"},
        {"always[5 time < 3", 10, "\",\""},
        {"always[0,x] time < 3", 10, "a time in seconds"},
        {"always[0,inf] time < 3", 10, "a time in seconds"},
        {"variable 1 < 3", 10, "\"(\" is expected"},
        {"variable(1 < 3", 15, "\")\" is missing"},
        {"variable(\"Speed) < 3", 21, "no closing quote"},
        {"variable(1)", 12, "a comparison is expected"},
        {"variable(1) ~ 3", 16, "\")\" is missing"},
        {"variable(1) < fast", 15, "a number or a quoted text"},
        {"variable(1) < 3 m", 17, "nothing is expected"},
        {"variable(1) < nan", 15, "a number or a quoted text"},
        {"variable(1) < \"3\"", 13, "= and != alone"},
        {"variable(1) = \"3", 17, "no closing quote"},
        {"never fired(8", 14, "\")\" is missing"},
        {"stopped now", 9, "nothing is expected"},
        {"score(x) > 1", 7, "the number of a score"},
        // About what the script does not have, or has several times.
        {"fired(7)", 7, "no rule \"7\""},
        {"fired(9)", 7, "several of the rule \"9\""},
        {"entered(TASK (3))", 9, "did you mean \"TASK ("},
        {"entered(SCENARIO (1))", 9, "no state of another task"},
        {"state(TASK (7)) = 1", 7, "no task"},
        {"variable(11) = 1", 10, "no variable \"11\""},
        {"variable(4) = 1", 10, "several of the variable \"4\""},
        {"variable(\"Sped (set)\") = 1", 10, "did you mean \"Speed (set)\""},
        {"score(5) > 1", 7, "no score 5; it has 0, 1"},
    };
    for (const auto& row : rows) {
        try {
            judged(row.criterion);
            ADD_FAILURE() << row.criterion;
        } catch (const CriterionError& error) {
            EXPECT_EQ(error.column, row.column) << error.what();
            EXPECT_THAT(error.what(), HasSubstr(row.part)) << row.criterion;
        }
    }
}

TEST(CriteriaTest, ATraceWithoutNamesIsJudgedByWhatItShows) {
    const auto outcome = [](const char* text) {
        std::vector<Event> events = run();
        events.erase(events.begin());
        Judge judge({ParseCriterion(text)}, nullptr);
        for (const Event& event : events) judge.Hear(event);
        return judge.Outcomes().front();
    };
    EXPECT_TRUE(outcome("never fired(99)").holds);
    EXPECT_FALSE(outcome("fired(99)").holds);
    EXPECT_EQ(outcome("fired(8)").margin, 5) << "without a written end the last event is the end";
    EXPECT_TRUE(outcome("entered(TASK (2))").holds);
    EXPECT_TRUE(outcome("always variable(77) = 0").holds);
    EXPECT_TRUE(outcome("finally variable(TASK (2) / 4) = 6").holds);
    EXPECT_TRUE(outcome("variable(1) >= 3").holds);
}

TEST(CriteriaTest, EventsComeBackFromTheirLines) {
    for (const Event& event : run()) {
        const std::optional<Event> back = EventOf(JsonOf(event));
        ASSERT_TRUE(back);
        EXPECT_EQ(JsonOf(*back), JsonOf(event));
    }
    for (const char* line :
         {"", "[]", "{}", "{\"time\":0}", "{\"time\":\"x\",\"event\":\"stop\"}",
          "{\"time\":0,\"event\":\"state\",\"to\":4294967296}", "{\"time\":0,\"event\":\"rule\",\"value\":1}",
          "{\"time\":0,\"event\":\"start\",\"names\":{\"variables\":[[\"1\"]]}}"})
        EXPECT_THROW(EventOf(line), TraceError) << line;
    EXPECT_FALSE(EventOf("{\"time\":0,\"event\":\"comet\"}"));
}

} // namespace
