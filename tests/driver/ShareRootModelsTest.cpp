#include <optional>
#include <sstream>

#include <scenario/LoadDiagnostics.h>
#include <support/DriverTest.h>

namespace {

const std::string kModel = ScriptText(R"(
    TYPEOF FOLDER (nuro)
        TYPEOF FOLDER (CONDITION_LIST)
            TYPEOF CONDITION (ALWAYS) CODE="0"
        TYPEOF FOLDER (FUNCTION_LIST)
            TYPEOF FUNCTION (INNER) CODE="1"
)");

class ShareRootModelsTest : public testing::Test {
protected:
    ShareRootModelsTest() {
        installation.configuration("City", "1", {"city"});
        installation.configuration("Village", "1", {"city"});
        installation.use();
        model = installation.model("city", kModel);
        installation.scenario("city", "a.sce", SectionText("Scenario").text("name", "A"));
    }

    // The root model after a template was opened.
    Folders* Open(const std::string& configuration = "City") {
        TavrelScenario scenario(configuration, "a.sce", installation.path() + "/city/data/scenario");
        scenario.getRootScenarioNode();
        return scenarioRootModel;
    }
    void Write(const std::string& text) { installation.model("city", text); }

    InstallationBuilder installation;
    std::string model;
};

TEST_F(ShareRootModelsTest, CountsAndIsOffByDefault) {
    Folders* const first = Open();
    EXPECT_NE(Open(), first);
    auto outer = std::make_unique<ShareRootModels>();
    Folders* const shared = Open();
    EXPECT_NE(shared, first) << "a tree from before may have been changed";
    EXPECT_EQ(Open(), shared);
    auto inner = std::make_unique<ShareRootModels>();
    outer.reset();
    EXPECT_TRUE(ShareRootModels::areShared());
    EXPECT_EQ(Open(), shared);
    inner.reset();
    EXPECT_FALSE(ShareRootModels::areShared());
    EXPECT_NE(Open(), shared);
}

TEST_F(ShareRootModelsTest, WhateverWouldMakeAnotherTreeIsSeenAtOnce) {
    const ShareRootModels sharing;
    Folders* former = Open();
    const auto expectAnother = [&](const char* why, const std::string& configuration = "City") {
        Folders* const now = Open(configuration);
        EXPECT_NE(now, former) << why;
        EXPECT_EQ(Open(configuration), now) << why;
        former = now;
    };
    std::string edited = kModel;
    edited.replace(edited.find("ALWAYS"), 6, "ALWAYT");
    const auto time = fs::last_write_time(model);
    Write(edited);
    fs::last_write_time(model, time);
    expectAnother("one byte, size and time as before");
    EXPECT_NE(scenarioRootModel->FindItem(KindCondition, "ALWAYT", ""), nullptr);
    Write(kModel);
    expectAnother("the bytes of before, of which there is a tree, but not in use");
    expectAnother("another configuration", "Village");
    lmkUtils::EnvConfig::setConfig("City", false);
    expectAnother("another current configuration", "Village");
    installation.write("more/data/tools/nuro/nuro.mdl", kModel);
    installation.configuration("Village", "1", {"more", "city"});
    expectAnother("another file", "Village");

    // Longer than what is compared at once.
    std::string bytes = kModel + std::string(100000, '\n');
    const auto expectAnotherFor = [&](const char* why) {
        installation.write("more/data/tools/nuro/nuro.mdl", bytes);
        expectAnother(why, "Village");
    };
    expectAnotherFor("another length");
    bytes.back() = '\t';
    expectAnotherFor("the last byte");
    bytes.pop_back();
    expectAnotherFor("without the last byte");
    bytes += '\n';
    expectAnotherFor("one byte more");

    scenarioRootModel = nullptr;
    expectAnother("the host took it away", "Village");
    const Folders* const mine = scenarioRootModel;
    installation.model("more", "TYPEOF FOLDER (torn)\n{\n");
    EXPECT_EQ(failureOf([&] { Open("Village"); }).code, -1);
    EXPECT_EQ(scenarioRootModel, mine) << "a model that cannot be read replaces none";
    installation.write("more/data/tools/nuro/nuro.mdl", bytes);
    EXPECT_EQ(Open("Village"), mine);
}

TEST_F(ShareRootModelsTest, ScriptsLinkToTheSharedTree) {
    installation.scenario("city", "a.sce", SectionText("Scenario").script("main", ScriptText(R"(
        TYPEOF SCENARIO (1)
            TYPEOF VARIABLE (3) LABEL="Three" VALUE="2.5"
            TYPEOF RULE (1)
                TYPEOF CONDITION (ALWAYS)
    )")));
    const ShareRootModels sharing;
    for (int round = 0; round < 3; ++round) {
        TavrelScenario scenario("City", "a.sce", installation.path() + "/city/data/scenario");
        EXPECT_EQ(
            scenario.getParameterFromId("/sce/Scenario/ScenarioScript[scriptName=\"main\"]/Variable[name=3]/value")
                ->getValueAsString(),
            "2.5");
    }
}

// What the reading of a model tells, an opening that shares its tree tells, too: on the log that is the standard
// output, and to the listener of the moment.
TEST_F(ShareRootModelsTest, MessagesAreToldAtEachOpening) {
    Write(ScriptText(R"(
        TYPEOF FOLDER (nuro)
            TYPEOF FOLDER (FUNCTION_LIST)
                TYPEOF FUNCTION (INNER) CODE="1"
                TYPEOF FUNCTION (OUTER) CODE="2"
                    TYPEOF FUNCTION (INNER)
    )"));
    struct Heard : ScopedLoadProblemListener {
        void OnLoadProblem(const LoadProblem& problem) override {
            text << problem.file << ':' << problem.row << ':' << problem.line << ": " << problem.cause << '\n';
        }
        std::ostringstream text;
    };
    const auto told = [&](bool listens) {
        std::ostringstream log;
        std::streambuf* const former = std::cout.rdbuf(log.rdbuf());
        std::optional<Heard> heard;
        if (listens) heard.emplace();
        Open();
        std::cout.rdbuf(former);
        EXPECT_EQ(scenarioLog, &std::cout);
        return log.str() + "\n" + (listens ? heard->text.str() : std::string());
    };
    const std::string unshared = told(true);
    EXPECT_THAT(unshared, testing::HasSubstr("FUNCTION (INNER) is passed over")) << "or nothing is compared";
    const ShareRootModels sharing;
    told(false);
    Folders* const tree = scenarioRootModel;
    EXPECT_EQ(told(true), unshared) << "to a listener that came later";
    EXPECT_EQ(told(true), unshared);
    EXPECT_EQ(scenarioRootModel, tree);
}

TEST_F(ShareRootModelsTest, AModelThatDrawsOnOtherFilesIsNotShared) {
    Write(ScriptText(R"(
        TYPEOF FOLDER (nuro)
            TYPEOF INCLUDE (1) ISA_INDEX="1" FILE="i.sc"
    )"));
    installation.write("city/data/script/include/i.sc", "TYPEOF INCLUDE (1)\n{\n}\n");
    const ShareRootModels sharing;
    Folders* const first = Open();
    EXPECT_NE(Open(), first);
}

} // namespace
