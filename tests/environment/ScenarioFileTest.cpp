#include <clocale>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <environment/Environment.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/InstallationBuilder.h>

namespace {

using cfg::CfgScenario;
using cfg::Section;
using testing::ElementsAre;
using testing::HasSubstr;
namespace fs = std::filesystem;

bool load(CfgScenario& scenario, const std::string& path) {
    return scenario.load(path.c_str(), Commons::Encoding::ModeUtf8, nullptr, nullptr, false, true, true);
}

bool save(CfgScenario& scenario, const std::string& path) {
    return scenario.save(path.c_str(), Commons::Encoding::ModeUtf8, false);
}

// One line per section and parameter, indented by depth.
void describe(Section& section, const std::string& indentation, std::ostream& out) {
    out << indentation << section.getName();
    if (const auto* script = dynamic_cast<cfg::ScenarioScript*>(&section))
        out << " script [" << script->name << "] [" << script->scriptType << "] [" << script->text << "]";
    if (const auto* root = dynamic_cast<cfg::Scenario*>(&section))
        out << " [" << root->name << "] [" << root->description << "]";
    if (const auto* variadic = dynamic_cast<cfg::VariadicParameter*>(&section))
        out << " [" << variadic->name << "] [" << variadic->description << "] [" << variadic->parameterId << "] ["
            << variadic->parameterUnit << "]";
    if (const auto* boolean = dynamic_cast<cfg::BooleanParameter*>(&section)) out << " " << boolean->defaultValue;
    if (const auto* integer = dynamic_cast<cfg::IntegerParameter*>(&section)) out << " " << integer->defaultValue;
    if (const auto* real = dynamic_cast<cfg::RealParameter*>(&section)) out << " " << real->defaultValue;
    if (const auto* literal = dynamic_cast<cfg::LiteralParameter*>(&section))
        out << " [" << literal->defaultValue << "]";
    if (const auto* range = dynamic_cast<cfg::IntegerRange*>(&section))
        out << " " << range->minimum << " to " << range->maximum;
    if (const auto* range = dynamic_cast<cfg::RealRange*>(&section))
        out << " " << range->minimum << " to " << range->maximum;
    if (const auto* range = dynamic_cast<cfg::LiteralRange*>(&section)) out << " [" << range->literal << "]";
    out << "\n";
    for (auto parameter = section.beginParameter(); parameter != section.endParameter(); ++parameter) {
        out << indentation << ". " << parameter.getCName() << " = ";
        switch (parameter.getType()) {
        case cfg::t_ParameterTypeBoolean:
            out << (parameter.getBool() ? "true" : "false");
            break;
        case cfg::t_ParameterTypeInteger:
            out << parameter.getInt();
            break;
        case cfg::t_ParameterTypeReal:
            out << parameter.getDouble() << "r";
            break;
        default:
            out << "[" << parameter.getString() << "]";
            break;
        }
        if (!parameter.getVerboseName().empty()) out << " \"" << parameter.getVerboseName() << "\"";
        if (parameter.getUnit() != lmk::UNIT_UNDEFINED) out << " " << lmk::toText(parameter.getUnit());
        out << "\n";
    }
    for (size_t i = 0; i < section.getSubSectionCount(); ++i)
        describe(*section.getSubSection(i), indentation + "  ", out);
}

std::string describe(CfgScenario& scenario) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    describe(*scenario.getRootSection(), "", out);
    return out.str();
}

constexpr const char* kOvertaking = R"(<sce version="1">
  <Scenario>
    <name>Overtaking</name>
    <description>Two lanes, one slow truck.</description>
    <duration type="real" unit="s" verboseName="Duration &amp; more" ScenarioTreeValue="90"/>
    <Weather>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility types="a" units="b" verboseNames="c" ScenarioTreeValues="d" type="real" unit="m" ScenarioTreeValue="2000"/>
    </Weather>
    <Vehicle>
      <lane type="integer" ScenarioTreeValue="-2"/>
      <driverId ScenarioTreeValue="1"/>
      <id ScenarioTreeValue="3"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="22.5"/>
      <path type="vector" ScenarioTreeValue="1 2 3"/>
      <id type="string" ScenarioTreeValue="another"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Anna"/>
      <label ScenarioTreeValue="D1"/>
    </Driver>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>TYPEOF SCENARIO (main)
{
}
</text>
    </ScenarioScript>
    <VariadicParameter>
      <name>Truck speed</name>
      <description>How fast the truck drives.</description>
      <parameterId>/sce/Scenario/Vehicle[id/@ScenarioTreeValue=3]/initialSpeed</parameterId>
      <parameterUnit>km/h</parameterUnit>
      <RealParameter>
        <default>80</default>
        <RealRange><minimum>60</minimum><maximum>90</maximum></RealRange>
      </RealParameter>
    </VariadicParameter>
  </Scenario>
</sce>
)";

class ScenarioFileTest : public testing::Test {
protected:
    std::string write(const std::string& content) { return folder.write("scenario.sce", content); }

    // Loads, changes, saves; gives the file.
    template <typename Change>
    std::string changed(const std::string& content, Change change) {
        CfgScenario scenario;
        const std::string path = write(content);
        EXPECT_TRUE(load(scenario, path)) << scenario.errorMessage;
        change(*scenario.getRootSection());
        EXPECT_TRUE(save(scenario, path)) << scenario.errorMessage;
        CfgScenario again;
        EXPECT_TRUE(load(again, path)) << again.errorMessage;
        EXPECT_EQ(describe(again), describe(scenario));
        return contentOf(path);
    }

