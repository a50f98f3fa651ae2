#include <sstream>

#include <TavrelScenarioTemplateDb/Failures.h>
#include <support/DriverTest.h>

namespace {

class SharedStateTest : public testing::Test {
protected:
    SharedStateTest() {
        installation.configuration("City", "1", {"pack"});
        installation.configuration("Highway", "1", {"other"});
        for (const char* pack : {"pack", "other"}) {
            installation.model(pack);
            installation.scenario(pack, "one.sce", SectionText("Scenario").text("name", "One"));
        }
        installation.use();
    }

    InstallationBuilder installation;
};

// A host that browses while something else is at work.
TEST_F(SharedStateTest, AGuardPutsBackAllThatTheProcessShares) {
    const InstallationBuilder elsewhere;
    const TavrelDatabaseDriver driver(installation.file(), "*", "City");
    driver.getScenario("one.sce")->getRootScenarioNode();
    Folders* const model = scenarioRootModel;
    std::ostringstream log;
    scenarioLog = &log;
    std::streambuf* const output = std::cout.rdbuf();
    std::ostringstream messages;
    {
        const SharedStateGuard guard(&messages);
        const TavrelDatabaseDriver other(installation.file(), "*", "Highway");
        other.getScenario("one.sce")->getRootScenarioNode();
        EXPECT_NE(scenarioRootModel, model);
        lmkUtils::EnvConfig::setTavrelConfigFilePath(elsewhere.file());
        installation.write("broken.mdl", "nonsense");
        EXPECT_EQ(LoadScenarioFile((installation.path() + "/broken.mdl").c_str(), &std::cout, false), nullptr);
        {
            const SharedStateGuard inner;
            std::cout << "dropped";
        }
        std::cout << "kept";
    }
    EXPECT_EQ(std::cout.rdbuf(), output);
    EXPECT_TRUE(std::cout.good());
    EXPECT_THAT(messages.str(), testing::AllOf(testing::HasSubstr("row"), testing::EndsWith("kept")));
    EXPECT_THAT(messages.str(), testing::Not(testing::HasSubstr("dropped")));
    EXPECT_EQ(scenarioRootModel, model);
    EXPECT_EQ(scenarioLog, &log);
    EXPECT_EQ(lmkUtils::EnvConfig::ourConfigCfgFile, installation.file());
    EXPECT_EQ(lmkUtils::EnvConfig::getCurrentConfiguration(), "City");
    scenarioLog = nullptr;
}

template <typename Call>
std::string told(Call call) {
    try {
        translateFailures(call);
    } catch (const ScenarioFailure& failure) {
        return std::to_string(failure.code) + " " + failure.what();
    }
    return "nothing";
}

TEST_F(SharedStateTest, EveryFormOfFailureIsOneStdException) {
    const TavrelDatabaseDriver driver(installation.file(), "*", "City");
    const std::unique_ptr<TavrelScenario> scenario = createScenario(driver, "City", "one.sce");
    EXPECT_EQ(translateFailures([&] { return scenario->getName(); }), "One");
    EXPECT_THAT(told([&] { driver.getScenario("two.sce"); }), testing::StartsWith("24 Could not find scenario"));
    EXPECT_EQ(told([&] { scenario->getParameterFromId("/sce/Scenario/x"); }),
              "-1 No child parameter with id=x in scenario element : Scenario");
    fs::create_symlink("nowhere", installation.path() + "/pack/data/scenario/dangling.sce");
    EXPECT_THAT(told([&] { driver.getScenario("two.sce"); }), testing::StartsWith("-1 ")) << "of Poco";
    EXPECT_EQ(told([&] { createScenario(driver, "City", "two.sce"); }).substr(0, 3), "-1 ");

    scenario->setName("Changed");
    saveOrThrow(*scenario);
    EXPECT_EQ(scenario->getSaveFailure(), "");
    installation.scenario("pack", "one.sce", SectionText("Scenario").text("name", "Someone else's"));
    const std::string reason = scenario->getFilePath() + ":0: not saved: it has been changed by someone else "
                                                         "meanwhile, so load it again";
    EXPECT_EQ(told([&] { saveOrThrow(*scenario); }),
              "-1 Unable to save scenario " + scenario->getFilePath() + " :\n" + reason);
    EXPECT_EQ(scenario->getSaveFailure(), reason);
    scenario->setPath("copy.sce");
    scenario->save();
    EXPECT_EQ(scenario->getSaveFailure(), "");
}

// A wrong TAVREL_CONFIG is in use from the beginning, so passing the same path takes nothing into use.
TEST(InitialInstallation, IsToldWhereItIsNotThere) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    setenv("TAVREL_CONFIG", "/nowhere/tavrel.xml", 1);
    const auto ask = [](const std::string& path) {
        std::fprintf(stderr, "%s", failureOf([&] { TavrelDatabaseDriver(path, "*", "*"); }).message.c_str());
        std::_Exit(0);
    };
    for (const char* path : {"", "/nowhere/tavrel.xml"})
        EXPECT_EXIT(ask(path), testing::ExitedWithCode(0), "^/nowhere/tavrel.xml:0: no such file$") << path;
    unsetenv("TAVREL_CONFIG");
}

} // namespace
