#ifndef TAVREL_VARIATION_RUNRECORD_H
#define TAVREL_VARIATION_RUNRECORD_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <simulation/Events.h>
#include <simulation/Verdict.h>
#include <variation/Export.h>

namespace TavrelVariation {

// What is kept of one run of a campaign. It holds nothing that differs between two runs of the same variant: the same
// variant gives the same bytes on every machine, at any time, in any order.
struct RunRecord {
    std::uint64_t number = 0;                                // of the variant
    std::vector<std::pair<std::string, std::string>> values; // parameter ids and value texts, in the order of the plan
    std::optional<std::uint32_t> seed; // of the world, where the plan gives each run one of its own
    TavrelSimulation::Verdict verdict = TavrelSimulation::Verdict::Error;
    std::vector<TavrelSimulation::Outcome> criteria; // in the order of the plan; empty where there was no run
    std::string message;                             // why there is no run, or why it failed; else empty
    std::size_t events = 0;                          // of the trace
    std::string trace;                               // SHA-256 of its bytes; empty where there is none
};

// A record as one line of JSON, without a line end. The verdict stands among the first members.
TAVREL_VARIATION_API std::string JsonOf(const RunRecord& record);
// The record of such a line; none for what is not one, as after a machine that lost its power.
TAVREL_VARIATION_API std::optional<RunRecord> RecordOf(const std::string& json);
// The verdict of that word, "passed"; none if there is no such.
TAVREL_VARIATION_API std::optional<TavrelSimulation::Verdict> VerdictOfWord(const std::string& word);

} // namespace TavrelVariation

#endif
