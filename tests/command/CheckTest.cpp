#include <filesystem>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/InstallationBuilder.h>
#include <support/ScriptText.h>

#include "CommandRunner.h"

namespace {

using testing::HasSubstr;

const std::string kModel = ScriptText(R"(
    TYPEOF FOLDER (nuro)
        TYPEOF FOLDER (ENUMTAB_LIST)
        TYPEOF FOLDER (PARAMETER_LIST)
            TYPEOF PARAMETER (SPEED)
                TYPE="FLOAT"
                USAGE="BY_VALUE"
                KINDLIST="USER VARIABLE"
                MINVALUE="0"
                MAXVALUE="100"
        TYPEOF FOLDER (FUNCTION_LIST)
        TYPEOF FOLDER (CONDITION_LIST)
            TYPEOF CONDITION (ALWAYS) CODE="0"
        TYPEOF FOLDER (ACTION_LIST)
            TYPEOF ACTION (SetSpeed) CODE="1"
                TYPEOF PARAMETER (SPEED) KIND="USER" VALUE="10"
)");

// A script with one rule whose action is called `action` with this value.
std::string script(const std::string& action, const std::string& value) {
    return ScriptText("    TYPEOF SCENARIO (1)\n        TYPEOF RULE (1)\n            TYPEOF CONDITION (ALWAYS)\n"
                      "            TYPEOF ACTION (" +
                      action + ")\n                TYPEOF PARAMETER (SPEED) KIND=\"USER\" VALUE=\"" + value + "\"\n");
}

SectionText scenarioWith(const std::string& script) {
    return SectionText("Scenario").text("name", "One").script("main", script);
}

class CheckTest : public testing::Test {
protected:
    CheckTest() {
        installation.configuration("Town", "1.0", {"town"});
        installation.model("town", kModel);
        run.common = {"--config", installation.file()};
    }

    InstallationBuilder installation;
    CommandRunner run;
};

std::set<std::string> rulesIn(const Result& result) {
    std::set<std::string> rules;
    for (const auto& finding : result.json()) rules.insert(finding["rule"]);
    return rules;
}

TEST_F(CheckTest, TextMarksThePlace) {
    const std::string path = installation.write("town/data/script/include/a.sc", script("SetSpedd", "50"));
    const Result result = run({"check", path});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out,
              path + ":8:18: error: unknown action \"SetSpedd\", did you mean \"SetSpeed\" [TV2001 unknown-action]\n"
                     "            TYPEOF ACTION (SetSpedd)\n"
                     "                           ^^^^^^^^\n"
                     "    in SCENARIO (1) / RULE (1)\n"
                     "    help: Correct the name, or add the definition to the root model.\n"
                     "1 error, 0 warnings, 0 notes\n");
    const std::string good = installation.scenario("town", "good.sce", scenarioWith(script("SetSpeed", "50")));
    EXPECT_EQ(run({"check", good}).out, "");
    EXPECT_EQ(run({"check", good}).status, 0);
}

TEST_F(CheckTest, ItemsThatAreNotClosedAreToldWithTheirBeginnings) {
    const std::string path =
        installation.write("town/data/script/include/a.sc",
                           "TYPEOF SCENARIO (1)\n{\n\tTYPEOF TASK (1)\n\t{\n\t\tTYPEOF TASK (1)\n\t\t{\n");
    const std::string place = ": error: TASK (1) is not closed [TV1005 missing-close-brace]\n"
                              "    in SCENARIO (1) / TASK (1) / TASK (1)\n";
    EXPECT_THAT(run({"check", path}).out, HasSubstr(place + "    see " + path + ":5:10: it begins here\n    see " +
                                                    path + ":3:9: it begins here\n"));
}

TEST_F(CheckTest, FilesThatIncludeOthersTwiceAreNotDoubledAtEachLevel) {
    constexpr int kLevels = 24;
    for (int level = 0; level <= kLevels; ++level) {
        std::string text = "TYPEOF INCLUDE (1)\n{\n";
        for (int task = 1; level < kLevels && task <= 2; ++task)
            text += "\tTYPEOF SCENARIO (" + std::to_string(task) + ")\n\t{\n\t\tTYPEOF INCLUDE (1)\n\t\t{\n" +
                    "\t\t\tISA_INDEX=\"1\"\n\t\t\tFILE=\"" + std::to_string(level + 1) + ".sc\"\n\t\t}\n\t}\n";
        installation.write("town/data/script/include/" + std::to_string(level) + ".sc", text + "}\n");
    }
    const Result result =
        run({"check", installation.path() + "/town/data/script/include/0.sc", "--timeout", "30", "--fail-on", "error"});
    EXPECT_EQ(result.status, 0) << result;
}

