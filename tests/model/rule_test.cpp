#include <cstring>

#include <support/RunningHost.h>

namespace {

class RuleTest : public RunningTest {
protected:
    // A rule that says 1 while switch 1 is on, else 2.
    std::unique_ptr<Rule> Switched(const std::string& attributes = "") {
        return host.ReadAs<Rule>("    TYPEOF RULE (3) " + attributes + R"(
        TYPEOF CONDITION (SWITCH)
            TYPEOF PARAMETER (A) KIND="USER" VALUE="1"
        TYPEOF ACTION (SAY)
            TYPEOF PARAMETER (A) KIND="USER" VALUE="1"
        TYPEOF ELSE_ACTION (SAY)
            TYPEOF PARAMETER (A) KIND="USER" VALUE="2")");
    }
    void StepAt(Rule& rule, double time, bool isOn) {
        host.now = time;
        host.switches[1] = isOn;
        rule.Step(time);
    }
};

TEST_F(RuleTest, ChildrenStandByKindAndInOrder) {
    Rule rule;
    ScenarioItem* e = AddNew(rule, KindElseAction, "e");
    ScenarioItem* a = AddNew(rule, KindAction, "a");
    rule.AddChild(CreateItem(KindAction, "first", nullptr), e, false); // stands in another list, so it does not count
    AddNew(rule, KindCondition, "c");
    AddNew(rule, KindVariable, "v");
    struct {
        const char* why;
        std::uint32_t kind;
        const char* names;
    } rows[] = {
        {"all", 0, "v c first a e "},           {"variables", KindVariable, "v "},
        {"conditions", KindCondition, "c "},    {"actions", KindAction, "first a "},
        {"else-actions", KindElseAction, "e "}, {"a kind that no rule holds", KindTask, ""},
    };
    for (const auto& row : rows) EXPECT_EQ(NamesOf(rule, row.kind), row.names) << row.why;

    rule.SwapChildren(a, e);
    EXPECT_EQ(NamesOf(rule, 0), "v c first a e ") << "no swap across the branches";

    const std::unique_ptr<ScenarioItem> task(CreateItem(KindTask, "t", nullptr));
    rule.AddChild(task.get(), nullptr, true);
    EXPECT_EQ(NamesOf(rule, 0), "v c first a e ") << "a kind without a list is ignored";
    EXPECT_EQ(task->parent, nullptr);
}

TEST_F(RuleTest, AnActionSwitchesItsBranch) {
    struct {
        const char* why;
        std::size_t from; // in the actions a b c; the else-actions are x y
        std::size_t index;
        const char* actions;
        const char* elseActions;
    } rows[] = {
        {"to the front", 0, 0, "b c ", "a x y "},
        {"between", 1, 1, "a c ", "x b y "},
        {"to the end", 2, 2, "a b ", "x y c "},
        {"beyond the end", 2, 99, "a b ", "x y c "},
    };
    for (const auto& row : rows) {
        Rule rule;
        for (const char* name : {"a", "b", "c"}) AddNew(rule, KindAction, name);
        for (const char* name : {"x", "y"}) AddNew(rule, KindElseAction, name);
        Action* action = rule.actions[row.from];
        rule.SwitchBranch(action, row.index);
        EXPECT_EQ(NamesOf(rule, KindAction), row.actions) << row.why;
        EXPECT_EQ(NamesOf(rule, KindElseAction), row.elseActions) << row.why;
        EXPECT_EQ(action->kind, KindElseAction) << row.why;
        rule.SwitchBranch(action, 0);
        EXPECT_EQ(rule.actions.front(), action) << row.why;
        EXPECT_EQ(action->kind, KindAction) << row.why;
    }
    Rule rule;
    Rule other;
    AddNew(rule, KindAction, "a");
    other.SwitchBranch(rule.actions.front(), 0);
    other.SwitchBranch(nullptr, 0);
    EXPECT_EQ(rule.actions.front()->kind, KindAction) << "another rule's action is left alone";
}

TEST_F(RuleTest, Attributes) {
    struct {
        const char* why;
        const char* line;
        bool taken;
        const char* evaluation;
        int disabled;
    } rows[] = {
        {"the flag", R"(IS_DISABLED="1")", true, "", 1},
        {"a flag that is not 1", R"(IS_DISABLED="0")", true, "", 0},
        {"only the exact 1 counts", R"(IS_DISABLED="true")", true, "", 0},
        {"a word", R"(EVALUATION="WARNING")", true, "WARNING", 0},
        {"another word", R"(EVALUATION="ERROR")", true, "ERROR", 0},
        {"an unknown word stays in memory", R"(EVALUATION="FATAL")", false, "FATAL", 0},
        {"words are compared exactly", R"(EVALUATION="Error")", false, "Error", 0},
        {"an unset field reads back as unset", R"(EVALUATION="")", true, "", 0},
        {"no key of a rule", R"(CODE="1")", false, "", 0},
    };
    for (const auto& row : rows) {
        Rule rule;
        ScenarioTextStream stream(row.line, std::strlen(row.line) + 1);
        EXPECT_EQ(rule.LoadAttribute(stream), row.taken) << row.why;
        EXPECT_EQ(rule.evaluation, row.evaluation) << row.why;
        EXPECT_EQ(rule.disabled, row.disabled) << row.why;
    }

    struct {
        const char* why;
        const char* attributes;
        bool reads;
    } blocks[] = {
        {"a flag that is off may come again", "IS_DISABLED='0' IS_DISABLED='1'", true},
        {"a flag that is on may not", "IS_DISABLED='1' IS_DISABLED='0'", false},
        {"the first word stands", "EVALUATION='ERROR' EVALUATION='NORMAL'", false},
        {"a bad word fails the text", "EVALUATION='FATAL'", false},
    };
    for (const auto& row : blocks) {
        const std::string text = "TYPEOF RULE (1)\n{\n" + EntryLines(row.attributes) + "}\n";
        EXPECT_EQ(host.Read(text) != nullptr, row.reads) << row.why;
    }
}

TEST_F(RuleTest, SavesWhatIsNotTheDefault) {
    struct {
        const char* why;
        const char* attributes;
        const char* saved;
    } rows[] = {
        {"nothing set", "", "\nTYPEOF RULE (1)\n{\n\tLABEL=\"\"\n}\n"},
        {"the defaults written out", "LABEL='x' IS_DISABLED='0' EVALUATION='NORMAL'",
         "\nTYPEOF RULE (1)\n{\n\tLABEL=\"x\"\n}\n"},
        {"both set", "EVALUATION='ERROR' IS_DISABLED='1'",
         "\nTYPEOF RULE (1)\n{\n\tLABEL=\"\"\n\tIS_DISABLED=\"1\"\n\tEVALUATION=\"ERROR\"\n}\n"},
    };
    for (const auto& row : rows) {
        const auto rule = host.Read("TYPEOF RULE (1)\n{\n" + EntryLines(row.attributes) + "}\n");
        ASSERT_TRUE(rule) << row.why;
        EXPECT_EQ(SavedText(*rule), row.saved) << row.why;
        const std::unique_ptr<ScenarioItem> clone(rule->Clone());
        EXPECT_EQ(SavedText(*clone), row.saved) << row.why << ", cloned";
    }
    // One that no load has ended has no word yet.
    const std::unique_ptr<ScenarioItem> fresh(CreateItem(KindRule, "1", nullptr));
    EXPECT_TRUE(host.Read(SavedText(*fresh)));
}

TEST_F(RuleTest, ShowsThatItIsDisabled) {
    Rule rule;
    rule.label = "Brake";
    rule.UpdateDisplayText();
    EXPECT_EQ(rule.displayText, "Brake");
    rule.disabled = 1;
    rule.UpdateDisplayText();
    EXPECT_EQ(rule.displayText, "//    Brake");
}

TEST_F(RuleTest, NameNumbersTheSourceOfEvents) {
    Rule rule;
    EXPECT_EQ(rule.GetObservableId(), 0xFFFFFFFFU);
    rule.SetName("12ab");
    EXPECT_EQ(rule.name, "12ab");
    EXPECT_EQ(rule.GetObservableId(), 12U);
    rule.SetName("ab");
    EXPECT_EQ(rule.GetObservableId(), 0U);
    rule.SetName("-3");
    EXPECT_EQ(rule.GetObservableId(), 0xFFFFFFFDU);
}

TEST_F(RuleTest, ActsAtEveryStepAndTellsOfChanges) {
    const auto rule = Switched();
    ASSERT_TRUE(rule) << host.log.str();
    host.log.str("");
    rule->Init("work", 10.0);
    EXPECT_EQ(host.log.str(), "\2Init rule [3]\n");
    EXPECT_EQ(rule->workPath, "work");
    EXPECT_EQ(rule->result, 2);

    StepAt(*rule, 10.5, false); // counts as a change, since nothing was known
    EXPECT_EQ(rule->activeTime, 0.5);
    StepAt(*rule, 11.0, false);
    StepAt(*rule, 12.0, true);
    StepAt(*rule, 13.0, true);
    StepAt(*rule, 15.0, false);
    EXPECT_EQ(host.TakeTrace(), "10.5 SAY 2\n10.5 rule 3 else\n"
                                "11.0 SAY 2\n"
                                "12.0 SAY 1\n12.0 rule 3 then\n"
                                "13.0 SAY 1\n"
                                "15.0 SAY 2\n15.0 rule 3 else\n");
    EXPECT_EQ(rule->activationCount, 1);
    EXPECT_EQ(rule->activeTime, 3.5);
    EXPECT_EQ(rule->lastChangeTime, 15.0);

    rule->level = 4;
    EXPECT_EQ(rule->Level(), 4);
    rule->Init("work", 20.0);
    EXPECT_EQ(rule->Level(), 0) << "only a rule that was true counts";
    EXPECT_EQ(rule->activeTime, 0.0);
    EXPECT_EQ(rule->activationCount, 0);
}

TEST_F(RuleTest, TimeMayStandStillOrRunBackwards) {
    const auto rule = Switched();
    ASSERT_TRUE(rule);
    rule->Init("", 5.0);
    StepAt(*rule, 5.0, true);
    StepAt(*rule, 5.0, false);
    EXPECT_EQ(rule->activeTime, 0.0);
    StepAt(*rule, 4.0, true);
    StepAt(*rule, 2.0, false);
    EXPECT_EQ(rule->activeTime, -2.0);
    EXPECT_EQ(rule->activationCount, 2);
}

TEST_F(RuleTest, WithoutConditionItFiresAlways) {
    const auto rule = Switched();
    ASSERT_TRUE(rule);
    rule->RemoveChild(rule->conditions.front());
    rule->Init("", 0.0);
    StepAt(*rule, 1.0, false);
    StepAt(*rule, 2.0, false);
    rule->conditions.push_back(nullptr);
    StepAt(*rule, 3.0, false);
    EXPECT_EQ(host.TakeTrace(), "1.0 SAY 1\n1.0 rule 3 then\n2.0 SAY 1\n3.0 SAY 1\n");
    EXPECT_EQ(rule->activationCount, 1);
    rule->conditions.clear();
}

TEST_F(RuleTest, DisabledItDoesNothing) {
    const auto rule = Switched("IS_DISABLED=\"1\"");
    ASSERT_TRUE(rule);
    rule->Init("", 0.0);
    StepAt(*rule, 1.0, true);
    EXPECT_EQ(host.TakeTrace(), "");
    EXPECT_EQ(rule->result, 2);
}

TEST_F(RuleTest, DisabledByItsConditionItStillActsWhenTrue) {
    const auto rule = Switched();
    ASSERT_TRUE(rule);
    ConditionTable()[3] = [&](const ParameterValues&) {
        rule->disabled = 1;
        return host.switches[1];
    };
    rule->Init("", 0.0);
    StepAt(*rule, 1.0, true);
    EXPECT_EQ(host.TakeTrace(), "1.0 SAY 1\n1.0 rule 3 then\n");
    rule->disabled = 0;
    StepAt(*rule, 2.0, false);
    EXPECT_EQ(host.TakeTrace(), "2.0 rule 3 else\n");
}

TEST_F(RuleTest, OnlyTheFirstConditionIsEvaluated) {
    const auto rule = Switched();
    ASSERT_TRUE(rule);
    int asked = 0;
    ConditionTable()[3] = [&](const ParameterValues&) { return ++asked > 0; };
    ScenarioItem* second = rule->conditions.front()->Clone();
    rule->AddChild(second, nullptr, true);
    rule->Init("", 0.0);
    rule->Step(1.0);
    EXPECT_EQ(asked, 1);
}

} // namespace
