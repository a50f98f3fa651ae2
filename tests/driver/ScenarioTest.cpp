#include <support/DriverTest.h>

namespace {

SectionText declaration(const std::string& name, const std::string& parameterId, const std::string& typed) {
    return SectionText("VariadicParameter")
        .text("name", name)
        .text("parameterId", parameterId)
        .section(SectionText(typed));
}

// What a subclass may use.
class Template : public TavrelScenario {
public:
    using TavrelScenario::getCfgScenarioSection;
    using TavrelScenario::loadCfgScenario;
    using TavrelScenario::loadScenario;
    using TavrelScenario::TavrelScenario;
};

class ScenarioTest : public testing::Test {
protected:
    ScenarioTest() {
        installation.configuration("City", "1", {"pack", "common"});
        installation.model("common");
        installation.use();
        lmkUtils::EnvConfig::setConfig("City", false);
    }

    void write(const SectionText& section) const { installation.scenario("pack", "one.sce", section); }

    static std::vector<std::string> names(const TavrelScenario& scenario) {
        std::vector<VariadicParameter*> parameters{nullptr};
        scenario.getVariadicParameters(parameters);
        std::vector<TavrelVariadicParameter*> concrete{nullptr};
        scenario.getTavrelVariadicParameters(concrete);
        std::vector<std::string> result;
        EXPECT_EQ(parameters.size(), concrete.size());
        for (std::size_t index = 0; index < parameters.size(); ++index) {
            EXPECT_EQ(parameters[index], concrete[index]);
            EXPECT_EQ(parameters[index], scenario.getVariadicParameter(index));
            result.push_back(parameters[index]->getName());
        }
        return result;
    }

