#include <span>

#include <gtest/gtest.h>
#include <support/DataPath.h>
#include <support/ScriptWorld.h>

namespace {

// One definition for each type, open to every word of KIND; some that the words ask more of.
const char* const kModel = R"(
    TYPEOF FOLDER (model)
        TYPEOF FOLDER (ENUMTAB_LIST)
            TYPEOF ENUMTAB (gear)
                TYPEOF ENUM (first) LABEL="First gear" TYPE="FLOAT" VALUE="1"
        TYPEOF FOLDER (PARAMETER_LIST)
            TYPEOF PARAMETER (any) LABEL="Anything" TYPE="FLOAT" ENUMTAB="gear" FILEDIR="images"
                KINDLIST="ENUM FILE FUNCTION USER VARIABLE"
                MINVALUE="-10"
                MAXVALUE="10"
            TYPEOF PARAMETER (whole) TYPE="INTEGER" KINDLIST="USER"
            TYPEOF PARAMETER (flag) TYPE="BOOL" FILEDIR="Sounds" KINDLIST="USER"
            TYPEOF PARAMETER (word) TYPE="STRING" FILEDIR="script" KINDLIST="USER"
            TYPEOF PARAMETER (nothing) TYPE="VOID" FILEDIR="Own" KINDLIST="USER"
            TYPEOF PARAMETER (profile) TYPE="STRING" FILEDIR="Profile" KINDLIST="USER"
            TYPEOF PARAMETER (VHL_NUMBER) TYPE="FLOAT" KINDLIST="VEHICLE"
            TYPEOF PARAMETER (VHL_NUMBER_PLUS) TYPE="FLOAT" KINDLIST="VEHICLE"
        TYPEOF FOLDER (FUNCTION_LIST)
            TYPEOF FUNCTION (SPEED) LABEL="Speed"
        TYPEOF FOLDER (ACTION_LIST)
            TYPEOF ACTION (drive)
                TYPEOF PARAMETER (any) KIND="USER" VALUE="0"
                TYPEOF PARAMETER (VHL_NUMBER) KIND="VEHICLE" VALUE="0"
        TYPEOF FOLDER (CONDITION_LIST))";

const char* const kScript = R"(
    TYPEOF SCENARIO (s) LABEL="Main" FILE="main.sc"
        TYPEOF INCLUDE (i) LABEL="Other" FILE="other.sc"
            TYPEOF VARIABLE (7) LABEL="hidden" TYPE="BOOL"
        TYPEOF VARIABLE (1) LABEL="speed" TYPE="FLOAT"
        TYPEOF VARIABLE (2) LABEL="count" TYPE="INTEGER"
        TYPEOF VARIABLE (3) LABEL="text" TYPE="STRING"
        TYPEOF TASK (5) LABEL="Overtaking"
            TYPEOF RULE (r)
                TYPEOF ACTION (drive)
                    TYPEOF PARAMETER (any) KIND="USER" VALUE="0"
                    TYPEOF PARAMETER (VHL_NUMBER) KIND="VEHICLE" VALUE="3")";

struct Case {
    const char* definition;
    const char* kind;
    const char* value;
    const char* ownerFile;
    const char* expected;
};

class ParameterTextTest : public testing::Test {
protected:
    void SetUp() override {
        script = world.Read(kScript);
        ASSERT_TRUE(script) << world.cause;
        auto& scenario = Scenario();
        scenario.GetVehicle(3).name = "Truck";
        scenario.GetVehicle(3).inputs = {{"throttle"}, {"brake"}};
        scenario.GetVehicle(3).outputs = {{"rpm"}, {"gear"}, {"speed"}};
        scenario.channelNumbers["Anna"] = 12;
        scenario.triggers["gate"] = 1;
        scenario.images["logo"] = 1;
        scenario.sounds["horn"] = 1;
        scenario.stateNames[4] = "rain";
        lights[0]->SetName("light 0");
        lights[1]->SetName("light 1");
        names = {lights[0].get(), lights[1].get()};
        scenario.nameList = &names;
        points = {{lights[1].get(), 1, 1.0, 2.0, 3.0}};
        scenario.pointList = &points;
    }

    ScenarioLib::Scenario& Scenario() { return static_cast<ScenarioLib::Scenario&>(*script); }
    Parameter& Definition(const std::string& name) {
        return world.Find<Parameter>(world.Find<ScenarioItem>(*world.root, KindFolder, "PARAMETER_LIST"), KindParameter,
                                     name);
    }
    Parameter& InScript() { return world.Find<Parameter>(*script, KindParameter, "any"); }

