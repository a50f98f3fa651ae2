#include <variation/Assignment.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>

#include <ScenarioTemplateDb/Exception.h>
#include <TavrelScenarioTemplateDb/ScenarioScripts.h>
#include <TavrelScenarioTemplateDb/ScenarioTables.h>
#include <TavrelScenarioTemplateDb/TavrelScenario.h>
#include <cfg/CfgScenario.h>
#include <cfg/ScenarioScript.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <lmkUtils/EnvConfig.h>
#include <simulation/Runner.h>
#include <simulation/Scene.h>
#include <support/InstallationBuilder.h>

namespace {

using namespace TavrelVariation;
using testing::ElementsAre;
using testing::HasSubstr;
namespace fs = std::filesystem;

std::string bytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// What a failure of the library says, in the place of an exception that nobody knows.
template <typename Work>
void told(const Work& work) {
    using ScenarioTemplateDb::Exception;
    try {
        work();
    } catch (const Exception& failure) {
        FAIL() << failure.message;
    } catch (Exception* failure) {
        const std::unique_ptr<Exception> owned(failure);
        FAIL() << owned->message;
    }
}

class Opened : public TavrelScenarioTemplateDb::TavrelScenario {
public:
    Opened(const std::string& configuration, const fs::path& file)
        : TavrelScenario(configuration, file.filename().string(), file.parent_path().string()) {}
    cfg::CfgScenario& file() { return *getCfgScenarioSection(); }
    // A new id of a vehicle leads declarations nowhere; all else is read by then.
    void open() {
        try {
            getName();
        } catch (ScenarioTemplateDb::Exception* declaration) {
            delete declaration;
        }
    }
};

bool save(Opened& opened, const fs::path& path) {
    return opened.file().save(path.c_str(), static_cast<Commons::Encoding::Mode>(1), false);
}

// One scenario with a parameter of each kind, written in all the ways in which a script can be.
constexpr const char* kBefore = R"(<sce version="1">
  <Scenario>
    <!-- keep --><speed type='real' unit="km/h" ScenarioTreeValue='25'  verboseName="Speed"/>
    <turns type="integer" unit="tr" ScenarioTreeValue="0"/>
    <length type="integer" unit="min" ScenarioTreeValue="120"/>
    <share type="real" unit="%" ScenarioTreeValue="0.5"/>
    <on type="boolean" ScenarioTreeValue="1"/>
    <word ScenarioTreeValue="a &amp; b"/>
    <kind type="enumeration" ScenarioTreeValue="fog"/>
    <axis type="vector" ScenarioTreeValue="1 2 3"/>
    <Lamp><colour ScenarioTreeValue="red"/></Lamp>
    <Lamp><colour ScenarioTreeValue="green"/></Lamp>
)";
constexpr const char* kDeclarations = R"(
    <VariadicParameter><name>Fast</name><parameterId>/sce/Scenario/speed</parameterId><parameterUnit>m/s</parameterUnit>
      <RealParameter><default>20</default><RealRange><minimum>10</minimum><maximum>30</maximum></RealRange></RealParameter></VariadicParameter>
    <VariadicParameter><name>Kind</name><parameterId>/sce/Scenario/kind</parameterId>
      <LiteralParameter><default>fog</default><LiteralRange><literal>fog</literal></LiteralRange><LiteralRange><literal>rain</literal></LiteralRange></LiteralParameter></VariadicParameter>
    <VariadicParameter><name>Twice</name><parameterId>/sce/Scenario/on</parameterId><BooleanParameter/></VariadicParameter>
    <VariadicParameter><name>Twice</name><parameterId>/sce/Scenario/word</parameterId><LiteralParameter/></VariadicParameter>
    <VariadicParameter><name>Nowhere</name><parameterId>/sce/Scenario/wrod</parameterId><RealParameter/></VariadicParameter>
    <VariadicParameter><name>Lamps</name><parameterId>/sce/Scenario/Lamp/colour</parameterId><LiteralParameter/></VariadicParameter>
    <VariadicParameter><name>Lane</name><parameterId>/sce/Scenario/ScenarioScript[scriptName="main"]/Variable[name=2]/value</parameterId>
      <IntegerParameter><default>1</default><IntegerRange><minimum>-1</minimum><maximum>-1</maximum></IntegerRange><IntegerRange><minimum>1</minimum><maximum>2</maximum></IntegerRange></IntegerParameter></VariadicParameter>
    <ScenarioScript><scriptName>main</scriptName><text>)";
