#include <queue>

#include <support/DriverTest.h>

namespace {

// Opens what a subclass may use.
class Template : public TavrelScenario {
public:
    using TavrelScenario::TavrelScenario;

    static std::vector<std::string> split(const std::string& id) {
        std::queue<std::string> pieces;
        splitId(id, pieces);
        std::vector<std::string> result;
        for (; !pieces.empty(); pieces.pop()) result.push_back(pieces.front());
        return result;
    }
};

TEST(SplitId, CutsAtSlashesOutsideBrackets) {
    struct Row {
        const char* why;
        const char* id;
        std::vector<std::string> expected;
    };
    const Row rows[] = {
        {"every kind of step",
         "/sce/Scenario/Vehicle[id/@ScenarioTreeValue=3]/ScenarioScript[scriptName=\"a\"]/Variable[name=12]/value",
         {"sce", "Scenario", "Vehicle[id/@ScenarioTreeValue=3]", "ScenarioScript[scriptName=\"a\"]",
          "Variable[name=12]/value"}},
        {"empty", "", {}},
        {"slashes only", "///", {}},
        {"empty steps are dropped", "a//b/", {"a", "b"}},
        {"no slash in front", "sce/Scenario/x", {"sce", "Scenario", "x"}},
        {"a script's name may hold slashes",
         "ScenarioScript[scriptName=\"a/b\"]/x",
         {"ScenarioScript[scriptName=\"a/b\"]", "x"}},
        {"but not a closing bracket", "S[n=\"a]b/c\"]/x", {"S[n=\"a]", "c\"]", "x"}},
        {"a bracket left open ends the walk", "a[b/c", {"a[b/c"}},
        {"also behind other steps", "/sce/a[b/c/d", {"sce", "a[b/c/d"}},
        {"whatever stands behind a bracket is skipped", "a[1]Xb/c", {"a[1]", "b", "c"}},
        {"a bracket at the end", "a[1]", {"a[1]"}},
        {"the first closing bracket counts, even before the opening one", "a]b[c/d", {"a]", "[c/d"}},
        {"a closing bracket alone ends a step", "a]b", {"a]"}},
        {"but not behind a slash", "x/a]b", {"x", "a]"}},
        {"a variable is one step when nothing follows", "Variable[name=12]/value", {"Variable[name=12]/value"}},
        {"and three when something does", "Variable[name=12]/value/x", {"Variable[name=12]", "value", "x"}},
        {"only with a number", "Variable[name=]/value", {"Variable[name=]", "value"}},
        {"only with digits", "Variable[name=-1]/value", {"Variable[name=-1]", "value"}},
        {"only spelled so", "variable[name=1]/value", {"variable[name=1]", "value"}},
        {"a slash before the bracket", "Vehicle/x[1]", {"Vehicle", "x[1]"}},
    };
    for (const Row& row : rows) EXPECT_THAT(Template::split(row.id), ElementsAreArray(row.expected)) << row.why;
}

// No recursion on digits, and no second look at the whole rest for each step.
TEST(SplitId, TakesAnyLength) {
    constexpr std::size_t kMany = 2'000'000;
    EXPECT_EQ(Template::split("Variable[name=" + std::string(kMany, '1') + "]/value").size(), 1U);
    EXPECT_EQ(Template::split(std::string(kMany, '/')).size(), 0U);
    std::string brackets;
    for (std::size_t index = 0; index < kMany / 4; ++index) brackets += "[]/x";
    EXPECT_EQ(Template::split(brackets + "/y").size(), kMany / 4 + 2);
    EXPECT_EQ(Template::split(std::string("a\0/b", 4)).size(), 2U);
}

// Everything that has an id of its own form, and one name that occurs twice.
class ParameterIdTest : public testing::Test {
protected:
    ParameterIdTest() {
        installation.configuration("City", "1", {"pack"});
        installation.model("pack");
        const std::string script = ScriptText(R"(
            TYPEOF SCENARIO (1)
                TYPEOF VARIABLE (12) LABEL="Score" VALUE="7"
        )");
        installation.scenario(
            "pack", "all.sce",
            SectionText("Scenario")
                .parameter("duration", "90", "real", "s")
                .section(SectionText("Weather").section(SectionText("Wind").parameter("speed", "3", "real", "m/s")))
                .section(SectionText("Vehicle").parameter("id", "3").parameter("x", "1", "integer"))
                .section(SectionText("Vehicle").parameter("id", "-4").parameter("x", "2", "integer"))
                .section(SectionText("Driver").parameter("id", "3").parameter("name", "Anna"))
                .script("a/b c", script));
        installation.use();
    }

    std::string directory() const { return installation.path() + "/pack/data/scenario"; }