    InstallationBuilder folder;
};

TEST_F(ScenarioFileTest, TheElementTreeIsTheSectionTree) {
    CfgScenario scenario;
    ASSERT_TRUE(load(scenario, write(kOvertaking))) << scenario.errorMessage;
    EXPECT_EQ(describe(scenario), R"(Scenario [Overtaking] [Two lanes, one slow truck.]
. duration = 90r "Duration & more" s
  Weather
  . fog = false "Fog"
  . visibility = 2000r m
  Vehicle
  . id = 3
  . driverId = 1
  . name = []
  . lane = -2
  . initialSpeed = 22.5r "Initial speed" km/h
  . path = [1 2 3]
  . id = [another]
  Driver
  . id = 1
  . name = [Anna]
  . label = [D1]
  ScenarioScript script [main] [nuro] [TYPEOF SCENARIO (main)
{
}
]
  VariadicParameter [Truck speed] [How fast the truck drives.] [/sce/Scenario/Vehicle[id/@ScenarioTreeValue=3]/initialSpeed] [km/h]
    RealParameter 80
      RealRange 60 to 90
)");
    Section& root = *scenario.getRootSection();
    EXPECT_EQ(root.getParentSection(), nullptr);
    Section* vehicle = root.getSubSection(cfg::Vehicle::sectionName());
    ASSERT_NE(vehicle, nullptr);
    EXPECT_EQ(vehicle->getParentSection(), &root);
    EXPECT_EQ(root.getSubSection(root.getSubSectionCount()), nullptr);
    // The first one by a plain 0, which a call by name could claim as well.
    EXPECT_STREQ(root.getSubSection(0)->getName(), "Weather");
    EXPECT_EQ(root.getSubSection(-1), nullptr);
    EXPECT_EQ(root.getSubSection("vehicle"), nullptr);
    std::vector<Section*> found{vehicle};
    root.getSubSections("Nobody", found);
    EXPECT_TRUE(found.empty()) << "emptied first";
}

// The class field and the parameter are one value, and a copy of a position stays where it is.
TEST_F(ScenarioFileTest, FieldsAndParametersOfAVehicleAreOne) {
    CfgScenario scenario;
    ASSERT_TRUE(load(scenario, write(kOvertaking)));
    auto& vehicle = dynamic_cast<cfg::Vehicle&>(*scenario.getRootSection()->getSubSection("Vehicle"));
    auto position = vehicle.beginParameter();
    const auto first = position;
    EXPECT_EQ(&position.getInt(), &vehicle.id);
    EXPECT_TRUE(position++ == first);
    EXPECT_EQ(&position.getInt(), &vehicle.driverId);
    ++position;
    EXPECT_EQ(&position.getString(), &vehicle.name);
    EXPECT_EQ(first.getCName(), "id");
    EXPECT_TRUE(first != position);
    ++position;
    // A question for the wrong type must not reach the value.
    position.getDouble() = 7.5;
    position.getString() = "seven";
    position.getBool() = true;
    EXPECT_EQ(position.getInt(), -2);
    EXPECT_EQ(position.getString(), "");
    EXPECT_EQ(position.getDouble(), 0.0);
}