    InstallationBuilder installation;
    const std::string directory = installation.path() + "/pack/data/scenario";
    const std::string file = directory + "/one.sce";
    std::unique_ptr<Template> one = std::make_unique<Template>("City", "one.sce", directory);
};

const SectionText kRain =
    SectionText("Scenario").text("name", "Rain").text("description", "Wet.").parameter("duration", "90", "real");

TEST_F(ScenarioTest, ATemplateOfNoFileFailsOnceAndThenStandsEmpty) {
    EXPECT_EQ(one->getPath(), "one.sce");
    EXPECT_EQ(one->getFilePath(), file);
    one->clear();
    EXPECT_THAT(names(*one), IsEmpty());
    EXPECT_EQ(failureOf([&] { one->getVariadicParameter(0); }), byValue(4, "Invalid variadic parameter index"));

    const Failure failure = failureOf([&] { one->getName(); });
    EXPECT_EQ(failure.form, Failure::ByValue);
    EXPECT_EQ(failure.code, 24);
    EXPECT_EQ(failure.message.rfind("Unable to load scenario " + file + " :\n" + file + ":", 0), 0U) << failure.message;

    write(kRain); // too late: a template tries once
    EXPECT_EQ(one->getName(), "");
    EXPECT_EQ(one->getRootScenarioNode()->getChildNumber(), 0U);
    EXPECT_EQ(one->getVariadicParameterNumber(), 0U);
    one->setName("Empty");
    one->save();
    EXPECT_EQ(contentOf(file), kRain.file()) << "what could not be read is not overwritten";
    EXPECT_EQ(Template("City", "one.sce", directory).getName(), "Rain");
}

TEST_F(ScenarioTest, EveryOperationThatNeedsTheFileOpensIt) {
    struct Row {
        const char* why;
        void (*call)(Template&);
    };
    const Row rows[] = {
        {"getName", [](Template& it) { it.getName(); }},
        {"setName", [](Template& it) { it.setName("x"); }},
        {"getDescription", [](Template& it) { it.getDescription(); }},
        {"setDescription", [](Template& it) { it.setDescription("x"); }},
        {"save", [](Template& it) { it.save(); }},
        {"getRootScenarioNode", [](Template& it) { it.getRootScenarioNode(); }},
        {"getParameterFromId", [](Template& it) { it.getParameterFromId("/sce/Scenario/x"); }},
        {"getVariadicParameterNumber", [](Template& it) { it.getVariadicParameterNumber(); }},
        {"addNewVariadicParameter", [](Template& it) { it.addNewVariadicParameter(); }},
        {"removeVariadicParameter", [](Template& it) { it.removeVariadicParameter(0); }},
        {"getCfgScenarioSection", [](Template& it) { it.getCfgScenarioSection(); }},
        {"loadCfgScenario", [](Template& it) { it.loadCfgScenario(); }},
        {"fetch, for the name in its message",
         [](Template& it) {
             std::vector<unsigned char> bytes;
             it.fetch(bytes);
         }},
    };
    for (const Row& row : rows) {
        Template absent("City", "absent.sce", directory);
        EXPECT_EQ(failureOf([&] { row.call(absent); }).code, 24) << row.why;
        EXPECT_NE(failureOf([&] { row.call(absent); }).code, 24) << row.why << " a second time";
    }
}

TEST_F(ScenarioTest, UnreadableFilesFailWithTheirPathAndStayWhole) {
    const std::string good = kRain.file();
    std::string deep;
    for (int level = 0; level < 100'000; ++level) deep += "<s>";
    const std::pair<const char*, std::string> rows[] = {
        {"empty", ""},
        {"no XML", "scenario"},
        {"wrong root", "<scenario/>"},
        {"no root section", "<sce version=\"1\"/>"},
        {"a value that is not of its type", "<sce version=\"1\"><Scenario><a type=\"integer\" "
                                            "ScenarioTreeValue=\"many\"/></Scenario></sce>"},
        {"a hundred thousand levels", "<sce version=\"1\"><Scenario>" + deep},
        {"cut in the middle", good.substr(0, good.size() / 2)},
        {"a NUL in it", "<sce version=\"1\"><Scenario>" + std::string(1, '\0') + "</Scenario></sce>"},
    };
    for (const auto& [why, text] : rows) {
        SCOPED_TRACE(why);
        installation.scenario("pack", "one.sce", text);
        Template scenario("City", "one.sce", directory);
        const Failure failure = failureOf([&] { scenario.getRootScenarioNode(); });
        EXPECT_EQ(failure.form, Failure::ByValue);
        EXPECT_EQ(failure.code, 24);
        EXPECT_EQ(failure.message.rfind("Unable to load scenario " + file + " :\n" + file + ":", 0), 0U)
            << failure.message;
        scenario.setDescription("x");
        scenario.save();
        EXPECT_EQ(contentOf(file), text);
        std::vector<unsigned char> bytes;
        scenario.fetch(bytes);
        EXPECT_EQ(std::string(bytes.begin(), bytes.end()), text) << "the bytes can be had all the same";
    }
}

TEST_F(ScenarioTest, FetchGivesTheFileNotTheTemplate) {
    write(kRain);
    std::vector<unsigned char> bytes{1, 2, 3};
    one->fetch(bytes);
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), kRain.file());
    one->setName("Snow");
    one->fetch(bytes);
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), kRain.file());
    fs::remove(file);
    EXPECT_EQ(failureOf([&] { one->fetch(bytes); }), byValue(20, "Unable to load scenario Snow"));
}

TEST_F(ScenarioTest, SavingUnderAnotherPathMakesACopy) {
    write(kRain);
    one->setDescription("Very wet.");
    one->setPath("sub/../two.sce");
    EXPECT_EQ(one->getPath(), "sub/../two.sce") << "any text is taken";
    one->setPath("two.sce");
    EXPECT_EQ(one->getFilePath(), directory + "/two.sce");
    one->save();
    EXPECT_EQ(contentOf(file), kRain.file());
    EXPECT_EQ(Template("City", "two.sce", directory).getDescription(), "Very wet.");

    // Nothing is reported, and nothing is lost.
    const std::string blocked = directory + "/blocked.sce";
    fs::create_directories(blocked);
    one->setPath("blocked.sce");
    EXPECT_NO_THROW(one->save());
    one->setPath("missing/folder.sce");
    EXPECT_NO_THROW(one->save());
    EXPECT_TRUE(fs::is_directory(blocked));
    one->setPath("two.sce");
    one->setDescription("Wettest.");
    one->save();
    EXPECT_EQ(Template("City", "two.sce", directory).getDescription(), "Wettest.");
}

