// Each rule has an example in examples/faults, which shows that rule and nothing else.
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <checking/Check.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace TavrelChecking;
namespace fs = std::filesystem;

const std::string kExamples = TAVREL_EXAMPLES "/faults";

Result ResultFor(const std::vector<std::string>& paths, const Options& options = {}) {
    Result found;
    std::vector<Job> jobs;
    for (const std::string& path : paths) {
        const std::vector<Job> more = JobsFor(path, options, found);
        jobs.insert(jobs.end(), more.begin(), more.end());
    }
    Result result = Check(jobs, options);
    result.findings.insert(result.findings.end(), found.findings.begin(), found.findings.end());
    SortFindings(result.findings);
    return result;
}

// The example of a rule: a file, or an installation of its own. Empty if there is none.
std::string ExampleOf(const Rule& rule) {
    for (const auto& entry : fs::directory_iterator(kExamples)) {
        if (entry.path().stem() != rule.id) continue;
        if (!fs::is_directory(entry.path())) return entry.path();
        const fs::path script = entry.path() / "stop.sc"; // where the installation is no more than its surroundings
        return fs::exists(script) ? script : entry.path() / "tavrel.xml";
    }
    return {};
}

TEST(ExamplesTest, ShowEachRuleAndNothingElse) {
    for (const Rule& rule : Rules()) {
        SCOPED_TRACE(std::string(rule.id) + " " + rule.name);
        std::string path = ExampleOf(rule);
        std::string made;
        if (std::string_view(rule.id) == "TV6004") {
            // Too large to be kept; it takes no room on the disk.
            path = made = testing::TempDir() + "TV6004.sce";
            std::ofstream(path).put('<');
            fs::resize_file(path, std::uintmax_t{300} << 20);
        }
        ASSERT_FALSE(path.empty()) << "the rule has no example";
        const Result result = ResultFor({path});
        std::set<std::string> ids;
        std::string all;
        for (const Finding& finding : result.findings) {
            ids.insert(finding.rule->id);
            all += "\n" + finding.file + ":" + std::to_string(finding.span.row) + ": " + finding.message;
            EXPECT_FALSE(finding.message.empty());
            EXPECT_FALSE(finding.help.empty());
        }
        if (std::string_view(rule.id) == "TV9002") {
            EXPECT_EQ(ids.count(rule.id), 1U);
            EXPECT_EQ(result.findings.size(), 101U);
        } else {
            EXPECT_EQ(ids, std::set<std::string>{rule.id}) << all;
            EXPECT_EQ(result.findings.size(), 1U) << all;
        }
        if (!made.empty()) fs::remove(made);
    }
}

TEST(ExamplesTest, TellTheSameForAnyNumberOfJobsAndWhateverElseIsLookedAt) {
    const auto textOf = [](const Result& result) {
        std::string text;
        for (const Finding& finding : result.findings)
            text += finding.file + ":" + std::to_string(finding.span.row) + ":" + std::to_string(finding.span.column) +
                    ": " + finding.message + " (" + WordOf(finding.severity) + ")\n";
        return text;
    };
    Options one, three;
    one.jobs = 1;
    three.jobs = 3;
    const std::string all = textOf(ResultFor({kExamples}, one));
    EXPECT_EQ(textOf(ResultFor({kExamples}, three)), all);
    EXPECT_GT(all.size(), 5000U);
}

TEST(ExamplesTest, TheSampleInstallationHasNothingAboveANote) {
    for (const Finding& finding : ResultFor({TAVREL_EXAMPLES "/installation"}).findings)
        EXPECT_EQ(finding.severity, Severity::Note)
            << finding.file << ":" << finding.span.row << ": " << finding.message << " [" << finding.rule->id << "]";
}

// A root model that may lie in a folder which is not there, and settings in it, are not missed.
TEST(ExamplesTest, AFolderThatIsNotThereIsToldAlone) {
    const std::string folder = testing::TempDir() + "no folder";
    fs::copy(kExamples + "/TV6008", folder, fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    std::ofstream(folder + "/pack/data/scenario/any.sce") << "<sce version=\"1\"><Scenario/></sce>\n";
    const auto rules = [&] {
        std::vector<std::string> ids;
        for (const Finding& finding : ResultFor({folder}).findings) ids.emplace_back(finding.rule->id);
        return ids;
    };
    std::ofstream(folder + "/configuration/configuration.xml")
        << "<configuration version=\"1.0\"><dataPath><root>../gone</root></dataPath></configuration>\n";
    EXPECT_THAT(rules(), testing::ElementsAre("TV6008"));
    fs::remove_all(folder + "/configuration");
    EXPECT_THAT(rules(), testing::ElementsAre("TV6008"));
    fs::remove_all(folder);
}

TEST(ExamplesTest, ErrorsComeBeforeOthersWhereNotAllAreTold) {
    Options options;
    options.mostFindings = 2;
    const std::string path = testing::TempDir() + "many.sc";
    std::ofstream(path) << "TYPEOF INCLUDE (1)\n{\n\tTYPEOF RULE (1)\n\t{\n\t}\n\tTYPEOF RULE (1)\n\t{\n\t}\n"
                           "\tTYPEOF RULE (1)\n\t{\n\t}\n\thello\n}\n";
    Job job;
    job.path = path;
    job.kind = FileKind::Script;
    job.installation = kExamples + "/tavrel.xml";
    job.configuration = "Faults";
    const Result result = Check({job}, options);
    std::vector<std::string> ids;
    for (const Finding& finding : result.findings) ids.emplace_back(finding.rule->id);
    EXPECT_THAT(ids, testing::UnorderedElementsAre("TV9002", "TV4003", "TV1001"));
    fs::remove(path);
}

} // namespace
