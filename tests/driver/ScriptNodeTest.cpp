#include <iostream>
#include <sstream>

#include <support/DriverTest.h>

namespace {

const char* const kVariable = R"(
    TYPEOF VARIABLE (12) LABEL="Score" INTERACTIVE_TYPE="INTEGER" VALUE="7"
)";

std::string variableNamed(const std::string& name) { return "TYPEOF VARIABLE (" + name + ")\n{\n}\n"; }

class ScriptNodeTest : public testing::Test {
protected:
    cfg::ScenarioScript* addScript(const std::string& name, const std::string& text, const std::string& type = "nuro") {
        auto* script = dynamic_cast<cfg::ScenarioScript*>(root->createSubSection("ScenarioScript"));
        script->name = name;
        script->scriptType = type;
        script->text = text;
        return script;
    }

    // "id label=value" for each variable.
    static std::vector<std::string> variables(const ScenarioNode& node) {
        std::vector<ScenarioParameter*> parameters{nullptr};
        node.getParameters(parameters);
        std::vector<std::string> texts;
        for (const ScenarioParameter* parameter : parameters)
            texts.push_back(parameter->getId() + " " + parameter->getName() + "=" + parameter->getValueAsString());
        return texts;
    }

    Failure failureOfScript(const std::string& text) {
        cfg::ScenarioScript* script = addScript("main", text);
        const Failure failure = failureOf([&] { TavrelScenarioNode tree(root, nullptr); });
        root->removeSubSection(script);
        return failure;
    }

    cfg::CfgScenario file;
    cfg::Section* root = file.getRootSection();
};

TEST_F(ScriptNodeTest, OnlyScriptsWithATextOfOurKindGetANode) {
    const std::string text = ScriptText(kVariable);
    addScript("empty text", "");
    addScript("ours", text);
    addScript("another kind", "no script at all", "python");
    addScript("kind in capitals", "no script at all", "NURO");
    addScript("kind not told", text, "");
    root->createSubSection("Weather");
    const TavrelScenarioNode tree(root, nullptr);
    ASSERT_EQ(tree.getChildNumber(), 3U);
    EXPECT_EQ(tree.getChild(std::size_t(0))->getName(), "Weather") << "scripts come last";
    EXPECT_EQ(tree.getChild(std::size_t(1))->getName(), "ScenarioScript - ours");
    EXPECT_EQ(tree.getChild(std::size_t(2))->getName(), "ScenarioScript - kind not told");
}

