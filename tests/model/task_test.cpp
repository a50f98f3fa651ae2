#include <random>

#include <support/RunningHost.h>

namespace {

class TaskTest : public RunningTest {};

TEST_F(TaskTest, ChildrenStandByKind) {
    const std::unique_ptr<ScenarioItem> task(CreateItem(KindTask, "1", nullptr));
    AddNew<Task>(*task, KindTask, "s1");
    AddNew<Rule>(*task, KindRule, "r1");
    AddNew<Variable>(*task, KindVariable, "v1");
    AddNew<Rule>(*task, KindRule, "r2");
    EXPECT_EQ(NamesOf(*task, 0), "v1 r1 r2 s1 ");
    EXPECT_EQ(NamesOf(*task, KindVariable), "v1 ");
    EXPECT_EQ(NamesOf(*task, KindRule), "r1 r2 ");
    EXPECT_EQ(NamesOf(*task, KindTask), "s1 ");
    EXPECT_EQ(NamesOf(*task, KindCriteria), "");

    const std::unique_ptr<ScenarioItem> folder(CreateItem(KindFolder, "f", nullptr));
    task->AddChild(folder.get(), nullptr, true);
    EXPECT_EQ(folder->parent, nullptr) << "a kind without a list is ignored";

    auto& typed = static_cast<Task&>(*task);
    std::vector<Task*> states{nullptr};
    typed.GetSubTasks(states);
    EXPECT_EQ(states.size(), 2U);
    task->RemoveAllChildren();
    EXPECT_EQ(NamesOf(*task, 0), "");
}

TEST_F(TaskTest, HandsAnIncludeToItsParent) {
    const std::unique_ptr<ScenarioItem> root(CreateItem(KindScenario, "1", nullptr));
    auto& scenario = static_cast<ScenarioLib::Scenario&>(*root);
    auto* task = AddNew<Task>(scenario, KindTask, "1");
    const std::unique_ptr<ScenarioItem> former(AddNew<Include>(scenario, KindInclude, "old"));
    auto* include = static_cast<Include*>(CreateItem(KindInclude, "new", nullptr));
    task->ReplaceChild(include, former.get());
    ASSERT_EQ(scenario.includes.size(), 1U);
    EXPECT_EQ(scenario.includes.front(), include);
    EXPECT_EQ(include->parent, &scenario);

    Task lonely;
    const std::unique_ptr<ScenarioItem> unwanted(CreateItem(KindInclude, "x", nullptr));
    lonely.ReplaceChild(unwanted.get(), nullptr);
    EXPECT_EQ(unwanted->parent, nullptr);
}

TEST_F(TaskTest, CountsTheRulesOfTheProcess) {
    const std::unique_ptr<ScenarioItem> keeper(CreateItem(KindTask, "1", nullptr));
    keeper->DetachChildren();
    EXPECT_EQ(Task::RuleCount(), 0);
    AddNew<Rule>(*keeper, KindRule, "1");
    {
        const std::unique_ptr<ScenarioItem> other(CreateItem(KindTask, "1", nullptr));
        AddNew<Rule>(*other, KindRule, "1");
        AddNew<Rule>(*other, KindRule, "2");
        EXPECT_EQ(Task::RuleCount(), 3);
    }
    EXPECT_EQ(Task::RuleCount(), 1);
    const std::unique_ptr<ScenarioItem> another(CreateItem(KindTask, "1", nullptr));
    another->DetachChildren();
    EXPECT_EQ(Task::RuleCount(), 0);
}

TEST_F(TaskTest, TaskKindIsAStrictNumber) {
    const std::string complaint =
        "\4Task::LoadUserAttribute : bad lexical cast: source type value could not be interpreted as target\n";
    struct {
        const char* why;
        const char* value;
        bool taken;
        std::int32_t kind;
    } rows[] = {
        {"plain", "7", true, 7},
        {"negative", "-7", true, -7},
        {"a plus sign", "+7", true, 7},
        {"leading zeros", "007", true, 7},
        {"the largest", "2147483647", true, 2147483647},
        {"the smallest", "-2147483648", true, -2147483647 - 1},
        {"out of range", "2147483648", false, 5},
        {"letters", "abc", false, 5},
        {"trailing letters", "7a", false, 5},
        {"a blank before", " 7", false, 5},
        {"a blank behind", "7 ", false, 5},
        {"a fraction", "7.0", false, 5},
        {"empty", "", false, 5},
        {"a sign alone", "+", false, 5},
        {"two signs", "+-7", false, 5},
        {"hexadecimal", "0x7", false, 5},
    };
    for (const auto& row : rows) {
        Task task;
        task.taskKind = 5;
        host.log.str("");
        const std::string line = std::string("TASK_KIND=\"") + row.value + "\"";
        ScenarioTextStream stream(line.c_str(), line.size() + 1);
        EXPECT_EQ(task.LoadAttribute(stream), row.taken) << row.why;
        EXPECT_EQ(task.taskKind, row.kind) << row.why;
        EXPECT_EQ(host.log.str(), row.taken ? "" : complaint) << row.why;
    }
    EXPECT_FALSE(host.Read("TYPEOF TASK (1)\n{\nTASK_KIND=\"two\"\n}\n")) << "an unknown line fails the text";

    const auto task = host.Read("TYPEOF TASK (1)\n{\nLABEL=\"Go\"\nTASK_KIND=\"2\"\nTASK_KIND=\"3\"\n}\n");
    ASSERT_TRUE(task);
    EXPECT_EQ(SavedText(*task), "\nTYPEOF TASK (1)\n{\n\tLABEL=\"Go\"\n\tTASK_KIND=\"3\"\n}\n");
    const std::unique_ptr<ScenarioItem> clone(task->Clone());
    EXPECT_EQ(SavedText(*clone), SavedText(*task));
}

TEST_F(TaskTest, StatesAreFoundByTheNumberOfTheirName) {
    Task task;
    for (const char* name : {"3", "x", "7up", "3", "-5", "120", "12", "+4", "04", "99999999999", "1234", "1239567",
                             "1234567", "12395678", "12345678", "123456789", "1234567890", " 55", "55"})
        AddNew<Task>(task, KindTask, name);
    struct {
        std::int32_t number;
        std::ptrdiff_t index;
    } rows[] = {{3, 0},      {0, 1},        {7, 2},         {-5, 4},         {-1, -1},         {99, -1},
                {1, -1},     {12, 6},       {120, 5},       {4, 7},          {2147483647, 9},  {1234, 10},
                {12345, -1}, {1234567, 12}, {12345678, 14}, {123456789, 15}, {1234567890, 16}, {55, 17}};
    for (const auto& row : rows) EXPECT_EQ(task.StateIndex(row.number), row.index) << row.number;

    task.stateNames[3] = "Start";
    EXPECT_EQ(task.StateName(3), "Start");
    EXPECT_EQ(task.StateName(4), "");
}

TEST_F(TaskTest, LevelIsTheLargestOfActiveRules) {
    Task task;
    EXPECT_EQ(task.MaxRuleLevel(), 0);
    auto* own = AddNew<Rule>(task, KindRule, "1");
    auto* deep = AddNew<Rule>(*AddNew<Task>(*AddNew<Task>(task, KindTask, "1"), KindTask, "2"), KindRule, "1");
    own->level = 2;
    deep->level = 5;
    EXPECT_EQ(task.MaxRuleLevel(), 0);
    own->activationCount = 1;
    EXPECT_EQ(task.MaxRuleLevel(), 2);
    deep->activationCount = 1;
    EXPECT_EQ(task.MaxRuleLevel(), 5);
}

TEST_F(TaskTest, StartsWithItsFirstStateAndInitialValues) {
    const auto task = host.ReadAs<Task>(R"(
        TYPEOF TASK (1) LABEL="Outer"
            TYPEOF VARIABLE (5) TYPE="FLOAT" VALUE="2.5"
            TYPEOF RULE (9)
            TYPEOF TASK (4) LABEL="Inner"
                TYPEOF RULE (8)
            TYPEOF TASK (6) LABEL="Other"
    )");
    ASSERT_TRUE(task) << host.log.str();
    EXPECT_EQ(task->currentState, -1);
    task->variables.front()->value = "7";
    task->stepCount = 3;
    task->transitionPending = 1;
    host.log.str("");
    task->Init("work", 1.5);
    EXPECT_EQ(host.log.str(), "\2Init task [Outer]\n"
                              "\2Init task [Inner]\n"
                              "\2Init rule [8]\n"
                              "\2Init task [Other]\n"
                              "\2Init rule [9]\n");
    EXPECT_EQ(task->currentState, 4);
    EXPECT_EQ(task->nextState, -1);
    EXPECT_EQ(task->subTasks[0]->currentState, -1);
    EXPECT_EQ(task->stepCount, 0);
    EXPECT_EQ(task->startTime, 1.5);
    EXPECT_EQ(task->transitionPending, 0);
    EXPECT_EQ(task->variables.front()->value, "2.5");
    EXPECT_EQ(task->subTasks[1]->workPath, "work");
    EXPECT_EQ(task->rules.front()->workPath, "work");
    EXPECT_EQ(host.TakeTrace(), "") << "a task outside a scenario tells nobody";

    task->nextState = 6;
    task->Init("work", 2.0);
    EXPECT_EQ(task->currentState, 6) << "a state asked for earlier is the one to start with";
}

TEST_F(TaskTest, StepsRulesThenTheCurrentState) {
    Task task;
    std::vector<Task*> states;
    for (const char* name : {"1", "2"}) states.push_back(AddNew<Task>(task, KindTask, name));
    ScenarioLib::Scenario scenario;
    task.Init("", 0.0);
    task.Step(1.0, &scenario, true);
    EXPECT_EQ(states[0]->stepCount, 1);
    EXPECT_EQ(states[1]->stepCount, 0);
    EXPECT_EQ(task.stepCount, 1);
    EXPECT_EQ(scenario.currentTask, states[0]);
    task.Step(1.5, &scenario, false);
    EXPECT_EQ(task.stepCount, 1) << "asked not to count";
    EXPECT_EQ(states[0]->currentTime, 1.5);

    // The transition itself takes a step, in which no rule runs and nothing is counted.
    scenario.paused = 1;
    task.nextState = 2;
    task.Step(2.0, &scenario, true);
    EXPECT_EQ(states[0]->stepCount, 2) << "nextState alone is no request";
    task.transitionPending = 1;
    task.Step(3.0, &scenario, true);
    EXPECT_EQ(task.stepCount, 2);
    EXPECT_EQ(task.currentState, 2);
    EXPECT_EQ(states[1]->startTime, 3.0);
    EXPECT_EQ(scenario.paused, 0);
    EXPECT_EQ(scenario.currentTask, &task);
    task.Step(4.0, nullptr, true);
    EXPECT_EQ(states[1]->stepCount, 1);

    struct {
        const char* why;
        std::int32_t next;
        int paused;
        int steps; // of the task, over two further steps
    } rows[] = {
        {"a state that no sub-task has runs nothing below", 77, 0, 1},
        {"no state", -1, 0, 1},
        {"the pause flag is left alone", -4, 1, 1},
        {"the end", -3, 0, 0},
    };
    for (const auto& row : rows) {
        scenario.paused = 1;
        task.nextState = row.next;
        task.transitionPending = 1;
        const std::int32_t before = task.stepCount;
        const std::int32_t stateSteps = states[0]->stepCount + states[1]->stepCount;
        task.Step(5.0, &scenario, true);
        EXPECT_EQ(scenario.paused, row.paused) << row.why;
        EXPECT_EQ(task.stepCount, before) << row.why;
        task.nextState = row.next == Task::kStateEnd ? 1 : row.next;
        task.Step(6.0, &scenario, true);
        EXPECT_EQ(task.stepCount, before + row.steps) << row.why;
        EXPECT_EQ(states[0]->stepCount + states[1]->stepCount, stateSteps) << row.why;
    }
}

TEST_F(TaskTest, EnteringStartsTheWholeChainOfCurrentStates) {
    // Each level that is entered starts all that lies below it, and the level below is then entered in its turn.
    Task task;
    auto* outer = AddNew<Task>(task, KindTask, "1", "outer");
    auto* inner = AddNew<Task>(*outer, KindTask, "1", "inner");
    AddNew<Task>(*inner, KindTask, "1", "leaf");
    std::ostringstream log;
    scenarioLog = &log;
    task.nextState = 1;
    task.transitionPending = 1;
    task.Step(1.0, nullptr, true);
    EXPECT_EQ(log.str(), "\2Init task [outer]\n\2Init task [inner]\n\2Init task [leaf]\n"
                         "\2Init task [inner]\n\2Init task [leaf]\n"
                         "\2Init task [leaf]\n");
    scenarioLog = nullptr;
}

// --- names of variables

// With a rule whose actions take the variable, and a literal that looks like its name.
std::unique_ptr<ScenarioItem> TaskWithVariable(RunningHost& host, const std::string& name, const std::string& label) {
    const std::string literal = name.find_first_not_of("0123456789") == std::string::npos ? name : "0";
    return host.Read(ScriptText("    TYPEOF TASK (2)\n        TYPEOF VARIABLE (" + name + ") LABEL=\"" + label + R"("
        TYPEOF RULE (1)
            TYPEOF ACTION (SAY)
                TYPEOF PARAMETER (A) KIND="VARIABLE" VALUE=")" +
                                name + R"("
            TYPEOF ACTION (SAY)
                TYPEOF PARAMETER (A) KIND="USER" VALUE=")" +
                                literal + "\""));
}

TEST_F(TaskTest, AnAddedTaskGetsFreeNamesForItsVariables) {
    struct {
        const char* why;
        const char* name;
        const char* label;
        const char* expectedName;
        const char* expectedLabel;
    } rows[] = {
        {"free", "7", "speed", "7", "speed"},
        {"taken: the smallest number that is free", "0", "new", "2", "new"},
        {"taken, and the label is visible above", "1", "speed", "2", "_speed"},
        {"twice a label", "1", "gap", "2", "__gap"},
        {"the label alone does not matter", "8", "speed", "8", "speed"},
    };
    for (const auto& row : rows) {
        Task task;
        const char* above[][2] = {{"0", "speed"}, {"1", "gap"}, {"5", "_gap"}};
        for (const auto& [name, label] : above) AddNew<Variable>(task, KindVariable, name, label);
        std::unique_ptr<ScenarioItem> added = TaskWithVariable(host, row.name, row.label);
        ASSERT_TRUE(added) << host.log.str();
        auto* state = static_cast<Task*>(added.release());
        task.AddChild(state, nullptr, true);
        EXPECT_EQ(state->variables.front()->name, row.expectedName) << row.why;
        EXPECT_EQ(state->variables.front()->label, row.expectedLabel) << row.why;
        const auto valueOf = [&](std::size_t action) {
            return state->rules.front()->actions[action]->parameters.front()->value;
        };
        EXPECT_EQ(valueOf(0), row.expectedName) << row.why << ": parameters follow";
        EXPECT_EQ(valueOf(1), row.name) << row.why << ": a literal does not";
        EXPECT_FALSE(state->RenumberVariables()) << row.why;
    }
}

// What RenumberVariables says that it does, one variable at a time.
bool RenumberOneByOne(Task& task) {
    std::vector<ScenarioItem*> parameters;
    task.CollectItemsOfKind(parameters, KindParameter, true, true);
    bool changed = false;
    for (Variable* variable : task.variables) {
        const std::string before = variable->name;
        variable->MakeUniqueName();
        if (variable->name == before) continue;
        changed = true;
        variable->MakeUniqueLabel();
        for (ScenarioItem* item : parameters) {
            auto* parameter = static_cast<Parameter*>(item);
            if (parameter->valueKind == "VARIABLE" && parameter->value == before) parameter->value = variable->name;
        }
    }
    return changed;
}

// A tree of tasks, rules and variables whose names and labels clash a lot. `states` are all its tasks.
std::unique_ptr<ScenarioItem> RandomTree(RunningHost& host, unsigned seed, std::vector<Task*>& states) {
    std::mt19937 random(seed);
    const auto upTo = [&random](unsigned limit) { return static_cast<unsigned>(random() % limit); };
    std::unique_ptr<ScenarioItem> root(CreateItem(upTo(2) ? KindScenario : KindTask, "1", nullptr));
    states = {static_cast<Task*>(root.get())};
    for (unsigned i = 0; i < 40; ++i) {
        Task* task = states[upTo(static_cast<unsigned>(states.size()))];
        const std::string name = upTo(4) ? std::to_string(upTo(8)) : std::string(1, static_cast<char>('a' + upTo(3)));
        ScenarioItem* parent = task;
        if (upTo(3) == 0 && !task->rules.empty()) parent = task->rules.front();
        const unsigned what = upTo(10);
        ScenarioItem* item = nullptr;
        if (what < 6) {
            // One of another class now and then: such a one is asked itself, and the others must see what it did.
            item = CreateItem(upTo(8) ? KindVariable : KindEnum, name, nullptr);
            item->label = std::string(upTo(3), '_') + static_cast<char>('x' + upTo(2));
        } else if (what < 8) {
            item = CreateItem(KindTask, name, nullptr);
            states.push_back(static_cast<Task*>(item));
            parent = task;
        } else {
            item = TaskWithVariable(host, name, "x").release();
            states.push_back(static_cast<Task*>(item));
            parent = task;
        }
        // Not through AddChild, which would rename at once.
        item->parent = parent;
        if (item->kind == KindTask)
            task->subTasks.push_back(static_cast<Task*>(item));
        else if (parent == task)
            task->variables.push_back(static_cast<Variable*>(item));
        else
            task->rules.front()->variables.push_back(static_cast<Variable*>(item));
    }
    return root;
}

TEST_F(TaskTest, RenamingAllAtOnceIsRenamingOneByOne) {
    int renamings = 0;
    for (unsigned seed = 1; seed <= 80; ++seed) {
        std::vector<Task*> states;
        std::vector<Task*> sameStates;
        const auto tree = RandomTree(host, seed, states);
        const auto same = RandomTree(host, seed, sameStates);
        ASSERT_EQ(SavedText(*tree), SavedText(*same));
        for (std::size_t i = 0; i < states.size(); ++i) {
            const bool changed = RenumberOneByOne(*states[i]);
            ASSERT_EQ(sameStates[i]->RenumberVariables(), changed) << "seed " << seed << ", task " << i;
            ASSERT_EQ(SavedText(*same), SavedText(*tree)) << "seed " << seed << ", task " << i;
            renamings += changed;
        }
    }
    EXPECT_GT(renamings, 150);
}

// --- depth

// Counts how many of them were destroyed.
class CountedRule : public Rule {
public:
    explicit CountedRule(int& destroyedRules) : destroyed(destroyedRules) { kind = KindRule; }
    ~CountedRule() override { ++destroyed; }

private:
    int& destroyed;
};

TEST_F(TaskTest, TenThousandNestedStates) {
    constexpr int kDepth = 10000;
    int destroyed = 0;
    {
        const std::unique_ptr<ScenarioItem> root(CreateItem(KindScenario, "0", nullptr));
        auto& scenario = static_cast<ScenarioLib::Scenario&>(*root);
        Task* deepest = &scenario;
        for (int i = 0; i < kDepth; ++i) {
            deepest = AddNew<Task>(*deepest, KindTask, "1");
        }
        auto* rule = new CountedRule(destroyed);
        deepest->AddChild(rule, nullptr, true);
        rule->level = 3;
        scenarioLog = nullptr;
        scenario.Init("", 1.0);
        for (double time = 1.0; time < 5.0; time += 1.0) scenario.StepScenario(time);
        EXPECT_EQ(rule->activationCount, 1);
        EXPECT_EQ(deepest->stepCount, 3) << "the first step enters the state";
        EXPECT_EQ(scenario.HighestLevel(), 3);
        EXPECT_EQ(scenario.currentTask, deepest);
    }
    EXPECT_EQ(destroyed, 1);
}

// A host's own class of task is asked, wherever it stands.
class OwnTask : public Task {
public:
    OwnTask() { kind = KindTask; }
    int inits = 0;
    int steps = 0;
    void Init(const std::string& path, double time) override {
        ++inits;
        Task::Init(path, time);
    }
    void Step(double time, ScenarioLib::Scenario* scenario, bool countStep) override {
        ++steps;
        Task::Step(time, scenario, countStep);
    }
};

TEST_F(TaskTest, AHostsOwnTasksAreAsked) {
    scenarioLog = nullptr;
    ScenarioLib::Scenario scenario;
    auto* outer = AddNew<Task>(scenario, KindTask, "1");
    auto* own = new OwnTask();
    own->SetName("2");
    outer->AddChild(own, nullptr, true);
    auto* inner = AddNew<Task>(*own, KindTask, "3");
    scenario.Init("", 1.0);
    EXPECT_EQ(own->inits, 1);
    scenario.StepScenario(1.0);
    EXPECT_EQ(own->inits, 3) << "with the state above it, and when it is entered itself";
    scenario.StepScenario(2.0);
    EXPECT_EQ(own->steps, 1);
    EXPECT_EQ(inner->stepCount, 1);
}

} // namespace
