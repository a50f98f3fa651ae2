#include <simulation/Calls.h>

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace TavrelSimulation;
using testing::ElementsAre;
using testing::HasSubstr;

std::unique_ptr<ScenarioItem> read(const std::string& text) {
    ScenarioTextStream stream(text.c_str(), text.size() + 1);
    ItemLoadContext context{nullptr, nullptr};
    return std::unique_ptr<ScenarioItem>(LoadScenarioText(stream, nullptr, &context, nullptr, false));
}

std::string block(const std::string& header, const std::string& content) {
    return "TYPEOF " + header + "\n{\n" + content + "}\n";
}

const std::string kModel = block(
    "FOLDER (model)", block("FOLDER (PARAMETER_LIST)",
                            block("PARAMETER (REF)", "TYPE=\"FLOAT\"\nUSAGE=\"BY_ADDRESS\"\nKINDLIST=\"VARIABLE\"\n"
                                                     "KIND=\"VARIABLE\"\nVALUE=\"1\"\n")) +
                          block("FOLDER (FUNCTION_LIST)", "") +
                          block("FOLDER (ACTION_LIST)",
                                block("ACTION (SET_ONE)",
                                      "CODE=\"40\"\n" + block("PARAMETER (REF)", "KIND=\"VARIABLE\"\nVALUE=\"1\"\n")) +
                                    block("ACTION (NOTHING_BEHIND)", "")) +
                          block("FOLDER (CONDITION_LIST)", block("CONDITION (IS_IT)", "CODE=\"30\"\n")));

const std::string kCall =
    block("ACTION (SET_ONE)", block("PARAMETER (REF)", "KIND=\"VARIABLE\"\nVALUE=\"1\"\nOWNER_FILE=\"%\"\n"));

std::string callOf(const std::string& file) {
    std::string call = kCall;
    return call.replace(call.find('%'), 1, file);
}

std::string variable() { return block("VARIABLE (1)", "TYPE=\"FLOAT\"\nVALUE=\"0\"\n"); }

class CallsTest : public testing::Test {
protected:
    CallsTest() {
        scenarioRootModel = nullptr;
        model = read(kModel);
        scenarioRootModel = dynamic_cast<Folders*>(model.get());
    }
    ~CallsTest() override { scenarioRootModel = nullptr; }

    std::unique_ptr<ScenarioItem> model;
};

// An include has a variable of the same number, in a file of its own, and stands first in the tree.
TEST_F(CallsTest, AReferenceMeansTheVariableThatReadingMeans) {
    ASSERT_TRUE(scenarioRootModel);
    const std::string rule = block("RULE (1)", block("CONDITION (IS_IT)", "") + callOf("own.sc"));
    const std::string included = block("INCLUDE (7)", "FILE=\"other.sc\"\n" + variable() + rule);
    const std::unique_ptr<ScenarioItem> root =
        read(block("SCENARIO (1)", "FILE=\"own.sc\"\n" + variable() + rule + included +
                                       block("TASK (3)", variable() + block("RULE (2)", block("CONDITION (IS_IT)", "") +
                                                                                            callOf("own.sc")))));
    auto* scenario = dynamic_cast<ScenarioLib::Scenario*>(root.get());
    ASSERT_TRUE(scenario);
    std::vector<std::string> callers;
    provide("IS_IT", [](const Call&) { return true; });
    provide("SET_ONE", [&](const Call& call) {
        callers.push_back(call.item.parent->name +
                          (call.Reference(0) ? " " + call.Reference(0)->parent->name : " none"));
        EXPECT_EQ(CallUnderWay(), &call.item);
        EXPECT_EQ(call.Reference(1), nullptr) << "there is no such argument";
    });
    scenario->Init("", 0);
    for (int step = 0; step < 3; ++step) scenario->StepScenario(step);
    EXPECT_THAT(callers, testing::Contains("2 3")) << "the innermost";
    EXPECT_THAT(callers, testing::Contains("1 1"));
    EXPECT_THAT(callers, testing::Contains("1 none")) << "the include has no variable of the file own.sc";
    EXPECT_EQ(CallUnderWay(), nullptr);
    EXPECT_EQ(ReferencedVariable(0), nullptr);
    ActionTable().resize(1);
    ConditionTable().resize(1);
}

TEST_F(CallsTest, WhatIsNoCallIsRefusedWithTheNearestName) {
    const auto refusal = [](auto provideIt) -> std::string {
        try {
            provideIt();
        } catch (const UnknownCall& error) {
            return error.what();
        }
        return "";
    };
    EXPECT_THAT(refusal([] { provide("SET_ON", [](const Call&) {}); }), HasSubstr("did you mean \"SET_ONE\""));
    EXPECT_THAT(refusal([] { provide("SET_ONE", [](const Call&) { return true; }); }), HasSubstr("no condition"));
    EXPECT_THAT(refusal([] { provide("NOTHING_BEHIND", [](const Call&) {}); }), HasSubstr("no CODE"));
    scenarioRootModel = nullptr;
    EXPECT_THAT(refusal([] { provide("SET_ONE", [](const Call&) {}); }), HasSubstr("no root model"));
}

} // namespace
