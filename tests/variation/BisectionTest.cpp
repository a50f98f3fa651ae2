// The look for a limit, beside limits that are known: for each domain, tolerance and number of probes the bracket holds
// the limit, is narrow enough, and took no more runs than halving can take.

#include <variation/Bisection.h>

#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <random>
#include <string_view>

#include <cfg/CfgScenario.h>
#include <gtest/gtest.h>
#include <variation/CampaignError.h>
#include <variation/Refused.h>

namespace {

using namespace TavrelVariation;
using TavrelSimulation::Verdict;

double numberOf(std::string_view text) {
    double number = NAN;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

struct Opened {
    Opened() {
        const auto path = std::filesystem::temp_directory_path() / "bisection.sce";
        std::ofstream(path) << "<sce version=\"1\"><Scenario><speed type=\"real\" ScenarioTreeValue=\"1\"/>"
                               "<count type=\"integer\" ScenarioTreeValue=\"1\"/></Scenario></sce>\n";
        file.load(path.string());
        settable = std::make_unique<Settable>(file);
        std::filesystem::remove(path);
    }
    Bisection look(const std::string& name, const std::string& entry, const std::string& tolerance, std::size_t probes,
                   const std::function<bool(double)>& passes) const {
        const Plan plan(
            PlanFile::Read(R"({"format": "tavrel-plan/1", "scenario": "a.sce", "parameters": {"/sce/Scenario/)" + name +
                           "\": " + entry + "}}"),
            *settable);
        return Bisect(plan, "/sce/Scenario/" + name, tolerance, probes, [&](const Variant& variant) {
            RunRecord record;
            record.verdict = passes(variant.values[0].number.Number()) ? Verdict::Passed : Verdict::Failed;
            return record;
        });
    }

    cfg::CfgScenario file;
    std::unique_ptr<Settable> settable;
};

TEST(Bisection, FindsALimitInTheRunsThatHalvingTakes) {
    const Opened opened;
    const struct {
        const char* name;
        const char* entry;
        double low, high;
        const char* tolerance;
    } cases[] = {
        {"speed", R"({"range": ["0", "100"]})", 0, 100, "0.001"},
        {"speed", R"({"range": ["-3.5", "7.25"]})", -3.5, 7.25, "0.5"},
        {"speed", R"({"range": ["0", "1"], "decimals": 6})", 0, 1, "0.000001"},
        {"speed", R"({"range": ["0", "100"], "decimals": 0})", 0, 100, "1"},
        {"speed", R"({"range": ["0", "10"], "step": "2.5"})", 0, 10, "0.01"},
        {"count", R"({"range": ["0", "1000000"]})", 0, 1000000, "1"},
        {"count", R"({"range": ["-20", "17"]})", -20, 17, "3"},
        {"count", R"({"range": ["0", "1"]})", 0, 1, "1"},
    };
    std::mt19937 random(5);
    for (const auto& [name, entry, low, high, tolerance] : cases)
        for (const std::size_t probes : {0U, 1U, 4U, 9U})
            for (int round = 0; round < 20; ++round) {
                const double limit = low + (high - low) * (static_cast<double>(random() % 998) + 1) / 1000;
                const bool rising = round % 2 == 0;
                const Bisection found = opened.look(name, entry, tolerance, probes,
                                                    [&](double value) { return (value > limit) == rising; });
                SCOPED_TRACE(testing::Message()
                             << entry << " tolerance " << tolerance << " probes " << probes << " limit " << limit
                             << " found " << found.low.value << " to " << found.high.value);
                const double from = numberOf(found.low.value), to = numberOf(found.high.value);
                ASSERT_TRUE(found.differ);
                EXPECT_LE(from, limit);
                EXPECT_GT(to, limit);
                EXPECT_LE(to - from, numberOf(tolerance) * (1 + 1e-9));
                EXPECT_EQ(found.low.record.verdict == Verdict::Passed, !rising);
                EXPECT_EQ(found.changes, 1U);
                const double halvings =
                    std::log2((high - low) / (static_cast<double>(probes + 1) * numberOf(tolerance)));
                EXPECT_LE(static_cast<double>(found.runs),
                          2 + static_cast<double>(probes) + std::max(0.0, std::ceil(halvings - 1e-9)));
            }
}

TEST(Bisection, TakesTheFirstOfSeveralLimitsAndTellsOfTheOthers) {
    const Opened opened;
    const Bisection found = opened.look("speed", R"({"range": ["0", "100"]})", "1", 4,
                                        [](double value) { return value < 30 || (value > 50 && value < 70); });
    EXPECT_TRUE(found.differ);
    EXPECT_EQ(found.changes, 3U);
    EXPECT_LE(numberOf(found.low.value), 30);
    EXPECT_GE(numberOf(found.high.value), 30);
}

TEST(Bisection, RefusesWhatHasNoLimit) {
    const Opened opened;
    const auto rising = [](double value) { return value > 5; };
    EXPECT_FALSE(opened.look("speed", R"({"range": ["0", "3"]})", "1", 4, rising).differ);
    EXPECT_THROW(opened.look("speed", R"({"values": ["1", "9"]})", "1", 4, rising), Refused);
    for (const char* tolerance : {"0.0009", "0", "-1", "1 m", "nan", ""})
        EXPECT_THROW(opened.look("speed", R"({"range": ["0", "9"]})", tolerance, 4, rising), Refused) << tolerance;
}

} // namespace