TEST_F(ScenarioTest, VariablesOfTheInstallationAreExpandedAtEachAccess) {
    write(kRain);
    installation.pathVariable("TAVREL_TEST_PACK", "pack");
    Template scenario("City", "one.sce", "${TAVREL_TEST_PACK}/data/scenario");
    EXPECT_EQ(scenario.getFilePath(), "${TAVREL_TEST_PACK}/data/scenario/one.sce");
    scenario.setName("Fog");
    scenario.save();
    EXPECT_EQ(Template("City", "one.sce", directory).getName(), "Fog");
    EXPECT_EQ(failureOf([] {
                  Template("City", "a.sce", "${TAVREL_TEST_UNKNOWN}").getName();
              }).message.rfind("Unable to load scenario ${TAVREL_TEST_UNKNOWN}/a.sce :\n", 0),
              0U);
}

TEST_F(ScenarioTest, EveryTemplateNeedsARootModel) {
    write(kRain);
    const std::string model = installation.path() + "/common/data/tools/nuro/nuro.mdl";
    fs::remove(model);
    const auto missing = [](const std::string& configuration) {
        return byValue(-1, "Unable to find scenario root model file 'data/tools/nuro/nuro.mdl' for configuration " +
                               configuration + " : check your Tavrel installation!");
    };
    EXPECT_EQ(failureOf([&] { one->getName(); }), missing("City"));
    EXPECT_EQ(one->getName(), "Rain") << "the file itself was read";
    EXPECT_EQ(failureOf([&] { Template("Nobody", "one.sce", directory).getName(); }), missing("Nobody"));

    Folders* const before = scenarioRootModel;
    const auto unusable = byValue(-1, "Unable to get initialize scenario root model " + model);
    for (const char* text : {"", "nonsense", "TYPEOF VARIABLE (1)\n{\n}\n", "TYPEOF FOLDER (MODEL)\n{\n"}) {
        installation.model("common", text);
        EXPECT_EQ(failureOf([&] { Template("City", "one.sce", directory).getName(); }), unusable) << text;
        EXPECT_EQ(scenarioRootModel, before) << "a model that cannot be read replaces none";
    }
    installation.model("common");
    installation.model("pack", "TYPEOF FOLDER (FIRST)\n{\n}\n");
    Template("City", "one.sce", directory).getName();
    EXPECT_EQ(scenarioRootModel->name, "FIRST") << "the earlier entry of the data path wins";
    Folders* const first = scenarioRootModel;
    Template("City", "one.sce", directory).getName();
    EXPECT_NE(scenarioRootModel, first) << "each template reads it anew";
    EXPECT_EQ(first->name, "FIRST") << "and none is freed";
}

