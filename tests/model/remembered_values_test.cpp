#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <random>
#include <utility>

#include <gtest/gtest.h>
#include <support/RandomTest.h>
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
            TYPEOF PARAMETER (q) TYPE="FLOAT" ENUMTAB="t1" KINDLIST="USER VARIABLE ENUM"
            TYPEOF PARAMETER (which) TYPE="INTEGER" KINDLIST="USER"
        TYPEOF FOLDER (ACTION_LIST)
            TYPEOF ACTION (change) CODE="1"
        TYPEOF FOLDER (CONDITION_LIST)
            TYPEOF CONDITION (test) CODE="1"
                TYPEOF PARAMETER (p) KIND="USER" VALUE="0"
                TYPEOF PARAMETER (q) KIND="USER" VALUE="0"
                TYPEOF PARAMETER (which) KIND="USER" VALUE="0")";

// A state of the host's own, which changes the tree before it steps and after.
class HostTask : public Task {
public:
    explicit HostTask(std::function<void()> action) : change(std::move(action)) {
        kind = KindTask;
        name = "0";
    }
    void Step(double time, ScenarioLib::Scenario* scenario, bool countStep) override {
        change();
        Task::Step(time, scenario, countStep);
        change();
    }

private:
    std::function<void()> change;
};

// What the host adds to what a place shows depends on what is asked for.
class HostRule : public Rule {
public:
    HostRule() { kind = KindRule; }
    void CollectVisibleItems(std::uint32_t itemKind, std::vector<ScenarioItem*>& out, const std::string& itemName,
                             const std::string& scope) const override {
        Rule::CollectVisibleItems(itemKind, out, itemName, scope);
        if (shown && itemName == shown->value.substr(0, 1)) out.push_back(shown);
    }
    Variable* shown = nullptr;
};

// A scenario in which every rule asks for a value, and actions, observers, states of the host and steps within steps
// change whatever they like and look again, at random but always alike.
class RememberedValuesTest : public testing::TestWithParam<std::size_t>, private ScenarioItemObserver {
protected:
    RememberedValuesTest() {
        const std::string rule =
            "TYPEOF RULE (r)\n{\nTYPEOF CONDITION (test)\n{\nTYPEOF PARAMETER "
            "(p)\n{\nKIND=\"USER\"\nVALUE=\"1\"\n}\nTYPEOF PARAMETER (q)\n{\nKIND=\"USER\"\nVALUE=\"1\"\n}\n"
            "TYPEOF PARAMETER (which)\n{\nKIND=\"USER\"\n}\n}\n"
            "TYPEOF ACTION (change)\n{\n}\nTYPEOF ELSE_ACTION (change)\n{\n}\n}\n";
        std::string text = "TYPEOF SCENARIO (s)\n{\nFILE=\"f0\"\n";
        for (std::size_t i = 0; i < GetParam(); ++i)
            text += "TYPEOF VARIABLE (" + std::to_string(i + 10) + ")\n{\nTYPE=\"FLOAT\"\nVALUE=\"1\"\n}\n";
        text += "TYPEOF INCLUDE (i)\n{\nFILE=\"f1\"\n" + rule + rule + "}\nTYPEOF EVALUATION (e)\n{\n" + rule +
                "TYPEOF CRITERIA (1)\n{\n" + rule + "}\n}\n" + rule + rule;
        for (int state = 0; state < 3; ++state) text += "TYPEOF TASK (0)\n{\n" + rule + rule;
        text += "}\n}\n}\n}\n";
        script = world.ReadText(text);
        if (!script) throw std::runtime_error(world.cause);
        AddHostItems();
        std::vector<ScenarioItem*> items;
        for (const char* name : {"p", "q"}) {
            items.clear();
            script->CollectItems(KindParameter, name, items, true, true);
            for (ScenarioItem* item : items) parameters.push_back(static_cast<Parameter*>(item));
        }
        items.clear();
        script->CollectItems(KindParameter, "which", items, true, true);
        looked = parameters.front();
        for (std::size_t i = 0; i < items.size(); ++i) static_cast<Parameter*>(items[i])->value = std::to_string(i);
        for (const ScenarioItemKind kind :
             {KindTask, KindRule, KindScenario, KindInclude, KindEvaluation, KindCriteria}) {
            items.clear();
            script->CollectItemsOfKind(items, kind, true, true);
            levels.insert(levels.end(), items.begin(), items.end());
        }
        for (ScenarioItem* level : levels) level->AddObserver(this);
        for (const char* tab : {"t0", "t1"}) tabs.push_back(world.root->FindItem(KindEnumTab, tab, ""));
        ActionTable().resize(2);
        // Seldom: what was kept in one step has to be still good in the next one to be taken for good too long.
        ActionTable()[1] = [this](const ParameterValues&) { ActAsHost(); };
        ConditionTable().resize(2);
        ConditionTable()[1] = [this](const ParameterValues& values) {
            ++evaluations;
            const auto at = static_cast<std::size_t>(values[2].number);
            Compare(values[0], *parameters[at], "evaluated");
            Compare(values[1], *parameters[parameters.size() / 2 + at], "evaluated in the same moment");
            return Random(2) == 0;
        };
    }
    ~RememberedValuesTest() override {
        ActionTable().resize(1);
        ConditionTable().resize(1);
    }

