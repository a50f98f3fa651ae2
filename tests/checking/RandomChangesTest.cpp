// Texts of the sample changed at random: a file has an error if and only if the library refuses it, ends its process
// over it or finds a part of it not valid; each place lies in its file, and no finding comes twice.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <Commons/TextPlaces.h>
#include <ScenarioTemplateDb/Exception.h>
#include <TavrelScenarioTemplateDb/ScenarioScripts.h>
#include <TavrelScenarioTemplateDb/ScenarioTables.h>
#include <TavrelScenarioTemplateDb/TavrelScenario.h>
#include <cfg/CfgScenario.h>
#include <cfg/ScenarioScript.h>
#include <checking/Check.h>
#include <gtest/gtest.h>
#include <lmkUtils/EnvConfig.h>
#include <processes/ChildProcess.h>
#include <scenario/ItemModel.h>
#include <support/InstallationBuilder.h>

namespace {

using namespace TavrelChecking;
namespace fs = std::filesystem;

constexpr std::size_t kChanges = 300;

// One change of one line of the first script.
std::string Changed(const std::string& file, std::mt19937& random) {
    const std::size_t begin = file.find("<text>") + 6;
    const std::size_t end = file.find("</text>", begin);
    const auto any = [&](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    };
    std::vector<std::string> lines;
    for (std::size_t at = begin; at < end;) {
        const std::size_t feed = std::min(file.find('\n', at), end);
        lines.push_back(file.substr(at, feed - at));
        at = feed + 1;
    }
    const std::size_t number = any(lines.size());
    std::string& line = lines[number];
    constexpr std::string_view kSigns = "\"{}() \t=A1_x-";
    switch (any(6)) {
    case 0:
        lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(number));
        break;
    case 1:
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(number), std::string(line));
        break;
    case 2:
        std::swap(line, lines[any(lines.size())]);
        break;
    case 3:
        if (!line.empty()) line.erase(any(line.size()), 1);
        break;
    case 4:
        line.insert(any(line.size() + 1), 1, kSigns[any(kSigns.size())]);
        break;
    default:
        if (!line.empty()) line[any(line.size())] = kSigns[any(kSigns.size())];
        break;
    }
    std::string changed = file.substr(0, begin);
    for (const std::string& one : lines) changed += one + "\n";
    return changed + file.substr(end);
}

class Template : public TavrelScenarioTemplateDb::TavrelScenario {
public:
    using TavrelScenario::TavrelScenario;
    cfg::CfgScenario& File() const { return *getCfgScenarioSection(); }
};

bool AreAllValid(const ScenarioItem& item) {
    std::vector<ScenarioItem*> children;
    item.GetChildren(children);
    return item.IsValid() &&
           std::all_of(children.begin(), children.end(), [](const ScenarioItem* child) { return AreAllValid(*child); });
}

// As a host that opens the file and shows its scripts.
bool IsFine(const fs::path& path, const std::string& configuration) {
    const Template scenario(configuration, path.filename().string(), path.parent_path().string());
    try {
        scenario.getRootScenarioNode();
        scenario.getName();
        for (const cfg::ScenarioScript* script : TavrelScenarioTemplateDb::scriptsOf(scenario.File())) {
            ScenarioTextStream stream(script->text.c_str(), script->text.size() + 1);
            ItemLoadContext context{nullptr, nullptr};
            const std::unique_ptr<ScenarioItem> root(LoadScenarioText(stream, nullptr, &context, nullptr, false));
            if (!root) return false;
            TavrelScenarioTemplateDb::ScenarioTables tables;
            auto* whole = dynamic_cast<ScenarioLib::Scenario*>(root.get());
            if (whole) tables.fill(*whole, scenario.File());
            root->UpdateDisplayTextTree();
            if (whole && !AreAllValid(*root)) return false;
        }
        return true;
    } catch (const ScenarioTemplateDb::Exception* exception) {
        delete exception;
    } catch (const std::exception&) {
    } catch (const ScenarioTemplateDb::Exception&) {
    }
    return false;
}

TEST(RandomChangesTest, AnErrorIsToldIfAndOnlyIfTheLibraryHasOne) {
    const std::string installation = TAVREL_EXAMPLES "/installation/tavrel.xml";
    Result found;
    std::vector<Job> sample;
    for (const Job& job : JobsFor(installation, {}, found))
        if (job.kind == FileKind::Scenario) sample.push_back(job);
    const std::string folder = testing::TempDir() + "changed/";
    fs::create_directories(folder);
    std::mt19937 random(15);
    std::vector<Job> jobs;
    while (jobs.size() < kChanges) {
        Job job = sample[random() % sample.size()];
        const std::string bytes = contentOf(job.path);
        if (bytes.find("<text>\n") == std::string::npos) continue;
        job.path = folder + std::to_string(jobs.size()) + ".sce";
        std::ofstream(job.path, std::ios::binary) << Changed(bytes, random);
        jobs.push_back(job);
    }

    std::vector<bool> isFine(jobs.size());
    TavrelProcesses::ChildSettings settings;
    settings.quiet = true;
    lmkUtils::EnvConfig::setTavrelConfigFilePath(installation);
    TavrelProcesses::ForEachInChildren(
        jobs.size(), settings,
        [&](std::size_t at) {
            lmkUtils::EnvConfig::setConfig(jobs[at].configuration, false);
            return std::string(IsFine(jobs[at].path, jobs[at].configuration) ? "fine" : "");
        },
        [&](std::size_t at, const std::string& answer) { isFine[at] = answer == "fine"; },
        [&](std::size_t at, const TavrelProcesses::Death&) { isFine[at] = false; });

    const Result result = Check(jobs, {});
    std::size_t refused = 0;
    for (std::size_t at = 0; at < jobs.size(); ++at) {
        const std::string bytes = contentOf(jobs[at].path);
        const Commons::TextPlaces places(bytes);
        bool hasError = false;
        std::string all;
        std::set<std::string> once;
        for (const Finding& finding : result.findings) {
            if (finding.file != jobs[at].path) continue;
            hasError = hasError || finding.severity == Severity::Error;
            const Span& span = finding.span;
            const std::string place = std::to_string(span.row) + ":" + std::to_string(span.column) + " ";
            all += place + finding.rule->id + " " + WordOf(finding.severity) + " " + finding.message + "\n";
            EXPECT_TRUE(once.insert(place + finding.rule->id + finding.message).second) << all;
            EXPECT_LE(span.endRow, places.RowCount());
            EXPECT_TRUE(span.row < span.endRow || (span.row == span.endRow && span.column <= span.endColumn)) << all;
            for (const auto& [row, column] : {std::pair(span.row, span.column), std::pair(span.endRow, span.endColumn)})
                EXPECT_EQ(places.PlaceOf(places.PositionOf({row, column})).column, column) << all;
        }
        EXPECT_EQ(hasError, !isFine[at]) << jobs[at].path << "\n" << all;
        if (!isFine[at]) ++refused;
        if (hasError != isFine[at]) fs::remove(jobs[at].path);
    }
    std::error_code kept;
    fs::remove(folder, kept); // not while there is a file to look into
    // Otherwise the changes would show nothing.
    EXPECT_GT(refused, kChanges / 5);
    EXPECT_LT(refused, kChanges * 4 / 5);
}

} // namespace