TEST_F(CheckTest, ControlCharactersAreShownAndNotSent) {
    const std::string path = installation.write("town/data/script/include/a.sc",
                                                "TYPEOF SCENARIO (1)\n{\n\t\x1b[2J\xe2\x80\xae\xff here\n}\n");
    const Result result = run({"check", path, "--select", "TV1001"});
    EXPECT_THAT(result.out, HasSubstr("        \\x1b[2J\\u202e\\xff here\n        ^^^^")) << result;
    EXPECT_EQ(result.out.find('\x1b'), std::string::npos);
    for (const char* form : {"json", "jsonl", "sarif"})
        EXPECT_TRUE(nlohmann::json::accept(run({"check", path, "--format", form, "--max-findings", "1"}).lines()[0]) ||
                    nlohmann::json::accept(run({"check", path, "--format", form}).out))
            << form;
}

TEST_F(CheckTest, JsonHasTheFormerMembersAndTheNewOnes) {
    const std::string path = installation.scenario("town", "a.sce", scenarioWith(script("SetSpedd", "50")));
    const auto findings = run({"check", path, "--json"}).json();
    ASSERT_EQ(findings.size(), 1U);
    const auto& finding = findings[0];
    for (const char* member :
         {"rule", "name", "severity", "file", "row", "column", "endRow", "endColumn", "script", "scriptRow", "place",
          "message", "help", "line", "related", "fixes", "fingerprint", "cause", "display"})
        EXPECT_TRUE(finding.contains(member)) << member;
    EXPECT_EQ(finding["script"], "main");
    EXPECT_EQ(finding["scriptRow"], 8);
    EXPECT_EQ(finding["cause"], finding["message"]);
    EXPECT_EQ(finding["fixes"][0]["edits"][0]["replacement"], "SetSpeed");
    EXPECT_EQ(finding, nlohmann::json::parse(run({"check", path, "--format", "jsonl"}).lines()[0]));
    // An item that is read, and not valid, is shown as the application shows it.
    installation.scenario("town", "b.sce", scenarioWith(script("SetSpeed", "500")));
    const auto invalid = run({"check", "b.sce", "--json"}).json();
    ASSERT_EQ(invalid.size(), 1U);
    EXPECT_THAT(invalid[0]["display"].get<std::string>(), HasSubstr("500"));
}

TEST_F(CheckTest, MachinesGetTheSameBytesFromAnywhere) {
    for (const char* name : {"a.sce", "deep/b.sce", "ü.sce"})
        installation.scenario("town", name, scenarioWith(script("SetSpedd", "50")));
    for (const char* form : {"json", "sarif", "junit", "github"}) {
        run.folder = "/";
        const std::vector<std::string> command{"check", installation.path(), "--format", form, "--jobs"};
        const auto with = [&](std::vector<std::string> words, const std::string& jobs) {
            words.push_back(jobs);
            return words;
        };
        const Result one = run(with(command, "1"));
        EXPECT_EQ(one.status, 1);
        EXPECT_EQ(run(with(command, "4")).out, one.out) << form;
        run.folder = installation.path() + "/town";
        EXPECT_EQ(run({"check", "..", "--format", form}).out, one.out) << form;
        run.environment["LC_ALL"] = "de_DE.UTF-8";
        EXPECT_EQ(run({"check", "..", "--format", form}).out, one.out) << form;
        EXPECT_EQ(one.err, "");
    }
}

TEST_F(CheckTest, NoMoreAreToldOfAFileThanAskedFor) {
    std::string settings = readFile(installation.file());
    settings.insert(settings.rfind("</tavrel>"), "<a/><b/><c/>\n");
    installation.write("tavrel.xml", settings);
    std::vector<std::string> rules;
    for (const auto& finding : run({"check", installation.path(), "--max-findings", "2", "--json"}).json())
        rules.push_back(finding["rule"]);
    EXPECT_THAT(rules, testing::ElementsAre("TV9002", "TV6013", "TV6013"));
}

