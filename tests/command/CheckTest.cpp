#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <support/InstallationBuilder.h>
#include <support/ScriptText.h>

#include "CommandRunner.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

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

TEST_F(CheckTest, TellsFileRowLineAndCause) {
    const std::string good = installation.scenario("town", "good.sce", scenarioWith(script("SetSpeed", "50")));
    const std::string typo = installation.scenario("town", "typo.sce", scenarioWith(script("SetSpedd", "50")));
    const std::string high = installation.scenario("town", "high.sce", scenarioWith(script("SetSpeed", "500")));
    const std::string torn =
        installation.scenario("town", "torn.sce", "<sce version=\"1\">\n<Scenario>\n<name>x</nam>");

    EXPECT_EQ(run({"check", good}).status, 0);
    EXPECT_EQ(run({"check", good}).out, "");

    const Result unknown = run({"check", typo, "--json"});
    EXPECT_EQ(unknown.status, 1);
    ASSERT_EQ(unknown.json().size(), 1U) << unknown;
    EXPECT_EQ(unknown.json()[0]["script"], "main");
    EXPECT_EQ(unknown.json()[0]["file"], typo);
    EXPECT_THAT(unknown.json()[0]["cause"].get<std::string>(), HasSubstr("SetSpedd"));
    EXPECT_THAT(unknown.json()[0]["cause"].get<std::string>(), HasSubstr("SetSpeed"));

    const Result invalid = run({"check", high});
    EXPECT_EQ(invalid.status, 1);
    EXPECT_THAT(invalid.out,
                HasSubstr("high.sce: script main: parameter \"SPEED\" with USER \"500\": the value is not of "
                          "the type of its definition, or outside its limits\n"
                          "    in SCENARIO (1) / RULE (1) / ACTION (SetSpeed)\n    shown as 500?\n"))
        << invalid;

    const Result broken = run({"check", torn});
    EXPECT_EQ(broken.status, 1);
    EXPECT_THAT(broken.out, HasSubstr(torn + ":3: ")) << broken;
}

TEST_F(CheckTest, AModelIsToldOnceForAllItsScenarios) {
    installation.model("town", kModel + "x");
    std::string bad = kModel;
    bad.replace(bad.find("FLOAT"), 5, "DOUBLE");
    const std::string model = installation.model("town", bad);
    for (const char* name : {"a.sce", "b.sce", "c.sce"})
        installation.scenario("town", name, scenarioWith(script("SetSpeed", "50")));
    const Result result = run({"check", installation.file(), "--json"});
    EXPECT_EQ(result.status, 1);
    ASSERT_EQ(result.json().size(), 1U) << result;
    EXPECT_EQ(result.json()[0]["file"], model);
    EXPECT_EQ(result.json()[0]["row"], 10);
    EXPECT_EQ(result.json()[0]["line"], "TYPE=\"DOUBLE\"");
}

TEST_F(CheckTest, AnInstallationIsCheckedWhole) {
    installation.configuration("Empty", "1.0", {"nothing"});
    installation.configuration("No version", "", {"town"});
    installation.scenario("town", "good.sce", scenarioWith(script("SetSpeed", "50")));
    const Result result = run({"check", installation.path()});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("configuration \"Empty\" has no root model"));
    EXPECT_THAT(result.out, HasSubstr("configuration \"Empty\": Data Path ["));
    EXPECT_THAT(result.out, HasSubstr("configuration \"No version\": Unable to get version"));
    const std::string noXml = installation.write("other.xml", "<tavrel>\n<configuration/>\n</tavrel>");
    EXPECT_THAT(run({"check", noXml}).out, HasSubstr(noXml + ":2: "));
}

TEST_F(CheckTest, AScriptThatNeedsAMissingListIsASentence) {
    std::string model = kModel;
    model.replace(model.find("ACTION_LIST"), 11, "ACTIONS_OLD");
    installation.model("town", model.substr(0, model.find("TYPEOF ACTION (SetSpeed)")) + "}\n}\n");
    const std::string text = installation.write("town/data/script/include/a.sc", script("SetSpeed", "50"));
    EXPECT_THAT(run({"check", installation.file()}).out, HasSubstr("nuro.mdl: the FOLDER (ACTION_LIST) is missing"));
    const Result result = run({"check", text});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("(assertion token:275): the root model lacks the folder of definitions"));
}

TEST_F(CheckTest, TheSampleIsClean) {
    run.common.clear();
    const Result result = run({"check", TAVREL_SAMPLE});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, IsEmpty());
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

} // namespace
