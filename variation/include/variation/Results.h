#ifndef TAVREL_VARIATION_RESULTS_H
#define TAVREL_VARIATION_RESULTS_H

#include <cstdint>
#include <string>
#include <vector>

#include <variation/Export.h>
#include <variation/RunRecord.h>

// What is told of the finished runs of a campaign, as texts. Each is a function of what it is given and of nothing
// else, so the same runs give the same bytes.
namespace TavrelVariation {

// What a campaign is about, as its results name it.
struct CampaignSheet {
    struct Parameter {
        std::string id;
        std::string name; // that people know it by; the last part of the id where there is no other
        std::string unit; // of the values, empty for none
        bool isNumeric = false;
    };
    std::string scenario;
    std::string configuration;
    std::string script;      // empty: the first whole one
    std::string timing;      // options of the command that make a run so long, "--from 0 --until 60 --step 0.1"
    std::uint64_t count = 0; // of variants
    std::vector<Parameter> parameters;
    std::vector<std::string> criteria;
};

// The texts take the records sorted by number, and the numbers of the variants that have none, in their order.

// Columns: number, verdict, seed, the values by their ids, the margins by their criteria. A text with a comma, a quote
// or a line end stands in quotes.
TAVREL_VARIATION_API std::string ResultsCsv(const CampaignSheet& sheet, const std::vector<RunRecord>& records);
// One testsuite with one testcase for each variant: passed, failure, error (no run, too long, killed, or missing),
// skipped.
TAVREL_VARIATION_API std::string ResultsJunit(const CampaignSheet& sheet, const std::vector<RunRecord>& records,
                                              const std::vector<std::uint64_t>& missing);
// One page without any request: counts, what is missing, how to repeat a run, the table, margins over each parameter,
// pass and fail over pairs of them. It reads without scripts; with them the table can be sorted and filtered.
TAVREL_VARIATION_API std::string ResultsHtml(const CampaignSheet& sheet, const std::vector<RunRecord>& records,
                                             const std::vector<std::uint64_t>& missing);

// A field of a line whose fields are separated by commas; in quotes if it holds a comma, a quote or a line end.
TAVREL_VARIATION_API std::string CsvField(const std::string& text);

// "0-3, 7, 9-12": numbers in their order, as ranges.
TAVREL_VARIATION_API std::string RangesText(const std::vector<std::uint64_t>& numbers);

// A word of a shell's command line, in single quotes where it needs them.
TAVREL_VARIATION_API std::string ShellWord(const std::string& text);

// The command that repeats a run.
TAVREL_VARIATION_API std::string RepeatCommand(const CampaignSheet& sheet, const RunRecord& record);

} // namespace TavrelVariation

#endif
