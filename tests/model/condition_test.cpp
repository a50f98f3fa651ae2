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
            TYPEOF PARAMETER (a) TYPE="FLOAT" KINDLIST="USER"
            TYPEOF PARAMETER (b) TYPE="FLOAT" KINDLIST="USER"
        TYPEOF FOLDER (FUNCTION_LIST)
        TYPEOF FOLDER (ACTION_LIST)
        TYPEOF FOLDER (CONDITION_LIST)
            TYPEOF CONDITION (AND) LABEL="and"
            TYPEOF CONDITION (OR) LABEL="or" CODE="2"
            TYPEOF CONDITION (SUPEQUAL) LABEL="at least" CODE="1"
                TYPEOF PARAMETER (a) KIND="USER" VALUE="0"
                TYPEOF PARAMETER (b) KIND="USER" VALUE="0"
            TYPEOF CONDITION (FOG) LABEL="Fog" CODE="0"
            TYPEOF CONDITION (MUTE) LABEL="Mute")";

class ConditionTest : public testing::Test {
protected:
    ConditionTest() {
        ConditionTable().resize(3);
        ConditionTable()[1] = [this](const ParameterValues& values) {
            ++calls;
            return values[0].number >= values[1].number;
        };
        ConditionTable()[2] = [this](const ParameterValues&) {
            ++calls;
            return false;
        };
    }
    ~ConditionTest() override { ConditionTable().resize(1); }

    std::unique_ptr<Condition> Read(const std::string& name, const std::string& lines = "") {
        std::unique_ptr<ScenarioItem> item = world.ReadText("TYPEOF CONDITION (" + name + ")\n{\n" + lines + "}\n");
        auto* condition = dynamic_cast<Condition*>(item.get());
        if (!condition) return nullptr;
        item.release();
        return std::unique_ptr<Condition>(condition);
    }
    // A condition that is true while `a` is at least 1.
    static std::string Leaf(const char* a = "0", const std::string& lines = "") {
        return "TYPEOF CONDITION (SUPEQUAL)\n{\n" + lines + "TYPEOF PARAMETER (a)\n{\nKIND=\"USER\"\nVALUE=\"" + a +
               "\"\n}\nTYPEOF PARAMETER (b)\n{\nKIND=\"USER\"\nVALUE=\"1\"\n}\n}\n";
    }
    static void Set(Condition& leaf, bool isTrue) { leaf.parameters[0]->value = isTrue ? "1" : "0"; }

    ScriptWorld world{kModel};
    int calls = 0;
};

TEST_F(ConditionTest, AttributesOfAnInstance) {
    struct Case {
        const char* why;
        const char* lines;
        std::uint32_t row; // of the refusal, 0 if taken
        const char* cause;
        const char* modifier;
        float duration;
        const char* saved;
    };
    const Case cases[] = {
        {"nothing", "", 0, "", "IS_TRUE", -1.0F, ""},
        {"default", "MODIFIER='IS_TRUE'", 0, "", "IS_TRUE", -1.0F, ""},
        {"change", "MODIFIER='BECOMES_FALSE'", 0, "", "BECOMES_FALSE", -1.0F, "\tMODIFIER=\"BECOMES_FALSE\"\n"},
        {"unknown", "MODIFIER='BECOMES_TURE'", 1, "unknown MODIFIER \"BECOMES_TURE\", did you mean \"BECOMES_TRUE\"",
         "", 0, ""},
        {"unset, as it is written", "MODIFIER=''", 0, "", "IS_TRUE", -1.0F, ""},
        {"second", "MODIFIER='IS_TRUE' MODIFIER='IS_TRUE'", 2, "", "", 0, ""},
        {"span", "DURATION='2.5' MODIFIER='HAS_BEEN_TRUE_FOR'", 0, "", "HAS_BEEN_TRUE_FOR", 2.5F,
         "\tMODIFIER=\"HAS_BEEN_TRUE_FOR\"\n\tDURATION=\"2.500000\"\n"},
        {"span without a duration", "MODIFIER='HAS_BEEN_FALSE_FOR' DURATION=''", 0, "", "HAS_BEEN_FALSE_FOR", -1.0F,
         "\tMODIFIER=\"HAS_BEEN_FALSE_FOR\"\n\tDURATION=\"\"\n"},
        {"duration of another modifier", "DURATION='2.5'", 0, "", "IS_TRUE", 2.5F, ""},
        {"unset duration stays open", "DURATION='-1' DURATION='3 s'", 0, "", "IS_TRUE", 3.0F, ""},
        {"second duration", "DURATION='1' DURATION='2'", 2, "", "", 0, ""},
        {"word", "DURATION='long'", 0, "", "IS_TRUE", 0.0F, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.why);
        const auto condition = Read("FOG", EntryLines(c.lines));
        ASSERT_EQ(condition == nullptr, c.row != 0) << world.cause;
        if (!condition) {
            EXPECT_EQ(world.row, 2 + c.row);
            EXPECT_THAT(world.cause, HasSubstr(c.cause));
            continue;
        }
        EXPECT_EQ(condition->modifier, c.modifier);
        EXPECT_EQ(condition->duration, c.duration);
        EXPECT_EQ(SavedText(*condition), "\nTYPEOF CONDITION (FOG)\n{\n" + std::string(c.saved) + "}\n");
    }
}

