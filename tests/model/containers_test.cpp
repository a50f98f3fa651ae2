// Folders, enumeration tabs, groups, programs and settings.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <scenario/ItemModel.h>
#include <support/ModelText.h>

namespace {

TEST(Containers, AcceptTheirKindsOnly) {
    struct {
        ScenarioItemKind container;
        std::vector<std::uint32_t> accepted; // empty: everything
        bool isOpenAsReference = true;
    } const rows[] = {
        {KindFolder, {}},
        {KindConfig, {}},
        {KindEnumTab, {KindEnum}},
        {KindGroup, {KindGroup, KindScenario}},
        {KindProgram, {KindGroup, KindScenario}},
        {KindParameter, {KindFunction}},
        {KindFunction, {KindFunction, KindParameter}},
        {KindRule, {KindAction, KindElseAction, KindCondition}},
        {KindTask, {KindRule, KindTask, KindVariable}},
        {KindCriteria, {KindRule, KindTask, KindVariable}},
        {KindInclude, {KindRule, KindScenario, KindTask, KindVariable}, false},
        {KindEvaluation, {KindCriteria, KindRule, KindScenario, KindTask, KindVariable}, false},
        {KindScenario, {KindEvaluation, KindGeneralParameters, KindInclude, KindRule, KindTask, KindVariable}, false},
    };
    for (const auto& row : rows) {
        const OwnedItem item(CreateItem(row.container, "", nullptr));
        for (std::uint32_t kind = 0; kind <= KindVariable + 1; ++kind) {
            const bool expected = row.accepted.empty() || std::count(row.accepted.begin(), row.accepted.end(), kind);
            item->isaIndex = "";
            EXPECT_EQ(item->AcceptsChildKind(kind), expected) << KindKeyword(row.container) << " " << kind;
            item->isaIndex = "1";
            EXPECT_EQ(item->AcceptsChildKind(kind), expected && row.isOpenAsReference) << KindKeyword(row.container);
        }
    }
}

TEST(EnumTab, FindsEntriesByNameAndShowsBoth) {
    const OwnedItem item = ReadScript(R"(
        TYPEOF ENUMTAB (A) LABEL="B"
            TYPEOF ENUM (1) LABEL="one"
            TYPEOF ENUM (2) LABEL="1"
            TYPEOF ENUM (1) LABEL="again"
    )");
    ASSERT_TRUE(item);
    auto& tab = static_cast<EnumTab&>(*item);
    EXPECT_EQ(tab.FindEntry("1")->label, "one");
    EXPECT_EQ(tab.FindEntry("one"), nullptr);
    EXPECT_EQ(tab.FindEntry(""), nullptr);
    tab.UpdateDisplayTextTree();
    EXPECT_EQ(tab.displayText, "A    (B)");
    EXPECT_EQ(tab.FindEntry("2")->displayText, "2    (1)");
    const OwnedItem copy(tab.Clone());
    EXPECT_EQ(SavedText(*copy), SavedText(tab));
}

TEST(Folders, FilterTheirChildrenAndTolerateHoles) {
    Folders folder;
    for (const ScenarioItemKind kind : {KindTask, KindRule, KindTask})
        folder.AddChild(CreateItem(kind, "", nullptr), nullptr, true);
    folder.children.push_back(nullptr);
    std::vector<ScenarioItem*> out{&folder};
    folder.GetChildren(out, KindTask);
    EXPECT_EQ(out.size(), 3u); // appended
    folder.GetChildren(out);
    EXPECT_EQ(out.size(), 7u);
    folder.RemoveChild(nullptr);
    EXPECT_EQ(folder.children.size(), 4u);
}

TEST(Config, FillsDefaultsAndWritesTheRestEmpty) {
    const char* const kSaved = R"(
        TYPEOF CONFIG (c) REQUEST_DELAY="%" WAITMSG_DELAY="#" UPDATE_DELAY="1" NUMOF_UNDOS="5" STUDENT=""
            TRAINING=""
            EVALUATION="%"
            SESSION=""
            HISTORY=""
    )";
    struct {
        const char* why;
        const char* lines;
        bool evaluationActive;
        const char* saved[3]; // REQUEST_DELAY, WAITMSG_DELAY, EVALUATION; null for a refused text
    } const rows[] = {
        {"nothing given", "", false, {"1", "500", ""}},
        {"a value of its own", "WAITMSG_DELAY='7'", false, {"1", "7", ""}},
        {"an empty value", "REQUEST_DELAY=''", false, {"1", "500", ""}},
        {"an empty value and then one", "REQUEST_DELAY='' REQUEST_DELAY='3'", false, {"3", "500", ""}},
        {"a second value", "REQUEST_DELAY='3' REQUEST_DELAY='3'", false, {nullptr, nullptr, nullptr}},
        {"a flag behind its shorter key", "EVALUATION='e' EVALUATION_ACTIVE='1'", true, {"1", "500", "e"}},
        {"a flag alone fills the shorter key", "EVALUATION_ACTIVE='1'", false, {"1", "500", "CTIVE="}},
        {"a flag that is not 1", "EVALUATION='e' EVALUATION_ACTIVE='true'", false, {"1", "500", "e"}},
        {"it stays open", "EVALUATION='e' EVALUATION_ACTIVE='0' EVALUATION_ACTIVE='1'", true, {"1", "500", "e"}},
        {"once set it is closed",
         "EVALUATION='e' EVALUATION_ACTIVE='1' EVALUATION_ACTIVE='1'",
         false,
         {nullptr, nullptr, nullptr}},
        {"label and flags are lost", "LABEL='l' GENERAL_PARAMETERS_ACTIVE='1'", false, {"1", "500", ""}},
    };
    for (const auto& row : rows) {
        const ReadResult read = ReadExactly("TYPEOF CONFIG (c)\n{\n" + EntryLines(row.lines) + "}\n");
        ASSERT_EQ(read.item != nullptr, row.saved[0] != nullptr) << Why(row);
        if (!read.item) continue;
        EXPECT_EQ(static_cast<Config&>(*read.item).evaluationActive, row.evaluationActive) << Why(row);
        std::string expected = "\n" + ScriptText(kSaved);
        expected.replace(expected.find('%'), 1, row.saved[0]);
        expected.replace(expected.find('#'), 1, row.saved[1]);
        expected.replace(expected.find('%'), 1, row.saved[2]);
        EXPECT_EQ(SavedText(*read.item), expected) << Why(row);
    }
}

TEST(Config, DiesWithoutItsChildren) {
    Folders child;
    {
        Config config;
        config.AddChild(&child, nullptr, true);
    }
    EXPECT_EQ(child.children.size(), 0u); // still there
}

} // namespace
