#include <numbers>

#include <boost/lexical_cast/bad_lexical_cast.hpp>
#include <support/DataPath.h>
#include <support/RunningHost.h>

namespace {

using ScenarioLib::Scenario;

class ScenarioTest : public RunningTest {
protected:
    DataPath data;
};

// Not owned by anybody yet.
template <class Item>
Item* New(std::uint32_t kind, const std::string& name, const std::string& file = "") {
    ScenarioItem* item = CreateItem(kind, name, nullptr);
    item->fileName = file;
    return static_cast<Item*>(item);
}

std::unique_ptr<Scenario> NewScenario() { return std::unique_ptr<Scenario>(New<Scenario>(KindScenario, "1")); }

const char* const kWhole = R"(
    TYPEOF SCENARIO (1) LABEL="All"
        TYPEOF GENERAL_PARAMETERS (9)
        TYPEOF EVALUATION (8)
            TYPEOF VARIABLE (80) LABEL="of the evaluation"
        TYPEOF TASK (7)
            TYPEOF VARIABLE (70) LABEL="of the task"
        TYPEOF RULE (6)
        TYPEOF VARIABLE (5) LABEL="of the scenario"
        TYPEOF INCLUDE (4) FILE="b.sc"
            TYPEOF VARIABLE (40) LABEL="of b.sc"
        TYPEOF INCLUDE (3) FILE="a.sc"
            TYPEOF VARIABLE (30) LABEL="of a.sc"
)";

TEST_F(ScenarioTest, ChildrenStandByKind) {
    const auto scenario = host.ReadAs<Scenario>(kWhole);
    ASSERT_TRUE(scenario) << host.log.str();
    EXPECT_EQ(BlocksOf(*scenario), "INCLUDE4 INCLUDE3 VARIABLE5 RULE6 TASK7 EVALUATION8 GENERAL_PARAMETERS9 ");
    EXPECT_EQ(BlocksOf(*scenario, KindInclude), "INCLUDE4 INCLUDE3 ");
    EXPECT_EQ(BlocksOf(*scenario, KindEvaluation), "EVALUATION8 ");
    EXPECT_EQ(BlocksOf(*scenario, KindGeneralParameters), "GENERAL_PARAMETERS9 ");
}