constexpr const char* kScript = R"(TYPEOF SCENARIO (1)
{
	TYPEOF VARIABLE (1)
	{
		LABEL="Flag"
		TYPE="BOOL"
		VALUE="0"
	}

	TYPEOF VARIABLE (2)
	{
		TYPE="INTEGER"
		INTERACTIVE_TYPE="INTEGER"
	}
	TYPEOF VARIABLE (3)
	{
		TYPE="STRING"
		VALUE=""
		VALUE="Anna &lt;x>"
	}
	TYPEOF TASK (4)
	{
		TYPEOF VARIABLE (5)
		{
			TYPE="FLOAT"	VALUE="1.50"
		}
	}
	TYPEOF INCLUDE (6)
	{
		TYPEOF VARIABLE (7)
		{
			VALUE="1"
		}
	}
}
)";

class AssignmentTest : public testing::Test {
protected:
    AssignmentTest() { write(std::string(kScript)); }
    void write(const std::string& script) {
        text = std::string(kBefore) + kDeclarations + script + "</text></ScenarioScript>\n  </Scenario>\n</sce>\n";
        path = folder.write("a.sce", text);
    }

    cfg::CfgScenario& load() {
        EXPECT_TRUE(
            file.load(path.c_str(), static_cast<Commons::Encoding::Mode>(1), nullptr, nullptr, false, true, true))
            << file.errorMessage;
        return file;
    }
    // The sentence of the refusal; empty where there is none.
    std::string refusal(const std::string& name, const std::string& value) {
        Settable settable(load());
        try {
            ReadAll(settable, {{name, value}}, {});
        } catch (const AssignmentError& error) {
            return error.what();
        }
        return "";
    }
    // The file with the values set.
    std::string set(const std::vector<AssignmentText>& texts) {
        told([&] {
            Settable settable(load());
            settable.Apply(ReadAll(settable, texts, {}));
        });
        EXPECT_TRUE(file.save(path.c_str(), static_cast<Commons::Encoding::Mode>(1), false)) << file.errorMessage;
        return bytesOf(path);
    }
    // The present file with one place replaced.
    std::string with(const std::string& before, const std::string& after) const {
        std::string changed = text;
        const std::size_t at = changed.find(before);
        EXPECT_NE(at, std::string::npos) << before;
        return changed.replace(at, before.size(), after);
    }
    static std::string variable(int number) {
        return "/sce/Scenario/ScenarioScript[scriptName=\"main\"]/Variable[name=" + std::to_string(number) + "]/value";
    }

    InstallationBuilder folder; // for its folder alone
    std::string text, path;
    cfg::CfgScenario file;
};

