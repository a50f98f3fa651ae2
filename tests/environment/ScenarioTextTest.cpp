// Where the texts of a scenario file stand in its bytes.
#include <cfg/ScenarioText.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <Commons/TextPlaces.h>
#include <cfg/CfgScenario.h>
#include <cfg/ScenarioScript.h>
#include <gtest/gtest.h>

namespace {

using cfg::ScenarioText;
using cfg::WrittenText;

const std::string kMark = "\xEF\xBB\xBF";

std::string FileWith(const std::string& text) {
    return kMark +
           "<?xml version=\"1.0\"?>\r\n<!-- <text>no</text> -->\n<sce version=\"1\"><Scenario>"
           "<name>a</name><Any x=\"1>2\"/><ScenarioScript><scriptName>\xF0\x9F\x9A\x97</scriptName><text>" +
           text + "</text></ScenarioScript></Scenario></sce>\n";
}

WrittenText ScriptOf(const ScenarioText& file) {
    for (const ScenarioText::Element& element : file.Elements())
        if (element.name == "text") return file.TextOf(element);
    ADD_FAILURE() << "no text";
    return {};
}

TEST(ScenarioTextTest, FollowsEachCharacterToTheBytesItIsWrittenWith) {
    struct Case {
        const char* why;
        const char* written;
        const char* text;
    };
    // clang-format off
    constexpr Case kCases[] = {
        {"plain",                      "a\r\n\tb",                         "a\r\n\tb"},
        {"references of all forms",    "&quot;&#13;&#xA;&amp;lt;&#x1F697;b","\"\r\n&lt;\xF0\x9F\x9A\x97" "b"},
        {"a CDATA section",            "<![CDATA[a<b&amp;]]>",             "a<b&amp;"},
        {"all of them, and comments",  "x&lt;<!-- & -->y<![CDATA[<]]><?p &amp;?>z", "x<y<z"},
        {"a name that is no reference","a&b;&#;&#x;c",                     "a&b;&#;&#x;c"},
        {"nothing",                    "",                                 ""},
    };
    // clang-format on
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.why);
        const ScenarioText file(FileWith(row.written));
        ASSERT_FALSE(file.FirstFault()) << file.FirstFault()->reason;
        const WrittenText script = ScriptOf(file);
        ASSERT_EQ(script.Text(), row.text);
        EXPECT_EQ(file.Bytes().substr(script.Begin(), script.End() - script.Begin()), row.written);
        // What is put in place of one character comes back at that place, and all else as it was.
        std::size_t length = 1;
        for (std::size_t at = 0; length > 0; at += length) {
            length = Commons::TextPlaces::CharacterLength(script.Text(), at);
            std::string written;
            ASSERT_TRUE(script.Write("<&\">", at, at + length, written));
            const auto [begin, end] = script.InFile(at, at + length);
            std::string changed = file.Bytes();
            changed.replace(begin, end - begin, written);
            std::string expected = script.Text();
            expected.replace(at, length, "<&\">");
            EXPECT_EQ(ScriptOf(ScenarioText(changed)).Text(), expected) << "at " << at;
            if (length > 0) {
                EXPECT_EQ(script.InText(begin), at);
            }
        }
    }
}

TEST(ScenarioTextTest, WritesNothingThatWouldEndACDataSection) {
    const ScenarioText file(FileWith("<![CDATA[a]]b]]>"));
    const WrittenText script = ScriptOf(file);
    std::string written;
    EXPECT_FALSE(script.Write(">", 3, 4, written));
    EXPECT_FALSE(script.Write("]]>", 0, 0, written));
    EXPECT_TRUE(script.Write("]]", 0, 1, written));
}

