#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/ScriptWorld.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const char* const kModel = R"(
    TYPEOF FOLDER (model)
        TYPEOF FOLDER (PARAMETER_LIST)
            TYPEOF PARAMETER (speed) TYPE="FLOAT" KINDLIST="USER"
        TYPEOF FOLDER (FUNCTION_LIST)
        TYPEOF FOLDER (ACTION_LIST)
            TYPEOF ACTION (drive) LABEL="Drive" CODE="1"
                TYPEOF PARAMETER (speed) KIND="USER" VALUE="0"
            TYPEOF ACTION (idle) LABEL="Idle"
        TYPEOF FOLDER (CONDITION_LIST)
            TYPEOF CONDITION (always) CODE="0")";

class ActionTest : public testing::Test {
protected:
    ~ActionTest() override { ActionTable().resize(1); }

    ScriptWorld world{kModel};
};

TEST_F(ActionTest, BothBranchesFindTheirDefinitionAmongTheActions) {
    const auto rule = world.Read(R"(
        TYPEOF RULE (r)
            TYPEOF CONDITION (always)
            TYPEOF ACTION (drive)
                TYPEOF PARAMETER (speed) KIND="USER" VALUE="5"
            TYPEOF ELSE_ACTION (idle))");
    ASSERT_TRUE(rule) << world.cause;
    auto& drive = *static_cast<Rule&>(*rule).actions[0];
    auto& idle = *static_cast<Rule&>(*rule).elseActions[0];
    EXPECT_EQ(idle.model, world.root->FindItem(KindAction, "idle", ""));
    EXPECT_EQ(world.Find<Action>(*world.root, KindAction, "idle").returnType, "VOID");
    rule->UpdateDisplayTextTree();
    EXPECT_EQ(drive.displayText, "THEN  Drive  (5)");
    EXPECT_EQ(idle.displayText, "ELSE  Idle  ()");
    EXPECT_TRUE(drive.valid && idle.valid);
    world.Find<Action>(*world.root, KindAction, "drive").UpdateDisplayText();
    EXPECT_EQ(world.root->FindItem(KindAction, "drive", "")->displayText, "THEN  drive    (Drive)    (1)");

    EXPECT_EQ(world.Read("TYPEOF ELSE_ACTION (drvie)\n{\n}\n"), nullptr);
    EXPECT_EQ(world.cause, "unknown action \"drvie\", did you mean \"drive\"");
}

TEST_F(ActionTest, ValidOnlyAfterWhatARuleTests) {
    Action action;
    action.kind = KindAction;
    const auto isValid = [&] {
        action.UpdateValidity();
        return action.valid;
    };
    EXPECT_FALSE(isValid()) << "alone";
    Task task;
    task.kind = KindTask;
    task.AddChild(CreateItem(KindVariable, "1", nullptr), nullptr, true);
    action.parent = &task;
    EXPECT_FALSE(isValid()) << "in a task";
    Rule rule;
    rule.kind = KindRule;
    action.parent = &rule;
    rule.AddChild(CreateItem(KindAction, "other", nullptr), nullptr, true);
    EXPECT_FALSE(isValid()) << "among actions alone";
    action.UpdateDisplayText();
    EXPECT_THAT(action.displayText, HasSubstr("THEN  "));
    rule.AddChild(CreateItem(KindVariable, "1", nullptr), nullptr, true);
    EXPECT_TRUE(isValid()) << "with a variable";
    rule.RemoveChild(rule.variables[0]);
    rule.AddChild(CreateItem(KindCondition, "c", nullptr), nullptr, true);
    EXPECT_TRUE(isValid()) << "with a condition";
    action.name = "EVALUATION_SCORE";
    EXPECT_FALSE(isValid()) << "measuring without criteria";
}

TEST_F(ActionTest, ExecuteCallsTheEntry) {
    ActionTable().resize(3);
    std::vector<float> speeds;
    ActionTable()[1] = [&](const ParameterValues& values) { speeds.push_back(values[0].number); };
    const auto item = world.Read(R"(
        TYPEOF ACTION (drive)
            TYPEOF PARAMETER (speed) KIND="USER" VALUE="5")");
    ASSERT_TRUE(item) << world.cause;
    auto& action = static_cast<Action&>(*item);
    auto& definition = world.Find<Action>(*world.root, KindAction, "drive");
    action.Execute();
    action.parameters[0]->value = "6";
    action.Execute();
    definition.codeNumber = -1;
    action.Execute();
    definition.codeNumber = 0;
    action.Execute();
    EXPECT_EQ(world.TakeLog(), "");
    // A place that the host left empty is as good as none.
    definition.codeNumber = 2;
    action.Execute();
    EXPECT_EQ(world.TakeLog(), "\004ACTION [drive]: no implementation for CODE 2\n");
    EXPECT_THAT(speeds, ElementsAre(5.0F, 6.0F));
    ActionTable()[2] = [](const ParameterValues&) { throw std::runtime_error("broken"); };
    EXPECT_THROW(action.Execute(), std::runtime_error);
}

TEST_F(ActionTest, BrokenExpectationsEndTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    Action action;
    action.kind = KindAction;
    EXPECT_DEATH(action.UpdateDisplayText(), "Assertion failed: action:74\n");
    action.SetModel(nullptr);
    EXPECT_DEATH(action.Execute(), "Assertion failed: action:112\n");
}

} // namespace