TEST_F(AssignmentTest, AnEditTouchesTheValueAlone) {
    const struct {
        std::string name, value, before, after;
    } rows[] = {
        {"/sce/Scenario/speed", "72", "'25'", "'20'"},
        {"/sce/Scenario/speed", "1.2 km/min", "", ""},
        {"Fast", "20", "'25'", "'20'"},
        {"#0", "72 km/h", "'25'", "'20'"},
        {"/sce/Scenario/speed", "90", "", ""},
        {"/sce/Scenario/length", "3", "\"120\"", "\"180\""},
        {"/sce/Scenario/length", "180 s", "\"120\"", "\"180\""},
        {"/sce/Scenario/share", "25", "\"0.5\"", "\"0.25\""},
        {"/sce/Scenario/on", "false", "<on type=\"boolean\" ScenarioTreeValue=\"1\"",
         "<on type=\"boolean\" ScenarioTreeValue=\"false\""},
        {"/sce/Scenario/on", "true", "", ""},
        {"/sce/Scenario/word", "\"<é>", "a &amp; b", "&quot;&lt;é>"},
        {"Kind", "rain", "\"fog\"", "\"rain\""},
        {variable(1), "true", "VALUE=\"0\"\n", "VALUE=\"1\"\n"},
        {variable(2), "2", "\t\tTYPE=\"INTEGER\"\n", "\t\tTYPE=\"INTEGER\"\n\t\tVALUE=\"2\"\n"},
        {variable(3), "B & C", "Anna &lt;x>", "B &amp; C"},
        {variable(3), "Anna <y>", "Anna &lt;x>", "Anna &lt;y>"},
        {variable(3), "Anna <x>", "", ""},
        {variable(5), "1.5", "", ""},
        {variable(5), "1e-3", "1.50", "0.001"},
        {"Lane", "-1", "\t\tTYPE=\"INTEGER\"\n", "\t\tTYPE=\"INTEGER\"\n\t\tVALUE=\"-1\"\n"},
    };
    for (const auto& row : rows) {
        if (row.value == "1.2 km/min") continue;
        write(kScript);
        EXPECT_EQ(set({{row.name, row.value}}), row.before.empty() ? text : with(row.before, row.after))
            << row.name << " = " << row.value;
    }
}

TEST_F(AssignmentTest, EveryWayOfWritingAScriptIsKept) {
    std::string plain = kScript;
    const auto replaceAll = [](std::string s, const std::string& what, const std::string& by) {
        for (std::size_t at = s.find(what); at != std::string::npos; at = s.find(what, at + by.size()))
            s.replace(at, what.size(), by);
        return s;
    };
    plain = replaceAll(plain, "Anna &lt;x>", "Anna");
    const std::string forms[] = {
        plain,
        "<![CDATA[" + plain + "]]>",
        replaceAll(plain, "\n", "\r\n"),
        replaceAll(plain, "TYPE=", "T&#89;PE="),
        "<!-- a --><![CDATA[" + replaceAll(plain, "TYPEOF TASK", "]]><!-- b --><![CDATA[TYPEOF TASK") + "]]>",
    };
    for (const std::string& form : forms) {
        write(form);
        const std::string end = form.find("\r\n") == std::string::npos ? "\n" : "\r\n";
        std::string wanted = with("VALUE=\"0\"", "VALUE=\"1\"");
        const std::size_t at =
            wanted.find(form.find('&') == std::string::npos ? "TYPE=\"INTEGER\"" : "T&#89;PE=\"INTEGER\"");
        const std::size_t line = wanted.find(end, at);
        wanted.insert(line, end + "\t\tVALUE=\"2\"");
        wanted.replace(wanted.find("1.50"), 4, "7");
        EXPECT_EQ(set({{variable(1), "true"}, {variable(5), "7"}, {variable(2), "2"}}), wanted) << form;
        Settable again(load());
        EXPECT_EQ(again.Present(again.Find(variable(5)).target), "7");
    }
}

