#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <functional>
#include <random>

#include <support/ScriptWorld.h>

namespace {

// As atof in the C locale: files are read alike under every locale.
float NumberOf(const std::string& text) {
    double number = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return static_cast<float>(number);
}

// What a parameter becomes when everything is searched anew.
ParameterValue SearchedValue(Parameter& parameter) {
    ParameterValue out;
    const auto& definition = static_cast<const Parameter&>(*parameter.model);
    if (parameter.valueKind == "USER") {
        out.tag = 1;
        out.number = NumberOf(parameter.value);
        out.text = parameter.value;
    } else if (parameter.valueKind == "ENUM") {
        auto* tab = dynamic_cast<EnumTab*>(parameter.FindEnumTab(definition.enumTab));
        if (!tab) return out;
        const auto* entry = dynamic_cast<Variable*>(tab->FindEntry(parameter.value));
        if (!entry) return out;
        if (entry->type == "STRING") {
            out.tag = 3;
            out.text = entry->value;
        } else if (entry->type != "VOID") {
            out.tag = 1;
            out.number = NumberOf(entry->value);
        }
    } else if (parameter.valueKind == "VARIABLE") {
        out.tag = 1;
        std::vector<ScenarioItem*> variables;
        parameter.CollectVisibleItems(KindVariable, variables, std::to_string(std::atoi(parameter.value.c_str())), "");
        for (const ScenarioItem* variable : variables) {
            const ScenarioItem* file = FindFileScope(variable);
            if (file && file->fileName == parameter.ownerFile) static_cast<const Variable*>(variable)->FillValue(out);
        }
    }
    return out;
}

std::string Shown(const ParameterValue& value) {
    return std::to_string(value.tag) + " " + std::to_string(value.number) + " [" + value.text + "]";
}

const char* const kModel = R"(
    TYPEOF FOLDER (model)
        TYPEOF FOLDER (ENUMTAB_LIST)
            TYPEOF ENUMTAB (t0)
            TYPEOF FOLDER (more)
                TYPEOF ENUMTAB (t1)
        TYPEOF FOLDER (PARAMETER_LIST)
            TYPEOF PARAMETER (p) TYPE="FLOAT" ENUMTAB="t0" KINDLIST="USER VARIABLE ENUM"
            TYPEOF PARAMETER (which) TYPE="INTEGER" KINDLIST="USER"
        TYPEOF FOLDER (ACTION_LIST)
            TYPEOF ACTION (change) CODE="1"
        TYPEOF FOLDER (CONDITION_LIST)
            TYPEOF CONDITION (test) CODE="1"
                TYPEOF PARAMETER (p) KIND="USER" VALUE="0"
                TYPEOF PARAMETER (which) KIND="USER" VALUE="0")";

// A scenario in which every rule asks for a value and then changes something, at random but always alike.
class RememberedValuesTest : public testing::Test {
protected:
    RememberedValuesTest() {
        std::string rule = "TYPEOF RULE (r)\n{\nTYPEOF CONDITION (test)\n{\nTYPEOF PARAMETER "
                           "(p)\n{\nKIND=\"USER\"\nVALUE=\"1\"\n}\nTYPEOF PARAMETER (which)\n{\nKIND=\"USER\"\n}\n}\n"
                           "TYPEOF ACTION (change)\n{\n}\nTYPEOF ELSE_ACTION (change)\n{\n}\n}\n";
        std::string text = "TYPEOF SCENARIO (s)\n{\nFILE=\"f0\"\nTYPEOF INCLUDE (i)\n{\nFILE=\"f1\"\n" + rule + rule +
                           "}\n" + rule + rule;
        for (int depth = 0; depth < 3; ++depth) text += "TYPEOF TASK (0)\n{\n" + rule + rule;
        text += "}\n}\n}\n}\n";
        script = world.ReadText(text);
        std::vector<ScenarioItem*> items;
        script->CollectItems(KindParameter, "p", items, true, true);
        for (ScenarioItem* item : items) parameters.push_back(static_cast<Parameter*>(item));
        items.clear();
        script->CollectItems(KindParameter, "which", items, true, true);
        for (std::size_t i = 0; i < items.size(); ++i) static_cast<Parameter*>(items[i])->value = std::to_string(i);
        for (const ScenarioItemKind kind : {KindTask, KindRule, KindScenario, KindInclude}) {
            items.clear();
            script->CollectItemsOfKind(items, kind, true, true);
            levels.insert(levels.end(), items.begin(), items.end());
        }
        for (const char* tab : {"t0", "t1"}) tabs.push_back(world.root->FindItem(KindEnumTab, tab, ""));
        ActionTable().resize(2);
        // Seldom: what was kept in one step has to be still good in the next one to be taken for good too long.
        ActionTable()[1] = [this](const ParameterValues&) {
            if (Random(8) == 0) Change();
        };
        ConditionTable().resize(2);
    }
    ~RememberedValuesTest() override {
        ActionTable().resize(1);
        ConditionTable().resize(1);
    }

