#include <variation/Results.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <string_view>

#include <fmt/format.h>

#include "XmlEscape.h"

namespace TavrelVariation {

namespace {

using TavrelSimulation::Outcome;
using TavrelSimulation::Verdict;

// The shortest spelling that reads back as the same number.
std::string NumberText(double number) { return fmt::format("{}", number); }

const std::string* ValueOf(const RunRecord& record, const std::string& id) {
    for (const auto& [name, text] : record.values)
        if (name == id) return &text;
    return nullptr;
}

// What a test report says of a run that did not pass.
std::string Complaint(const RunRecord& record) {
    std::string text = record.message;
    for (const Outcome& outcome : record.criteria) {
        if (outcome.holds) continue;
        if (!text.empty()) text += "; ";
        text += outcome.criterion + " does not hold";
        if (outcome.margin) text += fmt::format(" (margin {})", NumberText(*outcome.margin));
    }
    return text.empty() ? WordOf(record.verdict) : text;
}

std::string ValuesText(const RunRecord& record) {
    std::string text;
    for (const auto& [id, value] : record.values) text += (text.empty() ? "" : ", ") + id + "=" + value;
    return text;
}

} // namespace

std::string CsvField(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char letter : text) {
        if (letter == '"') quoted += '"';
        quoted += letter;
    }
    return quoted + '"';
}

std::string RangesText(const std::vector<std::uint64_t>& numbers) {
    std::string text;
    for (std::size_t i = 0; i < numbers.size();) {
        std::size_t last = i;
        while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) ++last;
        if (!text.empty()) text += ", ";
        text += std::to_string(numbers[i]);
        if (last > i) text += "-" + std::to_string(numbers[last]);
        i = last + 1;
    }
    return text;
}

std::string ShellWord(const std::string& text) {
    const auto isPlain = [](unsigned char letter) {
        return (letter < 0x80 && std::isalnum(letter) != 0) ||
               std::string_view("_-./:+=,@%").find(static_cast<char>(letter)) != std::string_view::npos;
    };
    if (!text.empty() && std::all_of(text.begin(), text.end(), isPlain)) return text;
    std::string quoted = "'";
    for (const char letter : text) {
        if (letter == '\'')
            quoted += "'\\''";
        else
            quoted += letter;
    }
    return quoted + "'";
}

std::string RepeatCommand(const CampaignSheet& sheet, const RunRecord& record) {
    std::string text = "tavrel run " + ShellWord(sheet.scenario);
    if (!sheet.configuration.empty()) text += " --configuration " + ShellWord(sheet.configuration);
    if (!sheet.script.empty()) text += " --script " + ShellWord(sheet.script);
    if (!sheet.timing.empty()) text += " " + sheet.timing;
    if (record.seed) text += fmt::format(" --seed {}", *record.seed);
    for (const auto& [id, value] : record.values) text += " --set " + ShellWord(id + "=" + value);
    for (const std::string& criterion : sheet.criteria) text += " --expect " + ShellWord(criterion);
    return text;
}

std::string ResultsCsv(const CampaignSheet& sheet, const std::vector<RunRecord>& records) {
    std::string text = "number,verdict,seed";
    for (const CampaignSheet::Parameter& parameter : sheet.parameters) text += "," + CsvField(parameter.id);
    for (const std::string& criterion : sheet.criteria) text += "," + CsvField(criterion);
    text += '\n';
    for (const RunRecord& record : records) {
        text += fmt::format("{},{},{}", record.number, WordOf(record.verdict),
                            record.seed ? std::to_string(*record.seed) : "");
        for (const CampaignSheet::Parameter& parameter : sheet.parameters) {
            const std::string* value = ValueOf(record, parameter.id);
            text += "," + (value ? CsvField(*value) : std::string());
        }
        for (std::size_t i = 0; i < sheet.criteria.size(); ++i) {
            text += ',';
            if (i < record.criteria.size() && record.criteria[i].margin) text += NumberText(*record.criteria[i].margin);
        }
        text += '\n';
    }
    return text;
}

std::string ResultsJunit(const CampaignSheet& sheet, const std::vector<RunRecord>& records,
                         const std::vector<std::uint64_t>& missing) {
    std::map<Verdict, std::size_t> counts;
    for (const RunRecord& record : records) ++counts[record.verdict];
    const std::string suite = XmlEscaped(sheet.scenario);
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n";
    text += fmt::format("<testsuite name=\"{}\" tests=\"{}\" failures=\"{}\" errors=\"{}\" skipped=\"{}\">\n", suite,
                        records.size() + missing.size(), counts[Verdict::Failed],
                        counts[Verdict::Error] + counts[Verdict::Timeout] + counts[Verdict::Killed] + missing.size(),
                        counts[Verdict::Skipped]);
    auto absent = missing.begin();
    const auto tellAbsent = [&](std::uint64_t before) {
        for (; absent != missing.end() && *absent < before; ++absent)
            text += fmt::format("<testcase classname=\"{}\" name=\"{:06}\">"
                                "<error type=\"missing\" message=\"this variant was not run\"/></testcase>\n",
                                suite, *absent);
    };
    for (const RunRecord& record : records) {
        tellAbsent(record.number);
        text += fmt::format("<testcase classname=\"{}\" name=\"{:06} {}\">", suite, record.number,
                            XmlEscaped(ValuesText(record)));
        const std::string word = WordOf(record.verdict);
        if (record.verdict == Verdict::Skipped)
            text += fmt::format("<skipped message=\"{}\"/>", XmlEscaped(Complaint(record)));
        else if (record.verdict == Verdict::Failed)
            text += fmt::format("<failure type=\"failed\" message=\"{}\"/>", XmlEscaped(Complaint(record)));
        else if (record.verdict != Verdict::Passed)
            text += fmt::format("<error type=\"{}\" message=\"{}\"/>", word, XmlEscaped(Complaint(record)));
        text += "</testcase>\n";
    }
    tellAbsent(~std::uint64_t{0});
    return text + "</testsuite>\n</testsuites>\n";
}

} // namespace TavrelVariation