TEST_F(AssignmentTest, WhatCannotBeSetIsRefusedInOneSentence) {
    const struct {
        std::string name, value;
        const char* part;
    } rows[] = {
        {"Fats", "20", "did you mean \"Fast\""},
        {"#7", "1", "there is no declaration #7"},
        {"/sce/Scenario/sped", "1", "did you mean \"/sce/Scenario/speed\""},
        {"Twice", "true", "#2, #3"},
        {"Nowhere", "1", "leads nowhere, did you mean \"/sce/Scenario/word\""},
        {"Lamps", "red", "leads to 2 places"},
        {"/sce/Scenario/Lamp/colour", "red", "leads to 2 places"},
        {"/sce/Scenario/axis", "1 2 3", "a vector, which cannot be set"},
        {variable(7), "1", "leads nowhere"},
        {"/sce/Scenario/speed", "fast", "no decimal number"},
        {"/sce/Scenario/speed", "1e999", "no decimal number"},
        {"/sce/Scenario/speed", "nan", "no decimal number"},
        {"/sce/Scenario/speed", "72km/h", "no decimal number; a blank parts the number from its unit: \"72 km/h\""},
        {"/sce/Scenario/speed", "72  km/h", "which is no unit"},
        {"/sce/Scenario/speed", "72 kmh", "which is no unit"},
        {"/sce/Scenario/speed", "72 kg", "is in kg, and the parameter is in km/h"},
        {"/sce/Scenario/speed", "30", "10 to 30 m/s"},
        {"/sce/Scenario/speed", "30.1 m/s", "declaration \"Fast\" allows"},
        {"Fast", "9.99", "10 to 30 m/s"},
        {"/sce/Scenario/turns", "1", "would not read back as itself"},
        {"/sce/Scenario/length", "100 s", "would not read back as itself"},
        {"/sce/Scenario/length", "99999999", "would not read back as itself"},
        {"/sce/Scenario/length", "1.5", "no integer"},
        {"/sce/Scenario/share", "5 m", "is in m"},
        {"/sce/Scenario/on", "1", "neither true nor false"},
        {"/sce/Scenario/word", "\x01", "cannot be held"},
        {"/sce/Scenario/word", "\xff", "cannot be held"},
        {"Kind", "fgo", "did you mean \"fog\""},
        {variable(3), "a\"b", "cannot be held by a script"},
        {variable(3), "a\tb", "cannot be held by a script"},
        {variable(1), "1", "neither true nor false"},
        {variable(2), "0", "-1 to -1 or 1 to 2"},
        {variable(5), "7 s", "has no unit"},
    };
    for (const auto& row : rows) EXPECT_THAT(refusal(row.name, row.value), HasSubstr(row.part)) << row.name;
    Settable settable(load());
    EXPECT_THROW(ReadAll(settable, {{"Fast", "20"}, {"/sce/Scenario/speed", "80"}}, {}), AssignmentError)
        << "one target under two names";
    EXPECT_EQ(ReadAll(settable, {{"Fast", "20"}}, {{"/sce/Scenario/speed", "80"}}).front().text, "80");
    std::vector<std::string> left;
    EXPECT_EQ(ReadAll(settable, {{"Fast", "40"}}, {}, Ranges::AreTold, &left).front().text, "40 m/s");
    EXPECT_THAT(left, ElementsAre(HasSubstr("10 to 30 m/s")));
    for (const char* wrong : {"", "=3", "name", "a[b=c]"})
        EXPECT_THROW(ReadAssignment(wrong), AssignmentError) << wrong;
    EXPECT_EQ(ReadAssignment(variable(1) + "=a=b").name, variable(1));
}

// A value that the target may have, or one that is refused.
std::string randomValue(const Settable& settable, const Target& target, std::mt19937& random) {
    const auto number = [&](int from, int to) {
        return std::to_string(from + static_cast<int>(random() % static_cast<unsigned>(to - from + 1)));
    };
    for (const std::size_t index : target.declarations) {
        const std::vector<std::string>& literals = settable.Declarations()[index].literals;
        if (!literals.empty()) return literals[random() % literals.size()];
    }
    switch (target.type) {
    case ValueType::Boolean:
        return random() % 2 ? "true" : "false";
    case ValueType::Integer:
        return number(-3, 40);
    case ValueType::Real:
        return number(0, 90) + "." + number(0, 999);
    case ValueType::Literal:
        break;
    }
    return target.isEnumeration ? "fog" : "x & <" + number(0, 99) + "> ü";
}

