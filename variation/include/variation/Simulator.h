#ifndef TAVREL_VARIATION_SIMULATOR_H
#define TAVREL_VARIATION_SIMULATOR_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <simulation/Criteria.h>
#include <simulation/Verdict.h>
#include <variation/Campaign.h>
#include <variation/Export.h>
#include <variation/RunRecord.h>
#include <variation/VariantRunner.h>

namespace TavrelVariation {

// An external simulator: a program that reads a scenario file and writes a trace.
class TAVREL_VARIATION_API Simulator {
public:
    // A command with its arguments, parted by blanks; quotes and backslashes keep blanks together, as in a shell, but
    // there is none: no variable, no pipe. "{scenario}", "{trace}", "{number}", "{seed}" and "{folder}" are filled in
    // for each run; "{{" and "}}" are plain braces. A run in which the program and all that it started have more than
    // `mostMemory` bytes of memory in use is ended; 0 is no limit. Throws Refused for quotes that are not closed, for
    // other words in braces, and for a program that is not there.
    explicit Simulator(const std::string& command, std::size_t mostMemory = 0);

    struct Job {
        std::uint64_t number = 0;
        std::optional<std::uint32_t> seed; // of the world; none fills in nothing
        std::string scenario;              // file that holds the variant
        std::string trace;                 // file that it is to write
        std::string folder;                // its own, for whatever it likes; removed by the caller
    };
    // The program with its arguments for one run.
    std::vector<std::string> ArgumentsFor(const Job& job) const;

    // Runs it, waits for its end, and judges the trace that it left. Whatever it started ends with it, and also when
    // this process is killed meanwhile. Its input is empty; what it prints goes to `output`. The record's number, seed
    // and values are left to the caller. Without criteria its exit status is the verdict, 0 passed and else failed;
    // with criteria another status than 0 is an error. A signal and too much memory are Verdict::Killed.
    RunRecord Run(const Job& job, const std::vector<TavrelSimulation::Criterion>& criteria,
                  const std::string& output) const;

private:
    std::vector<std::string> words;
    std::size_t memory;
};

// Runs variants of a campaign with a simulator: each is written as a scenario file into a folder of its own below that
// of the campaign, and its trace is moved to where the campaign wants it. What a simulator printed whose run did
// not pass is kept as log/NUMBER.txt. All that is given must outlive the answer.
TAVREL_VARIATION_API RunVariant RunWith(const Simulator& simulator, VariantRunner& runner, const Plan& plan,
                                        const std::vector<TavrelSimulation::Criterion>& criteria,
                                        const std::string& campaignFolder);

} // namespace TavrelVariation

#endif
