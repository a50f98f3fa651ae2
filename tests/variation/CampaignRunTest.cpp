// Campaigns of a host, which brings its own function for a run: whatever that throws, and whatever the system refuses,
// is told, and leaves the host as it was.
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <ScenarioTemplateDb/Exception.h>
#include <cfg/CfgScenario.h>
#include <gtest/gtest.h>
#include <variation/Campaign.h>
#include <variation/RunAlone.h>

namespace {

namespace fs = std::filesystem;
using namespace TavrelVariation;
using TavrelSimulation::Verdict;

struct Work {
    Work() {
        std::string pattern = (fs::temp_directory_path() / "campaign-run-XXXXXX").string();
        folder = mkdtemp(pattern.data());
        const std::string path = folder + "/a.sce";
        std::ofstream(path) << "<sce version=\"1\"><Scenario><speed type=\"real\" ScenarioTreeValue=\"1\"/>"
                               "</Scenario></sce>\n";
        file.load(path);
        settable = std::make_unique<Settable>(file);
        plan = std::make_unique<Plan>(
            PlanFile::Read(R"({"format": "tavrel-plan/1", "scenario": "a.sce", "method": {"name": "grid"},
                               "parameters": {"/sce/Scenario/speed": {"values": ["1", "2", "3", "4", "5", "6"]}}})"),
            *settable);
        CampaignSetup setup;
        setup.plan = plan.get();
        campaign = std::make_unique<Campaign>(Campaign::Begin(setup, folder + "/campaign"));
    }
    ~Work() { fs::remove_all(folder); }
    std::string RecordOf(int number) const {
        std::ifstream kept(folder + "/campaign/runs/00000" + std::to_string(number) + ".json");
        return {std::istreambuf_iterator<char>(kept), {}};
    }

    std::string folder;
    cfg::CfgScenario file;
    std::unique_ptr<Settable> settable;
    std::unique_ptr<Plan> plan;
    std::unique_ptr<Campaign> campaign;
};

TEST(CampaignRun, WhateverARunThrowsIsItsMessage) {
    const Work work;
    EXPECT_TRUE(work.campaign->Run(
        *work.plan, {},
        [](const Variant& variant, const std::string&) -> RunRecord {
            if (variant.number == 1) throw new ScenarioTemplateDb::Exception("by pointer", 4);
            if (variant.number == 2) throw ScenarioTemplateDb::Exception("by value", 4);
            if (variant.number == 3) throw 42;
            if (variant.number == 4) throw std::bad_alloc();
            RunRecord record;
            record.verdict = Verdict::Passed;
            return record;
        },
        nullptr));
    EXPECT_EQ(work.campaign->Count({}).Of(Verdict::Passed), 2U);
    for (const auto& [number, message] :
         {std::pair{1, "by pointer"}, {2, "by value"}, {3, "nobody announced"}, {4, "not enough memory"}}) {
        EXPECT_NE(work.RecordOf(number).find(message), std::string::npos) << work.RecordOf(number);
    }
}

TEST(CampaignRun, ARunThatEndsItsProcessHasAVerdictAndTheOthersGoOn) {
    const Work work;
    CampaignOptions options;
    options.seconds = 0.5;
    EXPECT_TRUE(work.campaign->Run(
        *work.plan, options,
        [](const Variant& variant, const std::string&) {
            if (variant.number == 1) _exit(0);
            if (variant.number == 2) std::abort();
            if (variant.number == 3) pause();
            RunRecord record;
            record.verdict = Verdict::Passed;
            return record;
        },
        nullptr));
    const CampaignCounts counts = work.campaign->Count({});
    EXPECT_EQ(counts.Of(Verdict::Passed), 3U);
    EXPECT_EQ(counts.Of(Verdict::Timeout), 1U);
    EXPECT_EQ(counts.Of(Verdict::Killed), 2U);
    EXPECT_NE(work.RecordOf(1).find("it ended its process"), std::string::npos) << work.RecordOf(1);
}

TEST(CampaignRun, WhatStopsTheCampaignStopsASingleRun) {
    const Work work;
    Variant variant;
    ASSERT_TRUE(work.plan->At(0, variant));
    const auto alone = [&](const RunVariant& run) { return RunAlone(*work.plan, variant, {}, run); };
    EXPECT_EQ(
        alone([](const Variant&, const std::string&) -> RunRecord { throw std::runtime_error("its own"); }).message,
        "its own");
    try {
        alone([](const Variant&, const std::string&) -> RunRecord { throw CampaignError("the include has changed"); });
        FAIL() << "a record of other inputs";
    } catch (const CampaignFileError&) {
        FAIL() << "a refusal is no fault of a file";
    } catch (const CampaignError& error) {
        EXPECT_STREQ(error.what(), "the include has changed");
    }
    EXPECT_THROW(
        alone([](const Variant&, const std::string&) -> RunRecord { throw CampaignFileError("the disk is full"); }),
        CampaignFileError);
}

// A host that goes on after a failure must hear SIGINT and SIGTERM as before.
TEST(CampaignRun, TheSignalsOfTheHostStayWhereNoProcessCanBeMade) {
    const Work work;
    fs::permissions(work.folder, fs::perms::all);
    fs::permissions(work.folder + "/campaign", fs::perms::all);
    const pid_t host = fork();
    if (host == 0) {
        // Nobody may make as few processes as this; root is not limited.
        const rlimit none = {0, 0};
        if (setrlimit(RLIMIT_NPROC, &none) != 0 || (getuid() == 0 && setuid(65534) != 0)) _exit(77);
        try {
            work.campaign->Run(
                *work.plan, {}, [](const Variant&, const std::string&) { return RunRecord(); }, nullptr);
            _exit(1);
        } catch (const CampaignFileError&) {
        }
        sigset_t blocked;
        pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
        _exit(sigismember(&blocked, SIGINT) != 0 || sigismember(&blocked, SIGTERM) != 0 ? 2 : 0);
    }
    int status = 0;
    waitpid(host, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == 77) GTEST_SKIP() << "the number of processes cannot be limited here";
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

} // namespace
