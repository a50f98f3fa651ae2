// Whole scenarios over time. What is compared is the whole trace, see <support/RunningHost.h>.
#include <limits>
#include <utility>

#include <support/RunningHost.h>

namespace {

using ScenarioLib::Scenario;

class RunningScenarioTest : public RunningTest {};

// A rule with one number as its condition's, and one as its action's argument.
std::string RuleText(int number, const std::string& condition, const std::string& action) {
    const auto call = [](const std::string& kind, const std::string& text) {
        const std::size_t blank = text.find(' ');
        std::string block = "TYPEOF " + kind + " (" + text.substr(0, blank) + ")\n{\n";
        if (blank != std::string::npos)
            block += "TYPEOF PARAMETER (A)\n{\nKIND=\"USER\"\nVALUE=\"" + text.substr(blank + 1) + "\"\n}\n";
        return block + "}\n";
    };
    return "TYPEOF RULE (" + std::to_string(number) + ")\n{\n" +
           (condition.empty() ? "" : call("CONDITION", condition)) + call("ACTION", action) + "}\n";
}

std::string Block(const std::string& header, const std::string& body) {
    return "TYPEOF " + header + "\n{\n" + body + "}\n";
}

std::unique_ptr<Scenario> ReadScenario(RunningHost& host, const std::string& body) {
    auto scenario = host.ReadAs<Scenario>(Block("SCENARIO (0)", body));
    EXPECT_TRUE(scenario) << host.log.str();
    return scenario;
}

TEST_F(RunningScenarioTest, StatesFollowOneAnother) {
    const auto scenario =
        ReadScenario(host, Block("TASK (1)", RuleText(11, "AFTER 2", "GO 2")) +
                               Block("TASK (2)", RuleText(21, "", "SAY 2") + RuleText(22, "AFTER 4", "END")));
    // GO and END speak to the task that runs: here to the state, which has no states of its own.
    EXPECT_EQ(host.Run(*scenario, {0.0, 1.0, 2.0, 3.0}), "1.0 state 1\n"
                                                         "2.0 rule 11 else\n"
                                                         "3.0 GO 2\n"
                                                         "3.0 rule 11 then\n");
}

// The same with the rules where they belong: in the task whose states they change.
std::string TwoStates() {
    return RuleText(1, "AFTER 2", "GO 2") + Block("TASK (1)", RuleText(11, "", "SAY 1")) +
           Block("TASK (2)", RuleText(21, "", "SAY 2"));
}

TEST_F(RunningScenarioTest, ATransitionTakesAStepOfItsOwn) {
    const auto scenario = ReadScenario(host, TwoStates());
    EXPECT_EQ(host.Run(*scenario, {0.0, 0.5}), "0.5 state 1\n") << "the first step enters the first state";
    scenario->rules.front()->disabled = 1;
    EXPECT_EQ(host.Run(*scenario, {0.0, 0.5, 1.0, 1.5}), "0.5 state 1\n"
                                                         "1.0 SAY 1\n1.0 rule 11 then\n"
                                                         "1.5 SAY 1\n");
    scenario->rules.front()->disabled = 0;
    // The state that is left still runs in the step that asks for the other one. As the rule asks at every step, the
    // state is entered again and again.
    EXPECT_EQ(host.Run(*scenario, {0.0, 0.5, 1.0, 3.0, 3.5, 4.0, 4.5}), "0.5 state 1\n"
                                                                        "1.0 rule 1 else\n"
                                                                        "1.0 SAY 1\n1.0 rule 11 then\n"
                                                                        "3.0 GO 2\n3.0 rule 1 then\n"
                                                                        "3.0 SAY 1\n"
                                                                        "3.5 state 2\n"
                                                                        "4.0 GO 2\n"
                                                                        "4.0 SAY 2\n4.0 rule 21 then\n"
                                                                        "4.5 state 2\n");
    EXPECT_EQ(scenario->stepCount, 3) << "steps that enter a state do not count";
    EXPECT_EQ(scenario->currentState, 2);
}

TEST_F(RunningScenarioTest, TheEndStopsTheRulesAfterIt) {
    const auto scenario =
        ReadScenario(host, RuleText(1, "", "SAY 1") + RuleText(2, "AFTER 1", "END") + RuleText(3, "", "SAY 3") +
                               Block("TASK (1)", RuleText(11, "", "SAY 11")));
    EXPECT_EQ(host.Run(*scenario, {0.0, 0.5, 1.0, 2.0, 3.0, 4.0}), "0.5 state 1\n"
                                                                   "1.0 SAY 1\n1.0 rule 1 then\n"
                                                                   "1.0 rule 2 else\n"
                                                                   "1.0 SAY 3\n1.0 rule 3 then\n"
                                                                   "1.0 SAY 11\n1.0 rule 11 then\n"
                                                                   "2.0 SAY 1\n2.0 END\n2.0 rule 2 then\n");
    EXPECT_EQ(scenario->currentState, Task::kStateEnd);
    EXPECT_EQ(scenario->currentTime, 4.0);
}

TEST_F(RunningScenarioTest, FilesThenStatesThenEvaluation) {
    const auto scenario = ReadScenario(
        host,
        Block("INCLUDE (1)", RuleText(101, "", "SAY 101") + Block("TASK (1)", RuleText(111, "", "SAY 111"))) +
            Block("INCLUDE (2)", RuleText(201, "", "SAY 201")) + RuleText(1, "", "SAY 1") +
            Block("EVALUATION (1)", RuleText(301, "", "SAY 301") + Block("CRITERIA (1)", RuleText(311, "", "SAY 311")) +
                                        Block("CRITERIA (2)", RuleText(321, "", "SAY 321"))));
    EXPECT_EQ(host.Run(*scenario, {1.0, 1.5}), "1.0 state 0\n" // the scenario; includes and criteria tell nobody
                                               "1.5 SAY 101\n1.5 rule 101 then\n"
                                               "1.5 SAY 111\n1.5 rule 111 then\n"
                                               "1.5 SAY 201\n1.5 rule 201 then\n"
                                               "1.5 SAY 1\n1.5 rule 1 then\n"
                                               "1.5 SAY 301\n1.5 rule 301 then\n"
                                               "1.5 SAY 311\n1.5 rule 311 then\n"
                                               "1.5 SAY 321\n1.5 rule 321 then\n");
}

TEST_F(RunningScenarioTest, PauseAndStop) {
    const std::string body =
        Block("INCLUDE (1)", RuleText(101, "SWITCH 1", "PAUSE") + RuleText(102, "SWITCH 2", "STOP")) +
        Block("INCLUDE (2)", RuleText(201, "", "SAY 201")) + RuleText(1, "SWITCH 3", "PAUSE") +
        RuleText(2, "SWITCH 4", "GO 1") + RuleText(3, "", "SAY 3") +
        Block("TASK (1)", RuleText(11, "SWITCH 5", "SAY 11")) + Block("EVALUATION (1)", RuleText(301, "", "SAY 301"));
    struct {
        const char* why;
        std::vector<int> on; // switches, at the second step
        int paused;
        int stopped;
        int steps; // counted by the scenario in the second step
        const char* trace;
    } rows[] = {
        {"neither", {}, 0, 0, 1, "2.0 SAY 201\n2.0 SAY 3\n2.0 rule 11 else\n2.0 SAY 301\n"},
        {"an include pauses: all that follows waits", {1}, 1, 0, 0, "2.0 PAUSE\n2.0 rule 101 then\n"},
        {"an include stops", {2}, 0, 1, 0, "2.0 STOP\n2.0 rule 102 then\n"},
        {"the scenario pauses: its step ends, and counts twice",
         {3},
         1,
         0,
         2,
         "2.0 SAY 201\n2.0 PAUSE\n2.0 rule 1 then\n2.0 SAY 3\n2.0 rule 11 else\n"},
    };
    for (const auto& row : rows) {
        host.switches.clear();
        const auto scenario = ReadScenario(host, body);
        EXPECT_EQ(scenario->stopped, 1) << row.why << ": until Init";
        host.Run(*scenario, {0.0, 0.5, 1.0});
        scenario->subTasks.front()->rules.front()->Init("", 1.0);
        const std::int32_t before = scenario->stepCount;
        for (const int number : row.on) host.switches[number] = true;
        host.StepAt(2.0);
        EXPECT_EQ(host.TakeTrace(), row.trace) << row.why;
        EXPECT_EQ(scenario->paused, row.paused) << row.why;
        EXPECT_EQ(scenario->stopped, row.stopped) << row.why;
        EXPECT_EQ(scenario->stepCount - before, row.steps) << row.why;
        EXPECT_EQ(scenario->currentInclude, nullptr) << row.why;
    }

    // A change of state takes the pause back, the state -4 does not.
    const auto scenario = ReadScenario(host, body);
    host.switches.clear();
    host.Run(*scenario, {0.0, 0.5});
    for (Include* include : std::vector<Include*>(scenario->includes)) scenario->RemoveChild(include);
    for (const std::int32_t next : {1, -4}) {
        scenario->paused = 1;
        scenario->nextState = next;
        scenario->transitionPending = 1;
        host.StepAt(1.0);
        EXPECT_EQ(scenario->paused, next == 1 ? 0 : 1);
    }
}

TEST_F(RunningScenarioTest, NestedStatesAreEnteredToTheBottom) {
    const auto scenario =
        ReadScenario(host, Block("TASK (1)", Block("TASK (4)", Block("TASK (6)", RuleText(61, "", "SAY 61"))) +
                                                 Block("TASK (5)", "")));
    EXPECT_EQ(host.Run(*scenario, {0.0, 1.0, 2.0}), "1.0 state 6\n1.0 state 4\n1.0 state 5\n1.0 state 1\n"
                                                    "1.0 state 6\n1.0 state 4\n"
                                                    "1.0 state 6\n"
                                                    "2.0 SAY 61\n2.0 rule 61 then\n");
}

TEST_F(RunningScenarioTest, VariablesStartAgainWithTheirInitialValue) {
    const auto scenario = host.ReadAs<Scenario>(R"(
        TYPEOF SCENARIO (0)
            TYPEOF VARIABLE (5) TYPE="FLOAT" VALUE="1"
            TYPEOF RULE (1)
                TYPEOF ACTION (SAY)
                    TYPEOF PARAMETER (A) KIND="VARIABLE" VALUE="5"
                TYPEOF ACTION (DO)
                    TYPEOF PARAMETER (A) KIND="USER" VALUE="1"
                TYPEOF ACTION (SAY)
                    TYPEOF PARAMETER (A) KIND="VARIABLE" VALUE="5"
    )");
    ASSERT_TRUE(scenario) << host.log.str();
    // A value that an action writes is what the next action reads; so is one that the host writes between two steps.
    host.deeds[1] = [&] { scenario->variables.front()->value += "1"; };
    host.Start(*scenario, 0.0);
    host.StepAt(1.0);
    scenario->variables.front()->value = "7";
    host.StepAt(2.0);
    scenario->variables.front()->name = "6";
    host.StepAt(3.0);
    EXPECT_EQ(host.TakeTrace(), "1.0 SAY 1\n1.0 SAY 11\n1.0 rule 1 then\n"
                                "2.0 SAY 7\n2.0 SAY 71\n"
                                "3.0 SAY 0\n3.0 SAY 0\n")
        << "no variable of that name gives no number";
    scenario->variables.front()->name = "5";
    EXPECT_EQ(host.Run(*scenario, {0.0, 1.0}), "1.0 SAY 1\n1.0 SAY 11\n1.0 rule 1 then\n");
}

TEST_F(RunningScenarioTest, AnyTimeIsTaken) {
    const auto scenario = ReadScenario(host, TwoStates());
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    host.Run(*scenario, {5.0, 5.0, 5.0, 1.0, -3.0, kInfinity, -kInfinity, kNaN, 0.0});
    EXPECT_EQ(scenario->currentTime, 0.0);
    EXPECT_EQ(scenario->stepCount, 5);
}

TEST_F(RunningScenarioTest, ACodeWithoutImplementationIsLoggedAndDoesNothing) {
    const auto scenario = ReadScenario(host, RuleText(1, "SWITCH 1", "SAY 1") + RuleText(2, "", "GO 1"));
    ConditionTable().resize(3);
    ActionTable().resize(2);
    host.log.str("");
    EXPECT_EQ(host.Run(*scenario, {0.0, 1.0}), "1.0 rule 1 else\n1.0 rule 2 then\n");
    for (const char* named : {"SWITCH", "3", "GO", "2"})
        EXPECT_NE(host.log.str().find(named), std::string::npos) << named;
}

TEST_F(RunningScenarioTest, ATreeMayChangeWhileItRuns) {
    const auto scenario = ReadScenario(host, RuleText(1, "", "DO 1") + RuleText(2, "", "SAY 2"));
    bool isDone = false;
    host.deeds[1] = [&] {
        if (std::exchange(isDone, true)) return;
        // A rule after the one that runs goes, a new one comes: it is stepped at once.
        scenario->RemoveChild(scenario->rules.back());
        std::unique_ptr<ScenarioItem> rule = host.Read(RuleText(3, "", "SAY 3"));
        static_cast<Rule&>(*rule).Init("", host.now);
        scenario->AddChild(rule.release(), nullptr, true);
        // And so does a state.
        auto* state = static_cast<Task*>(CreateItem(KindTask, "7", nullptr));
        scenario->AddChild(state, nullptr, true);
        scenario->nextState = 7;
        scenario->transitionPending = 1;
    };
    EXPECT_EQ(host.Run(*scenario, {0.0, 1.0, 2.0, 3.0}), "1.0 rule 1 then\n"
                                                         "1.0 SAY 3\n1.0 rule 3 then\n"
                                                         "3.0 SAY 3\n");
    EXPECT_EQ(scenario->subTasks.front()->stepCount, 1);
}

TEST_F(RunningScenarioTest, AnActionMayThrow) {
    const auto scenario = ReadScenario(host, Block("TASK (1)", Block("TASK (1)", RuleText(1, "", "DO 1"))));
    host.deeds[1] = [] { throw std::runtime_error("host"); };
    host.Start(*scenario, 0.0);
    host.StepAt(1.0);
    EXPECT_THROW(host.StepAt(2.0), std::runtime_error);
    EXPECT_EQ(scenario->stepCount, 0);
    host.deeds[1] = [] {};
    host.StepAt(3.0);
    EXPECT_EQ(scenario->stepCount, 1);
    EXPECT_EQ(scenario->subTasks.front()->stepCount, 1);

    const auto including = ReadScenario(host, Block("INCLUDE (1)", RuleText(1, "", "DO 1")));
    host.deeds[1] = [] { throw std::runtime_error("host"); };
    host.Start(*including, 0.0);
    EXPECT_THROW(host.StepAt(1.0), std::runtime_error);
    EXPECT_EQ(including->currentInclude, nullptr) << "none is being stepped any more";
}

TEST_F(RunningScenarioTest, AStepMayLieWithinAStep) {
    const auto scenario = ReadScenario(host, Block("TASK (1)", RuleText(1, "", "DO 1")));
    Task other;
    auto* state = static_cast<Task*>(CreateItem(KindTask, "0", nullptr));
    other.AddChild(state, nullptr, true);
    other.Init("", 0.0);
    host.deeds[1] = [&] { other.Step(host.now, nullptr, true); };
    host.Run(*scenario, {0.0, 1.0, 2.0});
    EXPECT_EQ(state->stepCount, 1);
    EXPECT_EQ(other.stepCount, 1);
    EXPECT_EQ(scenario->stepCount, 1);
    EXPECT_EQ(scenario->subTasks.front()->stepCount, 1);
}

TEST_F(RunningScenarioTest, AThousandStatesByText) {
    constexpr int kDepth = 996; // with the scenario, the rule, its action and its parameter a thousand blocks
    std::string body = RuleText(1, "", "SAY 1");
    for (int i = 0; i < kDepth; ++i) body = Block("TASK (1)", body);
    const auto scenario = ReadScenario(host, body);
    ASSERT_TRUE(scenario);
    scenarioLog = nullptr;
    EXPECT_EQ(host.Run(*scenario, {0.0, 0.0, 1.0}), "1.0 SAY 1\n1.0 rule 1 then\n");
    const std::unique_ptr<ScenarioItem> clone(scenario->Clone());
    EXPECT_EQ(SavedText(*clone), SavedText(*scenario));
    EXPECT_FALSE(host.Read(Block("SCENARIO (0)", Block("TASK (1)", Block("TASK (1)", body)))));
}

} // namespace