    // Display text, a bar, and whether the parameter is valid; texts without a file carry their mark with them.
    static std::string Shown(Parameter& parameter) {
        parameter.UpdateDisplayTextTree();
        return parameter.displayText + (parameter.IsValid() ? " | valid" : " | invalid");
    }

    // Gives the parameter what each row says, and compares what it shows.
    void Check(Parameter& parameter, std::span<const Case> cases) {
        for (const Case& c : cases) {
            SCOPED_TRACE(std::string(c.definition) + " " + c.kind + " " + c.value + " " + c.ownerFile);
            parameter.SetModel(&Definition(c.definition));
            parameter.valueKind = c.kind;
            parameter.value = c.value;
            parameter.ownerFile = c.ownerFile;
            EXPECT_EQ(Shown(parameter), c.expected);
        }
    }

    ScriptWorld world{kModel};
    std::unique_ptr<ScenarioItem> script;
    std::unique_ptr<ScenarioItem> lights[2] = {std::unique_ptr<ScenarioItem>(CreateItem(KindFolder, "", nullptr)),
                                               std::unique_ptr<ScenarioItem>(CreateItem(KindFolder, "", nullptr))};
    std::vector<ScenarioItem*> names;
    std::list<ScenarioLib::Scenario::Point> points;
};

TEST_F(ParameterTextTest, EveryKindInAScenario) {
    Parameter& parameter = InScript();
    const Case cases[] = {
        {"any", "ENUM", "first", "", "First gear | valid"},
        {"any", "USER", "1.5", "", "1.5 | valid"},
        {"any", "USER", "-10", "", "-10 | valid"},
        {"any", "USER", "10", "", "10 | valid"},
        {"any", "USER", "10.1", "", "10.1? | invalid"},
        {"any", "USER", "-11", "", "-11? | invalid"},
        {"any", "USER", "nan", "", "nan? | invalid"},
        {"any", "USER", "abc", "", "abc? | invalid"},
        {"any", "USER", "", "", "? | invalid"},
        {"whole", "USER", "999", "", "999 | valid"},
        {"whole", "USER", "1.5", "", "1.5 | valid"},
        {"whole", "USER", "x", "", "x? | invalid"},
        {"word", "USER", "", "", "\"\" | valid"},
        {"word", "USER", "hello", "", "hello | valid"},
        {"any", "TASK", "5", "", "Overtaking | valid"},
        {"any", "TASK", "6", "", "? | invalid"},
        {"any", "VARIABLE", "1", "", "speed | valid"},
        {"any", "VARIABLE", "1", "main.sc", "speed [main.sc] | valid"},
        {"any", "VARIABLE", "2", "", "count | valid"},
        {"whole", "VARIABLE", "1", "", "speed | valid"},
        {"flag", "VARIABLE", "1", "", "speed? | invalid"},
        {"word", "VARIABLE", "1", "", "speed | valid"},
        {"any", "VARIABLE", "3", "", "text? | invalid"},
        {"any", "VARIABLE", "9", "", "? | invalid"},
        {"flag", "VARIABLE", "7", "other.sc", "hidden [other.sc] | valid"},
        {"flag", "VARIABLE", "7", "", "? | invalid"},
        {"any", "VARIABLE", "1", "elsewhere.sc", "speed [elsewhere.sc]? | invalid"},
        {"any", "USER", "1", "elsewhere.sc", "1? | invalid"},
        {"any", "USER", "1", "other.sc", "1 | valid"},
        {"any", "VEHICLE", "3", "", "[3] Truck | valid"},
        {"any", "VEHICLE", "3rd", "", "[3rd] Truck | valid"},
        {"any", "VEHICLE", "4", "", "? | invalid"},
        {"any", "VEHICLE", "-1", "", "environment? | invalid"},
        {"VHL_NUMBER_PLUS", "VEHICLE", "-1", "", "environment | valid"},
        {"VHL_NUMBER_PLUS", "VEHICLE", "4", "", "? | invalid"},
        {"any", "PICK", "x", "", "? | valid"},
        {"any", "TRAFFIC_LIGHT", "1", "", "light 1 | valid"},
        {"any", "TRAFFIC_LIGHT", "2", "", "2 | valid"},
        {"any", "BARRIER", "0", "", "light 0 | valid"},
        {"any", "ROADSIGN", "-1", "", "-1 | valid"},
        {"any", "ROADSIGN", "", "", "light 0 | valid"},
        {"any", "OBJECT", "light 1#7", "", "light 1 1,2,3 | valid"},
        {"any", "OBJECT", "light 0#7", "", "light 0 | valid"},
        {"any", "VHC_INPUT", "1", "", "brake | valid"},
        {"any", "VHC_INPUT", "2", "", "(invalid index)? | invalid"},
        {"any", "VHC_OUTPUT", "2", "", "speed | valid"},
        {"any", "VHC_OUTPUT", "5", "", "(invalid index)? | invalid"},
        {"any", "VHC_OUTPUT", "-1", "", "(invalid index)? | invalid"},
        {"any", "EXPORT_CHANNEL", "4", "", "rain | valid"},
        {"any", "EXPORT_CHANNEL", "5", "", "5 | valid"},
        {"any", "EXPORT_CHANNEL_CATEGORY", "c", "", "c | valid"},
        {"any", "EXPORT_CHANNEL_NAME", "", "", "\"\" | valid"},
        {"any", "TRIGGER", "gate", "", "gate | valid"},
        {"any", "TRIGGER", "door", "", "door? | invalid"},
        {"any", "SOURCE", "s", "", "s | valid"},
        {"any", "SINK", "s", "", "s | valid"},
        {"any", "TRAJECTORY", "t", "", "t | valid"},
        {"any", "DRIVER", "Anna", "", "[12] Anna | valid"},
        {"any", "DRIVER", "Otto", "", "? | invalid"},
        {"any", "IMAGE", "logo", "", "logo | valid"},
        {"any", "IMAGE", "horn", "", "horn? | invalid"},
        {"any", "SOUND", "horn", "", "horn | valid"},
        {"any", "SOUND", "logo", "", "logo? | invalid"},
        {"any", "", "x", "", "? | valid"},
        {"any", "RULE", "r", "", "\"\" | valid"},
        {"any", "RULE", "x", "", "? | invalid"},
        {"any", "MODIFIER", "x", "", "\"\" | valid"},
    };
    Check(parameter, cases);
}