    // A state and a rule of the host's own in the innermost states, each with a rule that asks.
    void AddHostItems() {
        auto& scenario = static_cast<ScenarioLib::Scenario&>(*script);
        Task& inner = *scenario.subTasks[0]->subTasks[0];
        auto* task = new HostTask([this] { ActAsHost(); });
        task->AddChild(inner.rules[0]->Clone(), nullptr, true);
        task->AddChild(inner.subTasks[0]->Clone(), nullptr, true);
        inner.AddChild(task, nullptr, false);
        hostRule = new HostRule;
        hostRule->AddChild(inner.rules[0]->conditions[0]->Clone(), nullptr, true);
        hostRule->shown = &shownByHost;
        shownByHost.type = "FLOAT";
        shownByHost.parent = script.get();
        scenario.AddChild(hostRule, nullptr, true);
    }

    std::size_t Random(std::size_t below) { return std::uniform_int_distribution<std::size_t>(0, below - 1)(random); }
    template <class Item>
    Item& Any(const std::vector<Item*>& items) {
        return *items[Random(items.size())];
    }
    std::string Number() { return std::to_string(Random(3)); }
    // Names of all lengths, and few of each, so that many are equal.
    std::string Name() {
        if (Random(2) == 0) return Number();
        return Random(2) == 0 ? "17" : Word({"1234", "1234567", "12345678", "12345679"});
    }
    std::string Word(const std::vector<std::string>& words) { return words[Random(words.size())]; }

    void Compare(const ParameterValue& value, Parameter& parameter, const char* where) {
        EXPECT_EQ(Shown(value), Shown(SearchedValue(parameter)))
            << where << ", change " << changes << ", seed " << RandomSeed();
    }
    void Look(const char* where) {
        // Often at the same one: only what was looked up before can have been kept for too long.
        if (Random(2) == 0) looked = &Any(parameters);
        Parameter& parameter = *looked;
        ParameterValue value;
        parameter.FillValue(value);
        Compare(value, parameter, where);
    }

    // What code of the host may do in a step.
    void ActAsHost() {
        if (Random(8) != 0 || HasFailure()) return;
        Look("before a change");
        for (std::size_t left = Random(3) + 1; left > 0; --left) {
            Change();
            Look("after a change");
        }
        if (Random(4) == 0 && stepsWithin < 3) {
            ++stepsWithin;
            if (Random(2) == 0)
                static_cast<ScenarioLib::Scenario&>(*script).StepScenario(time);
            else
                static_cast<Rule&>(Any(rules())).Step(time);
            --stepsWithin;
            Look("after a step within a step");
        }
    }
    void OnItemEvent(ScenarioItemObservable*, std::uint32_t) override { ActAsHost(); }

