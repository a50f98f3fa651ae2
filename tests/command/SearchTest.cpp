#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/InstallationBuilder.h>
#include <support/ScriptText.h>

#include "CommandRunner.h"

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

const std::string kModel = ScriptText(R"(
    TYPEOF FOLDER (nuro)
        TYPEOF FOLDER (ENUMTAB_LIST)
            TYPEOF ENUMTAB (LANES)
                TYPEOF ENUM (LEFT) LABEL="Left lane" VALUE="1"
        TYPEOF FOLDER (PARAMETER_LIST)
            TYPEOF PARAMETER (SPEED)
                LABEL="Speed"
                UNIT="m/s"
                TYPE="FLOAT"
                USAGE="BY_VALUE"
                KINDLIST="USER VARIABLE"
                MINVALUE="0"
                MAXVALUE="100"
            TYPEOF PARAMETER (TARGET)
                TYPE="FLOAT"
                USAGE="BY_ADDRESS"
                KINDLIST="VARIABLE"
            TYPEOF PARAMETER (STATE)
                TYPE="INTEGER"
                USAGE="BY_VALUE"
                KINDLIST="TASK"
        TYPEOF FOLDER (FUNCTION_LIST)
        TYPEOF FOLDER (CONDITION_LIST)
            TYPEOF CONDITION (ALWAYS) LABEL="Always" CODE="0"
        TYPEOF FOLDER (ACTION_LIST)
            TYPEOF ACTION (SET_SPEED) LABEL="Set the speed" CODE="1"
                TYPEOF PARAMETER (SPEED) KIND="USER" VALUE="10"
            TYPEOF ACTION (STORE) LABEL="Store" CODE="2"
                TYPEOF PARAMETER (TARGET) KIND="VARIABLE" VALUE="1"
            TYPEOF ACTION (NEXT_STATE) LABEL="Go on to" CODE="3"
                TYPEOF PARAMETER (STATE) KIND="TASK" VALUE="1"
)");

// Rows of the script: VARIABLE 4, TASK (1) 9, the action that goes on 15, STORE 23.
const std::string kScript = ScriptText(R"(
    TYPEOF SCENARIO (1)
        FILE="s.sc"
        TYPEOF VARIABLE (1) LABEL="Way" TYPE="FLOAT" VALUE="7"
        TYPEOF TASK (1) LABEL="Drive"
            TYPEOF RULE (1) LABEL="Go"
                TYPEOF CONDITION (ALWAYS)
                TYPEOF ACTION (NEXT_STATE)
                    TYPEOF PARAMETER (STATE) KIND="TASK" VALUE="2"
                TYPEOF ACTION (SET_SPEED)
                    TYPEOF PARAMETER (SPEED) KIND="VARIABLE" VALUE="1" OWNER_FILE="s.sc"
        TYPEOF TASK (2) LABEL="Stop"
            TYPEOF RULE (2)
                TYPEOF CONDITION (ALWAYS)
                TYPEOF ACTION (STORE)
                    TYPEOF PARAMETER (TARGET) KIND="VARIABLE" VALUE="1" OWNER_FILE="s.sc"
)");

// The row of the file in which `text` first stands.
int rowOf(const std::string& file, const std::string& text) {
    const std::string bytes = readFile(file);
    const std::size_t place = bytes.find(text);
    return static_cast<int>(std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(place), '\n')) + 1;
}

class SearchTest : public testing::Test {
protected:
    SearchTest() {
        installation.configuration("Town", "1.0", {"town"});
        installation.model("town", kModel);
        slow = installation.scenario("town", "Zone 30.sce", scenario("ÜBUNG", "8", "m/s"));
        fast = installation.scenario("town", "deep/Highway.sce", scenario("Rush", "90", "km/h"));
        installation.scenario("town", "Empty.sce", "<sce version=\"1\"><Scenario><name>Empty</name></Scenario></sce>");
        run.common = {"--config", installation.file()};
    }