// The same words where no scenario is around to be asked.
TEST_F(ParameterTextTest, EveryKindAlone) {
    std::unique_ptr<ScenarioItem> item(Definition("any").Clone());
    auto& parameter = static_cast<Parameter&>(*item);
    const Case cases[] = {
        {"any", "ENUM", "first", "", "First gear | valid"},
        {"any", "FUNCTION", "", "", "? | invalid"},
        {"any", "VARIABLE", "1", "", "? | invalid"},
        {"any", "USER", "1", "elsewhere.sc", "1 | valid"},
        {"any", "VEHICLE", "3", "", "\"\" | valid"},
        {"any", "VEHICLE", "-1", "", "environment | valid"},
        {"any", "TRAFFIC_LIGHT", "1", "", "1 | valid"},
        {"any", "OBJECT", "light 1", "", "\"\" | valid"},
        {"any", "VHC_INPUT", "1", "", "(no parent node) | invalid"},
        {"any", "VHC_OUTPUT", "1", "", "(no parent node) | invalid"},
        {"any", "EXPORT_CHANNEL", "4", "", "4 | valid"},
        {"any", "TRIGGER", "gate", "", "gate? | invalid"},
        {"any", "DRIVER", "Anna", "", "? | invalid"},
        {"any", "IMAGE", "logo", "", "logo? | invalid"},
        {"any", "SOUND", "horn", "", "horn? | invalid"},
    };
    Check(parameter, cases);
}

TEST_F(ParameterTextTest, ChannelsNeedAVehicleOfTheCall) {
    Parameter& parameter = InScript();
    auto& call = static_cast<Function&>(*parameter.parent);
    Parameter& vehicle = *call.parameters[1];
    parameter.valueKind = "VHC_INPUT";
    parameter.value = "0";
    // The first parameter that may be a vehicle is the one, whatever it holds.
    EXPECT_EQ(Shown(parameter), "throttle | valid");
    vehicle.value = "-1";
    EXPECT_EQ(Shown(parameter), "(no vehicle parameter in parent function)? | invalid");
    vehicle.value = "4";
    EXPECT_EQ(Shown(parameter), "(vehicle not found in scenario)? | invalid");
    vehicle.value = "3";
    parameter.SetModel(&Definition("whole"));
    vehicle.SetModel(&Definition("whole"));
    EXPECT_EQ(Shown(parameter), "(no vehicle parameter in parent function)? | invalid");
    vehicle.SetModel(&Definition("VHL_NUMBER"));
    ScenarioItem* rule = call.parent;
    call.parent = nullptr;
    EXPECT_EQ(Shown(parameter), "(no parent scenario)? | invalid");
    call.parent = rule;
    parameter.parent = rule;
    EXPECT_EQ(Shown(parameter), "(parent node is not a function)? | invalid");
    parameter.parent = &call;
}