// What happens in the first seconds of each script that is a whole scenario; a script that is refused is told.
std::string traceOf(cfg::CfgScenario& file) {
    using namespace TavrelSimulation;
    std::string all;
    for (const cfg::ScenarioScript* script : TavrelScenarioTemplateDb::scriptsOf(file)) {
        ScenarioTextStream stream(script->text.c_str(), script->text.size() + 1);
        ItemLoadContext context{nullptr, nullptr};
        const std::unique_ptr<ScenarioItem> root(LoadScenarioText(stream, nullptr, &context, nullptr, false));
        auto* scenario = dynamic_cast<ScenarioLib::Scenario*>(root.get());
        if (!scenario) {
            all += "refused\n";
            continue;
        }
        TavrelScenarioTemplateDb::ScenarioTables tables;
        tables.fill(*scenario, file);
        scenario->UpdateDisplayTextTree();
        World world;
        Scene::FillWorld(world, file);
        RegisterFunctions(world);
        RegisterConditions(world);
        RegisterActions(world);
        RunSettings settings;
        settings.span = {0, 6, 0.5};
        settings.start.seed = Scene::SeedOf(file);
        Run(*scenario, world, settings, [&](const Event& event) {
            if (!std::holds_alternative<RunStart>(event.what)) all += JsonOf(event) + "\n";
        });
    }
    return all;
}

std::size_t differentLines(const std::string& a, const std::string& b) {
    std::istringstream left(a), right(b);
    std::size_t count = 0;
    for (std::string x, y; std::getline(left, x) && std::getline(right, y);) {
        // A line that was put in.
        if (x != y && y.find("VALUE=") != std::string::npos && x.find("VALUE=\"") == std::string::npos)
            std::getline(right, y);
        count += x != y;
    }
    return count;
}

// To set values in a file and to run it is to run with these values: all that can be set of every scenario of the
// sample.
void expectTheLaw() {
    const fs::path sample = TAVREL_SAMPLE;
    InstallationBuilder folder; // for its folder alone
    std::mt19937 random(20);
    std::ostringstream log;
    std::streambuf* const former = std::cout.rdbuf(log.rdbuf()); // the library logs to it while it opens files
    std::size_t scenarios = 0, values = 0;
    lmkUtils::EnvConfig::setTavrelConfigFilePath((sample / "tavrel.xml").string());
    for (const char* configuration : {"City", "Highway", "Classic"}) {
        ASSERT_TRUE(lmkUtils::EnvConfig::setConfig(configuration, false));
        for (const std::string& directory :
             lmkUtils::EnvConfig::getSeparatedPathForConfiguration(configuration, "data/scenario"))
            for (const fs::directory_entry& entry : fs::recursive_directory_iterator(directory)) {
                if (entry.path().extension() != ".sce") continue;
                SCOPED_TRACE(entry.path().string());
                Opened opened(configuration, entry.path());
                opened.open();
                Settable settable(opened.file(), opened.getRootScenarioNode());
                std::vector<Assignment> assignments;
                for (std::size_t i = 0; i < settable.Targets().size(); ++i) {
                    const Target& target = settable.Targets()[i];
                    try {
                        assignments.push_back(settable.Read(settable.Find(target.id),
                                                            randomValue(settable, target, random), Ranges::AreTold));
                    } catch (const AssignmentError&) {
                        // an id of several places, or a number that would be cut
                    }
                }
                settable.Apply(assignments);
                const fs::path saved = folder.path() + "/" + entry.path().filename().string();
                const std::string before = bytesOf(entry.path());
                ASSERT_TRUE(save(opened, saved)) << opened.file().errorMessage;
                EXPECT_LE(differentLines(before, bytesOf(saved)), assignments.size());
                Opened again(configuration, saved);
                again.open();
                const Settable reread(again.file(), again.getRootScenarioNode());
                for (const Assignment& assignment : assignments)
                    EXPECT_EQ(reread.Present(assignment.target), settable.Present(assignment.target)) << assignment.id;
                EXPECT_EQ(traceOf(again.file()), traceOf(opened.file()));
                ++scenarios;
                values += assignments.size();
            }
    }
    std::cout.rdbuf(former);
    EXPECT_GT(scenarios, 40U);
    EXPECT_GT(values, 1000U);
}

TEST(AssignmentLawTest, ASetFileRunsAsTheValuesDo) { told(expectTheLaw); }

} // namespace
