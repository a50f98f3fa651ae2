#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include <sys/stat.h>

#include <environment/Environment.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/InstallationBuilder.h>

namespace {

using Commons::ConfigFile;
namespace fs = std::filesystem;

using Expansion = std::pair<std::string, bool>; // the text, and whether nothing unknown is left in it

Expansion expand(const std::string& text, const char* pattern = Commons::System::DaemonVariableMatchingPattern) {
    const std::map<std::string, std::string> variables = {{"GIVEN", "given"}, {"NESTED", "${GIVEN}"}, {"EMPTY", ""}};
    std::string out = "from before";
    const bool complete = Commons::System::ExpandLocalEnvironmentVariables(text, out, pattern, variables);
    return {out, complete};
}

TEST(Variables, AreExpandedOnce) {
    setenv("TAVREL_TEST_SET", "set", 1);
    setenv("GIVEN", "of the process", 1);
    unsetenv("TAVREL_TEST_UNSET");
    struct Row {
        const char* why;
        const char* text;
        Expansion expansion;
    };
    const Row rows[] = {
        {"none", "a/b", {"a/b", true}},
        {"of the process", "a/${TAVREL_TEST_SET}/b", {"a/set/b", true}},
        {"the map goes before the process", "${GIVEN}${GIVEN}", {"givengiven", true}},
        {"values are not expanded again", "${NESTED}", {"${GIVEN}", true}},
        {"an empty value is a value", "a${EMPTY}b", {"ab", true}},
        {"an unknown one stays, the others do not",
         "${TAVREL_TEST_UNSET}/${GIVEN}",
         {"${TAVREL_TEST_UNSET}/given", false}},
        {"no names", "${} ${1A} ${A-B} $GIVEN {GIVEN} $ {GIVEN}", {"${} ${1A} ${A-B} $GIVEN {GIVEN} $ {GIVEN}", true}},
        {"open at the end", "${GIVEN", {"${GIVEN", true}},
        {"one begins within another", "${GI${GIVEN}}", {"${GIgiven}", true}},
        {"a dollar before it", "$${GIVEN}", {"$given", true}},
        {"empty", "", {"", true}},
    };
    const std::string asExpression = std::string("(?:)") + Commons::System::DaemonVariableMatchingPattern;
    for (const Row& row : rows) {
        EXPECT_EQ(expand(row.text), row.expansion) << row.why;
        EXPECT_EQ(expand(row.text, nullptr), row.expansion) << row.why;
        // The published expression and what is done by hand for it must say the same.
        EXPECT_EQ(expand(row.text, asExpression.c_str()), row.expansion) << row.why;
    }
    EXPECT_EQ(expand("%GIVEN% ${GIVEN} %NOBODYS%", "%(\\w+)%"), (Expansion{"given ${GIVEN} %NOBODYS%", false}));
    EXPECT_EQ(expand("${GIVEN}", "(["), (Expansion{"${GIVEN}", false}));
    EXPECT_EQ(expand("abc", "b"), (Expansion{"abc", true})) << "no name in it";
    EXPECT_EQ(expand("abc", "(x*)"), (Expansion{"abc", true})) << "matches nothing, everywhere";
    EXPECT_EQ(expand(std::string(1'000'000, '$') + "${" + std::string(1'000'000, 'A')).second, true);

    std::string both = "${GIVEN}!";
    EXPECT_TRUE(Commons::System::ExpandLocalEnvironmentVariables(
        both, both, Commons::System::DaemonVariableMatchingPattern, {{"GIVEN", "longer than it was"}}));
    EXPECT_EQ(both, "longer than it was!");
    unsetenv("GIVEN");
    unsetenv("TAVREL_TEST_SET");
}

TEST(FileUtils, TellFilesFromFolders) {
    const InstallationBuilder installation;
    const std::string here = installation.path();
    const std::string bytes = std::string("\0\r\n\xFF", 4) + std::string(70'000, 'x');
    installation.write("a b/é.bin", bytes);
    ASSERT_EQ(mkfifo((here + "/pipe").c_str(), 0600), 0);
    fs::create_symlink("loop", here + "/loop");
    fs::create_symlink("a b", here + "/link");
    struct Row {
        std::string path;
        bool exists;
        bool isFolder;
        bool isRead;
    };
    const Row rows[] = {
        {here + "/a b/é.bin", true, false, true},
        {here + "\\a b\\é.bin", true, false, true},
        {here + "/link\\é.bin", true, false, true},
        {here + "/a b", false, true, false},
        {here + "\\a b\\", false, true, false},
        {here + "/link", false, true, false},
        {here + "/pipe", true, false, false},
        {"/dev/null", true, false, false},
        {here + "/loop", false, false, false},
        {here + "/none", false, false, false},
        {here + "/a b/é.bin/x", false, false, false},
        {here + "/a b/é.bin" + std::string("\0x", 2), false, false, false},
        {std::string(10'000, 'x'), false, false, false},
        {"", false, false, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path.substr(0, 200));
        EXPECT_EQ(Commons::FileUtils::DoesFileExist(row.path), row.exists);
        EXPECT_EQ(lmkUtils::fileExist(row.path, Commons::Encoding::ModeUtf8), row.exists);
        EXPECT_EQ(Commons::FileUtils::IsFolder(row.path.c_str()),
                  row.isFolder && row.path.find('\0') == std::string::npos);
        std::vector<unsigned char> read = {1, 2, 3};
        EXPECT_EQ(Commons::FileUtils::LoadFile(row.path, read), row.isRead);
        EXPECT_EQ(std::string(read.begin(), read.end()), row.isRead ? bytes : "\1\2\3");
    }
    EXPECT_FALSE(Commons::FileUtils::IsFolder(nullptr));

    setenv("TAVREL_TEST_FOLDER", here.c_str(), 1);
    EXPECT_TRUE(lmkUtils::fileExist("${TAVREL_TEST_FOLDER}\\a b/é.bin", Commons::Encoding::ModeUtf8))
        << "a generic path";
    EXPECT_EQ(lmkUtils::resolveGenericPath("${TAVREL_TEST_FOLDER}\\x/${NOBODYS}", Commons::Encoding::ModeUtf8),
              here + "/x/${NOBODYS}");
    unsetenv("TAVREL_TEST_FOLDER");

    for (const auto& [path, rest] : std::map<std::string, std::string>{
             {"/a/b.c", "b.c"}, {"a\\b/c\\d", "d"}, {"b", "b"}, {"", ""}, {"a/b/", ""}, {"C:\\x", "x"}}) {
        std::string cut = path;
        lmkUtils::removePath(cut);
        EXPECT_EQ(cut, rest) << path;
    }
}

// Two paths never become one, whatever bytes they hold.
TEST(Encoding, EveryPathHasItsOwnWideForm) {
    struct Row {
        std::string path;
        std::wstring wide;
    };
    const Row rows[] = {
        {"", L""},
        {"a/é€", L"a/\u00E9\u20AC"},
        {"\xF0\x9F\x9A\x97", L"\U0001F697"},
        {"\xF4\x8F\xBF\xBF", L"\U0010FFFF"},
        {"\xE9t\xE9", {0xDCE9, L't', 0xDCE9}},
        {"\xC0\x80", {0xDCC0, 0xDC80}},
        {"\xE0\x9F\xBF", {0xDCE0, 0xDC9F, 0xDCBF}},
        {"\xED\xA0\x80", {0xDCED, 0xDCA0, 0xDC80}},
        {"\xF0\x8F\xBF\xBF", {0xDCF0, 0xDC8F, 0xDCBF, 0xDCBF}},
        {"\xF4\x90\x80\x80", {0xDCF4, 0xDC90, 0xDC80, 0xDC80}},
        {"\xE2\x82", {0xDCE2, 0xDC82}},
        {"\xFF", {0xDCFF}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Commons::Encoding::Transcode(row.path, Commons::Encoding::ModeUtf8), row.wide) << row.path;
}

TEST(ConfigFileTest, AnyTextSurvives) {
    const InstallationBuilder installation;
    const std::string path = installation.path() + "/a.par";
    std::string all;
    for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
    const std::string texts[] = {
        "",    " ",  "  two  ", "\t",     "a=b:c#d!e", "# no comment", "line\nline\r\nline\r", "\\",
        "\\n", "é€", "${HOME}", "a\\\nb", all,         "\\u0041"};
    ConfigFile file(path);
    EXPECT_EQ(file["description"], "");
    ASSERT_TRUE(file.create());
    for (const std::string& key : texts) {
        for (const std::string& text : texts) {
            file.modifyEntry(key, text);
            file.modifyEntry("other", "o");
            EXPECT_EQ(ConfigFile(path)[key], text) << testing::PrintToString(key);
        }
    }
    for (const std::string& key : texts)
        EXPECT_EQ(file[key], texts[std::size(texts) - 1]) << testing::PrintToString(key);
    EXPECT_EQ(file["other"], "o");
}

TEST(ConfigFileTest, ReadsWhatOthersWroteAndKeepsIt) {
    const InstallationBuilder installation;
    const std::string content = "# a comment = x\r\n"
                                "! another\n"
                                "\n"
                                "  plain = value \n"
                                "colon:value\n"
                                "blank value\n"
                                "alone\n"
                                "long = one \\\r\n   two \\\n\tthree\n"
                                "# long = four\\\n"
                                "unicode=\\u00e9\\uD83D\\uDE97\\uD83D\\u12\n"
                                "escaped\\ key\\==\\ \\t\\q\n"
                                "twice=1\n"
                                "twice=2\n"
                                "last\\";
    const std::string path = installation.write("a.par", content);
    ConfigFile file(path);
    EXPECT_EQ(file["plain"], "value ");
    EXPECT_EQ(file["colon"], "value");
    EXPECT_EQ(file["blank"], "value");
    EXPECT_EQ(file["alone"], "");
    EXPECT_EQ(file["long"], "one two three");
    EXPECT_EQ(file["unicode"].substr(0, 6), "é\xF0\x9F\x9A\x97");
    EXPECT_EQ(file["escaped key="], " \tq");
    EXPECT_EQ(file["twice"], "2");
    EXPECT_EQ(file["# a comment"], "");
    EXPECT_TRUE(file.create());
    EXPECT_EQ(contentOf(path), content) << "an existing file is left alone";

    file.modifyEntry("twice", "3");
    file.modifyEntry("long", "x");
    file.modifyEntry("new", "y");
    std::string expected = content;
    expected.replace(expected.find("twice=2"), 7, "twice=3");
    expected.replace(expected.find("long = one"), 30, "long=x\n");
    EXPECT_EQ(contentOf(path), expected + "\n\nnew=y\n");
    EXPECT_EQ(file["new"], "y");
    EXPECT_EQ(file["last"], "");
}

TEST(ConfigFileTest, BadFilesAreLeftAlone) {
    const InstallationBuilder installation;
    const std::string here = installation.path();
    ASSERT_EQ(mkfifo((here + "/pipe").c_str(), 0600), 0);
    for (const std::string& path :
         {here, here + "/pipe", here + "/none/a.par", std::string(), std::string("a\0b", 3)}) {
        ConfigFile file(path);
        EXPECT_FALSE(file.create()) << path;
        file.modifyEntry("a", "b");
        EXPECT_EQ(file["a"], "") << path;
    }
    EXPECT_TRUE(fs::is_fifo(here + "/pipe"));
    ConfigFile made(here + "\\made.par");
    made.modifyEntry("a", "b");
    EXPECT_EQ(contentOf(here + "/made.par"), "a=b\n") << "a missing file is made";
}

TEST(Units, ConvertBothWays) {
    struct Row {
        int number;
        const char* text;
        double value;
        double si;
    };
    const Row rows[] = {
        {0, "", 2.5, 2.5},
        {1, "", 2.5, 2.5},
        {29, "deg", 180.0, 3.14159265358979323846},
        {53, "km/h", 180.0, 50.0},
        {60, "rpm", 60.0, 6.28318530717958647692},
        {lmk::UNIT_CELSIUS, "degC", 20.0, 293.15},
        {lmk::UNIT_FAHRENHEIT, "degF", 212.0, 373.15},
        {lmk::UNIT_INCH, "in", 100.0, 2.54},
        {lmk::UNIT_MPH, "mph", 100.0, 44.704},
        {lmk::UNIT_PERCENT, "%", 50.0, 0.5},
        {lmk::UNIT_L, "L", 2.0, 0.002},
    };
    for (const Row& row : rows) {
        const auto unit = static_cast<lmk::t_unit>(row.number);
        EXPECT_STREQ(lmk::toText(unit), row.text);
        EXPECT_DOUBLE_EQ(lmk::convToSI(unit, row.value), row.si) << row.text;
        EXPECT_DOUBLE_EQ(lmk::convToUnit(unit, row.si), row.value) << row.text;
    }
    EXPECT_EQ(lmk::convToSI(lmk::UNIT_KM_H, 180.0), 50.0) << "exactly";
    for (int number = -2; number < 200; ++number) {
        const auto unit = static_cast<lmk::t_unit>(number);
        const std::string text = lmk::toText(unit);
        EXPECT_EQ(lmk::toTUnit(text.c_str()), text.empty() ? lmk::UNIT_UNDEFINED : unit)
            << number << " has a text of its own";
        if (text.empty()) {
            EXPECT_EQ(lmk::convToUnit(unit, 1.5), 1.5);
        }
    }
    EXPECT_EQ(lmk::toTUnit("KM/H"), lmk::UNIT_UNDEFINED);
    EXPECT_EQ(lmk::toTUnit(nullptr), lmk::UNIT_UNDEFINED);
}

} // namespace