// A model links within itself: a definition that only the model before has is unknown.
TEST_F(ScenarioTest, ModelsDoNotSeeOneAnother) {
    const std::string definition = R"(
            TYPEOF FOLDER (PARAMETER_LIST)
                TYPEOF PARAMETER (speed) LABEL="Speed" TYPE="FLOAT" USAGE="BY_VALUE" KINDLIST="USER" KIND="USER"
                    VALUE="1")";
    const std::string use = R"(
            TYPEOF FOLDER (ACTION_LIST)
                TYPEOF ACTION (GO) LABEL="Go"
                    TYPEOF PARAMETER (speed) KIND="USER" VALUE="2")";
    const auto model = [](const std::string& lists) {
        return ScriptText("        TYPEOF FOLDER (MODEL)\n        {" + lists + "\n        }\n");
    };
    write(kRain);
    installation.model("common", model(definition + use));
    EXPECT_EQ(Template("City", "one.sce", directory).getName(), "Rain");
    installation.model("common",
                       model("\n            TYPEOF FOLDER (PARAMETER_LIST)\n            {\n            }" + use));
    const Failure alone = failureOf([&] { Template("City", "one.sce", directory).getName(); });
    EXPECT_EQ(alone.form, Failure::ByValue) << "found a definition of the model before";
    Folders* const before = std::exchange(scenarioRootModel, nullptr);
    const Failure inANewProcess = failureOf([&] { Template("City", "one.sce", directory).getName(); });
    scenarioRootModel = before;
    EXPECT_EQ(alone, inANewProcess);
}

TEST_F(ScenarioTest, AnOpenedFileStaysWithItsOwner) {
    write(SectionText(kRain).section(declaration("d", "/sce/Scenario/duration", "RealParameter")));
    cfg::CfgScenario opened;
    ASSERT_TRUE(opened.load(file.c_str(), Commons::Encoding::ModeUtf8, nullptr, nullptr, false, true, true));
    {
        TavrelScenario scenario(&opened);
        EXPECT_EQ(scenario.getPath(), "");
        EXPECT_EQ(scenario.getFilePath(), "/");
        EXPECT_THAT(names(scenario), ElementsAre("d")) << "read at once";
        EXPECT_EQ(scenario.getVariadicParameter(0)->getTargetParameter(),
                  scenario.getParameterFromId("/sce/Scenario/duration"));
        scenario.setName("Hail");
    }
    EXPECT_EQ(opened.getRootSection()->name, "Hail");

    dynamic_cast<cfg::VariadicParameter*>(opened.getRootSection()->getSubSection("VariadicParameter"))->parameterId =
        "/sce/Scenario/gone";
    EXPECT_EQ(failureOf([&] { TavrelScenario broken(&opened); }),
              byPointer(-1, "No child parameter with id=gone in scenario element : Scenario"));
    lmkUtils::EnvConfig::leaveConfig();
    EXPECT_EQ(failureOf([&] { TavrelScenario broken(&opened); }),
              byValue(-1,
                      "Unable to find scenario root model file 'data/tools/nuro/nuro.mdl' for configuration  : check "
                      "your Tavrel installation!"));
    EXPECT_EQ(failureOf([&] { TavrelScenario none(static_cast<cfg::CfgScenario*>(nullptr)); }).code, 24);
}

// Its load looks targets up and so builds the tree: the call that caused the load must not build another one.
TEST_F(ScenarioTest, TheFirstQuestionForTheRootBuildsOneTree) {
    write(SectionText(kRain).section(declaration("d", "/sce/Scenario/duration", "RealParameter")));
    const ScenarioNode* root = one->getRootScenarioNode();
    EXPECT_EQ(one->getRootScenarioNode(), root);
    EXPECT_EQ(one->getVariadicParameter(0)->getTargetParameter(), root->getParameter("duration"));
    EXPECT_EQ(root->getParameter("duration")->getParentNode(), root);
}