TEST_F(ScenarioTest, SavesReadsAndClones) {
    const auto scenario = host.ReadAs<Scenario>(kWhole);
    ASSERT_TRUE(scenario) << host.log.str();
    const std::string saved = SavedText(*scenario);
    EXPECT_EQ(saved, ScriptText(R"(

        TYPEOF SCENARIO (1)
        {
            LABEL="All"
            FILE=""
            TASK_KIND="0"

            TYPEOF INCLUDE (4)
            {
                LABEL=""
                TASK_KIND="0"
                FILE="b.sc"

                TYPEOF VARIABLE (40)
                {
                    LABEL="of b.sc"
                    TYPE=""
                    VALUE=""
                    INTERACTIVE_TYPE="VOID"
                    IS_INITIALIZATION_NEEDED_AT_START="0"
                    INTERACTIVE_MIN_VALUE="0"
                    INTERACTIVE_MAX_VALUE="9999"
                    INTERACTIVE_STEP_VALUE="1"
                    CATEGORY="INTERNAL"
                }
            }
)") + saved.substr(saved.find("\n\tTYPEOF INCLUDE (3)")));
    const auto again = host.Read(saved);
    ASSERT_TRUE(again) << host.log.str();
    EXPECT_EQ(SavedText(*again), saved);
    for (const ScenarioItem* item : {again.get(), again->FindFirstOfKind(KindGeneralParameters)})
        EXPECT_EQ(item->resolvedPath, "") << "no file was given, and the empty FILE that was written is none";

    scenario->vehicleKindName = "CAR";
    scenario->stateNames[3] = "Start";
    scenario->scenarioName = "not copied";
    const std::unique_ptr<ScenarioItem> item(scenario->Clone());
    auto& clone = static_cast<Scenario&>(*item);
    EXPECT_EQ(SavedText(clone), saved);
    EXPECT_EQ(clone.vehicleKindName, "CAR");
    EXPECT_EQ(clone.stateNames, scenario->stateNames);
    EXPECT_EQ(clone.scenarioName, "");
    EXPECT_EQ(NewScenario()->vehicleKindName, "TRAFFIC");

    // Of two includes of one file, which only a text can bring about, a clone takes the first.
    scenario->includes[0]->fileName = "a.sc";
    const std::unique_ptr<ScenarioItem> second(scenario->Clone());
    EXPECT_EQ(BlocksOf(*second, KindInclude), "INCLUDE4 ");
}

TEST_F(ScenarioTest, CutAnywhereItIsRefused) {
    const std::string whole = ScriptText(kWhole);
    for (std::size_t end = whole.find('\n'); end + 1 < whole.size(); end = whole.find('\n', end + 1))
        EXPECT_FALSE(host.Read(whole.substr(0, end))) << whole.substr(0, end);
}

TEST_F(ScenarioTest, SaysWhyALineIsRefused) {
    data.Write("data/script/include/task.sc", "TYPEOF TASK (1)\n{\n}\n");
    data.Write("data/script/include/self.sc", "TYPEOF INCLUDE (1)\n{\n\tISA_INDEX=\"1\"\n\tFILE=\"self.sc\"\n}\n");
    struct {
        const char* why;
        const char* text;
        const char* cause; // somewhere in what is told
    } rows[] = {
        {"a word of a rule", "TYPEOF RULE (1)\n{\nEVALUATION=\"BAD\"\n}\n", "3: EVALUATION \"BAD\" is not among"},
        {"a number of a task", "TYPEOF TASK (1)\n{\nTASK_KIND=\"x\"\n}\n", "3: TASK_KIND \"x\" is no whole number"},
        {"a score", "TYPEOF EVALUATION (1)\n{\nSCORE=\"7\"\n}\n",
         "3: SCORE \"7\" is no whole number followed by a number"},
        {"an include of another kind", "TYPEOF INCLUDE (1)\n{\nISA_INDEX=\"1\"\nFILE=\"task.sc\"\n}\n",
         "4 (warning): the include \"task.sc\" holds something else than an include"},
        {"an include of itself", "TYPEOF INCLUDE (1)\n{\nISA_INDEX=\"1\"\nFILE=\"self.sc\"\n}\n",
         "self.sc\" leads back to itself"},
        {"a scenario that is missing", "TYPEOF SCENARIO (1)\n{\nISA_INDEX=\"1\"\nFILE=\"none.sc\"\n}\n",
         "4 (warning): the scenario \"none.sc\" could not be loaded"},
    };
    for (const auto& row : rows) {
        LoadProblems problems;
        host.Read(row.text);
        EXPECT_THAT(problems.told, testing::Contains(testing::HasSubstr(row.cause))) << row.why;
    }
}

TEST_F(ScenarioTest, AFileIsHeldOnce) {
    const auto scenario = NewScenario();
    auto* first = New<Include>(KindInclude, "1", "a.sc");
    scenario->AddChild(first, nullptr, true);
    scenario->AddChild(New<Include>(KindInclude, "2", "b.sc"), first, false);
    for (int i = 0; i < 2; ++i) scenario->AddChild(New<Include>(KindInclude, "3"), nullptr, true);
    const std::unique_ptr<Include> same(New<Include>(KindInclude, "4", "a.sc"));
    scenario->AddChild(same.get(), nullptr, true);
    EXPECT_EQ(BlocksOf(*scenario), "INCLUDE2 INCLUDE1 INCLUDE3 INCLUDE3 ");
    EXPECT_EQ(same->parent, nullptr);

    const std::unique_ptr<Evaluation> sameFile(New<Evaluation>(KindEvaluation, "5", "b.sc"));
    scenario->AddChild(sameFile.get(), nullptr, true);
    EXPECT_EQ(scenario->evaluation, nullptr);
    auto* evaluation = New<Evaluation>(KindEvaluation, "6", "e.sc");
    scenario->AddChild(evaluation, nullptr, true);
    EXPECT_EQ(scenario->evaluation, evaluation);

    EXPECT_EQ(scenario->FindIncludeByFile("a.sc"), first);
    EXPECT_EQ(scenario->FindIncludeByFile("e.sc"), evaluation);
    EXPECT_EQ(scenario->FindIncludeByFile("c.sc"), nullptr);
    EXPECT_EQ(scenario->FindIncludeByFile(""), nullptr) << "what has no file is no double";

    scenario->ReplaceChild(same.get(), scenario->includes[0]);
    EXPECT_EQ(BlocksOf(*scenario, KindInclude), "INCLUDE2 INCLUDE1 INCLUDE3 INCLUDE3 ") << "nothing is replaced";
    EXPECT_EQ(same->parent, nullptr);
    const std::unique_ptr<Include> former(scenario->includes[0]);
    scenario->ReplaceChild(New<Include>(KindInclude, "7", "c.sc"), former.get());
    EXPECT_EQ(BlocksOf(*scenario, KindInclude), "INCLUDE7 INCLUDE1 INCLUDE3 INCLUDE3 ");
    scenario->RemoveChild(first);
    EXPECT_EQ(BlocksOf(*scenario, KindInclude), "INCLUDE7 INCLUDE3 INCLUDE3 ");
}

TEST_F(ScenarioTest, LetsGoOfAnEvaluation) {
    const auto scenario = NewScenario();
    const std::unique_ptr<Evaluation> first(New<Evaluation>(KindEvaluation, "1", "a.sc"));
    auto* second = New<Evaluation>(KindEvaluation, "2", "b.sc");
    scenario->AddChild(first.get(), nullptr, true);
    scenario->AddChild(second, nullptr, true);
    EXPECT_EQ(BlocksOf(*scenario), "EVALUATION2 ") << "the first is neither kept nor destroyed";
    EXPECT_EQ(first->name, "1");
    scenario->ReplaceChild(first.get(), first.get());
    EXPECT_EQ(scenario->evaluation, second) << "only what stands there is replaced";
    scenario->RemoveChild(second);
    EXPECT_EQ(BlocksOf(*scenario), "");
    EXPECT_EQ(second->name, "2") << "nor is one that is removed destroyed";
    delete second;

    auto* general = New<GeneralParameters>(KindGeneralParameters, "3");
    scenario->AddChild(general, nullptr, true);
    scenario->RemoveChild(general);
    EXPECT_EQ(scenario->generalParameters, nullptr);
    scenario->AddChild(general, nullptr, true);
    scenario->AddChild(general, nullptr, true);
    EXPECT_EQ(scenario->generalParameters, general) << "what is there already stays";

    // Two of them in one text: nobody ever saw the first.
    EXPECT_TRUE(host.Read("TYPEOF SCENARIO (1)\n{\nTYPEOF EVALUATION (1)\n{\n}\nTYPEOF EVALUATION (2)\n{\n}\n}\n"));
    EXPECT_FALSE(host.Read("TYPEOF SCENARIO (1)\n{\nTYPEOF EVALUATION (1)\n{\n}\nTYPEOF EVALUATION (2)\n{\n!}\n}\n"));

    // The first was read with the scenario, and then seen by its host.
    const auto read = host.ReadAs<Scenario>("TYPEOF SCENARIO (1)\n{\nTYPEOF EVALUATION (1)\n{\n}\n}\n");
    ASSERT_TRUE(read);
    const std::unique_ptr<Evaluation> seen(read->evaluation);
    read->AddChild(New<Evaluation>(KindEvaluation, "2"), nullptr, true);
    EXPECT_EQ(seen->name, "1");
}

// A read puts the new one in place before it knows its content; one that fails leaves the former one there.
TEST_F(ScenarioTest, AFailedReadLeavesWhatStoodThere) {
    const auto scenario = NewScenario();
    auto* evaluation = New<Evaluation>(KindEvaluation, "1", "a.sc");
    auto* general = New<GeneralParameters>(KindGeneralParameters, "2");
    scenario->AddChild(evaluation, nullptr, true);
    scenario->AddChild(general, nullptr, true);
    general->description = "not of any file";
    const auto read = [&](const std::string& text, bool headerOnly = false) {
        ScenarioTextStream stream(text.c_str(), text.size());
        return LoadScenarioText(stream, scenario.get(), nullptr, nullptr, headerOnly);
    };
    for (const char* kind : {"EVALUATION", "GENERAL_PARAMETERS"}) {
        const std::string header = "TYPEOF " + std::string(kind) + " (3)\n";
        EXPECT_EQ(read(header + "{\n!}\n"), nullptr);
        EXPECT_EQ(read(header), nullptr);
    }
    EXPECT_THROW(read("TYPEOF EVALUATION (3)\n{\nTYPEOF VARIABLE (1)\n{\nINTERACTIVE_MIN_VALUE=\"1-\"\n}\n}\n"),
                 boost::bad_lexical_cast);
    EXPECT_EQ(scenario->evaluation, evaluation);
    EXPECT_EQ(evaluation->parent, scenario.get());
    EXPECT_EQ(scenario->generalParameters, general);
    EXPECT_EQ(general->description, "not of any file");

    const std::unique_ptr<Evaluation> former(evaluation);
    ScenarioItem* const added = read("TYPEOF EVALUATION (3)\n{\n}\n");
    EXPECT_EQ(scenario->evaluation, added);
    EXPECT_EQ(former->parent, nullptr) << "the host has it";
    ScenarioItem* const parameters = read("TYPEOF GENERAL_PARAMETERS (4)\n{\n}\n");
    EXPECT_EQ(scenario->generalParameters, parameters);

    // Nothing of a read stays with the item, neither of one that looks at the header only nor of a host's own call.
    const auto headed = host.ReadAs<Scenario>("TYPEOF SCENARIO (1)\n{\nTYPEOF EVALUATION (1)\n{\n}\n}\n");
    headed->OnLoadBegin();
    const std::unique_ptr<Evaluation> seen(headed->evaluation);
    const std::string text = "TYPEOF EVALUATION (2)\n{\n}\n";
    ScenarioTextStream stream(text.c_str(), text.size());
    EXPECT_NE(LoadScenarioText(stream, headed.get(), nullptr, nullptr, false), nullptr);
    EXPECT_EQ(seen->name, "1");
}

class CountedParameters : public GeneralParameters {
public:
    explicit CountedParameters(int& destroyedParameters) : destroyed(destroyedParameters) {
        kind = KindGeneralParameters;
    }
    ~CountedParameters() override { ++destroyed; }

private:
    int& destroyed;
};

TEST_F(ScenarioTest, GeneralParametersComeFromTheFileBeside) {
    data.Write("data/scenario/sub/scene.sc", "");
    data.Write("data/scenario/sub/scene.par", "description = A slow truck.\n");
    const auto scenario = host.ReadAs<Scenario>(R"(
        TYPEOF SCENARIO (1) FILE="sub\scene.sc"
            TYPEOF GENERAL_PARAMETERS (0)
    )");
    ASSERT_TRUE(scenario) << host.log.str();
    EXPECT_EQ(scenario->generalParameters->description, "A slow truck.");
    const std::string path = data.Normal("data/scenario/sub/scene.par");
    EXPECT_EQ(scenario->generalParameters->resolvedPath, path);
    const std::unique_ptr<ScenarioItem> clone(scenario->Clone());
    EXPECT_EQ(static_cast<Scenario&>(*clone).generalParameters->description, "A slow truck.");

    int destroyed = 0;
    auto* second = new CountedParameters(destroyed);
    second->resolvedPath = "elsewhere";
    scenario->AddChild(second, nullptr, true);
    EXPECT_EQ(second->resolvedPath, path);
    EXPECT_EQ(second->description, "A slow truck.");
    scenario->AddChild(New<GeneralParameters>(KindGeneralParameters, "3"), nullptr, true);
    EXPECT_EQ(destroyed, 1) << "a third one destroys it";

    const auto nameless = NewScenario();
    auto* general = New<GeneralParameters>(KindGeneralParameters, "1");
    general->resolvedPath = "elsewhere";
    nameless->AddChild(general, nullptr, true);
    EXPECT_EQ(general->resolvedPath, "");
}

TEST_F(ScenarioTest, AReferenceShowsTheLabelOfItsFile) {
    data.Write("data/scenario/a/scene.sc",
               "TYPEOF SCENARIO (4)\n{\n\tLABEL=\"Scene\"\n\tTYPEOF RULE (1)\n\t{\n\t}\n}\n");
    data.Write("data/scenario/task.sc", "TYPEOF TASK (4)\n{\n\tLABEL=\"Scene\"\n}\n");
    data.Write("data/scenario/cut.sc", "TYPEOF SCENARIO (4)\n{\n\tLABEL=\"Scene\"\n");
    data.Write("data/scenario/self.sc", "TYPEOF SCENARIO (1)\n{\n\tISA_INDEX=\"1\"\n\tFILE=\"self.sc\"\n}\n");
    struct {
        const char* why;
        const char* attributes;
        const char* label;
        const char* displayText;
    } rows[] = {
        {"found", "ISA_INDEX='1' FILE='a/scene.sc'", "Scene", "Scene    (scene.sc)"},
        {"its own label gives way", "LABEL=\"L\"\nISA_INDEX=\"1\"\nFILE=\"a\\scene.sc\"\n", "Scene",
         "Scene    (scene.sc)"},
        {"no reference", "LABEL='L' FILE='a/scene.sc'", "L", "L"},
        {"missing", "ISA_INDEX='1' FILE='none.sc'", "?", "?    (none.sc)"},
        {"another kind", "ISA_INDEX='1' FILE='task.sc'", "?", "?    (task.sc)"},
        {"cut short", "ISA_INDEX='1' FILE='cut.sc'", "?", "?    (cut.sc)"},
        {"leads to itself", "ISA_INDEX='1' FILE='self.sc'", "?", "?    (self.sc)"},
    };
    for (const auto& row : rows) {
        const auto scenario = host.ReadAs<Scenario>("TYPEOF SCENARIO (1)\n{\n" + EntryLines(row.attributes) + "}\n");
        ASSERT_TRUE(scenario) << row.why;
        EXPECT_EQ(scenario->label, row.label) << row.why;
        EXPECT_EQ(BlocksOf(*scenario), "") << row.why;
        scenario->UpdateDisplayText();
        EXPECT_EQ(scenario->displayText, row.displayText) << row.why;
    }
    EXPECT_FALSE(host.Read("TYPEOF SCENARIO (1)\n{\nFILE=\"a\"\nFILE=\"b\"\n}\n")) << "the first FILE stands";
}

TEST_F(ScenarioTest, VisibleVariables) {
    const auto scenario = host.ReadAs<Scenario>(kWhole);
    ASSERT_TRUE(scenario) << host.log.str();
    struct {
        const char* why;
        const ScenarioItem* from;
        const char* name;
        const char* scope;
        const char* found;
    } rows[] = {
        {"of the scenario and of all its files", scenario.get(), "", "", "80 30 40 5 "},
        {"from a state", scenario->subTasks.front(), "", "", "80 30 40 5 70 "},
        {"from a file only its own", scenario->includes.front(), "", "", "40 "},
        {"by name", scenario->subTasks.front(), "30", "", "30 "},
        {"by file", scenario->subTasks.front(), "", "b.sc", "40 "},
    };
    for (const auto& row : rows) {
        std::vector<ScenarioItem*> found;
        row.from->CollectVisibleItems(KindVariable, found, row.name, row.scope);
        std::string names;
        for (const ScenarioItem* item : found) names += item->name + " ";
        EXPECT_EQ(names, row.found) << row.why;
    }
}

TEST_F(ScenarioTest, TablesOfTheHost) {
    const auto scenario = NewScenario();
    EXPECT_FALSE(scenario->HasVehicle(3));
    scenario->GetVehicle(3).name = "Truck";
    EXPECT_TRUE(scenario->HasVehicle(3));
    EXPECT_EQ(scenario->GetVehicle(3).name, "Truck");

    scenario->channelNumbers = {{"Anna", 4}};
    EXPECT_EQ(scenario->ChannelNumber("Anna"), 4);
    EXPECT_EQ(scenario->ChannelNumber("anna"), -1);

    EXPECT_EQ(scenario->NameAt(0), "");
    const std::unique_ptr<ScenarioItem> item(CreateItem(KindVariable, "Gate", nullptr));
    std::vector<ScenarioItem*> names{item.get(), nullptr};
    scenario->nameList = &names;
    const char* expected[] = {"", "Gate", "", ""};
    for (std::int32_t index = -1; index < 3; ++index) EXPECT_EQ(scenario->NameAt(index), expected[index + 1]) << index;

    std::list<Scenario::Point> points{{nullptr, 1, 0.0, 0.0, 0.0}, {item.get(), 1, 1.5, -2.0, 1e7}};
    EXPECT_EQ(scenario->PointText("Gate#2"), "Gate") << "without a list";
    scenario->pointList = &points;
    EXPECT_EQ(scenario->PointText("Gate"), "Gate 1.5,-2,1e+07");
    EXPECT_EQ(scenario->PointText("Gate#2#3"), "Gate 1.5,-2,1e+07");
    EXPECT_EQ(scenario->PointText("Other#2"), "Other");
    EXPECT_EQ(scenario->PointText(""), "");
    points.back().hasPosition = 0;
    EXPECT_EQ(scenario->PointText("Gate#2"), "Gate");
}

TEST_F(ScenarioTest, AVehicleIsCompleteFromTheStart) {
    const auto scenario = NewScenario();
    const VEHICLE& vehicle = scenario->GetVehicle(7);
    EXPECT_EQ(vehicle.id, 0);
    EXPECT_EQ(vehicle.visualModel, "Peugeot_308_Noir_Perla_Nera");
    // What is given in other units than SI.
    const double perMinute = 2.0 * std::numbers::pi / 60.0;
    EXPECT_DOUBLE_EQ(vehicle.maxSpeed, 50.0);
    EXPECT_DOUBLE_EQ(vehicle.wheelAngle, std::numbers::pi / 4.0);
    EXPECT_DOUBLE_EQ(vehicle.steeringAngle, std::numbers::pi * 3.0);
    EXPECT_DOUBLE_EQ(vehicle.maxEngineSpeed, 5000.0 * perMinute);
    EXPECT_DOUBLE_EQ(vehicle.shiftDown, 1200.0 * perMinute);
    EXPECT_DOUBLE_EQ(vehicle.shiftUp, 2000.0 * perMinute);
    EXPECT_DOUBLE_EQ(vehicle.idleSpeed, 900.0 * perMinute);
    ASSERT_EQ(vehicle.axles.size(), 2U);
    EXPECT_EQ(vehicle.axles[1].kind, 2);
    EXPECT_EQ(vehicle.axles[1].width, 0.24);
    EXPECT_EQ(vehicle.axles[1].radius, 0.306);
    EXPECT_EQ(vehicle.axles[1].track, 1.55);
    EXPECT_EQ(vehicle.rearPoint.x, -0.75);
    EXPECT_EQ(vehicle.enginePoint.z, 0.5);
}

TEST_F(ScenarioTest, HighestLevelLooksAtRulesAndSubTasks) {
    const auto scenario = NewScenario();
    scenario->highestLevel = 2;
    EXPECT_EQ(scenario->HighestLevel(), 2);
    auto* task = New<Task>(KindTask, "1");
    scenario->AddChild(task, nullptr, true);
    auto* rule = New<Rule>(KindRule, "1");
    task->AddChild(rule, nullptr, true);
    rule->level = 5;
    rule->activationCount = 1;
    EXPECT_EQ(scenario->HighestLevel(), 5);
    EXPECT_EQ(scenario->highestLevel, 2);
    scenario->Init("", 0.0);
    EXPECT_EQ(scenario->highestLevel, 0);
}

} // namespace