TEST_F(ParameterTextTest, NestedCallShowsItsTextAndMustFit) {
    Parameter& parameter = InScript();
    parameter.SetKind("FUNCTION");
    EXPECT_EQ(Shown(parameter), "? | invalid");
    auto* call = static_cast<Function*>(CreateItem(KindFunction, "SPEED", nullptr));
    auto& speed = world.Find<Function>(*world.root, KindFunction, "SPEED");
    call->SetModel(&speed);
    parameter.SetFunction(call);
    struct {
        const char* returnType;
        const char* definition;
        const char* expected;
    } cases[] = {
        {"FLOAT", "any", "Speed  () | valid"},   {"INTEGER", "any", "Speed  () | valid"},
        {"FLOAT", "whole", "Speed  () | valid"}, {"FLOAT", "flag", "Speed  ()? | invalid"},
        {"BOOL", "any", "Speed  ()? | invalid"}, {"BOOL", "flag", "Speed  () | valid"},
        {"VOID", "word", "Speed  () | valid"},   {"STRING", "any", "Speed  ()? | invalid"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.returnType) + " for " + c.definition);
        speed.returnType = c.returnType;
        parameter.SetModel(&Definition(c.definition));
        EXPECT_EQ(Shown(parameter), c.expected);
    }
}

TEST_F(ParameterTextTest, DefinitionShowsItsNameAlone) {
    Parameter& definition = Definition("any");
    definition.valueKind = "DRIVER";
    definition.value = "unknown";
    EXPECT_EQ(Shown(definition), "any    (Anything) | invalid");
}

// What the texts are read against where the top of the tree is no scenario.
TEST_F(ParameterTextTest, EvaluationAndIncludeAtTheTop) {
    auto evaluation = world.Read(R"(
        TYPEOF EVALUATION (e)
            TYPEOF RULE (r)
                TYPEOF ACTION (drive)
                    TYPEOF PARAMETER (any) KIND="USER" VALUE="3"
                    TYPEOF PARAMETER (VHL_NUMBER) KIND="VEHICLE" VALUE="3")");
    ASSERT_TRUE(evaluation) << world.cause;
    Parameter& parameter = world.Find<Parameter>(*evaluation, KindParameter, "any");
    parameter.valueKind = "VEHICLE";
    EXPECT_EQ(Shown(parameter), "\"\" | valid");
    static_cast<Evaluation&>(*evaluation).owner = &Scenario();
    EXPECT_EQ(Shown(parameter), "[3] Truck | valid");
    parameter.valueKind = "EXPORT_CHANNEL";
    parameter.value = "4";
    EXPECT_EQ(Shown(parameter), "rain | valid");
    // The file rule asks for a scenario at the top, and this is none.
    parameter.ownerFile = "elsewhere.sc";
    EXPECT_EQ(Shown(parameter), "rain | valid");

    Include include;
    include.kind = KindInclude;
    include.stateNames[4] = "snow";
    parameter.parent = &include;
    EXPECT_EQ(Shown(parameter), "snow | valid");
    parameter.valueKind = "TRIGGER";
    EXPECT_EQ(Shown(parameter), "4? | invalid");
    parameter.parent = &world.Find<ScenarioItem>(*evaluation, KindAction, "drive");
}

TEST_F(ParameterTextTest, FilesAreFoundInTheDirectoryOfTheirKind) {
    DataPath dataPath;
    for (const char* file : {"data/images/a.png", "data/sound/a.wav", "data/script/python/a.py",
                             "data/script/profile/a.prf", "data/Own/a.own"})
        dataPath.Write(file, "x");

    Parameter& parameter = InScript();
    const Case cases[] = {
        {"any", "FILE", "a.png", "", "a.png | valid"},
        {"any", "FILE", "a.wav", "", "a.wav? | invalid"},
        {"any", "FILE", "", "", "? | invalid"},
        {"flag", "FILE", "a.wav", "", "a.wav | valid"},
        {"word", "FILE", "a.py", "", "a.py | valid"},
        {"profile", "FILE", "a.prf", "", "a.prf | valid"},
        {"nothing", "FILE", "a.own", "", "a.own | valid"},
        {"whole", "FILE", "Own/a.own", "", "Own/a.own | valid"},
    };
    Check(parameter, cases);
}

} // namespace