    std::size_t Random(std::size_t below) { return std::uniform_int_distribution<std::size_t>(0, below - 1)(random); }
    template <class Item>
    Item& Any(const std::vector<Item*>& items) {
        return *items[Random(items.size())];
    }
    std::string Number() { return std::to_string(Random(3)); }
    std::string Word(const std::vector<std::string>& words) { return words[Random(words.size())]; }

    std::vector<Variable*> Variables(const std::vector<ScenarioItem*>& owners, ScenarioItemKind kind) {
        std::vector<ScenarioItem*> items;
        for (ScenarioItem* owner : owners) owner->GetChildren(items, kind);
        std::vector<Variable*> variables;
        for (ScenarioItem* item : items) variables.push_back(static_cast<Variable*>(item));
        return variables;
    }

    static std::vector<Variable*>& ListOf(ScenarioItem& level) {
        return level.kind == KindRule ? static_cast<Rule&>(level).variables : static_cast<Task&>(level).variables;
    }

    void Change() {
        const bool isEntry = Random(2) == 0;
        const std::vector<ScenarioItem*>& owners = isEntry ? tabs : levels;
        const ScenarioItemKind kind = isEntry ? KindEnum : KindVariable;
        const std::vector<Variable*> variables = Variables(owners, kind);
        Parameter& parameter = Any(parameters);
        switch (Random(16)) {
        case 0:
        case 1: {
            if (variables.size() > 30) break;
            auto* variable = static_cast<Variable*>(CreateItem(kind, Number(), nullptr));
            variable->type = Word({"FLOAT", "FLOAT", "INTEGER", "STRING"});
            variable->value = Number();
            Any(owners).AddChild(variable, nullptr, Random(2) == 0);
            break;
        }
        case 2:
            if (variables.size() > 12) {
                Variable& variable = Any(variables);
                variable.parent->RemoveChild(&variable);
            }
            break;
        case 3:
            if (!variables.empty()) Any(variables).name = Number();
            break;
        case 4:
            if (!variables.empty()) Any(variables).value = Number() + ".5";
            break;
        case 5:
            if (!variables.empty()) Any(variables).type = Word({"FLOAT", "INTEGER", "STRING", "VOID"});
            break;
        case 6:
            if (!variables.empty()) {
                Variable& variable = Any(variables);
                ScenarioItem* former = variable.parent;
                variable.parent = nullptr;
                former->RemoveChild(&variable);
                Any(owners).AddChild(&variable, nullptr, Random(2) == 0);
            }
            break;
        case 7:
            parameter.valueKind = Word({"USER", "ENUM", "VARIABLE", "VARIABLE"});
            break;
        case 8:
            parameter.value = Number();
            break;
        case 9:
            parameter.ownerFile = Word({"f0", "f1"});
            break;
        case 10:
            script->fileName = Word({"f0", "f0", "f1"});
            break;
        case 11:
            static_cast<Parameter*>(parameter.model)->enumTab = Word({"t0", "t1"});
            break;
        case 12:
            std::swap(tabs[0]->name, tabs[1]->name);
            break;
        case 13:
            if (!variables.empty()) {
                Variable& variable = Any(variables);
                variable.parent->SwapChildren(&variable, &Any(variables));
            }
            break;
        case 14: {
            // The lists are public fields, too.
            std::vector<Variable*>& former = ListOf(Any(levels));
            if (former.empty()) break;
            ScenarioItem& owner = Any(levels);
            Variable* variable = former.back();
            former.pop_back();
            ListOf(owner).push_back(variable);
            variable->parent = &owner;
            break;
        }
        case 15: {
            std::vector<Variable*>& list = ListOf(Any(levels));
            std::reverse(list.begin(), list.end());
            std::vector<ScenarioItem*>& entries = static_cast<EnumTab&>(Any(tabs)).children;
            std::reverse(entries.begin(), entries.end());
            break;
        }
        }
    }

    ScriptWorld world{kModel};
    std::unique_ptr<ScenarioItem> script;
    std::vector<Parameter*> parameters;
    std::vector<ScenarioItem*> levels;
    std::vector<ScenarioItem*> tabs;
    std::mt19937 random{4711};
};

TEST_F(RememberedValuesTest, NothingAHostChangesIsMissed) {
    ASSERT_EQ(parameters.size(), 10) << world.cause;
    scenarioLog = nullptr;
    for (int i = 0; i < 10000; ++i) {
        Change();
        Parameter& parameter = Any(parameters);
        ParameterValue value;
        parameter.FillValue(value);
        ASSERT_EQ(Shown(value), Shown(SearchedValue(parameter))) << "change " << i;
    }
}