TEST_F(ScenarioFileTest, RefusesWithTheRow) {
    struct Row {
        const char* why;
        std::string content;
        const char* refusal;
    };
    const auto scenario = [](const std::string& content) {
        return "<sce version=\"1\">\n<Scenario>\n" + content + "\n</Scenario></sce>";
    };
    const Row rows[] = {
        {"empty", "", "1: not XML: the file is empty"},
        {"no XML", "\n\nTYPEOF SCENARIO", "3: not XML: text outside the top element"},
        {"wrong root", "<!-- -->\n<scenario/>", "2: the top element is <scenario>, not <sce>"},
        {"no scenario", "<sce>\n</sce>", "1: no <Scenario>"},
        {"two scenarios", "<sce><Scenario/>\n<Scenario/></sce>", "2: a second <Scenario>"},
        {"another format", "<sce version='2'><Scenario/></sce>", "1: scenario files of version 2 are not known"},
        {"UTF-8", scenario("<a ScenarioTreeValue='\xE9'/>"), "3: invalid UTF-8"},
        {"UTF-8 that is declared", "<?xml version='1.0' encoding='utf-8'?>\n" + scenario("\xC0\x80"),
         "4: invalid UTF-8"},
        {"a surrogate in UTF-8", scenario("\xED\xA0\x80"), "3: invalid UTF-8"},
        {"UTF-16", std::string("\xFF\xFE<\0s\0", 6), "1: not XML: a NUL character"},
        {"NUL", scenario(std::string("\0", 1)), "3: not XML: a NUL character"},
        {"NUL by number", scenario("<a ScenarioTreeValue='&#x0;'/>"), "3: not XML: a reference to no character"},
        {"surrogate by number", scenario("&#xD800;"), "3: not XML: a reference to no character"},
        {"beyond all characters", scenario("&#99999999999999999999;"), "3: not XML: a reference to no character"},
        {"boolean", scenario("<a type='boolean' ScenarioTreeValue='yes'/>"),
         "3: <a> is of type boolean and holds \"yes\""},
        {"integer", scenario("\n<a type='integer' ScenarioTreeValue='2147483648'/>"),
         "4: <a> is of type integer and holds \"2147483648\""},
        {"no integer", scenario("<a type='integer' ScenarioTreeValue='1.0'/>"),
         "3: <a> is of type integer and holds \"1.0\""},
        {"real", scenario("<a type='real' ScenarioTreeValue='1,5'/>"), "3: <a> is of type real and holds \"1,5\""},
        {"too large", scenario("<a type='real' ScenarioTreeValue='1e999'/>"),
         "3: <a> is of type real and holds \"1e999\""},
        {"nothing", scenario("<a type='real' ScenarioTreeValue=''/>"), "3: <a> is of type real and holds \"\""},
        {"declared", scenario("<Vehicle><id ScenarioTreeValue='x'/></Vehicle>"),
         "3: <id> is of type integer and holds \"x\""},
        {"declared otherwise", scenario("<Vehicle><id type='real' ScenarioTreeValue='1'/></Vehicle>"),
         "3: <id> must be of type integer"},
        {"unknown type", scenario("<a type='Real' ScenarioTreeValue='1'/>"), "3: <a> has the unknown type \"Real\""},
        {"text field", scenario("<IntegerRange><minimum>\n1</minimum>\n<maximum/></IntegerRange>"),
         "5: <maximum> is of type integer and holds \"\""},
        {"elements in a text", scenario("<name>a<b/></name>"), "3: <name> holds elements, not a text"},
        {"a text twice", scenario("<name>a</name>\n<name>b</name>"), "4: a second <name>"},
        {"a value twice", scenario("<a ScenarioTreeValue='1' ScenarioTreeValue='2'/>"),
         "3: <a> has ScenarioTreeValue twice"},
        {"a long value is cut", scenario("<a type='real' ScenarioTreeValue='" + std::string(200, 'x') + "'/>"),
         "3: <a> is of type real and holds "
         "\"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\"..."},
        {"blanks around numbers", scenario("<a type='real' ScenarioTreeValue=' 1.5&#10;'/>"), ""},
        {"infinite", scenario("<a type='real' ScenarioTreeValue='-inf'/>"), ""},
        {"not a number equals itself", scenario("<a type='real' ScenarioTreeValue='NaN'/>"), ""},
        {"another encoding keeps its bytes",
         "<?xml version='1.0' encoding='ISO-8859-1'?>" + scenario("<a ScenarioTreeValue='\xE9'/>"), ""},
        {"version left out", "<sce><Scenario/></sce>", ""},
        {"unknown unit", scenario("<a type='real' unit='furlong' ScenarioTreeValue='1'/>"), ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.why);
        CfgScenario loaded;
        const std::string path = write(row.content);
        EXPECT_EQ(load(loaded, path), row.refusal[0] == '\0');
        EXPECT_EQ(loaded.errorMessage, row.refusal[0] ? path + ":" + row.refusal : "");
        if (row.refusal[0]) {
            EXPECT_EQ(describe(loaded), "Scenario [] []\n") << "an empty root in any case";
            EXPECT_FALSE(save(loaded, path));
            EXPECT_THAT(loaded.errorMessage, HasSubstr("could not be loaded"));
            EXPECT_EQ(contentOf(path), row.content) << "what was not understood is not replaced";
        } else {
            EXPECT_TRUE(save(loaded, path));
            EXPECT_EQ(contentOf(path), row.content);
        }
    }
    CfgScenario nowhere;
    EXPECT_FALSE(load(nowhere, folder.path() + "/none.sce"));
    EXPECT_EQ(nowhere.errorMessage, folder.path() + "/none.sce:0: no such file");
    EXPECT_FALSE(load(nowhere, folder.path()));
    EXPECT_EQ(nowhere.errorMessage, folder.path() + ":0: a folder, not a file");
    ASSERT_EQ(mkfifo((folder.path() + "/pipe.sce").c_str(), 0600), 0);
    EXPECT_FALSE(load(nowhere, folder.path() + "/pipe.sce"));
    EXPECT_EQ(nowhere.errorMessage, folder.path() + "/pipe.sce:0: not a plain file");
    EXPECT_FALSE(nowhere.load(nullptr, Commons::Encoding::ModeUtf8, nullptr, nullptr, false, true, true));
}

TEST_F(ScenarioFileTest, AFileCutAnywhereIsRefused) {
    const std::string path = write(kOvertaking);
    for (size_t length = std::string(kOvertaking).rfind('>'); length > 0; --length) {
        fs::resize_file(path, length);
        CfgScenario scenario;
        EXPECT_FALSE(load(scenario, path)) << length;
        EXPECT_THAT(scenario.errorMessage, HasSubstr(": not XML")) << length;
    }
}

