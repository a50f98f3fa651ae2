#include <support/RunningHost.h>

namespace {

class CriteriaTest : public RunningTest {};

TEST_F(CriteriaTest, ReadsAndSaves) {
    const char* plain =
        "\nTYPEOF CRITERIA (1)\n{\n\tLABEL=\"\"\n\tTASK_KIND=\"0\"\n\tCATEGORY=\"\"\n\tCRITICITY=\"1\"\n"
        "\tATTRIBUTE_CRITERIA_TYPE=\"Error\"\n\tTEXT=\"\"\n\tSOUND=\"\"\n}\n";
    struct {
        const char* why;
        const char* attributes;
        const char* saved; // null: refused
    } rows[] = {
        {"no attribute", "", plain},
        {"a flag that is off", "IS_DISABLED='0'", plain},
        {"all of them",
         "LABEL='L' SOUND='s.wav' TEXT='t' CRITICITY='3' ATTRIBUTE_CRITERIA_TYPE='Warning' CATEGORY='speed' "
         "IS_DISABLED='1' TASK_KIND='4'",
         "\nTYPEOF CRITERIA "
         "(1)\n{\n\tLABEL=\"L\"\n\tTASK_KIND=\"4\"\n\tIS_DISABLED=\"1\"\n\tCATEGORY=\"speed\"\n\tCRITICITY="
         "\"3\"\n\tATTRIBUTE_CRITERIA_TYPE=\"Warning\"\n\tTEXT=\"t\"\n\tSOUND=\"s.wav\"\n}\n"},
        {"the last flag, type and criticity stand",
         "IS_DISABLED='1' IS_DISABLED='0' CRITICITY='3' CRITICITY='1' ATTRIBUTE_CRITERIA_TYPE='' "
         "ATTRIBUTE_CRITERIA_TYPE='Error'",
         plain},
        {"a second category", "CATEGORY='a' CATEGORY='b'", nullptr},
        {"a second text", "TEXT='a' TEXT='b'", nullptr},
        {"a second sound", "SOUND='a' SOUND='b'", nullptr},
        {"a criteria within", "TYPEOF CRITERIA (2)\n{\n}\n", nullptr},
    };
    for (const auto& row : rows) {
        const auto criteria = host.Read("TYPEOF CRITERIA (1)\n{\n" + EntryLines(row.attributes) + "}\n");
        ASSERT_EQ(criteria != nullptr, row.saved != nullptr) << row.why;
        if (!criteria) continue;
        EXPECT_EQ(SavedText(*criteria), row.saved) << row.why;
        const std::unique_ptr<ScenarioItem> clone(criteria->Clone());
        EXPECT_EQ(SavedText(*clone), row.saved) << row.why << ", cloned";
        const auto again = host.Read(row.saved);
        ASSERT_TRUE(again) << row.why;
        EXPECT_EQ(SavedText(*again), row.saved) << row.why << ", read again";
    }
}

TEST_F(CriteriaTest, CategoriesAreEnteredOnce) {
    Criteria first;
    const auto& all = Criteria::Categories();
    EXPECT_EQ(all.front(), "");
    EXPECT_EQ(first.RegisterCategory(), 0U);
    // The list lives as long as the process, so each run of this test needs categories of its own.
    const std::size_t before = all.size();
    const std::string mine = "category " + std::to_string(before);
    const std::string text = "TYPEOF CRITERIA (1)\n{\nCATEGORY=\"" + mine + "\"\n}\n";
    const auto one = host.ReadAs<Criteria>(text);
    const auto two = host.ReadAs<Criteria>(text);
    ASSERT_TRUE(one && two);
    EXPECT_EQ(all.size(), before + 1);
    EXPECT_EQ(one->RegisterCategory(), before);
    EXPECT_EQ(two->RegisterCategory(), before);
    one->category = "clone of " + mine;
    const std::unique_ptr<ScenarioItem> clone(one->Clone());
    EXPECT_EQ(all.back(), "clone of " + mine);
}

TEST_F(CriteriaTest, DisabledItNeitherStartsNorSteps) {
    for (const bool disabled : {false, true}) {
        Criteria criteria;
        criteria.label = "C";
        criteria.disabled = disabled;
        std::ostringstream log;
        scenarioLog = &log;
        criteria.Init("work", 1.0);
        criteria.StepCriteria(2.0, nullptr);
        EXPECT_EQ(criteria.workPath, "work");
        EXPECT_EQ(log.str(), disabled ? "" : "\2Init task [C]\n");
        EXPECT_EQ(criteria.stepCount, disabled ? 0 : 1);
        EXPECT_EQ(criteria.counters.size(), disabled ? 0U : 2U);
        criteria.UpdateDisplayText();
        EXPECT_EQ(criteria.displayText, disabled ? "//    C" : "C");
        scenarioLog = nullptr;
    }
}

TEST_F(CriteriaTest, CountersStandByLevelAndKey) {
    Criteria criteria;
    criteria.SetCounter(5.0F, 1, 0.5F);
    criteria.SetCounter(7.0F, 65537, 0.5F); // its low 16 bits are 1
    criteria.SetCounter(2.0F, -1, 0.0F);
    ASSERT_EQ(criteria.counters.size(), 2U);
    EXPECT_EQ(criteria.counters[1].values, (std::map<float, float>{{0.5F, 7.0F}}));
    EXPECT_EQ(criteria.counters[1].text, "");
    EXPECT_EQ(criteria.counters[-1].values[0.0F], 2.0F);
    criteria.Init("", 0.0);
    EXPECT_EQ(criteria.counters[1].values, (std::map<float, float>{{0.0F, 0.0F}, {0.5F, 7.0F}}));
}

} // namespace