    std::vector<ScenarioItem*> rules() const {
        std::vector<ScenarioItem*> items;
        std::copy_if(levels.begin(), levels.end(), std::back_inserter(items),
                     [](const ScenarioItem* item) { return item->kind == KindRule; });
        return items;
    }

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
        ++changes;
        const bool isEntry = Random(2) == 0;
        const std::vector<ScenarioItem*>& owners = isEntry ? tabs : levels;
        const ScenarioItemKind kind = isEntry ? KindEnum : KindVariable;
        const std::vector<Variable*> variables = Variables(owners, kind);
        Parameter& parameter = Any(parameters);
        switch (Random(22)) {
        case 0:
        case 1: {
            if (variables.size() > GetParam() + 30) break;
            auto* variable = static_cast<Variable*>(CreateItem(kind, Name(), nullptr));
            variable->type = Word({"FLOAT", "FLOAT", "INTEGER", "STRING"});
            variable->value = Number();
            Any(owners).AddChild(variable, nullptr, Random(2) == 0);
            break;
        }
        case 2:
            if (variables.size() > GetParam() + 12) {
                Variable& variable = Any(variables);
                variable.parent->RemoveChild(&variable);
            }
            break;
        case 3:
            if (!variables.empty()) Any(variables).name = Name();
            break;
        case 4: {
            // What was found just now gets a name that differs as little as it can.
            const auto found = std::find_if(variables.begin(), variables.end(),
                                            [&](const Variable* it) { return it->name == looked->value; });
            if (found != variables.end()) (*found)->name.back() = (*found)->name.back() == '8' ? '9' : '8';
            break;
        }
        case 5:
            if (!variables.empty()) Any(variables).value = Number() + ".5";
            break;
        case 6:
            if (!variables.empty()) Any(variables).type = Word({"FLOAT", "INTEGER", "STRING", "VOID"});
            break;
        case 7:
            if (!variables.empty()) {
                Variable& variable = Any(variables);
                ScenarioItem* former = variable.parent;
                variable.parent = nullptr;
                former->RemoveChild(&variable);
                Any(owners).AddChild(&variable, nullptr, Random(2) == 0);
            }
            break;
        case 8:
            parameter.valueKind = Word({"USER", "ENUM", "VARIABLE", "VARIABLE"});
            break;
        case 9:
            parameter.value = Name();
            break;
        case 10:
            parameter.ownerFile = Word({"f0", "f1"});
            break;
        case 11:
            script->fileName = Word({"f0", "f0", "f1"});
            break;
        case 12:
            static_cast<Parameter*>(parameter.model)->enumTab = Word({"t0", "t1"});
            break;
        case 13:
            std::swap(tabs[0]->name, tabs[1]->name);
            break;
        case 14:
            if (!variables.empty()) {
                Variable& variable = Any(variables);
                variable.parent->SwapChildren(&variable, &Any(variables));
            }
            break;
        case 15: {
            // The lists are public fields, too.
            const bool isWithinScenario = Random(2) == 0; // whose lists are all seen from one place
            auto& scenario = static_cast<ScenarioLib::Scenario&>(*script);
            const std::vector<ScenarioItem*> owned = {script.get(), scenario.includes[0], scenario.evaluation};
            std::vector<Variable*>& former = ListOf(Any(isWithinScenario ? owned : levels));
            if (former.empty()) break;
            ScenarioItem& owner = Any(isWithinScenario ? owned : levels);
            Variable* variable = former.back();
            former.pop_back();
            ListOf(owner).push_back(variable);
            variable->parent = &owner;
            break;
        }
        case 16: {
            std::vector<Variable*>& list = ListOf(Any(levels));
            std::reverse(list.begin(), list.end());
            std::vector<ScenarioItem*>& entries = static_cast<EnumTab&>(Any(tabs)).children;
            std::reverse(entries.begin(), entries.end());
            break;
        }
        case 17:
            if (!variables.empty()) Any(variables).SetName(Name());
            break;
        case 18: {
            // What is erased from a list without a word is gone at once, and so is what is destroyed with it.
            std::vector<Variable*>& list = ListOf(Any(levels));
            if (list.empty() || variables.size() < GetParam() + 6) break;
            const std::size_t at = Random(list.size());
            delete list[at];
            list.erase(list.begin() + static_cast<std::ptrdiff_t>(at));
            break;
        }
        case 19: {
            // Two of the same name change places.
            std::vector<Variable*>& ones = ListOf(Any(levels));
            std::vector<Variable*>& others = ListOf(Any(levels));
            const auto isPair = [](const Variable* one, const Variable* other) { return one->name == other->name; };
            const auto one = std::find_first_of(ones.begin(), ones.end(), others.begin(), others.end(), isPair);
            if (one == ones.end()) break;
            const auto other = std::find_if(others.begin(), others.end(), [&](auto* it) { return isPair(*one, it); });
            std::swap((*one)->parent, (*other)->parent);
            std::swap(*one, *other);
            break;
        }
        case 20:
            shownByHost.value = Number();
            std::swap(static_cast<Folders&>(*world.root).children[0], static_cast<Folders&>(*world.root).children[1]);
            break;
        case 21: {
            // In depth alone: all items stay in their order.
            auto& tab = static_cast<EnumTab&>(Any(tabs));
            std::vector<ScenarioItem*>& around = static_cast<Folders&>(*tab.parent).children;
            const auto next = std::find(around.begin(), around.end(), &tab) + 1;
            if (next != around.end() && (*next)->kind == KindEnum) {
                (*next)->parent = &tab;
                tab.children.push_back(*next);
                around.erase(next);
            } else if (!tab.children.empty()) {
                tab.children.back()->parent = tab.parent;
                around.insert(next, tab.children.back());
                tab.children.pop_back();
            }
            break;
        }
        }
    }

    Variable shownByHost;
    ScriptWorld world{kModel};
    std::unique_ptr<ScenarioItem> script;
    HostRule* hostRule = nullptr;
    std::vector<Parameter*> parameters; // the second half in the same order as the first
    Parameter* looked = nullptr;
    std::vector<ScenarioItem*> levels;
    std::vector<ScenarioItem*> tabs;
    std::mt19937 random{RandomSeed()};
    double time = 0.0;
    int stepsWithin = 0;
    int evaluations = 0;
    int changes = 0;
};