TEST_F(ConditionTest, JunctionsTakeConditionsAlone) {
    EXPECT_TRUE(Read("AND", Leaf() + Leaf())) << world.cause;
    EXPECT_TRUE(Read("AND")) << world.cause;
    EXPECT_FALSE(Read("AND", "TYPEOF PARAMETER (a)\n{\nKIND=\"USER\"\n}\n"));
    EXPECT_FALSE(Read("OR", "TYPEOF FUNCTION (a)\n{\n}\n"));
    EXPECT_FALSE(Read("FOG", Leaf()));
    EXPECT_FALSE(Read("SUPEQUAL"));
    EXPECT_FALSE(Read("SUPEQAL"));
    EXPECT_EQ(world.cause, "unknown condition \"SUPEQAL\", did you mean \"SUPEQUAL\"");
    EXPECT_EQ(world.Find<Condition>(*world.root, KindCondition, "FOG").returnType, "BOOL");
}

TEST_F(ConditionTest, WhatTheFactoryMakesReadsBack) {
    Folders list;
    list.kind = KindFolder;
    list.name = "CONDITION_LIST";
    list.AddChild(CreateItem(KindCondition, "FOG", nullptr), nullptr, true);
    Folders* const model = std::exchange(scenarioRootModel, nullptr);
    EXPECT_NE(world.ReadText(SavedText(list)), nullptr) << world.cause;
    scenarioRootModel = model;
}