TEST_F(ScenarioFileTest, DepthAndSizeHaveNoBadEnd) {
    const auto nested = [](size_t levels) {
        std::string content = "<sce><Scenario>\n";
        for (size_t i = 1; i < levels; ++i) content += "<a>";
        for (size_t i = 1; i < levels; ++i) content += "</a>";
        return content + "</Scenario></sce>";
    };
    CfgScenario scenario;
    EXPECT_TRUE(load(scenario, write(nested(1000)))) << scenario.errorMessage;
    for (const size_t levels : {size_t{1001}, size_t{100'000}}) {
        const std::string path = write(nested(levels));
        EXPECT_FALSE(load(scenario, path));
        EXPECT_EQ(scenario.errorMessage, path + ":2: more than 1000 nested sections");
    }

    // What could not be loaded again cannot be made either.
    CfgScenario fresh;
    Section* deepest = fresh.getRootSection();
    size_t levels = 1;
    while (Section* next = deepest->createSubSection("a")) deepest = next, ++levels;
    EXPECT_EQ(levels, 1000U);
    EXPECT_TRUE(save(fresh, folder.path() + "/deep.sce")) << fresh.errorMessage;

    const std::string large(20'000'000, 'x');
    const std::string path = write("<sce><Scenario><a ScenarioTreeValue='" + large + "'/></Scenario></sce>");
    ASSERT_TRUE(load(scenario, path));
    EXPECT_EQ(scenario.getRootSection()->beginParameter().getString(), large);
    const std::string flat = [] {
        std::string content = "<sce><Scenario><Vehicle>";
        for (int i = 0; i < 50'000; ++i)
            content += "<id ScenarioTreeValue='1'/><p" + std::to_string(i) + " ScenarioTreeValue=''/>";
        return content + "</Vehicle></Scenario></sce>";
    }();
    EXPECT_TRUE(load(scenario, write(flat))) << "and soon: no search among the parameters for each of them";
}

// Everything that a file may hold beyond the values stays as it is, whatever is edited beside it.
TEST_F(ScenarioFileTest, AnEditTouchesNothingElse) {
    const std::string original =
        "\xEF\xBB\xBF<?xml version='1.0' encoding=\"UTF-8\" ?>\r\n"
        "<!DOCTYPE sce [ <!ENTITY x \"</sce>\"> ]>\r\n"
        "<?pi <Scenario> ?><!-- <Scenario> -->\r\n"
        "<sce author='\xC3\xA9' version='1'>\r\n"
        "\t<Other><Scenario/></Other>\r\n"
        "\t<Scenario  x='a>b'\t>\r\n"
        "\t\t<!-- before -->\r\n"
        "\t\t<description/>\r\n"
        "\t\t<name ><!-- c1 -->A&amp;&unknown;<!-- </name> --><![CDATA[ <B> ]]><?p ?></name >\r\n"
        "\t\tstray &lt;text\r\n"
        "\t\t<speed ScenarioTreeValue = '1&apos;2\"<'  unit=\"m\"\r\n\t\t\tother='/>' type='string' />\r\n"
        "\t\t<Vehicle><id ScenarioTreeValue='&#x33;'>ignored <b/></id></Vehicle>\r\n"
        "\t\t<ScenarioScript><text><![CDATA[TYPEOF\tX\r\n{\r}]]></text></ScenarioScript>\r\n"
        "\t\t<Empty />\r\n"
        "\t</Scenario>\r\n"
        "</sce>\r\n<!-- end -->";
    const auto expected = [&original](const std::string& before, const std::string& after) {
        std::string content = original;
        const size_t at = content.find(before);
        EXPECT_NE(at, std::string::npos);
        return content.replace(at, before.size(), after);
    };
    struct Row {
        const char* why;
        std::string before;
        std::string after;
        void (*change)(cfg::Scenario&);
    };
    const Row rows[] = {
        {"nothing", "", "", [](cfg::Scenario&) {}},
        {"reading is no change", "", "",
         [](cfg::Scenario& root) {
             root.beginParameter().getString();
             root.beginParameter().getVerboseName();
         }},
        {"a change that is taken back", "", "",
         [](cfg::Scenario& root) {
             std::string& speed = root.beginParameter().getString();
             const std::string former = speed;
             speed = "x";
             speed = former;
         }},
        {"an attribute in its own quotes", "'1&apos;2\"<'", "'&apos;\"&amp;&lt;>&#9;&#10;&#13;\xC3\xA9'",
         [](cfg::Scenario& root) { root.beginParameter().getString() = "'\"&<>\t\n\r\xC3\xA9"; }},
        {"an empty tag gets a text", "<description/>", "<description>]]&gt;&lt;&amp;\t\"\n&#13;</description>",
         [](cfg::Scenario& root) { root.description = "]]><&\t\"\n\r"; }},
        {"comments in a text stay", "A&amp;&unknown;<!-- </name> --><![CDATA[ <B> ]]>", "new<!-- </name> -->",
         [](cfg::Scenario& root) {
             EXPECT_EQ(root.name, "A&&unknown; <B> ");
             root.name = "new";
         }},
        {"CDATA stays CDATA", "[TYPEOF\tX\r\n{\r}]", "[a<b\n]",
         [](cfg::Scenario& root) {
             auto& script = dynamic_cast<cfg::ScenarioScript&>(*root.getSubSection("ScenarioScript"));
             EXPECT_EQ(script.text, "TYPEOF\tX\r\n{\r}");
             script.text = "a<b\n";
         }},
        {"unless it cannot", "<![CDATA[TYPEOF\tX\r\n{\r}]]>", "]]&gt;&#13;",
         [](cfg::Scenario& root) {
             dynamic_cast<cfg::ScenarioScript&>(*root.getSubSection("ScenarioScript")).text = "]]>\r";
         }},
        {"a declared number", "'&#x33;'", "'-4'",
         [](cfg::Scenario& root) {
             auto& vehicle = dynamic_cast<cfg::Vehicle&>(*root.getSubSection("Vehicle"));
             EXPECT_EQ(vehicle.id, 3);
             vehicle.id = -4;
         }},
        {"a declared value that was left out, beside the one before it", "</id></Vehicle>",
         "</id><driverId ScenarioTreeValue=\"7\"/></Vehicle>",
         [](cfg::Scenario& root) { dynamic_cast<cfg::Vehicle&>(*root.getSubSection("Vehicle")).driverId = 7; }},
        {"a text field that was left out stands where it belongs", "<ScenarioScript><text>",
         "<ScenarioScript><scriptName>n</scriptName><text>",
         [](cfg::Scenario& root) {
             dynamic_cast<cfg::ScenarioScript&>(*root.getSubSection("ScenarioScript")).name = "n";
         }},
        {"a section is removed with its line", "\t\t<Empty />\r\n", "",
         [](cfg::Scenario& root) { root.removeSubSections("Empty"); }},
        {"a section with changes in it is removed",
         "\t\t<Vehicle><id ScenarioTreeValue='&#x33;'>ignored <b/></id></Vehicle>\r\n", "",
         [](cfg::Scenario& root) {
             auto& vehicle = dynamic_cast<cfg::Vehicle&>(*root.getSubSection("Vehicle"));
             vehicle.id = 9;
             vehicle.createSubSection("New");
             root.removeSubSection(&vehicle);
             vehicle.id = 10;
         }},
        {"a new section stands last, laid out like the others", "\t\t<Empty />\r\n",
         "\t\t<Empty />\r\n\t\t<IntegerParameter>\r\n\t\t\t<default>5</default>\r\n\t\t\t<IntegerRange>\r\n"
         "\t\t\t\t<minimum>0</minimum>\r\n\t\t\t\t<maximum>-3</maximum>\r\n\t\t\t</IntegerRange>\r\n"
         "\t\t</IntegerParameter>\r\n\t\t<Plain/>\r\n",
         [](cfg::Scenario& root) {
             auto& integer = dynamic_cast<cfg::IntegerParameter&>(*root.createSubSection("IntegerParameter"));
             integer.defaultValue = 5;
             dynamic_cast<cfg::IntegerRange&>(*integer.createSubSection("IntegerRange")).maximum = -3;
             root.getOrCreateSubsection("Plain");
         }},
        {"an empty tag is opened", "<Empty />", "<Empty>\r\n\t\t\t<Plain/>\r\n\t\t</Empty>",
         [](cfg::Scenario& root) { root.getSubSection("Empty")->createSubSection("Plain"); }},
        {"what is made and removed was never there", "", "",
         [](cfg::Scenario& root) {
             Section* made = root.createSubSection("Plain");
             made->createSubSection("Below");
             root.removeSubSection(made);
         }},
        {"removed and made again", "\t\t<Empty />\r\n", "\t\t<Empty/>\r\n",
         [](cfg::Scenario& root) {
             root.removeSubSections("Empty");
             root.getOrCreateSubsection("Empty");
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(changed(original, [&row](cfg::Scenario& root) { row.change(root); }),
                  expected(row.before, row.after));
    }
}

TEST_F(ScenarioFileTest, LayoutOfWhatIsAdded) {
    struct Row {
        const char* why;
        const char* before;
        const char* after;
    };
    const Row rows[] = {
        {"all in one line", "<sce><Scenario><a/></Scenario></sce>",
         "<sce><Scenario><name>n</name><a/><b/></Scenario></sce>"},
        {"nothing in it yet", "<sce>\n <Scenario/>\n</sce>",
         "<sce>\n <Scenario>\n  <name>n</name>\n  <b/>\n </Scenario>\n</sce>"},
        {"blanks only", "<sce>\n    <Scenario>\n    </Scenario>\n</sce>",
         "<sce>\n    <Scenario>\n        <name>n</name>\n        <b/>\n    </Scenario>\n</sce>"},
        {"one line, but no content", "<sce><Scenario/></sce>", "<sce><Scenario><name>n</name><b/></Scenario></sce>"},
        {"end tag behind the last child", "<sce>\n<Scenario>\n<a/></Scenario></sce>",
         "<sce>\n<Scenario>\n<name>n</name>\n<a/>\n<b/></Scenario></sce>"},
        {"a comment last", "<sce>\n <Scenario>\n  <a/>\n  <!-- </Scenario> -->\n </Scenario></sce>",
         "<sce>\n <Scenario>\n  <name>n</name>\n  <a/>\n  <!-- </Scenario> -->\n  <b/>\n </Scenario></sce>"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(changed(row.before,
                          [](cfg::Scenario& root) {
                              root.name = "n";
                              root.createSubSection("b");
                          }),
                  row.after)
            << row.why;
    }
}

TEST_F(ScenarioFileTest, AnyTextSurvives) {
    std::string all = "\t\n\r";
    for (char c = ' '; c > 0; ++c) all += c;
    const std::string texts[] = {"",
                                 " ",
                                 "\t\n\r\n \r",
                                 all,
                                 "]]>",
                                 "]]]]>>",
                                 "&amp;&#10;&lt;",
                                 "<a></a>",
                                 "<!-- -->",
                                 "\"'\"",
                                 "a\nb\r",
                                 "\xF0\x9F\x9A\x97",
                                 "\xEF\xBB\xBF",
                                 "&",
                                 "<![CDATA[x]]>"};
    for (const std::string& text : texts) {
        SCOPED_TRACE(testing::PrintToString(text));
        changed(kOvertaking, [&text](cfg::Scenario& root) {
            root.name = text;
            dynamic_cast<cfg::ScenarioScript&>(*root.getSubSection("ScenarioScript")).text = text;
            dynamic_cast<cfg::Driver&>(*root.getSubSection("Driver")).label = text;
            dynamic_cast<cfg::Vehicle&>(*root.getSubSection("Vehicle")).name = text;
            auto& literal = dynamic_cast<cfg::LiteralParameter&>(*root.createSubSection("LiteralParameter"));
            literal.defaultValue = text;
            dynamic_cast<cfg::LiteralRange&>(*literal.createSubSection("LiteralRange")).literal = text;
            dynamic_cast<cfg::Driver&>(*root.createSubSection("Driver")).name = text;
        });
    }
    const std::string impossibles[] = {
        std::string("a\0b", 3), "\xC3", "\xE9t\xE9", "a\x01", "\x1F", "\b", "a\xEF\xBF\xBE", "\xEF\xBF\xBF",
    };
    for (const std::string& impossible : impossibles) {
        CfgScenario scenario;
        const std::string path = write(kOvertaking);
        ASSERT_TRUE(load(scenario, path));
        scenario.getRootSection()->name = impossible;
        EXPECT_FALSE(save(scenario, path));
        EXPECT_THAT(scenario.errorMessage, HasSubstr("not saved"));
        EXPECT_EQ(contentOf(path), kOvertaking);
        scenario.getRootSection()->name = "possible";
        EXPECT_TRUE(save(scenario, path)) << "a failed save is not the end";
        scenario.getRootSection()->createSubSection("Driver");
        dynamic_cast<cfg::Driver&>(*scenario.getRootSection()->getSubSection("Driver")).label = impossible;
        EXPECT_FALSE(save(scenario, path)) << "nor in an attribute";
    }
    CfgScenario scenario;
    const std::string path = write(kOvertaking);
    ASSERT_TRUE(load(scenario, path));
    dynamic_cast<cfg::ScenarioScript&>(*scenario.getRootSection()->getSubSection("ScenarioScript")).text = "\x1B[0m";
    EXPECT_FALSE(save(scenario, path));
    EXPECT_THAT(
        scenario.errorMessage,
        testing::MatchesRegex(".*:[1-9][0-9]*: not saved: <text> holds the character U.001B, which no XML can hold"));
}

TEST_F(ScenarioFileTest, AnotherEncodingIsNotMixedWithUtf8) {
    const std::string latin = "<?xml version='1.0' encoding='ISO-8859-1'?>\n<sce><Scenario>\n<name>\xE9</name>"
                              "<a ScenarioTreeValue='\xE9'/></Scenario></sce>";
    const std::string path = write(latin);
    CfgScenario scenario;
    ASSERT_TRUE(load(scenario, path));
    scenario.getRootSection()->name = "ASCII";
    EXPECT_TRUE(save(scenario, path)) << scenario.errorMessage;
    std::string expected = latin;
    expected.replace(expected.find("\xE9"), 1, "ASCII");
    EXPECT_EQ(contentOf(path), expected);
    scenario.getRootSection()->name = "é";
    EXPECT_FALSE(save(scenario, path));
    EXPECT_EQ(scenario.errorMessage, path + ":3: not saved: the file declares another encoding than UTF-8, so the new "
                                            "text of <name> can hold ASCII characters only; convert the file to UTF-8");
    EXPECT_EQ(contentOf(path), expected);
}

TEST_F(ScenarioFileTest, NumbersAreWrittenAsTheyAreInEveryLocale) {
    struct CommaPoint : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale(), new CommaPoint));
    setlocale(LC_ALL, "de_DE.UTF-8");
    for (const double number : {0.1, -0.0, 1e300, 5e-324, 1234567.875, std::numeric_limits<double>::infinity()}) {
        changed(kOvertaking, [number](cfg::Scenario& root) {
            root.beginParameter().getDouble() = number;
            dynamic_cast<cfg::RealRange&>(*root.createSubSection("RealRange")).minimum = number;
        });
        CfgScenario again;
        ASSERT_TRUE(load(again, folder.path() + "/scenario.sce"));
        EXPECT_EQ(again.getRootSection()->beginParameter().getDouble(), number);
    }
    EXPECT_THAT(changed(kOvertaking, [](cfg::Scenario& root) { root.beginParameter().getDouble() = 1234567.875; }),
                HasSubstr("ScenarioTreeValue=\"1234567.875\""));
    setlocale(LC_ALL, "C");
    std::locale::global(before);
}

TEST_F(ScenarioFileTest, RemovedSectionsLiveOnWithoutAParent) {
    CfgScenario scenario;
    ASSERT_TRUE(load(scenario, write(kOvertaking)));
    Section& root = *scenario.getRootSection();
    Section* variadic = root.getSubSection("VariadicParameter");
    Section* real = variadic->getSubSection("RealParameter");
    Section* range = real->getSubSection("RealRange");
    root.removeSubSection(range);
    EXPECT_EQ(range->getParentSection(), real) << "only a direct sub-section is removed";
    real->removeSubSection(range);
    EXPECT_EQ(range->getParentSection(), nullptr);
    root.removeSubSections("VariadicParameter");
    EXPECT_EQ(variadic->getParentSection(), nullptr);
    EXPECT_EQ(real->getParentSection(), variadic);
    EXPECT_EQ(root.getSubSection("VariadicParameter"), nullptr);
    dynamic_cast<cfg::RealRange&>(*range).minimum = 5;
    EXPECT_EQ(std::string(range->getName()), "RealRange");
    root.removeSubSection(nullptr);
    root.removeSubSection(range);
    ASSERT_TRUE(save(scenario, folder.path() + "/copy.sce")) << scenario.errorMessage;
    EXPECT_THAT(contentOf(folder.path() + "/copy.sce"), testing::Not(HasSubstr("RealRange")));
}

TEST_F(ScenarioFileTest, NamesThatNoElementCanBearMakeNoSection) {
    CfgScenario scenario;
    Section& root = *scenario.getRootSection();
    for (const char* name : {"", " ", "a b", "1a", "-a", "a<b", "a/", "a\"", "name", "description"})
        EXPECT_EQ(root.createSubSection(name), nullptr) << name;
    EXPECT_EQ(root.createSubSection(nullptr), nullptr);
    EXPECT_EQ(root.getOrCreateSubsection(nullptr), nullptr);
    EXPECT_NE(root.createSubSection("Straße-1.a"), nullptr);
    EXPECT_EQ(root.getSubSectionCount(), 1U);
    EXPECT_NE(dynamic_cast<cfg::Vehicle*>(root.createSubSection("Vehicle")), nullptr);
    const std::string path = folder.path() + "/new.sce";
    ASSERT_TRUE(save(scenario, path)) << scenario.errorMessage;
    EXPECT_EQ(contentOf(path), R"(<sce version="1">
  <Scenario>
    <name/>
    <description/>
    <Straße-1.a/>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="0"/>
      <name ScenarioTreeValue=""/>
    </Vehicle>
  </Scenario>
</sce>
)");
}

TEST_F(ScenarioFileTest, SavesAgainAndElsewhere) {
    CfgScenario scenario;
    const std::string path = write(kOvertaking);
    const std::string copy = folder.path() + "/copy.sce";
    ASSERT_TRUE(load(scenario, path));
    Section& root = *scenario.getRootSection();
    root.removeSubSections("Driver");
    root.createSubSection("Vehicle");
    ASSERT_TRUE(save(scenario, copy));
    const std::string once = contentOf(copy);
    ASSERT_TRUE(save(scenario, copy));
    EXPECT_EQ(contentOf(copy), once);
    EXPECT_EQ(contentOf(path), kOvertaking);
    dynamic_cast<cfg::Vehicle&>(*root.getSubSection(root.getSubSectionCount() - 1)).id = 8;
    ASSERT_TRUE(save(scenario, path));
    CfgScenario again;
    ASSERT_TRUE(load(again, path));
    EXPECT_EQ(describe(again), describe(scenario));
    ASSERT_TRUE(load(scenario, copy)) << "the same object takes another file";
    EXPECT_EQ(contentOf(copy), once);
    EXPECT_EQ(scenario.getRootSection()->getSubSection("Driver"), nullptr);
}

// Whoever saves second loses nothing of the first.
TEST_F(ScenarioFileTest, WhatSomeoneElseSavedIsNotReplaced) {
    const std::string path = write(kOvertaking);
    const std::string link = folder.path() + "/link.sce";
    fs::create_symlink("scenario.sce", link);
    CfgScenario first;
    CfgScenario second;
    ASSERT_TRUE(load(first, path) && load(second, link));
    first.getRootSection()->name = "First";
    second.getRootSection()->name = "Second";
    ASSERT_TRUE(save(first, path)) << first.errorMessage;
    EXPECT_FALSE(save(second, link));
    EXPECT_EQ(second.errorMessage,
              link + ":0: not saved: it has been changed by someone else meanwhile, so load it again");
    EXPECT_THAT(contentOf(path), HasSubstr("<name>First</name>"));
    EXPECT_TRUE(save(second, folder.path() + "/copy.sce")) << second.errorMessage;
    EXPECT_EQ(second.errorMessage, "") << "a good save leaves no message of the last one";
    first.getRootSection()->name = "First again";
    EXPECT_TRUE(save(first, path)) << "its own change is no one else's: " << first.errorMessage;

    // An editor that moves a new file over the old one, and one that writes into it.
    std::ofstream(folder.path() + "/edited.sce") << kOvertaking << "<!-- edited -->";
    fs::rename(folder.path() + "/edited.sce", path);
    EXPECT_FALSE(save(first, path));
    EXPECT_TRUE(save(first, folder.path() + "/copy.sce")) << "a file that it never knew: " << first.errorMessage;
    EXPECT_FALSE(save(second, folder.path() + "/copy.sce"));
    ASSERT_TRUE(load(second, path));
    std::ofstream(path, std::ios::in | std::ios::out).seekp(40) << "X"; // the same file, of the same size
    EXPECT_FALSE(save(second, path));
    fs::remove(path);
    EXPECT_TRUE(save(second, path)) << "there is nothing to be lost: " << second.errorMessage;
}

TEST_F(ScenarioFileTest, AFailedSaveLeavesTheOldFileWhole) {
    CfgScenario scenario;
    const std::string path = write(kOvertaking);
    ASSERT_TRUE(load(scenario, path));
    scenario.getRootSection()->name = "Changed";
    // A limit on file sizes fails where a full disk does, in the middle of a write.
    rlimit former{};
    getrlimit(RLIMIT_FSIZE, &former);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{64, former.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_FALSE(save(scenario, path));
    setrlimit(RLIMIT_FSIZE, &former);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(scenario.errorMessage, path + ":0: not saved: the file is larger than allowed");

    EXPECT_FALSE(save(scenario, folder.path() + "/missing/x.sce"));
    EXPECT_FALSE(save(scenario, folder.path()));
    EXPECT_FALSE(save(scenario, ""));
    EXPECT_FALSE(scenario.save(nullptr, Commons::Encoding::ModeUtf8, false));
    EXPECT_FALSE(save(scenario, "/dev/null"));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    fs::create_symlink("loop", folder.path() + "/loop");
    EXPECT_FALSE(save(scenario, folder.path() + "/loop"));
    EXPECT_TRUE(fs::is_symlink(folder.path() + "/loop"));

    if (geteuid() != 0) { // nothing is forbidden to the superuser
        fs::permissions(path, fs::perms::owner_read);
        EXPECT_FALSE(save(scenario, path)) << "a protected file";
        fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
        fs::permissions(folder.path(), fs::perms::owner_read | fs::perms::owner_exec);
        EXPECT_FALSE(save(scenario, path)) << "a protected folder";
        fs::permissions(folder.path(), fs::perms::owner_all);
    }
    EXPECT_EQ(contentOf(path), kOvertaking);
}

TEST_F(ScenarioFileTest, WhatWouldBeTooLargeToLoadIsNotSaved) {
    const std::string path = write(kOvertaking);
    CfgScenario scenario;
    ASSERT_TRUE(load(scenario, path));
    scenario.getRootSection()->description.assign(Commons::kLargestFile + 1, 'x');
    EXPECT_FALSE(save(scenario, path));
    EXPECT_EQ(scenario.errorMessage, path + ":0: not saved, since it would be larger than any file that is loaded");
    EXPECT_EQ(contentOf(path), kOvertaking);
}

TEST_F(ScenarioFileTest, LinksAndPermissionsStay) {
    CfgScenario scenario;
    const std::string path = write(kOvertaking);
    fs::permissions(path, static_cast<fs::perms>(0640));
    fs::create_directory(folder.path() + "/links");
    const std::string link = folder.path() + "/links/scenario.sce";
    fs::create_symlink("../scenario.sce", link);
    ASSERT_TRUE(load(scenario, link));
    scenario.getRootSection()->name = "Changed";
    ASSERT_TRUE(save(scenario, link)) << scenario.errorMessage;
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_THAT(contentOf(path), HasSubstr("<name>Changed</name>"));
    EXPECT_EQ(static_cast<int>(fs::status(path).permissions()), 0640);

    fs::create_symlink("new.sce", folder.path() + "/links/hanging.sce");
    EXPECT_TRUE(save(scenario, folder.path() + "/links\\hanging.sce")) << "either separator";
    EXPECT_TRUE(fs::is_regular_file(folder.path() + "/links/new.sce"));
}

// Random edits, compared with what a reader sees after the save: the splicing must hold for any mixture.
TEST_F(ScenarioFileTest, AnyMixtureOfEditsIsReadBack) {
    const char* const names[] = {"Vehicle",           "Driver",           "Weather",
                                 "VariadicParameter", "IntegerParameter", "IntegerRange",
                                 "LiteralRange",      "ScenarioScript",   "Weather"};
    const char* const texts[] = {"", "plain", "<&>\"'", "\r\n\t", "]]>"};
    std::mt19937 random(20250101);
    const auto below = [&random](size_t limit) { return static_cast<size_t>(random() % limit); };
    std::string content = kOvertaking;
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        if (round % 20 == 0) content = round % 40 ? "<sce><Scenario/></sce>" : kOvertaking;
        content = changed(content, [&](cfg::Scenario& root) {
            for (size_t edits = below(8); edits > 0; --edits) {
                Section* section = &root;
                while (section->getSubSectionCount() > 0 && below(4) > 0)
                    section = section->getSubSection(below(section->getSubSectionCount()));
                switch (below(4)) {
                case 0:
                    if (section->getParentSection()) section->getParentSection()->removeSubSection(section);
                    break;
                case 1:
                    section->createSubSection(names[below(std::size(names))]);
                    break;
                case 2:
                    for (auto it = section->beginParameter(); it != section->endParameter(); ++it) {
                        it.getInt() = static_cast<int>(random());
                        it.getDouble() = static_cast<double>(random()) / 7.0;
                        it.getBool() = below(2) == 0;
                        it.getString() = texts[below(std::size(texts))];
                    }
                    break;
                default:
                    root.name = texts[below(std::size(texts))];
                    if (auto* script = dynamic_cast<cfg::ScenarioScript*>(section))
                        script->text = texts[below(std::size(texts))];
                    if (auto* range = dynamic_cast<cfg::IntegerRange*>(section))
                        range->maximum = static_cast<int>(random());
                    if (auto* range = dynamic_cast<cfg::LiteralRange*>(section))
                        range->literal = texts[below(std::size(texts))];
                }
            }
        });
    }
}

} // namespace