TEST_F(ScenarioTest, TargetsAreLookedUpWhenTheFileIsOpened) {
    write(SectionText(kRain)
              .section(declaration("found", "/sce/Scenario/duration", "RealParameter"))
              .section(declaration("nothing named", "", "RealParameter"))
              .section(declaration("another root", "/sce/Other/duration", "RealParameter"))
              .section(declaration("no such parameter", "/sce/Scenario/gone", "RealParameter"))
              .section(declaration("never reached", "/sce/Scenario/duration", "RealParameter")));
    EXPECT_EQ(failureOf([&] { one->getVariadicParameter(0); }), byValue(4, "Invalid variadic parameter index"))
        << "does not open the file";
    EXPECT_EQ(failureOf([&] { one->getVariadicParameterNumber(); }),
              byPointer(-1, "No child parameter with id=gone in scenario element : Scenario"));
    EXPECT_THAT(names(*one), ElementsAre("found", "nothing named", "another root")) << "what was made stays";
    EXPECT_NE(one->getVariadicParameter(0)->getTargetParameter(), nullptr);
    EXPECT_EQ(one->getVariadicParameter(1)->getTargetParameter(), nullptr);
    EXPECT_EQ(one->getVariadicParameter(2)->getTargetParameter(), nullptr);
    EXPECT_EQ(one->getName(), "Rain") << "and the file is open";
    EXPECT_EQ(failureOf([&] { one->getVariadicParameter(3); }), byValue(4, "Invalid variadic parameter index"));
}

TEST_F(ScenarioTest, DeclarationsAreAddedAndRemovedWithTheirSections) {
    write(SectionText(kRain)
              .section(declaration("a", "", "RealParameter"))
              .section(declaration("b", "", "BooleanParameter")));
    EXPECT_EQ(one->getVariadicParameterNumber(), 2U);
    TavrelVariadicParameter* added = one->addNewVariadicParameter();
    added->setName("c");
    EXPECT_EQ(added->getType(), ParameterTypeInteger);
    EXPECT_EQ(added->getTargetParameter(), nullptr);
    added->setParameterId("/sce/Scenario/duration");
    EXPECT_EQ(added->getTargetParameter(), nullptr) << "looked up by the next load";
    EXPECT_THAT(names(*one), ElementsAre("a", "b", "c"));
    one->removeVariadicParameter(3);
    EXPECT_THAT(names(*one), ElementsAre("a", "b", "c")) << "beyond the end nothing happens";
    const TavrelVariadicParameter copy = dynamic_cast<TavrelVariadicParameter&>(*one->getVariadicParameter(0));
    one->removeVariadicParameter(0);
    EXPECT_THAT(names(*one), ElementsAre("b", "c"));
    EXPECT_EQ(copy.getName(), "a") << "a removed section stays allocated";
    EXPECT_EQ(one->getVariadicParameter(1), added);

    one->save();
    const Template reloaded("City", "one.sce", directory);
    EXPECT_EQ(reloaded.getVariadicParameterNumber(), 2U);
    EXPECT_THAT(names(reloaded), ElementsAre("b", "c"));
    EXPECT_NE(reloaded.getVariadicParameter(1)->getTargetParameter(), nullptr);
}

TEST_F(ScenarioTest, ClearKeepsTheNameAndTheTree) {
    write(SectionText(kRain).section(declaration("a", "", "RealParameter")));
    one->clear(); // not open: nothing to clear
    EXPECT_EQ(one->getDescription(), "Wet.");
    const ScenarioNode* root = one->getRootScenarioNode();
    const ScenarioNode* node = root->getChild("VariadicParameter");
    one->clear();
    EXPECT_EQ(one->getName(), "Rain");
    EXPECT_EQ(one->getDescription(), "");
    EXPECT_EQ(one->getVariadicParameterNumber(), 0U);
    EXPECT_EQ(one->getRootScenarioNode(), root);
    EXPECT_EQ(root->getChild("VariadicParameter"), node) << "a node on a removed section still answers";
    one->save();
    EXPECT_EQ(Template("City", "one.sce", directory).getVariadicParameterNumber(), 0U);
}