TEST_P(RememberedValuesTest, NothingAHostChangesIsMissed) {
    scenarioLog = nullptr;
    for (RandomDuration duration(4000); !duration.IsOver() && !HasFailure();) {
        Change();
        Look("between steps");
    }
    EXPECT_GT(changes, 100);
}

// Within one step the rules follow one another, and whatever runs between them changes the tree under those that come
// after it.
TEST_P(RememberedValuesTest, NothingThatIsChangedInAStepIsMissed) {
    auto& scenario = static_cast<ScenarioLib::Scenario&>(*script);
    scenarioLog = nullptr;
    scenario.Init("", 0.0);
    for (RandomDuration duration(150); !duration.IsOver() && !HasFailure();) {
        time += 0.1;
        scenario.StepScenario(time);
        if (Random(20) == 0) scenario.Init("", time);
    }
    EXPECT_GT(evaluations, 100);
    EXPECT_GT(changes, 100);
}

// Names of two sizes are asked for in one moment, the second one when all names of the first have been looked at.
TEST(RememberedNames, NoSizeOfANameIsForgotten) {
    ScriptWorld world{kModel};
    const std::unique_ptr<ScenarioItem> script = world.Read(R"(
        TYPEOF SCENARIO (s)
            TYPEOF VARIABLE (1) TYPE="FLOAT" VALUE="1.5"
            TYPEOF VARIABLE (17) TYPE="FLOAT" VALUE="17.5"
            TYPEOF RULE (r)
                TYPEOF CONDITION (test)
                    TYPEOF PARAMETER (p) KIND="VARIABLE" VALUE="1"
                    TYPEOF PARAMETER (q) KIND="VARIABLE" VALUE="17"
                    TYPEOF PARAMETER (which) KIND="USER" VALUE="0")");
    ASSERT_TRUE(script) << world.cause;
    auto& scenario = static_cast<ScenarioLib::Scenario&>(*script);
    std::vector<float> numbers;
    ConditionTable().resize(2);
    ConditionTable()[1] = [&](const ParameterValues& values) {
        numbers = {values[0].number, values[1].number};
        return false;
    };
    Rule& rule = *scenario.rules.front();
    rule.Step(0.0);
    EXPECT_EQ(numbers, (std::vector<float>{1.5F, 17.5F}));
    scenario.variables[1]->name = "170";
    rule.Step(0.1);
    EXPECT_EQ(numbers, (std::vector<float>{1.5F, 0.0F}));
    ConditionTable().resize(1);
}

INSTANTIATE_TEST_SUITE_P(NamesInScope, RememberedValuesTest, testing::Values(0, 30, 200));

} // namespace
