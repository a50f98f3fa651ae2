#include <cstring>

#include <sys/stat.h>

#include <Commons/ConfigFile.h>
#include <support/DataPath.h>
#include <support/RunningHost.h>

namespace {

class EvaluationTest : public RunningTest {
protected:
    DataPath data;
};

TEST_F(EvaluationTest, ScoresAreANumberAndItsValue) {
    struct {
        const char* why;
        const char* value;
        const char* saved; // without 0 and 1, which are always there; null: refused
    } rows[] = {
        {"plain", "2 1.5", "SCORE=\"2 1.500000\""},
        {"below zero", "-2 -1.5", "SCORE=\"-2 -1.500000\""},
        {"white space around", "  2    3", "SCORE=\"2 3.000000\""},
        {"no white space between", "2.5", "SCORE=\"2 0.500000\""},
        {"something behind", "2 1.5 points", "SCORE=\"2 1.500000\""},
        {"an exponent", "2 1e3", "SCORE=\"2 1000.000000\""},
        {"a sign", "+2 +1", "SCORE=\"2 1.000000\""},
        {"no fraction is lost", "2 0.1", "SCORE=\"2 0.100000\""},
        {"infinite", "2 inf", "SCORE=\"2 inf\""},
        {"a number only", "2", nullptr},
        {"a number and a word", "2 x", nullptr},
        {"no number", "x 1.5", nullptr},
        {"empty", "", nullptr},
        {"a sign alone", "2 -", nullptr},
    };
    const std::string head = "\nTYPEOF EVALUATION (1)\n{\n\tLABEL=\"\"\n\tTASK_KIND=\"0\"\n";
    for (const auto& row : rows) {
        const auto item = host.Read(std::string("TYPEOF EVALUATION (1)\n{\nSCORE=\"") + row.value + "\"\n}\n");
        ASSERT_EQ(item != nullptr, row.saved != nullptr) << row.why;
        if (!item) continue;
        const std::string line = std::string("\t") + row.saved + "\n";
        const std::string zeros = "\tSCORE=\"0 0.000000\"\n\tSCORE=\"1 0.000000\"\n";
        EXPECT_EQ(SavedText(*item), head + (row.value[0] == '-' ? line + zeros : zeros + line) + "}\n") << row.why;
    }

    const auto twice = host.ReadAs<Evaluation>(R"(
        TYPEOF EVALUATION (1) SCORE="1 5" SCORE="1 7"
    )");
    ASSERT_TRUE(twice);
    EXPECT_EQ(twice->scores, (std::map<std::int32_t, float>{{0, 0.0F}, {1, 7.0F}})) << "the later value stays";
    EXPECT_EQ(Evaluation().scores, (std::map<std::int32_t, float>{{0, 0.0F}, {1, 0.0F}}));
}

TEST_F(EvaluationTest, CriteriaStandAmongTheSubTasks) {
    const auto evaluation = host.ReadAs<Evaluation>(R"(
        TYPEOF EVALUATION (1)
            TYPEOF CRITERIA (3)
            TYPEOF TASK (4)
            TYPEOF CRITERIA (5)
            TYPEOF RULE (6)
    )");
    ASSERT_TRUE(evaluation) << host.log.str();
    EXPECT_EQ(BlocksOf(*evaluation), "RULE6 CRITERIA3 TASK4 CRITERIA5 ");
    EXPECT_EQ(BlocksOf(*evaluation, KindCriteria), "CRITERIA3 CRITERIA5 ");
    EXPECT_EQ(BlocksOf(*evaluation, KindTask), "CRITERIA3 TASK4 CRITERIA5 ");
    EXPECT_EQ(evaluation->GetTask(1)->name, "4");
    EXPECT_EQ(evaluation->GetTask(3), nullptr);
    evaluation->SwapTasks(0, 2);
    evaluation->SwapTasks(0, 3);
    EXPECT_EQ(BlocksOf(*evaluation, KindCriteria), "CRITERIA5 CRITERIA3 ");

    ScenarioItem* last = evaluation->GetTask(2);
    evaluation->AddChild(CreateItem(KindCriteria, "0", nullptr), last, false);
    EXPECT_EQ(BlocksOf(*evaluation, KindCriteria), "CRITERIA5 CRITERIA0 CRITERIA3 ");
    ScenarioItem* other = CreateItem(KindCriteria, "9", nullptr);
    evaluation->ReplaceChild(other, last);
    delete last;
    evaluation->RemoveChild(evaluation->GetTask(0));
    EXPECT_EQ(BlocksOf(*evaluation, KindCriteria), "CRITERIA0 CRITERIA9 ");
    EXPECT_EQ(other->parent, evaluation.get());
}

TEST_F(EvaluationTest, AReferenceTakesOverItsFile) {
    data.Write("data/script/include/e.sc", ScriptText(R"(
        TYPEOF EVALUATION (7) LABEL="Exam" SCORE="1 5"
            TYPEOF RULE (2)
            TYPEOF CRITERIA (3) CATEGORY="speed"
    )"));
    data.Write("data/script/include/i.sc", "TYPEOF INCLUDE (1)\n{\n}\n");
    data.Write("data/script/include/self.sc", "TYPEOF EVALUATION (1)\n{\n\tISA_INDEX=\"1\"\n\tFILE=\"self.sc\"\n}\n");
    struct {
        const char* why;
        const char* attributes;
        const char* label;
        const char* children;
    } rows[] = {
        {"loaded", "ISA_INDEX='1' FILE='e.sc'", "Exam", "RULE2 CRITERIA3 "},
        {"with a backslash", "ISA_INDEX=\"1\"\nFILE=\".\\e.sc\"\n", "Exam", "RULE2 CRITERIA3 "},
        {"FILE may come again", "ISA_INDEX='1' FILE='e.sc' FILE='e.sc'", "Exam", "RULE2 RULE2 CRITERIA3 CRITERIA3 "},
        {"the mark comes too late", "FILE='e.sc' ISA_INDEX='1'", "", ""},
        {"missing", "ISA_INDEX='1' FILE='none.sc'", "?", ""},
        {"another kind", "ISA_INDEX='1' FILE='i.sc'", "?", ""},
        {"leads to itself", "ISA_INDEX='1' FILE='self.sc'", "?", ""},
    };
    for (const auto& row : rows) {
        const auto item = host.Read("TYPEOF EVALUATION (1)\n{\n" + EntryLines(row.attributes) + "}\n");
        ASSERT_TRUE(item) << row.why;
        EXPECT_EQ(item->label, row.label) << row.why;
        EXPECT_EQ(BlocksOf(*item), row.children) << row.why;
        for (const char* key : {"FILE=", "TYPEOF RULE", "Exam"})
            EXPECT_EQ(SavedText(*item).find(key), std::string::npos) << row.why << ": not saved";
        std::vector<ScenarioItem*> children;
        item->GetChildren(children);
        for (const ScenarioItem* child : children) EXPECT_EQ(child->parent, item.get()) << row.why;
    }
    output.str("");
    const auto evaluation = host.ReadAs<Evaluation>("TYPEOF EVALUATION (1)\n{\nISA_INDEX=\"1\"\nFILE=\"none.sc\"\n}\n");
    EXPECT_EQ(evaluation->resolvedPath, data.Normal("data/script/include/none.sc"));
    EXPECT_EQ(output.str(), "\1Unable to open file " + data.Normal("data/script/include/none.sc") + "\n");
    evaluation->UpdateDisplayTextTree();
    EXPECT_TRUE(evaluation->IsValid()) << "a file that is not there makes an include invalid only";
    EXPECT_EQ(evaluation->displayText, "?");
}

TEST_F(EvaluationTest, StartsEachCriteriaDownItsFirstStates) {
    const auto evaluation = host.ReadAs<Evaluation>(R"(
        TYPEOF EVALUATION (1) LABEL="E"
            TYPEOF CRITERIA (3) LABEL="c"
                TYPEOF TASK (8) LABEL="s"
            TYPEOF CRITERIA (5) LABEL="d" IS_DISABLED="1"
                TYPEOF TASK (9) LABEL="t"
    )");
    ASSERT_TRUE(evaluation) << host.log.str();
    host.log.str("");
    evaluation->Init("work", 0.0);
    EXPECT_EQ(host.log.str(), "\2Init task [E]\n\2Init task [c]\n\2Init task [s]\n" // the evaluation as a task
                              "\2Init task [c]\n\2Init task [s]\n\2Init task [s]\n" // down the first criteria
                              "\2Init task [t]\n");                                 // a disabled one does not start
    EXPECT_EQ(evaluation->currentState, 3);
    EXPECT_EQ(evaluation->GetTask(0)->nextState, 8);
    EXPECT_EQ(evaluation->GetTask(0)->transitionPending, 0);
    EXPECT_EQ(evaluation->GetTask(1)->nextState, 9);
    EXPECT_EQ(evaluation->GetTask(1)->transitionPending, 1);
}

TEST_F(EvaluationTest, StepsItsRulesThenEachCriteria) {
    const auto evaluation = host.ReadAs<Evaluation>(R"(
        TYPEOF EVALUATION (1)
            TYPEOF RULE (6)
                TYPEOF ACTION (DO)
                    TYPEOF PARAMETER (A) KIND="USER" VALUE="1"
            TYPEOF RULE (7)
            TYPEOF CRITERIA (3)
            TYPEOF CRITERIA (4) IS_DISABLED="1"
            TYPEOF TASK (5)
    )");
    ASSERT_TRUE(evaluation) << host.log.str();
    scenarioLog = nullptr;
    ScenarioLib::Scenario scenario;
    struct {
        const char* why;
        std::int32_t currentState;
        std::int32_t nextState; // written by the first rule
        int steps;              // of the evaluation
        int secondRule;
        int criteria;
    } rows[] = {
        {"ordinary", 3, -1, 1, 1, 1},       {"a state that is no criteria's", 77, 5, 1, 1, 1},
        {"a rule ends it", 3, -3, 1, 0, 0}, {"a rule asks for -4", 3, -4, 1, 0, 0},
        {"it has ended", -3, -1, 0, 0, 0},  {"it stands at -4", -4, -1, 0, 0, 0},
    };
    for (const auto& row : rows) {
        host.deeds[1] = [&] { evaluation->nextState = row.nextState; };
        evaluation->nextState = -1;
        evaluation->Init("", 0.0);
        evaluation->currentState = row.currentState;
        evaluation->StepEvaluation(1.0, &scenario);
        EXPECT_EQ(evaluation->stepCount, row.steps) << row.why;
        EXPECT_EQ(evaluation->rules[1]->activationCount, row.secondRule) << row.why;
        EXPECT_EQ(evaluation->GetTask(0)->stepCount, row.criteria) << row.why;
        EXPECT_EQ(evaluation->GetTask(1)->stepCount, 0) << row.why << ": disabled";
        EXPECT_EQ(evaluation->GetTask(2)->stepCount, row.criteria) << row.why << ": a plain task has no such flag";
        Task* const last = row.criteria ? evaluation->GetTask(2) : static_cast<Task*>(evaluation.get());
        EXPECT_EQ(scenario.currentTask, last) << row.why;
    }
}

TEST_F(EvaluationTest, ADisabledCriteriaOfTheHostIsNotAsked) {
    struct HostCriteria : Criteria {
        HostCriteria() { kind = KindCriteria; }
        void StepCriteria(double, ScenarioLib::Scenario*) override { ++steps; }
        int steps = 0;
    };
    Evaluation evaluation;
    auto* criteria = new HostCriteria;
    evaluation.AddChild(criteria, nullptr, true);
    evaluation.StepEvaluation(1.0, nullptr);
    criteria->disabled = 1;
    evaluation.StepEvaluation(2.0, nullptr);
    EXPECT_EQ(criteria->steps, 1);
}

class GeneralParametersTest : public EvaluationTest {
protected:
    std::string Path(const std::string& file) { return (data.Root() / file).string(); }
};

TEST_F(GeneralParametersTest, AreABlockWithoutContent) {
    GeneralParameters parameters;
    EXPECT_EQ(parameters.name, "0");
    const auto read = host.Read("TYPEOF GENERAL_PARAMETERS (4)\n{\n\tIS_SELECTED=\"1\"\n}\n");
    ASSERT_TRUE(read);
    EXPECT_EQ(SavedText(*read), "\nTYPEOF GENERAL_PARAMETERS (4)\n{\n\tIS_SELECTED=\"1\"\n}\n");
    host.log.str("");
    auto& general = static_cast<GeneralParameters&>(*read);
    general.Init(2.5);
    general.Step();
    EXPECT_EQ(general.startTime, 2.5);
    EXPECT_EQ(host.log.str(), "\2Init General Parameters\n");
}

TEST_F(GeneralParametersTest, TheDescriptionStandsBesideTheScenario) {
    const std::string text = "Zwei Spuren = 1\nein Lkw: \\langsam\t\xc3\xa4";
    GeneralParameters parameters;
    parameters.description = text;
    EXPECT_TRUE(parameters.Save(Path("city/scene.sc")) || true);
    std::filesystem::create_directories(data.Root() / "city");
    EXPECT_TRUE(parameters.Save(Path("city/scene.sc")));
    EXPECT_TRUE(std::filesystem::exists(data.Root() / "city/scene.par"));
    EXPECT_EQ(parameters.resolvedPath.find("\\city\\scene.par") != std::string::npos, true) << parameters.resolvedPath;

    GeneralParameters again;
    again.SetPath(Path("city/scene.sc"), false);
    EXPECT_EQ(again.description, "");
    again.SetPath("", true);
    EXPECT_EQ(again.description, text) << "an empty file keeps the path";
    again.description = "new";
    EXPECT_TRUE(again.Save("")) << "to the path that it has";
    parameters.Load();
    EXPECT_EQ(parameters.description, "new");
}

TEST_F(GeneralParametersTest, AFileThatCannotBeReadIsNoFailure) {
    data.Write("garbage.par", std::string("\0\xff\xfe=\\u12", 8));
    std::filesystem::create_directories(data.Root() / "folder.par");
    for (const char* file : {"none.sc", "garbage.sc", "folder.sc", "no/such/folder.sc"}) {
        GeneralParameters parameters;
        parameters.description = "old";
        parameters.SetPath(Path(file), true);
        EXPECT_EQ(parameters.description, "") << file;
    }
    GeneralParameters pathless;
    pathless.description = "kept";
    pathless.Load();
    EXPECT_EQ(pathless.description, "kept");
    EXPECT_FALSE(pathless.Save(""));
    EXPECT_FALSE(pathless.Save(Path("no/such/folder.sc")));
}

} // namespace