// Siblings come in the order of their labels. What an include brought along is not the script's own.
TEST_F(ScriptNodeTest, VariablesAreThoseOfTheScriptItself) {
    addScript("main", ScriptText(R"(
        TYPEOF SCENARIO (1)
            TYPEOF VARIABLE (2) LABEL="z" VALUE="1.50"
            TYPEOF VARIABLE (12abc) LABEL="b"
            TYPEOF INCLUDE (5)
                TYPEOF VARIABLE (3) LABEL="foreign"
            TYPEOF TASK (4) LABEL="a task"
                TYPEOF VARIABLE (-1) LABEL="inner" VALUE="x"
    )"));
    const TavrelScenarioNode tree(root, nullptr);
    const ScenarioNode* script = tree.getChild(std::size_t(0));
    EXPECT_THAT(variables(*script), ElementsAre("Variable[name=18446744073709551615]/value inner=x",
                                                "Variable[name=12]/value b=", "Variable[name=2]/value z=1.50"));
    EXPECT_EQ(script->getParameterNumber(), 3U);
    for (std::size_t index = 0; index < 3; ++index) {
        const ScenarioParameter* parameter = script->getParameter(index);
        EXPECT_EQ(parameter->getIndex(), index);
        EXPECT_EQ(parameter->getParentNode(), script);
        EXPECT_TRUE(parameter->isReal()) << "without a type a variable counts as real";
        EXPECT_EQ(parameter->getParameterId(),
                  "/sce/Scenario/ScenarioScript[scriptName=\"main\"]/" + parameter->getId());
        EXPECT_EQ(script->getParameter(parameter->getId()), parameter);
    }
}

TEST_F(ScriptNodeTest, AnyItemMayBeTheTop) {
    const std::pair<std::string, std::vector<std::string>> rows[] = {
        {ScriptText(kVariable), {"Variable[name=12]/value Score=7"}},
        {ScriptText("TYPEOF FOLDER (f)\n{\n}"), {}},
        {ScriptText("TYPEOF INCLUDE (1)\n{\n    TYPEOF VARIABLE (1)\n    {\n    }\n}"), {}},
    };
    for (const auto& [text, expected] : rows) {
        cfg::ScenarioScript* script = addScript("main", text);
        const TavrelScenarioNode tree(root, nullptr);
        EXPECT_EQ(variables(*tree.getChild(std::size_t(0))), expected) << text;
        root->removeSubSection(script);
    }
}

TEST_F(ScriptNodeTest, ItReadsOnceAndKeepsTexts) {
    cfg::ScenarioScript* script = addScript("main", ScriptText(kVariable));
    const TavrelScenarioNode tree(root, nullptr);
    const ScenarioNode* node = tree.getChild(std::size_t(0));
    script->text = "changed";
    script->name = "renamed";
    EXPECT_THAT(variables(*node), ElementsAre("Variable[name=12]/value Score=7"));
    EXPECT_EQ(node->getId(), "ScenarioScript[scriptName=\"renamed\"]");
    EXPECT_EQ(node->getNodeId(), "/sce/Scenario/ScenarioScript[scriptName=\"renamed\"]");
    EXPECT_EQ(ScriptNode(addScript("alone", ScriptText(kVariable)), nullptr).getNodeId(),
              "ScenarioScript[scriptName=\"alone\"]");
    EXPECT_EQ(script->text, "changed") << "nothing is written back";
}

TEST_F(ScriptNodeTest, ChildrenAreRefusedRatherThanNone) {
    addScript("main", ScriptText(kVariable));
    const TavrelScenarioNode tree(root, nullptr);
    const ScenarioNode* node = tree.getChild(std::size_t(0));
    const Failure refused = byPointer(-1, "Scenario script <main> never has children node!");
    std::vector<ScenarioNode*> children;
    EXPECT_EQ(node->getChildNumber(), 0U);
    EXPECT_EQ(failureOf([&] { node->getChild("x"); }), refused);
    EXPECT_EQ(failureOf([&] { node->getChild(std::size_t(0)); }), refused);
    EXPECT_EQ(failureOf([&] { node->getChildren(children); }), refused);
    EXPECT_EQ(failureOf([&] { node->getChildIndex(&tree); }),
              byPointer(-1, "Script nodes cannot have children nodes."));
    EXPECT_EQ(failureOf([&] { node->getParameter(std::size_t(1)); }),
              byPointer(-1, "Out of bound child index of the scenario parameter : main"));
    EXPECT_EQ(failureOf([&] { node->getParameter("Score"); }),
              byPointer(-1, "No child parameter with id=Score in scenario node : ScenarioScript - main"));
    const ScriptNode other(addScript("other", ScriptText(kVariable)), nullptr);
    EXPECT_EQ(failureOf([&] { node->getParameterIndex(other.getParameter(std::size_t(0))); }),
              byPointer(-1, "The child node Score was not found in parent script node main"));
}

TEST_F(ScriptNodeTest, AScriptThatCannotBeReadTellsItsRow) {
    struct Row {
        const char* why;
        std::string text;
        const char* rowAndLine;
    };
    const Row rows[] = {
        {"no item at all", "nonsense and more\nsecond line\n", "row 1:\nnonsense and more"},
        {"an unknown line inside", "TYPEOF VARIABLE (1)\n{\n\tCOLOUR=\"red\"\n}\n", "row 3:\nCOLOUR=\"red\""},
        {"cut short", "TYPEOF VARIABLE (1)\n{\n", "row 3:\n"},
        {"a line ends at a single quote", "it's\n", "row 1:\nit"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(failureOfScript(row.text),
                  byValue(-1, std::string("Unable to parse script main :\n\4main - ") + row.rowAndLine + "\n"))
            << row.why;
    const Failure longLine = failureOfScript(std::string(1000, 'x'));
    EXPECT_EQ(longLine.message, "Unable to parse script main :\n\4main - row 1:\n" + std::string(255, 'x') + "\n");
    EXPECT_EQ(failureOfScript("TYPEOF VARIABLE (1)\n{\n\tINTERACTIVE_MIN_VALUE=\"low\"\n}\n"),
              byValue(-1, "Unable to parse script main :\nbad lexical cast: source type value could not be interpreted "
                          "as target\n"));
}

TEST_F(ScriptNodeTest, ARowIsPlainInEveryLocale) {
    struct Grouping : std::numpunct<char> {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale(), new Grouping));
    EXPECT_EQ(failureOfScript("TYPEOF VARIABLE (1)\n{\n" + std::string(1232, '\n') + "wrong\n}\n").message,
              "Unable to parse script main :\n\4main - row 1235:\nwrong\n");
    std::locale::global(before);
}

TEST_F(ScriptNodeTest, AVariableNeedsANumber) {
    for (const char* name : {"abc", "-", " x"})
        EXPECT_EQ(failureOfScript(variableNamed(name)),
                  byValue(-1, std::string("Unable to convert variable id : ") + name + " in script main"));
    addScript("main", variableNamed("9223372036854775808"));
    try {
        TavrelScenarioNode tree(root, nullptr);
        FAIL() << "too large for an id";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "stoll argument out of range");
    }
}

// The log of the parse is gone when the node stands.
TEST_F(ScriptNodeTest, TheLogOfTheModelIsPutBack) {
    std::ostringstream log;
    scenarioLog = &log;
    addScript("main", ScriptText(kVariable));
    {
        const TavrelScenarioNode tree(root, nullptr);
        EXPECT_EQ(scenarioLog, &log);
    }
    addScript("broken", "nonsense");
    EXPECT_EQ(failureOf([&] { TavrelScenarioNode tree(root, nullptr); }).code, -1);
    EXPECT_EQ(scenarioLog, &log);
    scenarioLog = nullptr;
}

} // namespace
