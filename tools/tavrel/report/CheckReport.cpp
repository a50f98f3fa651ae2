#include "CheckReport.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <set>

namespace tavrel {

using TavrelChecking::Finding;
using TavrelChecking::Severity;

namespace {

std::uint64_t Hash(std::uint64_t hash, std::string_view text) {
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3ULL;
    return (hash ^ 0xFF) * 0x100000001B3ULL; // a byte that no text has, so that the texts do not run together
}

std::string_view Trimmed(std::string_view line) {
    const std::size_t begin = line.find_first_not_of(" \t\r");
    return begin == std::string_view::npos ? "" : line.substr(begin, line.find_last_not_of(" \t\r") - begin + 1);
}

// Without the number that tells those apart that are alike.
std::string HashOf(const Finding& finding) {
    std::uint64_t hash = 0xCBF29CE484222325ULL;
    for (const std::string_view text : {std::string_view(finding.rule->id), std::string_view(finding.script),
                                        std::string_view(finding.place), Trimmed(finding.line)})
        hash = Hash(hash, text);
    return fmt::format("{:016x}", hash);
}

void Spell(Finding& finding, const Spelling& spelling) {
    finding.file = spelling(finding.file);
    for (TavrelChecking::RelatedPlace& place : finding.related) place.file = spelling(place.file);
    for (TavrelChecking::Fix& fix : finding.fixes)
        for (TavrelChecking::Edit& edit : fix.edits) edit.file = spelling(edit.file);
}

std::string Count(std::size_t count, const char* word) {
    return fmt::format("{} {}{}", count, word, count == 1 ? "" : "s");
}

} // namespace

std::string AbsolutePath(const std::string& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.lexically_normal().generic_string();
}

Spelling SpellingOf(const std::vector<std::string>& given) {
    namespace fs = std::filesystem;
    const auto canonical = [](const fs::path& path) {
        std::error_code error;
        const fs::path found = fs::weakly_canonical(fs::absolute(path, error), error);
        return error ? path : found;
    };
    std::map<fs::path, fs::path> known; // what was given, by its place
    for (const std::string& path : given) {
        const fs::path folder = fs::path(path).parent_path();
        if (TavrelChecking::KindOfFile(path) == TavrelChecking::FileKind::Installation)
            known.emplace(canonical(folder.empty() ? "." : folder), folder);
        else
            known.emplace(canonical(path), path);
    }
    auto told = std::make_shared<std::map<std::string, std::string>>();
    return [known, told, canonical](const std::string& path) {
        const auto [spelled, isNew] = told->emplace(path, path);
        if (!isNew) return spelled->second;
        const fs::path place = canonical(path);
        for (fs::path above = place;; above = above.parent_path()) {
            if (const auto found = known.find(above); found != known.end()) {
                spelled->second = above == place ? found->second.string()
                                                 : (found->second / place.lexically_relative(above)).string();
                break;
            }
            if (above == above.parent_path()) break;
        }
        return spelled->second;
    };
}

CheckReport ReportOf(TavrelChecking::Result result, const Spelling& spelling) {
    CheckReport report;
    for (Finding& finding : result.findings) Spell(finding, spelling);
    for (TavrelChecking::Omission& omission : result.omissions) omission.file = spelling(omission.file);
    for (std::string& file : result.files) file = spelling(file);
    // The faults of a root model or an include come with each scenario that uses it.
    TavrelChecking::SortFindings(result.findings);
    std::set<std::string> files(result.files.begin(), result.files.end());
    std::map<std::pair<std::string, std::string>, int> alike;
    for (Finding& finding : result.findings) {
        files.insert(finding.file);
        const std::string hash = HashOf(finding);
        const int number = ++alike[{finding.file, hash}];
        report.findings.push_back({std::move(finding), fmt::format("{}:{}", hash, number), false});
    }
    report.files.assign(files.begin(), files.end());
    report.omissions = std::move(result.omissions);
    std::sort(report.omissions.begin(), report.omissions.end(), [](const auto& one, const auto& other) {
        return std::tie(one.file, one.reason) < std::tie(other.file, other.reason);
    });
    return report;
}

std::string CountsOf(const CheckReport& report) {
    std::size_t counts[3] = {0, 0, 0};
    std::size_t held = 0;
    for (const ToldFinding& told : report.findings)
        if (told.isHeld)
            ++held;
        else
            ++counts[static_cast<int>(told.finding.severity)];
    std::string text = fmt::format("{}, {}, {}", Count(counts[static_cast<int>(Severity::Error)], "error"),
                                   Count(counts[static_cast<int>(Severity::Warning)], "warning"),
                                   Count(counts[static_cast<int>(Severity::Note)], "note"));
    if (held > 0) text += fmt::format(" ({} more in the baseline)", held);
    return text;
}

} // namespace tavrel