    // The script in CDATA begins after a line of its own.
    static std::string scenario(const std::string& name, const std::string& speed, const std::string& unit) {
        return "<sce version=\"1\">\n<Scenario>\n<name>" + name + "</name>\n<limit type=\"real\" unit=\"" + unit +
               "\" verboseName=\"Allowed\" ScenarioTreeValue=\"" + speed +
               "\"/>\n<ScenarioScript><scriptName>main</scriptName><text><![CDATA[\n" + kScript +
               "]]></text></ScenarioScript>\n"
               "<VariadicParameter><name>How fast</name><parameterId>/sce/Scenario/limit</parameterId>"
               "<RealParameter><default>5</default></RealParameter></VariadicParameter>\n</Scenario>\n</sce>\n";
    }

    std::vector<std::string> found(std::vector<std::string> expressions) const {
        expressions.insert(expressions.begin(), {"find", "--paths"});
        return run(expressions).lines();
    }

    InstallationBuilder installation;
    CommandRunner run;
    std::string slow, fast;
};

TEST_F(SearchTest, FindComparesAsItSays) {
    const std::string zone = "Zone 30.sce", highway = "deep/Highway.sce";
    const struct {
        const char* why;
        std::vector<std::string> expressions;
        std::vector<std::string> paths;
    } rows[] = {
        {"no expression", {}, {"Empty.sce", zone, highway}},
        {"case of any alphabet", {"name=übung"}, {zone}},
        {"a part is enough", {"calls=set_sp"}, {zone, highway}},
        {"with a wildcard the whole has to fit", {"calls=*_SP"}, {}},
        {"one character each", {"calls=S?T_S*D"}, {zone, highway}},
        {"the value in its unit: 90 m/s are 324 km/h", {"unit=km/h", "value=324"}, {highway}},
        {"below", {"parameter=limit", "value<9"}, {zone}},
        {"at most", {"parameter=limit", "value<=8"}, {zone}},
        {"above", {"parameter=Allowed", "value>8"}, {highway}},
        {"unit and value of one parameter", {"unit=m/s", "value=7"}, {}},
        {"a variable is a parameter", {"parameter=Variable[name=1]", "value=7"}, {zone, highway}},
        {"declared", {"varies=how"}, {zone, highway}},
        {"all must hold", {"varies=how", "name=rush"}, {highway}},
        {"a word alone is text, here a label in a script", {"way"}, {zone, highway}},
        {"nothing", {"includes=school/*"}, {}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(found(row.expressions), row.paths) << row.why;
        std::vector<std::string> command{"find"};
        command.insert(command.end(), row.expressions.begin(), row.expressions.end());
        EXPECT_EQ(run(command).status, row.paths.empty() ? 1 : 0) << row.why;
    }
    EXPECT_THAT(run({"find", "vlue=3"}).err, HasSubstr("did you mean \"value\""));
    EXPECT_EQ(run({"find", "value<fast"}).status, 2);
}

TEST_F(SearchTest, PlacesAreRowsOfTheFile) {
    const json places = run({"find", "calls=STORE", "--json"}).json()[0]["places"];
    ASSERT_EQ(places.size(), 1U);
    EXPECT_EQ(places[0]["row"], rowOf(slow, "TYPEOF ACTION (STORE)"));
    installation.scenario("town", "Torn.sce", "<sce><Scenario>");
    const Result torn = run({"find", "calls=STORE"});
    EXPECT_EQ(torn.status, 3);
    EXPECT_EQ(torn.lines().size(), 2U) << "the others are still told";
}

TEST_F(SearchTest, DiffTellsWhatIsNotTheSame) {
    EXPECT_EQ(run({"diff", slow, slow}).status, 0);
    EXPECT_EQ(run({"diff", slow, slow}).out, "");
    std::string changed = readFile(slow);
    const auto replace = [&](const std::string& from, const std::string& to) {
        changed.replace(changed.find(from), from.size(), to);
    };
    replace("ScenarioTreeValue=\"8\"", "ScenarioTreeValue=\"9\"");
    replace("<default>5</default>", "<default>6</default>");
    replace("LABEL=\"Way\"", "LABEL=\"Path\"");
    replace("</name>\n", "</name>\n<rain type=\"real\" ScenarioTreeValue=\"1\"/>\n");
    const std::string other = installation.write("other.sce", changed);
    const Result result = run({"diff", slow, other, "--json"});
    EXPECT_EQ(result.status, 1);
    std::vector<std::string> told;
    const json all = result.json();
    for (const json& difference : all["differences"])
        told.push_back(difference["change"].get<std::string>() + " " + difference["name"].get<std::string>());
    EXPECT_THAT(told, ElementsAre("changed /sce/Scenario/limit", "added /sce/Scenario/rain",
                                  "changed /sce/Scenario/limit", "changed SCENARIO (1) / VARIABLE (1) / LABEL"));
    EXPECT_EQ(all["differences"][0]["rowA"], 4);
    EXPECT_EQ(all["differences"][0]["rowB"], 5);
    EXPECT_EQ(all["differences"][3]["rowB"], rowOf(other, "LABEL=\"Path\""));
    EXPECT_EQ(run({"diff", slow, "nothing.sce"}).status, 3);
}

TEST_F(SearchTest, DiffTellsMovesFromAdditions) {
    const auto script = [&](const std::string& name, const std::vector<std::string>& rules) {
        std::string text = "TYPEOF INCLUDE (1)\n{\n";
        for (const std::string& rule : rules) text += "TYPEOF RULE (" + rule + ")\n{\nLABEL=\"" + rule + "\"\n}\n";
        return installation.write(name, text + "}\n");
    };
    const std::string a = script("a.sc", {"1", "2", "3", "4"});
    const auto told = [&](const std::vector<std::string>& rules) {
        std::vector<std::string> lines;
        const json all = run({"diff", a, script("b.sc", rules), "--json"}).json();
        for (const json& difference : all["differences"])
            lines.push_back(difference["change"].get<std::string>() + " " +
                            difference["name"].get<std::string>().substr(std::string("INCLUDE (1) / RULE ").size()));
        return lines;
    };
    EXPECT_THAT(told({"1", "2", "3", "4"}), IsEmpty());
    EXPECT_THAT(told({"0", "1", "2", "3", "4"}), ElementsAre("added (0)"));
    EXPECT_THAT(told({"2", "3", "4", "1"}), ElementsAre("moved (1)"));
    EXPECT_THAT(told({"1", "4"}), ElementsAre("removed (2)", "removed (3)"));
}

TEST_F(SearchTest, RefsFollowsTheScopeOfANumber) {
    const auto roles = [&](const std::string& name) {
        std::vector<std::string> lines;
        for (const json& reference : run({"refs", "Zone 30.sce", name, "--json"}).json())
            lines.push_back(reference["role"].get<std::string>() + " " + std::to_string(reference["row"].get<int>()));
        return lines;
    };
    const auto row = [&](const std::string& text) { return std::to_string(rowOf(slow, text)); };
    const std::string used = std::to_string(rowOf(slow, "TYPEOF PARAMETER (SPEED)") + 3);
    const std::string written = std::to_string(rowOf(slow, "TYPEOF PARAMETER (TARGET)") + 3);
    const std::string entered = std::to_string(rowOf(slow, "TYPEOF PARAMETER (STATE)") + 3);
    EXPECT_THAT(roles("variable:1"),
                ElementsAre("defined " + row("TYPEOF VARIABLE (1)"), "used " + used, "written " + written));
    EXPECT_EQ(roles("Way"), roles("variable:1"));
    EXPECT_THAT(roles("Stop"), ElementsAre("defined " + row("TYPEOF TASK (2)"), "entered " + entered));
    EXPECT_EQ(run({"refs", "Zone 30.sce", "task:1"}).status, 1) << "nothing enters it";
    const Result unknown = run({"refs", "Zone 30.sce", "Stopp"});
    EXPECT_EQ(unknown.status, 3);
    EXPECT_THAT(unknown.err, HasSubstr("did you mean \"Stop\""));
}

TEST_F(SearchTest, OutlineAndWordsSpeakInLabels) {
    const Result outline = run({"outline", "Zone 30.sce"});
    EXPECT_EQ(outline.status, 0) << outline;
    EXPECT_THAT(outline.out, HasSubstr(std::to_string(rowOf(slow, "TYPEOF TASK (1)")) + "    state Drive (1)\n"));
    EXPECT_THAT(outline.out, HasSubstr("THEN Set the speed (Way [s.sc])\n"));
    EXPECT_EQ(run({"outline", "Zone 30.sce", "--json"}).json()["children"].size(), 3U);

    const Result words = run({"words", "speed", "--json"});
    ASSERT_EQ(words.json().size(), 1U) << words;
    EXPECT_EQ(words.json()[0]["kind"], "action");
    EXPECT_EQ(words.json()[0]["parameters"][0]["unit"], "m/s");
    EXPECT_EQ(words.json()[0]["parameters"][0]["maximum"], "100");
    EXPECT_THAT(run({"words", "SET_SPEED"}).out, HasSubstr(" FLOAT m/s, 0 to 100, USER VARIABLE; 10"));
    EXPECT_THAT(run({"words", "STORE"}).out, HasSubstr(" FLOAT, VARIABLE, by address; 1"));
    const std::string maximum = "MAXVALUE=\"100\"";
    for (const auto& [limits, told] : {std::pair{"", "from 0"}, std::pair{"MAXVALUE=\"90\"", "up to 90"}}) {
        std::string model = kModel;
        model.replace(model.find(maximum), maximum.size(), limits);
        if (*limits) model.erase(model.find("MINVALUE"), model.find("MAXVALUE") - model.find("MINVALUE"));
        installation.model("town", model);
        EXPECT_THAT(run({"words", "SET_SPEED"}).out,
                    HasSubstr(" FLOAT m/s, " + std::string(told) + ", USER VARIABLE; 10"));
    }
    installation.model("town", kModel);
    const Result none = run({"words", "SET_SPEDD"});
    EXPECT_EQ(none.status, 1);
    EXPECT_THAT(none.err, HasSubstr("did you mean \"SET_SPEED\""));
}

TEST_F(SearchTest, AFileOnDiskIsAScenarioToo) {
    const std::string value = run({"get", "Zone 30.sce", "/sce/Scenario/limit"}).out;
    run.folder = installation.path();
    installation.write("Zone 30.sce", scenario("On disk", "3", "m/s"));
    const Result both = run({"get", "Zone 30.sce", "/sce/Scenario/limit"});
    EXPECT_EQ(both.out, "3.000000\n");
    EXPECT_THAT(both.err, HasSubstr("the file is meant"));
    EXPECT_EQ(value, "8.000000\n");
    for (const std::string command : {"show", "ids", "fetch", "variadic list", "graph", "outline"}) {
        std::vector<std::string> words{command.substr(0, command.find(' '))};
        if (command != words[0]) words.push_back("list");
        words.push_back(fast);
        EXPECT_EQ(run(words).status, 0) << command;
    }
    const Result misspelt = run({"show", "Zone 31.sce"});
    EXPECT_EQ(misspelt.status, 3);
    EXPECT_THAT(misspelt.err, HasSubstr("did you mean \"Zone 30.sce\""));
    EXPECT_THAT(run({"get", fast, "/sce/Scenario/limitt"}).err, HasSubstr("did you mean \"/sce/Scenario/limit\""));
    EXPECT_THAT(run({"shw", fast}).err, HasSubstr("did you mean \"show\""));
    EXPECT_THAT(run({"list", "--jsn"}).err, HasSubstr("did you mean \"--json\""));
    EXPECT_THAT(run({"list", "--configuration", "Twon"}).err, HasSubstr("did you mean \"Town\""));
}

TEST_F(SearchTest, ExplainKnowsTheRulesByIdAndName) {
    const Result list = run({"explain", "--format", "json"});
    EXPECT_EQ(list.status, 0);
    EXPECT_GE(list.json().size(), 80U);
    EXPECT_EQ(run({"explain", "unknown-action"}).out, run({"explain", "TV2001"}).out);
    EXPECT_THAT(run({"explain", "TV2001"}).out, StartsWith("TV2001  unknown-action (error)\n"));
    const Result misspelt = run({"explain", "unknown-acton"});
    EXPECT_EQ(misspelt.status, 2);
    EXPECT_THAT(misspelt.err, HasSubstr("did you mean \"unknown-action\""));
}

} // namespace