TEST_F(CheckTest, TheStatusFollowsTheOptions) {
    const std::string wrong = installation.write("town/data/script/include/a.sc", script("SetSpedd", "50"));
    const std::string doubtful = installation.write("town/data/script/include/b.sc", script("SetSpeed", "50") + "x\n");
    const std::string none = installation.path() + "/none.sc";
    const struct {
        const char* why;
        std::vector<std::string> arguments;
        int status;
    } rows[] = {
        {"an error", {wrong}, 1},
        {"a warning is none", {doubtful}, 0},
        {"unless it is to be", {doubtful, "--fail-on", "warning"}, 1},
        {"nor when notes are", {doubtful, "--fail-on", "note"}, 1},
        {"nothing counts", {wrong, "--exit-zero"}, 0},
        {"another rule", {wrong, "--select", "TV1,TV3"}, 0},
        {"all but this one", {wrong, "--ignore", "TV2001"}, 0},
        {"by its beginning", {wrong, "--ignore", "TV1", "--select", "TV20"}, 1},
        {"not there", {none}, 3},
        {"not there, and nothing counts", {none, wrong, "--exit-zero"}, 3},
        {"no such rule", {wrong, "--select", "TV2O01"}, 2},
        {"no number", {wrong, "--max-findings", "0"}, 2},
        {"two forms", {wrong, "--json", "--format", "sarif"}, 2},
        {"no baseline", {wrong, "--baseline", none}, 3},
    };
    for (const auto& row : rows) {
        std::vector<std::string> command{"check"};
        command.insert(command.end(), row.arguments.begin(), row.arguments.end());
        EXPECT_EQ(run(command).status, row.status) << row.why;
    }
    EXPECT_THAT(run({"check", wrong, "--select", "TV2O01"}).err, HasSubstr("did you mean \"TV2001\""));
    EXPECT_EQ(rulesIn(run({"check", none, "--json"})), std::set<std::string>{"TV6001"});
}

TEST_F(CheckTest, AnOperandIsAFileBeforeItIsAScenario) {
    installation.scenario("town", "a.sce", scenarioWith(script("SetSpeed", "50")));
    EXPECT_EQ(run({"check", "a.sce"}).status, 0);
    installation.write("a.sce",
                       readFile(installation.scenario("town", "b.sce", scenarioWith(script("SetSpedd", "50")))));
    run.folder = installation.path();
    const Result both = run({"check", "a.sce"});
    EXPECT_EQ(both.status, 1);
    EXPECT_THAT(both.err, HasSubstr("the file is meant"));
    EXPECT_THAT(both.out, testing::StartsWith("a.sce:"));
    const Result misspeltPath = run({"check", "c.sce"});
    EXPECT_EQ(misspeltPath.status, 3);
    EXPECT_THAT(misspeltPath.err, HasSubstr("did you mean"));
    EXPECT_EQ(rulesIn(run({"check", "--json"})), (std::set<std::string>{"TV2001"})) << "without an operand";
    installation.scenario("town", "deep/far away.sce", scenarioWith(script("SetSpeed", "50")));
    EXPECT_THAT(run({"outline", "far awy.sce"}).err, HasSubstr("did you mean \"deep/far away.sce\""));
}

TEST_F(CheckTest, ABaselineHoldsWhatIsKnown) {
    const std::string path = installation.scenario("town", "a.sce", scenarioWith(script("SetSpedd", "50")));
    const std::string baseline = installation.path() + "/baseline.json";
    EXPECT_EQ(run({"check", path, "--write-baseline", baseline}).status, 0);
    // Rows may change.
    installation.scenario("town", "a.sce", "\n\n" + readFile(path));
    const Result held = run({"check", path, "--baseline", baseline, "--json"});
    EXPECT_EQ(held.status, 0) << held;
    EXPECT_EQ(held.out, "[]\n");
    installation.scenario("town", "b.sce", scenarioWith(script("SetSpedd", "50")));
    const Result fresh = run({"check", installation.path(), "--baseline", baseline, "--json", "--ignore", "TV2013"});
    EXPECT_EQ(fresh.status, 1);
    ASSERT_EQ(fresh.json().size(), 1U) << fresh;
    EXPECT_THAT(fresh.json()[0]["file"].get<std::string>(), testing::EndsWith("b.sce"));
    installation.scenario("town", "a.sce", scenarioWith(script("SetSpeed", "50")));
    const Result gone = run({"check", path, "--baseline", baseline});
    EXPECT_EQ(gone.status, 0);
    EXPECT_THAT(gone.err, HasSubstr("note: ")) << gone;
    EXPECT_EQ(run({"check", path, "--write-baseline", baseline}).status, 0);
    EXPECT_EQ(run({"check", path, "--baseline", baseline}).err, "");
    const std::string other = installation.write("other.json", "{\"version\": 1, \"findings\": [{\"file\": 3}]}");
    EXPECT_EQ(run({"check", path, "--baseline", other}).status, 3);
}