TEST(ScenarioTextTest, FindsElementsAttributesAndTheFirstFault) {
    const ScenarioText file("<!DOCTYPE sce [ <!ENTITY a \"]>\"> ]>\n<sce version='1'>\n<Scenario><Road>"
                            "<a ScenarioTreeValue=\"1&lt;\" type=\"real\"/></Road></Scenario></sce>");
    ASSERT_TRUE(file.IsXml());
    EXPECT_EQ(file.DocumentType(), std::pair(std::size_t{0}, std::size_t{35}));
    const ScenarioText::Element* road = file.Child(file.Elements()[1], "Road");
    ASSERT_NE(road, nullptr);
    const ScenarioText::Element* value = file.Child(*road, "a");
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(file.Bytes().substr(value->begin, value->end - value->begin),
              "<a ScenarioTreeValue=\"1&lt;\" type=\"real\"/>");
    const ScenarioText::Attribute* attribute = ScenarioText::FindAttribute(*value, "ScenarioTreeValue");
    ASSERT_NE(attribute, nullptr);
    EXPECT_EQ(file.TextOf(*attribute).Text(), "1<");
    ASSERT_TRUE(file.FirstFault());
    EXPECT_EQ(file.FirstFault()->row, 3U);
    EXPECT_EQ(file.FirstFault()->position, value->begin + 1);

    EXPECT_FALSE(ScenarioText("<sce><a></sce>").IsXml());
    EXPECT_EQ(ScenarioText(std::string("<sce/>\0", 7)).FirstFault()->position, 6U);
}

// The same text as hosts get, for every script of the sample.
TEST(ScenarioTextTest, ReadsTheScriptsOfTheSampleAsTheyAreLoaded) {
    std::size_t scripts = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(TAVREL_SAMPLE_INSTALLATION)) {
        if (entry.path().extension() != ".sce") continue;
        std::ifstream stream(entry.path(), std::ios::binary);
        const ScenarioText file(std::string(std::istreambuf_iterator<char>(stream), {}));
        ASSERT_FALSE(file.FirstFault()) << entry.path();
        cfg::CfgScenario loaded;
        ASSERT_TRUE(
            loaded.load(entry.path().c_str(), Commons::Encoding::ModeUtf8, nullptr, nullptr, false, true, true));
        std::vector<cfg::Section*> sections;
        loaded.getRootSection()->getSubSections(cfg::ScenarioScript::sectionName(), sections);
        auto next = sections.begin();
        for (const ScenarioText::Element& element : file.Elements()) {
            if (element.name != "text" || file.Elements()[element.parent].name != "ScenarioScript" ||
                file.Elements()[file.Elements()[element.parent].parent].name != "Scenario")
                continue;
            ASSERT_NE(next, sections.end());
            EXPECT_EQ(file.TextOf(element).Text(), dynamic_cast<cfg::ScenarioScript*>(*next)->text);
            ++next;
            ++scripts;
        }
    }
    EXPECT_GT(scripts, 20U);
}

TEST(TextPlacesTest, CountsCodePointsAndNeitherMarkNorLineEnd) {
    const std::string text = kMark + "a\xC3\xA4\xF0\x9F\x9A\x97z\r\n\t\xE4\xFC!\nend";
    const Commons::TextPlaces places(text);
    using Place = Commons::TextPlaces::Place;
    EXPECT_EQ(places.PlaceOf(0), (Place{1, 1}));
    EXPECT_EQ(places.PlaceOf(text.find('z')), (Place{1, 4}));
    EXPECT_EQ(places.PlaceOf(text.find('!')), (Place{2, 4}));
    EXPECT_EQ(places.PlaceOf(text.size() + 5), (Place{3, 4}));
    EXPECT_EQ(places.Line(1), "a\xC3\xA4\xF0\x9F\x9A\x97z");
    EXPECT_EQ(places.Line(2), "\t\xE4\xFC!");
    EXPECT_EQ(places.Line(4), "");
    for (std::size_t at : {std::size_t{3}, text.find('z'), text.find('!'), text.size()})
        EXPECT_EQ(places.PositionOf(places.PlaceOf(at)), at);
    EXPECT_EQ(places.PositionOf({1, 99}), text.find('\r'));
}

} // namespace