TEST_F(ScenarioTest, DeclarationsOfEveryTypeSurviveASave) {
    write(kRain);
    TavrelVariadicParameter* integer = one->addNewVariadicParameter();
    integer->setName("<integer> & \"more\"");
    integer->setDescription("two\nlines");
    integer->setIntegerDefaultValue(-5);
    TavrelRange<int>& range = integer->insertIntegerRange(0);
    range.setMinimum(-10);
    range.setMaximum(2147483647);
    TavrelVariadicParameter* real = one->addNewVariadicParameter();
    real->setType(ParameterTypeReal);
    real->setRealDefaultValue(0.1);
    real->setParameterUnit("km/h");
    real->insertRealRange(0).setMaximum(1e300);
    TavrelVariadicParameter* boolean = one->addNewVariadicParameter();
    boolean->setType(ParameterTypeBoolean);
    boolean->setBooleanDefaultValue(true);
    TavrelVariadicParameter* literal = one->addNewVariadicParameter();
    literal->setType(ParameterTypeLiteral);
    literal->setLiteralDefaultValue(" \xC3\xA9t\xC3\xA9 ");
    literal->insertLiteral(0) = "";
    literal->insertLiteral(0) = "a]]>b";
    one->save();

    const Template reloaded("City", "one.sce", directory);
    ASSERT_EQ(reloaded.getVariadicParameterNumber(), 4U);
    const VariadicParameter* first = reloaded.getVariadicParameter(0);
    EXPECT_EQ(first->getName(), "<integer> & \"more\"");
    EXPECT_EQ(first->getDescription(), "two\nlines");
    EXPECT_EQ(first->getIntegerDefaultValue(), -5);
    std::vector<const VariadicParameter::Range<int>*> ranges;
    first->getIntegerRanges(ranges);
    ASSERT_EQ(ranges.size(), 1U);
    EXPECT_EQ(ranges[0]->getMinimum(), -10);
    EXPECT_EQ(ranges[0]->getMaximum(), 2147483647);
    const VariadicParameter* second = reloaded.getVariadicParameter(1);
    EXPECT_EQ(second->getRealDefaultValue(), 0.1);
    EXPECT_TRUE(second->hasParameterUnit());
    std::vector<const VariadicParameter::Range<double>*> realRanges;
    second->getRealRanges(realRanges);
    ASSERT_EQ(realRanges.size(), 1U);
    EXPECT_EQ(realRanges[0]->getMaximum(), 1e300);
    EXPECT_TRUE(reloaded.getVariadicParameter(2)->getBooleanDefaultValue());
    EXPECT_EQ(reloaded.getVariadicParameter(3)->getLiteralDefaultValue(), " \xC3\xA9t\xC3\xA9 ");
    std::vector<std::string> literals;
    reloaded.getVariadicParameter(3)->getLiterals(literals);
    EXPECT_THAT(literals, ElementsAre("", "a]]>b"));
}

TEST_F(ScenarioTest, ASubclassMayLoadAgain) {
    write(SectionText(kRain).section(declaration("a", "/sce/Scenario/duration", "RealParameter")));
    one->loadCfgScenario();
    EXPECT_THAT(names(*one), ElementsAre("a")) << "once, although the load runs the same step";
    EXPECT_EQ(one->getCfgScenarioSection(), one->getCfgScenarioSection());
    one->setName("dropped");
    one->loadScenario();
    EXPECT_EQ(one->getName(), "Rain");
    EXPECT_THAT(names(*one), ElementsAre("a"));
    EXPECT_EQ(one->getVariadicParameter(0)->getTargetParameter(), one->getParameterFromId("/sce/Scenario/duration"));
}

TEST_F(ScenarioTest, AScriptThatCannotBeReadLeavesNoTree) {
    write(SectionText(kRain).script("main", "TYPEOF TASK (1)\n{\n\tNO=\"1\"\n}\n"));
    const Failure expected = byValue(-1, "Unable to parse script main :\n\4main - row 3:\nNO=\"1\"\n");
    EXPECT_EQ(failureOf([&] { one->getRootScenarioNode(); }), expected);
    EXPECT_EQ(failureOf([&] { one->getParameterFromId("/sce/Scenario/duration"); }), expected) << "again, each time";
    EXPECT_EQ(one->getName(), "Rain");
}

} // namespace