TEST_F(CheckTest, ABaselineIsBroughtUpToDateInParts) {
    const std::string path =
        installation.scenario("town", "a.sce", scenarioWith(script("SetSpedd", "50") + script("SetSpeed", "500")));
    const std::string two = installation.scenario("town", "b.sce", scenarioWith(script("SetSpeed", "500")));
    const std::string baseline = installation.path() + "/baseline.json";
    EXPECT_EQ(run({"check", path, two, "--write-baseline", baseline}).status, 0);
    EXPECT_EQ(run({"check", path, two, "--baseline", baseline, "--select", "TV3"}).err, "");
    EXPECT_EQ(run({"check", path, two, "--write-baseline", baseline, "--select", "TV3"}).status, 0);
    EXPECT_EQ(run({"check", path, two, "--baseline", baseline}).status, 0);
}

TEST_F(CheckTest, APathIsToldAsItWasGivenAndAFindingOnce) {
    installation.write(
        "town/data/script/include/inc.sc",
        ScriptText("    TYPEOF INCLUDE (1)\n        TYPEOF RULE (1)\n            TYPEOF CONDITION (ALWAYS)\n"
                   "            TYPEOF ACTION (SetSpedd)\n"));
    installation.scenario("town", "a.sce",
                          scenarioWith("TYPEOF SCENARIO (1)\n{\n\tTYPEOF INCLUDE (1)\n\t{\n\t\tISA_INDEX=\"1\"\n"
                                       "\t\tFILE=\"inc.sc\"\n\t}\n}\n"));
    run.folder = installation.path();
    for (const std::string given : {"town", "./town", "tavrel.xml", "."}) {
        const Result result = run({"check", given, "--select", "TV2001"});
        const std::string folder = given == "tavrel.xml" ? "town" : given == "." ? "./town" : given;
        EXPECT_THAT(result.out, testing::StartsWith(folder + "/data/script/include/inc.sc:")) << given;
        EXPECT_THAT(result.out, testing::EndsWith("\n1 error, 0 warnings, 0 notes\n")) << given;
        EXPECT_THAT(result.out, testing::Not(HasSubstr(installation.path()))) << given;
    }
}

TEST_F(CheckTest, RulesOfTheInstallationAreChosenLikeOthers) {
    installation.scenario("town", "a.sce", scenarioWith(script("SetSpeed", "50")));
    installation.configuration("Bare", "1.0", {"bare"});
    std::filesystem::create_directories(installation.path() + "/bare/data/scenario");
    EXPECT_EQ(rulesIn(run({"check", "--json", "--select", "TV6"})), std::set<std::string>{"TV6007"});
    for (const auto& [option, rules] : {std::pair("--ignore", "TV6007"), {"--select", "TV1"}}) {
        const Result result = run({"check", option, rules});
        EXPECT_EQ(result.status, 0) << option << result;
        EXPECT_THAT(result.out, testing::Not(HasSubstr("TV6007"))) << option;
    }
}

