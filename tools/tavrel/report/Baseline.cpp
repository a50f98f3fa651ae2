#include "Baseline.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string_view>

#include "../Failure.h"
#include "../Files.h"

namespace tavrel {

using TavrelChecking::Finding;

namespace {

constexpr int kVersion = 1;
constexpr std::string_view kOmissionRules[] = {"TV6001", "TV6004", "TV6008"};

// A rule that is none any more was looked for: it has no findings.
bool LooksFor(const CheckReport& report, const std::string& id) {
    const TavrelChecking::Rule* const rule = TavrelChecking::FindRule(id);
    return !rule || std::find(report.rules.begin(), report.rules.end(), rule) != report.rules.end();
}

} // namespace

bool TellsOfOmission(const Finding& finding) {
    return std::find(std::begin(kOmissionRules), std::end(kOmissionRules), finding.rule->id) !=
           std::end(kOmissionRules);
}

Baseline::Baseline(const std::string& file)
    : path(file), folder(std::filesystem::path(AbsolutePath(file)).parent_path().generic_string()) {}

void Baseline::Read() {
    const std::string reason = ReasonNotToOpen(path);
    if (!reason.empty()) throw Failure{ExitUnreadable, fmt::format("{}: {}", path, reason)};
    std::ifstream file(path, std::ios::binary);
    const Json json = Json::parse(std::string{std::istreambuf_iterator<char>(file), {}}, nullptr, false);
    const Failure malformed{ExitUnreadable,
                            fmt::format("{}: this is no baseline that 'tavrel check --write-baseline' wrote", path)};
    if (!json.is_object() || json.value("version", Json()) != kVersion || !json.value("findings", Json()).is_array())
        throw malformed;
    for (const Json& entry : json["findings"]) {
        const auto text = [&](const char* member) {
            if (!entry.is_object() || !entry.contains(member) || !entry[member].is_string()) throw malformed;
            return entry[member].get<std::string>();
        };
        const Key key{text("file"), text("rule"), text("place")};
        if (!entry.contains("count") || !entry["count"].is_number_unsigned()) throw malformed;
        counts[key] += entry["count"].get<std::size_t>();
    }
}

void Baseline::Take(const CheckReport& report) {
    std::erase_if(counts, [&](const auto& entry) { return LooksFor(report, std::get<1>(entry.first)); });
    for (const ToldFinding& told : report.findings)
        if (!TellsOfOmission(told.finding)) ++counts[KeyOf(told.finding)];
}

void Baseline::Save() const {
    Json findings = Json::array();
    for (const auto& [key, count] : counts)
        findings.push_back(
            {{"file", std::get<0>(key)}, {"rule", std::get<1>(key)}, {"place", std::get<2>(key)}, {"count", count}});
    SaveFile(path, DumpJson({{"version", kVersion}, {"findings", findings}}));
}

void Baseline::Apply(CheckReport& report) const {
    std::map<Key, std::size_t> left = counts;
    std::set<std::string> looked;
    for (const std::string& file : report.files) looked.insert(RelativeOf(file));
    for (ToldFinding& told : report.findings) {
        if (TellsOfOmission(told.finding)) continue;
        const auto held = left.find(KeyOf(told.finding));
        if (held == left.end() || held->second == 0) continue;
        told.isHeld = true;
        --held->second;
    }
    report.baseline = path;
    // A file that was not looked at may have them still, and so may any file those of a rule that was not looked for.
    for (const auto& [key, count] : left)
        if (count > 0 && looked.count(std::get<0>(key)) != 0 && LooksFor(report, std::get<1>(key)))
            report.notes.push_back(
                fmt::format("{} holds {} of {} in {}{} that {} no longer found; --write-baseline brings "
                            "it up to date",
                            path, count, std::get<1>(key), std::get<0>(key),
                            std::get<2>(key).empty() ? "" : ", " + std::get<2>(key) + ",", count == 1 ? "is" : "are"));
}

std::string Baseline::RelativeOf(const std::string& file) const {
    const std::filesystem::path absolute = AbsolutePath(file);
    const std::string relative = absolute.lexically_relative(folder).generic_string();
    return relative.empty() ? absolute.generic_string() : relative;
}

Baseline::Key Baseline::KeyOf(const Finding& finding) const {
    return {RelativeOf(finding.file), finding.rule->id,
            finding.isInScript ? finding.script + ": " + finding.place : finding.place};
}

} // namespace tavrel
