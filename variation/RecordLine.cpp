#include "RecordLine.h"

#include <algorithm>
#include <utility>

#include <nlohmann/json.hpp>
#include <simulation/Sha256.h>

namespace TavrelVariation {

namespace {

using TavrelSimulation::Verdict;

constexpr std::size_t kMarkSize = 8;
constexpr std::string_view kBeforeCriteria = ",\"criteria\":[";

std::string MarkOf(const RecordLine& line) { return TavrelSimulation::Sha256(line.planned).substr(0, kMarkSize); }

} // namespace

std::optional<RecordLine> RecordLine::Of(const std::string& line, std::uint64_t number) {
    const std::string before =
        std::string("{\"format\":\"") + kRecordFormat + "\",\"number\":" + std::to_string(number) + ",\"verdict\":\"";
    // What was never written, as after a loss of power, is zeros.
    if (!line.starts_with(before) || !line.ends_with("}\n") || line.find('\0') != std::string::npos)
        return std::nullopt;
    const std::size_t begin = line.find('"', before.size());
    // No text holds these: its quotes have a backslash before them.
    const std::size_t end = line.find(kBeforeCriteria, begin);
    if (end == std::string::npos) return std::nullopt;
    const auto verdict = VerdictOfWord(line.substr(before.size(), begin - before.size()));
    if (!verdict) return std::nullopt;
    const std::string_view view = line;
    return RecordLine{*verdict, view.substr(begin, end - begin), view.substr(end + kBeforeCriteria.size())};
}

void Complete(RunRecord& record, const Variant& variant, const Plan& plan) {
    record.number = variant.number;
    if (variant.seed) record.seed = static_cast<std::uint32_t>(*variant.seed);
    record.values.clear();
    for (const AssignmentText& value : plan.Assignments(variant)) record.values.emplace_back(value.name, value.value);
}

PlannedRecords::PlannedRecords(std::vector<std::string> idsOfValues, const std::vector<std::string>& criteria)
    : ids(std::move(idsOfValues)) {
    using Json = nlohmann::json;
    for (const std::string& text : criteria)
        criterionParts.push_back("{\"criterion\":" + Json(text).dump(-1, ' ', false, Json::error_handler_t::replace) +
                                 ",\"holds\":");
}

void PlannedRecords::Add(const RunRecord& planned) {
    const std::string line = LineOf(planned);
    numbers.push_back(planned.number);
    marks += MarkOf(*RecordLine::Of(line, planned.number));
}

bool PlannedRecords::Take(const std::vector<std::uint64_t>& ofNumbers, const std::string& frozenMarks) {
    numbers = ofNumbers;
    marks = frozenMarks;
    return marks.size() == kMarkSize * numbers.size();
}

std::string PlannedRecords::ComplaintOf(std::uint64_t number, const RecordLine& line) const {
    const auto found = std::lower_bound(numbers.begin(), numbers.end(), number);
    if (found == numbers.end() || *found != number) return "the plan has no such number";
    const auto index = static_cast<std::size_t>(found - numbers.begin());
    if (marks.compare(index * kMarkSize, kMarkSize, MarkOf(line)) != 0)
        return "its values or its seed are not those of this number of the plan";
    const bool isJudged = line.verdict == Verdict::Passed || line.verdict == Verdict::Failed;
    if (!isJudged && line.criteria.starts_with(']')) return "";
    std::string_view rest = line.criteria;
    for (const std::string& part : criterionParts) {
        if (&part != &criterionParts.front() && rest.starts_with(',')) rest.remove_prefix(1);
        const std::size_t end = rest.find('}');
        if (!rest.starts_with(part) || end == std::string_view::npos) return "its criteria are not those of the plan";
        rest.remove_prefix(end + 1);
    }
    return rest.starts_with(']') ? "" : "its criteria are not those of the plan";
}

std::string PlannedRecords::LineOf(RunRecord record) const {
    const auto placeOf = [this](const auto& value) { return std::find(ids.begin(), ids.end(), value.first); };
    std::stable_sort(record.values.begin(), record.values.end(),
                     [&](const auto& a, const auto& b) { return placeOf(a) < placeOf(b); });
    return JsonOf(record) + "\n";
}

} // namespace TavrelVariation