TEST_F(ConditionTest, SavesAndClonesAJunction) {
    const auto condition = Read("OR", Leaf("1", "MODIFIER=\"HAS_BEEN_TRUE_FOR\"\nDURATION=\"0.1234567\"\n"));
    ASSERT_TRUE(condition) << world.cause;
    EXPECT_EQ(SavedText(*condition), ScriptText(R"(

        TYPEOF CONDITION (OR)
        {

            TYPEOF CONDITION (SUPEQUAL)
            {
                MODIFIER="HAS_BEEN_TRUE_FOR"
                DURATION="0.123457"

                TYPEOF PARAMETER (a)
                {
                    KIND="USER"
                    VALUE="1"
                    OWNER_FILE=""
                }

                TYPEOF PARAMETER (b)
                {
                    KIND="USER"
                    VALUE="1"
                    OWNER_FILE=""
                }
            }
        })"));
    condition->weight = 3.0;
    condition->subConditions[0]->weight = 3.0;
    std::unique_ptr<ScenarioItem> item(condition->Clone());
    auto& clone = static_cast<Condition&>(*item);
    EXPECT_EQ(clone.weight, 50000.0) << "a junction copies its modifier alone";
    EXPECT_EQ(clone.modifier, "IS_TRUE");
    EXPECT_EQ(clone.codeNumber, 2);
    const Condition& sub = *clone.subConditions.at(0);
    EXPECT_EQ(sub.weight, 3.0);
    EXPECT_EQ(sub.modifier, "HAS_BEEN_TRUE_FOR");
    EXPECT_EQ(sub.duration, 0.123457F) << "by way of its text";
    EXPECT_EQ(SavedText(clone), SavedText(*condition));
    condition->subConditions[0]->duration = -1.0F;
    std::unique_ptr<ScenarioItem> unset(condition->subConditions[0]->Clone());
    EXPECT_EQ(static_cast<Condition&>(*unset).duration, -1.0F);
}

TEST_F(ConditionTest, TextsOfConditions) {
    Rule rule;
    rule.kind = KindRule;
    const auto shown = [&](const std::unique_ptr<Condition>& condition, ScenarioItem* parent) {
        condition->parent = parent;
        condition->UpdateDisplayTextTree();
        return condition->displayText;
    };
    Task task;
    task.kind = KindTask;
    const auto leaf = [&](const std::string& lines) {
        return Read("SUPEQUAL", lines +
                                    "TYPEOF PARAMETER (a)\n{\nKIND=\"USER\"\nVALUE=\"2\"\n}\nTYPEOF PARAMETER (b)\n{\n"
                                    "KIND=\"USER\"\nVALUE=\"1\"\n}\n");
    };
    EXPECT_EQ(shown(leaf(""), &task), "2  >=  1");
    EXPECT_EQ(shown(leaf(""), &rule), "IF    2  >=  1");
    EXPECT_EQ(shown(Read("FOG"), &task), "Fog  ()");
    EXPECT_EQ(shown(Read("AND"), &task), "[  AND  ?  ]");
    EXPECT_EQ(shown(Read("OR", Leaf() + Leaf("7")), &rule), "IF    [  0  >=  1  ]  OR  [  7  >=  1  ]");
    EXPECT_EQ(shown(Read("AND", "MODIFIER=\"IS_FALSE\"\n" + Leaf("3", "MODIFIER=\"BECOMES_TRUE\"\n")), &task),
              "[  3  >=  1    BECOMES TRUE  ]    IS FALSE");
    struct Case {
        const char* modifier;
        const char* expected;
    };
    const Case cases[] = {
        {"IS_TRUE", "Fog  ()"},
        {"IS_FALSE", "Fog  ()    IS FALSE"},
        {"BECOMES_TRUE", "Fog  ()    BECOMES TRUE"},
        {"BECOMES_FALSE", "Fog  ()    BECOMES FALSE"},
        {"HAS_BEEN_TRUE", "Fog  ()    HAS BEEN TRUE"},
        {"HAS_BEEN_FALSE", "Fog  ()    HAS BEEN FALSE"},
        {"HAS_BEEN_TRUE_FOR", "Fog  ()    HAS BEEN TRUE FOR  1.500000  second(s)"},
        {"HAS_BEEN_FALSE_FOR", "Fog  ()    HAS BEEN FALSE FOR  1.500000  second(s)"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(shown(Read("FOG", std::string("DURATION=\"1.5\"\nMODIFIER=\"") + c.modifier + "\"\n"), &task),
                  c.expected);
    }
    EXPECT_EQ(shown(Read("FOG", "MODIFIER=\"HAS_BEEN_TRUE_FOR\"\n"), &task),
              "Fog  ()    HAS BEEN TRUE FOR    second(s)");
    auto& definition = world.Find<Condition>(*world.root, KindCondition, "FOG");
    definition.UpdateDisplayText();
    EXPECT_EQ(definition.displayText, "FOG    (Fog)");

    // Which sign stands between is decided by the definition.
    const char* const signs[][2] = {{"EQUAL", "="},     {"NOTEQUAL", "!="}, {"INFERIOR", "<"},
                                    {"INFEQUAL", "<="}, {"SUPERIOR", ">"},  {"SUPEQUAL", ">="}};
    const auto compared = leaf("");
    for (const auto& [name, sign] : signs) {
        compared->model->name = name;
        EXPECT_EQ(shown(compared, &task), std::string("2  ") + sign + "  1");
    }
}

TEST_F(ConditionTest, AComparisonWithoutItsParametersHasNoTexts) {
    Condition definition;
    definition.kind = KindCondition;
    definition.name = "SUPEQUAL";
    definition.SetModel(&definition);
    Condition comparison;
    comparison.kind = KindCondition;
    comparison.name = "SUPEQUAL";
    comparison.modifier = "IS_TRUE";
    comparison.parent = &definition;
    comparison.SetModel(&definition);
    comparison.parameters = {nullptr, nullptr};
    comparison.UpdateDisplayText();
    EXPECT_EQ(comparison.displayText, "  >=  ");
    comparison.parameters.clear();
}

TEST_F(ConditionTest, ValidityOfConditions) {
    Rule rule;
    rule.kind = KindRule;
    const auto isValid = [](ScenarioItem& item) {
        item.UpdateDisplayTextTree();
        return item.IsValid();
    };
    Task task;
    task.kind = KindTask;
    const auto fog = Read("FOG");
    fog->parent = &task;
    EXPECT_TRUE(isValid(*fog));
    const auto empty = Read("AND");
    empty->parent = &task;
    EXPECT_FALSE(isValid(*empty));
    const auto junction = Read("AND", Leaf() + Leaf());
    junction->parent = &task;
    EXPECT_TRUE(isValid(*junction));
    junction->subConditions[1]->parameters[0]->value = "x";
    EXPECT_FALSE(isValid(*junction));

    rule.AddChild(Read("FOG").release(), nullptr, true);
    rule.AddChild(Read("FOG").release(), nullptr, true);
    EXPECT_TRUE(isValid(*rule.conditions[0]));
    EXPECT_FALSE(isValid(*rule.conditions[1]));
    rule.AddChild(CreateItem(KindVariable, "1", nullptr), nullptr, true);
    EXPECT_FALSE(isValid(*rule.conditions[0])) << "a variable is the rule's first child";
}

TEST_F(ConditionTest, ModifiersReadTheTruthOverTime) {
    struct Case {
        const char* modifier;
        const char* expected; // at each time: whether Evaluate is true
    };
    // The truth values at 0.0, 0.5, 1.0 and so on.
    const std::string truth = "TTFFFTTT";
    const Case cases[] = {
        {"IS_TRUE", "TTFFFTTT"},           {"IS_FALSE", "FFTTTFFF"},           {"BECOMES_TRUE", "TFFFFTFF"},
        {"BECOMES_FALSE", "FFTFFFFF"},     {"HAS_BEEN_TRUE", "TTTTTTTT"},      {"HAS_BEEN_FALSE", "FFTTTTTT"},
        {"HAS_BEEN_TRUE_FOR", "FFFFFFFT"}, {"HAS_BEEN_FALSE_FOR", "FFFFTFFF"}, {"SOMETIMES", "FFFFFFFF"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.modifier);
        const auto junction = Read("AND", Leaf());
        junction->modifier = c.modifier;
        junction->duration = 1.0F;
        junction->Init(0.0);
        world.TakeLog();
        std::string results;
        for (std::size_t i = 0; i < truth.size(); ++i) {
            Set(*junction->subConditions[0], truth[i] == 'T');
            results += junction->Evaluate(0.5 * static_cast<double>(i)) ? 'T' : 'F';
        }
        EXPECT_EQ(results, c.expected);
        EXPECT_EQ(junction->lastChangeTime, 2.5);
        const bool isUnknown = c.modifier == std::string("SOMETIMES");
        EXPECT_EQ(world.TakeLog().find("\003Unknown modifier SOMETIMES\n") == 0, isUnknown);
    }
}

TEST_F(ConditionTest, UnsetDurationHoldsAtOnce) {
    const auto condition = Read("FOG", "MODIFIER=\"HAS_BEEN_TRUE_FOR\"\n");
    condition->Init(5.0);
    EXPECT_TRUE(condition->Evaluate(5.0));
    // Time may stand still or run backwards.
    EXPECT_TRUE(condition->Evaluate(4.0));
    EXPECT_FALSE(condition->Evaluate(3.0));
}

TEST_F(ConditionTest, InitForgetsTheHistory) {
    const auto junction = Read("OR", Leaf("1", "MODIFIER=\"BECOMES_TRUE\"\n"));
    Condition& leaf = *junction->subConditions[0];
    EXPECT_TRUE(junction->Evaluate(0.0));
    EXPECT_FALSE(junction->Evaluate(1.0));
    EXPECT_EQ(leaf.hasBeenTrue + leaf.hasBeenFalse, 1);
    EXPECT_EQ(junction->hasBeenTrue + junction->hasBeenFalse, 2);
    junction->Init(2.0);
    for (const Condition* condition : std::initializer_list<const Condition*>{&leaf, junction.get()}) {
        EXPECT_EQ(condition->state, 2);
        EXPECT_EQ(condition->hasBeenTrue + condition->hasBeenFalse, 0);
        EXPECT_EQ(condition->lastChangeTime, 2.0);
    }
    EXPECT_TRUE(junction->Evaluate(3.0));
}

TEST_F(ConditionTest, JunctionsEvaluateEveryBranch) {
    struct Case {
        const char* name;
        const char* branches;
        bool expected;
        std::int32_t state;
    };
    const Case cases[] = {
        {"AND", "TT", true, 1},
        {"AND", "FT", false, 0},
        {"AND", "TF", false, 0},
        {"OR", "FF", false, 0},
        {"OR", "TF", true, 1},
        {"OR", "FT", true, 1},
        // Of another name the branches decide nothing.
        {"FOG", "FF", true, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.name) + " " + c.branches);
        const auto junction =
            Read("AND", Leaf(c.branches[0] == 'T' ? "1" : "0") + Leaf(c.branches[1] == 'T' ? "1" : "0"));
        junction->name = c.name;
        calls = 0;
        EXPECT_EQ(junction->Evaluate(0.0), c.expected);
        EXPECT_EQ(junction->state, c.state);
        EXPECT_EQ(calls, 2);
        EXPECT_EQ(junction->subConditions[1]->hasBeenTrue + junction->subConditions[1]->hasBeenFalse, 1);
    }
    // Without branches an OR is a call like any other.
    calls = 0;
    EXPECT_FALSE(Read("OR")->Evaluate(0.0));
    EXPECT_EQ(calls, 1);
}

TEST_F(ConditionTest, ConditionWithoutAnImplementationIsFalse) {
    const auto mute = Read("MUTE");
    world.TakeLog();
    EXPECT_FALSE(mute->Evaluate(1.0));
    EXPECT_EQ(mute->state, 0);
    EXPECT_EQ(mute->hasBeenFalse, 1);
    EXPECT_EQ(world.TakeLog(), "");
    static_cast<Condition*>(mute->model)->codeNumber = 77;
    mute->modifier = "IS_FALSE";
    EXPECT_TRUE(mute->Evaluate(2.0));
    EXPECT_EQ(world.TakeLog(), "\004CONDITION [MUTE]: no implementation for CODE 77\n");
}

TEST_F(ConditionTest, CodeComesFromTheLastDefinition) {
    const auto fog = Read("FOG");
    EXPECT_EQ(fog->codeNumber, 0);
    Condition instance;
    instance.SetModel(fog.get());
    EXPECT_EQ(instance.codeNumber, 0);
    instance.SetModel(nullptr);
    EXPECT_EQ(instance.codeNumber, 0);
}

TEST_F(ConditionTest, ChildrenStandByTheirKind) {
    const auto junction = Read("OR", Leaf() + Leaf("7"));
    auto* parameter = AddNew(*junction, KindParameter, "a");
    auto* front = CreateItem(KindCondition, "front", nullptr);
    junction->AddChild(front, parameter, false);
    EXPECT_EQ(NamesOf(*junction), "front SUPEQUAL SUPEQUAL a ");
    EXPECT_EQ(NamesOf(*junction, KindParameter), "a ");
    junction->SwapChildren(front, parameter);
    EXPECT_EQ(junction->subConditions[0], front) << "no swap across the lists";
    junction->RemoveChild(parameter);
    EXPECT_TRUE(junction->parameters.empty());
}

TEST_F(ConditionTest, BrokenExpectationsEndTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    Condition loose;
    loose.kind = KindCondition;
    Function call;
    call.kind = KindFunction;
    Task task;
    struct Case {
        const char* why;
        const char* site;
        std::function<void()> provoke;
    };
    const Case cases[] = {
        {"text without a parent", "Condition:283", [&] { loose.UpdateDisplayText(); }},
        {"text without a model", "Condition:281",
         [&] { loose.parent = &task, loose.Token::SetModel(nullptr), loose.UpdateDisplayText(); }},
        {"text with a model of another kind", "Condition:282",
         [&] { loose.parent = &task, loose.Token::SetModel(&call), loose.UpdateDisplayText(); }},
        {"evaluation without a model", "Condition:379", [&] { loose.SetModel(nullptr), loose.Evaluate(0.0); }},
        {"copy to another kind", "Condition:263", [&] { loose.CopyUserAttributes(&call); }},
        {"null child", "Condition:131", [&] { loose.AddChild(nullptr, nullptr, true); }},
        {"null sub-condition evaluated", "Condition:371",
         [&] { loose.subConditions = {nullptr}, loose.Evaluate(0.0); }},
        {"null sub-condition started", "Condition:419", [&] { loose.subConditions = {nullptr}, loose.Init(0.0); }},
    };
    for (const Case& c : cases) {
        EXPECT_DEATH(c.provoke(), std::string("Assertion failed: ") + c.site + "\n") << c.why;
    }
}

} // namespace
