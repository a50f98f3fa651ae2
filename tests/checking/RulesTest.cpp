// The table of rules, and the page that is made from it.
#include <checking/Rules.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace {

using namespace TavrelChecking;

std::string Page() {
    std::string page =
        "# The rules of `tavrel check`\n\n"
        "Made from the table in `checking/Rules.def`; `tavrel explain RULE` shows the same. An error that\n"
        "the library takes all the same is told as a warning.\n\n"
        "| id | name | severity | what |\n|---|---|---|---|\n";
    const auto cell = [](std::string text) {
        for (std::size_t at = text.find('|'); at != std::string::npos; at = text.find('|', at + 2))
            text.replace(at, 1, "\\|");
        return text;
    };
    for (const Rule& rule : Rules())
        page += "| [" + std::string(rule.id) + "](#" + rule.name + ") | " + rule.name + " | " + WordOf(rule.severity) +
                " | " + cell(rule.brief) + " |\n";
    for (const Rule& rule : Rules()) {
        page += "\n## <a id=\"" + std::string(rule.name) + "\"></a>" + rule.id + " " + rule.name + "\n\n" + rule.full +
                "\n\n" + rule.why + "\n\n";
        if (*rule.sample) page += "```\n" + std::string(rule.sample) + "\n```\n\n";
        page += std::string(rule.remedy) + "\n";
    }
    return page;
}

TEST(RulesTest, HaveIdsAndNamesOfTheirOwnAndAllTexts) {
    std::set<std::string> ids, names;
    for (const Rule& rule : Rules()) {
        EXPECT_TRUE(ids.insert(rule.id).second) << rule.id;
        EXPECT_TRUE(names.insert(rule.name).second) << rule.name;
        EXPECT_EQ(std::string(rule.id).size(), 6U);
        EXPECT_EQ(FindRule(rule.id), &rule);
        EXPECT_EQ(FindRule(rule.name), &rule);
        for (const char* text : {rule.full, rule.why, rule.remedy}) EXPECT_EQ(std::string(text).back(), '.') << rule.id;
        EXPECT_NE(std::string(rule.brief).back(), '.') << rule.id;
    }
    EXPECT_EQ(FindRule("TV0000"), nullptr);
}

TEST(RulesTest, AreChosenByTheBeginningsOfTheirIds) {
    const Rule& rule = *FindRule("TV2001");
    EXPECT_TRUE(IsChosen(rule, {"TV4", "TV2"}));
    EXPECT_TRUE(IsChosen(rule, {"TV2001"}));
    EXPECT_FALSE(IsChosen(rule, {"TV20011", "TV3", ""}));
}

// With TAVREL_WRITE_PAGES in the environment the page is written anew.
TEST(RulesTest, ThePageIsThatOfTheTable) {
    const std::string path = TAVREL_DOCS "/rules.md";
    if (std::getenv("TAVREL_WRITE_PAGES")) std::ofstream(path, std::ios::binary) << Page();
    std::ifstream file(path, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), Page());
}

} // namespace