TEST_F(CheckTest, AFixTouchesItsSpanAndNothingElse) {
    for (const std::string end : {"\n", "\r\n"})
        for (const std::string mark : {"", "\xEF\xBB\xBF"}) {
            const std::string head = mark +
                                     "<sce version=\"1\"><!-- \xF0\x9F\x9A\x97 --><Scenario a='1'><name>x</name>" +
                                     end + "<ScenarioScript><scriptName>s</scriptName><text><![CDATA[" + end;
            const std::string tail = "]]></text></ScenarioScript></Scenario></sce>" + end;
            const std::string path = installation.scenario("town", "a.sce", head + script("SetSpedd", "50") + tail);
            const Result shown = run({"check", path, "--diff"});
            EXPECT_THAT(shown.out, HasSubstr("-\t\tTYPEOF ACTION (SetSpedd)\n+\t\tTYPEOF ACTION (SetSpeed)\n"));
            EXPECT_EQ(readFile(path), head + script("SetSpedd", "50") + tail) << "it only shows";
            const Result fixed = run({"check", path, "--fix"});
            EXPECT_EQ(fixed.status, 0) << fixed;
            EXPECT_EQ(readFile(path), head + script("SetSpeed", "50") + tail);
        }
}

TEST_F(CheckTest, AFixThatMakesANewErrorIsTakenBack) {
    // What a value has to be shows only when its KIND is known.
    std::string text = script("SetSpeed", "fast");
    text.replace(text.find("USER"), 4, "USR");
    const std::string path = installation.write("town/data/script/include/a.sc", text);
    const Result result = run({"check", path, "--fix"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("one fix would make a new error and is left out"));
    EXPECT_EQ(readFile(path), text);
    text.replace(text.find("fast"), 4, "50");
    installation.write("town/data/script/include/a.sc", text);
    EXPECT_EQ(run({"check", path, "--fix"}).status, 0);
    EXPECT_EQ(readFile(path), script("SetSpeed", "50"));
}

TEST_F(CheckTest, LikelyFixesAreMadeWhereTheyAreAskedFor) {
    const std::string good = script("SetSpeed", "50");
    const struct {
        const char* why;
        const char* right;
        const char* wrong;
        bool isSafe;
    } rows[] = {
        {"one letter of a kind", "TYPEOF RULE (1)", "TYPEOF RUL (1)", true},
        {"two letters of a name", "(SetSpeed)", "(SetSpede)", false},
        {"a blank before a line", "\t\tTYPEOF ACTION", "\t\t TYPEOF ACTION", false},
        {"a header without its bracket", "CONDITION (ALWAYS)", "CONDITION (ALWAYS", false},
        {"a header without its brace", "TYPEOF RULE (1)\n\t{", "TYPEOF RULE (1)", false},
        {"an opening quote", "KIND=\"USER\"", "KIND=USER\"", false},
        {"a closing quote", "KIND=\"USER\"", "KIND=\"USER", true},
    };
    for (const std::string end : {"\n", "\r\n"})
        for (const auto& row : rows) {
            const auto written = [&](std::string text) {
                if (end != "\n")
                    for (std::size_t i = 0; (i = text.find('\n', i)) != std::string::npos; i += 2) text.insert(i, "\r");
                return text;
            };
            std::string text = good;
            ASSERT_NE(text.find(row.right), std::string::npos) << row.why;
            text.replace(text.find(row.right), std::string(row.right).size(), row.wrong);
            for (const bool isScene : {false, true}) {
                if (isScene && end == "\n") continue;
                const std::string file = isScene ? "town/data/scenario/a.sce" : "town/data/script/include/a.sc";
                const std::string head = isScene ? "<sce version=\"1\">\n<Scenario><ScenarioScript><text>\n" : "";
                const std::string tail = isScene ? "</text></ScenarioScript></Scenario></sce>" : "";
                const std::string path = installation.write(file, written(head + text + tail));
                EXPECT_EQ(run({"check", path, "--fix"}).status, row.isSafe ? 0 : 1) << row.why;
                EXPECT_EQ(readFile(path), written(head + (row.isSafe ? good : text) + tail)) << row.why;
                EXPECT_EQ(run({"check", path, "--unsafe-fixes"}).status, 0) << row.why;
                EXPECT_EQ(readFile(path), written(head + good + tail)) << row.why;
            }
        }
}

TEST_F(CheckTest, TheSampleHasNothingAboveANote) {
    run.common.clear();
    const Result result = run({"check", TAVREL_SAMPLE, "--json"});
    EXPECT_EQ(result.status, 0) << result;
    for (const auto& finding : result.json()) EXPECT_EQ(finding["severity"], "note") << finding;
    EXPECT_EQ(run({"check", "--json"}).json().size(), result.json().size()) << "without an operand it is in use";
}

TEST_F(CheckTest, FormatIsTheIdentityOnItsOwnTexts) {
    const std::string folder = installation.path() + "/";
    for (const LineEnd lineEnd : {LineEnd::Feed, LineEnd::CarriageReturnAndFeed}) {
        std::string text = script("SetSpeed", "50");
        if (lineEnd == LineEnd::CarriageReturnAndFeed)
            for (std::size_t i = 0; (i = text.find('\n', i)) != std::string::npos; i += 2) text.insert(i, "\r");
        const std::string source = installation.write("town/data/script/include/a.sc", text);
        EXPECT_EQ(run({"format", source, "--check"}).status, 1) << "the empty lines are missing";
        EXPECT_EQ(run({"format", source, "--output", folder + "once.sc"}).status, 0);
        const Result twice = run({"format", folder + "once.sc"});
        EXPECT_EQ(twice.status, 0) << twice;
        EXPECT_EQ(twice.out, readFile(folder + "once.sc"));
        EXPECT_EQ(twice.err, "") << "nothing is lost";
        EXPECT_EQ(run({"format", folder + "once.sc", "--check"}).status, 0);
        EXPECT_EQ(twice.out.find("\r\n") != std::string::npos, lineEnd == LineEnd::CarriageReturnAndFeed);
    }
}

TEST_F(CheckTest, AByteOrderMarkBeforeATextIsItsOnlyFault) {
    const std::string text = installation.write("town/data/script/include/a.sc", script("SetSpeed", "50"));
    ASSERT_EQ(run({"check", text}).status, 0);
    installation.write("town/data/script/include/a.sc", "\xEF\xBB\xBF" + script("SetSpeed", "50"));
    const Result marked = run({"check", text});
    EXPECT_EQ(marked.status, 1);
    EXPECT_THAT(marked.out, HasSubstr(text + ":1:1: error: a byte order mark stands before the header"));
    EXPECT_THAT(marked.out, testing::EndsWith("1 error, 0 warnings, 0 notes\n"));
}

TEST_F(CheckTest, FormatRefusesWithTheRowAndTellsWhatIsLost) {
    const std::string source = installation.write("town/data/script/include/a.sc", script("SetSpedd", "50"));
    const std::string before = readFile(source);
    const Result refused = run({"format", source, "--output", source});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.err, HasSubstr(source + ":")) << refused;
    EXPECT_THAT(refused.err, HasSubstr("SetSpedd"));
    EXPECT_EQ(readFile(source), before);

    const std::string config = installation.write(
        "town/config.sc",
        ScriptText("    TYPEOF CONFIG (c)\n    {\n        LABEL=\"Lost\"\n        UPDATE_DELAY=\"2\"\n    }\n"));
    const Result lossy = run({"format", config});
    EXPECT_EQ(lossy.status, 0);
    EXPECT_THAT(lossy.out, HasSubstr("UPDATE_DELAY=\"2\""));
    const std::string told = "tavrel: " + config + ":3: this line is lost: LABEL=\"Lost\"\n";
    EXPECT_EQ(lossy.err, told);
    const std::string whole = readFile(config);
    const Result kept = run({"format", config, "--output", config});
    EXPECT_EQ(kept.status, 1);
    EXPECT_EQ(kept.err, told + "tavrel: " + config +
                            " is not written: 1 of its lines would be lost; --force writes it all the same, another "
                            "--output keeps it\n");
    EXPECT_EQ(readFile(config), whole);
    EXPECT_EQ(run({"format", config, "--output", installation.path() + "/copy.sc"}).status, 0);
    EXPECT_EQ(run({"format", config, "--output", config, "--force"}).status, 0);
    EXPECT_EQ(readFile(config), readFile(installation.path() + "/copy.sc"));
}