// Within one step the rules follow one another, and each action changes the tree under those that come after it.
TEST_F(RememberedValuesTest, NothingAnActionChangesIsMissed) {
    auto& scenario = static_cast<ScenarioLib::Scenario&>(*script);
    scenarioLog = nullptr;
    int count = 0;
    ConditionTable()[1] = [&](const ParameterValues& values) {
        ++count;
        EXPECT_EQ(Shown(values[0]), Shown(SearchedValue(*parameters[static_cast<std::size_t>(values[1].number)])));
        return Random(2) == 0;
    };
    scenario.Init("", 0.0);
    for (int i = 0; i < 3000 && !HasFailure(); ++i) scenario.StepScenario(0.1 * i);
    EXPECT_GT(count, 20000);
}

// Among many names a rename that an action writes into the field by itself may wait for the next step, no longer.
TEST(RememberedNames, AreLookedAtAgainInTime) {
    ScriptWorld world(kModel);
    std::string text = "TYPEOF SCENARIO (s)\n{\nFILE=\"f\"\n";
    for (int i = 0; i < 200; ++i)
        text +=
            "TYPEOF VARIABLE (" + std::to_string(i) + ")\n{\nTYPE=\"FLOAT\"\nVALUE=\"" + std::to_string(i) + "\"\n}\n";
    const std::string condition =
        "TYPEOF CONDITION (test)\n{\nTYPEOF PARAMETER (p)\n{\nKIND=\"VARIABLE\"\nVALUE=\"7\"\nOWNER_FILE=\"f\"\n}\n"
        "TYPEOF PARAMETER (which)\n{\nKIND=\"USER\"\n}\n}\n";
    text += "TYPEOF RULE (1)\n{\n" + condition + "TYPEOF ACTION (change)\n{\n}\n}\nTYPEOF RULE (2)\n{\n" + condition +
            "}\n}\n";
    const auto script = world.ReadText(text);
    ASSERT_TRUE(script) << world.cause;
    auto& scenario = static_cast<ScenarioLib::Scenario&>(*script);

    std::vector<float> seen;
    std::function<void()> change = [] {};
    ConditionTable().resize(2);
    ConditionTable()[1] = [&](const ParameterValues& values) {
        seen.push_back(values[0].number);
        return true;
    };
    ActionTable().resize(2);
    ActionTable()[1] = [&](const ParameterValues&) { change(); };
    const auto step = [&](double time, std::function<void()> action) {
        change = std::move(action);
        seen.clear();
        scenario.StepScenario(time);
        return seen;
    };
    scenario.Init("", 0.0);
    EXPECT_THAT(step(1.0, [] {}), testing::ElementsAre(7.0F, 7.0F));
    EXPECT_THAT(step(2.0, [&] { scenario.variables[7]->value = "70"; }), testing::ElementsAre(7.0F, 70.0F));
    // The variable that was found is asked itself.
    EXPECT_THAT(step(3.0, [&] { scenario.variables[7]->name = "x"; }), testing::ElementsAre(70.0F, 0.0F));
    step(4.0, [&] { scenario.variables[100]->name = "7"; });
    EXPECT_THAT(step(5.0, [] {}), testing::ElementsAre(100.0F, 100.0F));
    EXPECT_THAT(step(6.0, [&] { scenario.variables[150]->SetName("7"); }), testing::ElementsAre(100.0F, 150.0F));
    EXPECT_THAT(step(7.0, [&] { scenario.RemoveChild(scenario.variables[150]); }),
                testing::ElementsAre(150.0F, 100.0F));
    // Nor need a host wait for what it takes in or lets go of by an operation.
    scenario.variables[100]->name = "x";
    const std::unique_ptr<ScenarioItem> evaluation(CreateItem(KindEvaluation, "e", nullptr));
    auto* variable = static_cast<Variable*>(CreateItem(KindVariable, "7", nullptr));
    variable->type = "FLOAT";
    variable->value = "300";
    evaluation->AddChild(variable, nullptr, true);
    const auto seenOnceKnown = [&](const std::function<void()>& action) {
        step(8.0, [] {}); // both rules know by now what they found
        return step(9.0, action);
    };
    EXPECT_THAT(seenOnceKnown([&] { scenario.AddChild(evaluation.get(), nullptr, true); }),
                testing::ElementsAre(0.0F, 300.0F));
    EXPECT_THAT(seenOnceKnown([&] { scenario.RemoveChild(evaluation.get()); }), testing::ElementsAre(300.0F, 0.0F));
    scenario.AddChild(evaluation.get(), nullptr, true);
    EXPECT_THAT(seenOnceKnown([&] { evaluation->DetachChildren(); }), testing::ElementsAre(300.0F, 0.0F));
    delete variable;
    scenario.RemoveChild(evaluation.get());
    // What an action destroys is forgotten at once, even if it takes it out of its list by itself.
    scenario.variables[20]->SetName("7");
    EXPECT_THAT(seenOnceKnown([&] {
                    delete scenario.variables[20];
                    scenario.variables.erase(scenario.variables.begin() + 20);
                }),
                testing::ElementsAre(20.0F, 0.0F));
    ConditionTable().resize(1);
    ActionTable().resize(1);
}

} // namespace