    static void collect(const ScenarioNode& node, std::vector<ScenarioParameter*>& out) {
        std::vector<ScenarioParameter*> parameters;
        node.getParameters(parameters);
        out.insert(out.end(), parameters.begin(), parameters.end());
        for (std::size_t index = 0; index < node.getChildNumber(); ++index) collect(*node.getChild(index), out);
    }

    InstallationBuilder installation;
};

TEST_F(ParameterIdTest, EveryIdLeadsBackToItsParameter) {
    const TavrelScenario scenario("City", "all.sce", directory());
    std::vector<ScenarioParameter*> parameters;
    collect(*scenario.getRootScenarioNode(), parameters);
    std::vector<std::string> ids;
    for (ScenarioParameter* parameter : parameters) {
        ids.push_back(parameter->getParameterId());
        EXPECT_EQ(scenario.getParameterFromId(ids.back()), parameter) << ids.back();
        EXPECT_EQ(scenario.getParameterFromId(ids.back().substr(1)), parameter) << "without the slash in front";
    }
    const std::string vehicle = "/sce/Scenario/Vehicle[id/@ScenarioTreeValue=";
    const std::string driver = "/sce/Scenario/Driver[id/@ScenarioTreeValue=3]";
    const std::vector<std::string> expected = {
        "/sce/Scenario/duration", "/sce/Scenario/Weather/Wind/speed",
        vehicle + "3]/id",        vehicle + "3]/driverId",
        vehicle + "3]/name",      vehicle + "3]/x",
        vehicle + "-4]/id",       vehicle + "-4]/driverId",
        vehicle + "-4]/name",     vehicle + "-4]/x",
        driver + "/id",           driver + "/name",
        driver + "/label",        "/sce/Scenario/ScenarioScript[scriptName=\"a/b c\"]/Variable[name=12]/value",
    };
    EXPECT_EQ(ids, expected);
}

TEST_F(ParameterIdTest, IdsOfTheWrongShapeGiveNullAndOpenNothing) {
    const TavrelScenario absent("City", "absent.sce", directory());
    for (const char* id : {"", "/", "//", "sce", "/sce", "/sce/", "/Scenario/sce/x", "/sce/Other/x", "/Sce/Scenario/x",
                           "/sce[1]/Scenario/x", "sce /Scenario/x", "Variable[name=12]/value"})
        EXPECT_EQ(absent.getParameterFromId(id), nullptr) << id;
    EXPECT_EQ(failureOf([&] { absent.getParameterFromId("/sce/Scenario"); }).code, 24) << "this one opens the file";

    const TavrelScenario scenario("City", "all.sce", directory());
    EXPECT_EQ(scenario.getParameterFromId("/sce/Scenario"), nullptr) << "the root is no parameter";
    EXPECT_EQ(scenario.getParameterFromId("sce//Scenario/"), nullptr);
}

TEST_F(ParameterIdTest, StepsThatDoNotExistThrowPointers) {
    const TavrelScenario scenario("City", "all.sce", directory());
    const std::string script = "/sce/Scenario/ScenarioScript[scriptName=\"a/b c\"]";
    struct Row {
        const char* why;
        std::string id;
        const char* message;
    };
    const Row rows[] = {
        {"a parameter of the root", "/sce/Scenario/x", "No child parameter with id=x in scenario element : Scenario"},
        {"a node where a parameter must stand", "/sce/Scenario/Vehicle[id/@ScenarioTreeValue=3]",
         "No child parameter with id=Vehicle[id/@ScenarioTreeValue=3] in scenario element : Scenario"},
        {"a parameter where a node must stand", "/sce/Scenario/duration/x",
         "No child element with id=duration in scenario element : Scenario"},
        {"a vehicle that is not there", "/sce/Scenario/Vehicle[id/@ScenarioTreeValue=4]/x",
         "No child element with id=Vehicle[id/@ScenarioTreeValue=4] in scenario element : Scenario"},
        {"a vehicle's parameter", "/sce/Scenario/Vehicle[id/@ScenarioTreeValue=3]/y",
         "No child parameter with id=y in scenario element : Vehicle[3] - "},
        {"an open bracket", "/sce/Scenario/a[b/c", "No child parameter with id=a[b/c in scenario element : Scenario"},
        {"a node below a script", script + "/x/y", "Scenario script <a/b c> never has children node!"},
        {"a variable and more", script + "/Variable[name=12]/value/x",
         "Scenario script <a/b c> never has children node!"},
        {"a variable that is not there", script + "/Variable[name=13]/value",
         "No child parameter with id=Variable[name=13]/value in scenario node : ScenarioScript - a/b c"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(failureOf([&] { scenario.getParameterFromId(row.id); }), byPointer(-1, row.message)) << row.why;
}

} // namespace