TEST_F(CheckTest, FormatWritesNothingThatCannotBeReadAgain) {
    // A header without a name reads back only with a carriage return behind it.
    const std::string text = "TYPEOF CONFIG\r{\n\tREQUEST_DELAY=\"1\"\n}\n";
    const std::string file = installation.write("town/nameless.sc", text);
    for (const std::string& target : {file, installation.path() + "/copy.sc"}) {
        const Result refused = run({"format", file, "--output", target, "--force"});
        EXPECT_EQ(refused.status, 1) << refused;
        EXPECT_THAT(refused.err, HasSubstr("could not be read again"));
    }
    EXPECT_EQ(readFile(file), text);
    EXPECT_FALSE(std::filesystem::exists(installation.path() + "/copy.sc"));

    const std::string locked = installation.write("town/locked.sc", "TYPEOF CONFIG (c)\n{\n}\n");
    std::filesystem::permissions(locked, std::filesystem::perms::owner_read);
    CommandRunner user = run;
    user.heedsPermissions = true;
    const Result refused = user({"format", locked, "--output", locked});
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.err, testing::EndsWith("cannot write " + locked + ": no permission\n"));
}

TEST_F(CheckTest, FormatWritesTheScriptsOfAScenarioInTheirPlaces) {
    const std::string untidy = script("SetSpeed", "50"); // without the empty lines
    installation.write("town/data/script/include/a.sc", untidy);
    const std::string tidy = run({"format", installation.path() + "/town/data/script/include/a.sc"}).out;
    ASSERT_NE(tidy, untidy);
    const std::string item = tidy.substr(tidy.find("TYPEOF"), tidy.rfind('}') + 1 - tidy.find("TYPEOF"));
    const auto replaced = [](std::string text, const std::string& from, const std::string& to) {
        for (std::size_t i = 0; (i = text.find(from, i)) != std::string::npos; i += to.size())
            text.replace(i, from.size(), to);
        return text;
    };
    const std::string head =
        "\xEF\xBB\xBF<sce version='1'><!-- <text> -->\r\n<Scenario a = \"&#65;\"><ScenarioScript><text>";
    const std::string tail =
        "\n\t</text></ScenarioScript>\n<ScenarioScript><scriptType>other</scriptType><text>TYPEOF</text>"
        "</ScenarioScript></Scenario>\n</sce>\n\n";
    const struct {
        const char* why;
        std::string before, after;
    } rows[] = {
        {"plain", untidy, item},
        {"in CDATA", "<![CDATA[\n" + untidy + "]]>", "<![CDATA[\n" + item + "\n]]>"},
        {"by references", replaced(untidy, "L", "&#76;"), item},
        {"with carriage returns", replaced(untidy, "\n", "&#13;\n"), replaced(item, "\n", "&#13;\n")},
    };
    for (const auto& row : rows) {
        const std::string path = installation.scenario("town", "a.sce", head + row.before + tail);
        EXPECT_EQ(run({"format", "--check", path}).status, 1) << row.why;
        EXPECT_EQ(run({"format", path, "--in-place"}).status, 0) << row.why;
        std::string after = readFile(path);
        ASSERT_TRUE(after.starts_with(head) && after.ends_with(tail)) << row.why << after;
        after = after.substr(head.size(), after.size() - head.size() - tail.size());
        while (after.ends_with("\n") || after.ends_with("&#13;"))
            after.erase(after.size() - (after.back() == '\n' ? 1 : 5));
        EXPECT_EQ(after, row.after) << row.why;
        EXPECT_EQ(run({"format", "--check", path}).status, 0) << row.why;
    }
}

TEST_F(CheckTest, FormatOfAFolderLeavesWhatItWouldSpoil) {
    const std::string good = installation.write("town/data/script/include/good.sc", script("SetSpeed", "50"));
    const std::string bad = installation.write("town/data/script/include/bad.sc", script("SetSpedd", "50"));
    const std::string model = kModel;
    std::string returning = model;
    returning.insert(returning.find("\tTYPEOF CONDITION (ALWAYS)"),
                     "\tTYPEOF CONDITION (IS)\n\t{\n\tCODE=\"7\"\n\tTYPEOF RETURN "
                     "(SPEED)\n\t{\n\tKIND=\"USER\"\n\tVALUE=\"1\"\n\t}\n\t}\n");
    const std::string path = installation.model("town", returning);
    const Result result = run({"format", installation.path()});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(run({"format", "--check", good}).status, 0);
    EXPECT_EQ(readFile(bad), script("SetSpedd", "50"));
    EXPECT_EQ(readFile(path), returning) << "a RETURN would come back as a PARAMETER";
    EXPECT_EQ(run({"format", good, bad, "--output", path}).status, 2);
}

} // namespace
