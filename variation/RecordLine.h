#ifndef TAVREL_VARIATION_RECORDLINE_H
#define TAVREL_VARIATION_RECORDLINE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <variation/Plan.h>
#include <variation/RunRecord.h>

namespace TavrelVariation {

inline constexpr const char* kRecordFormat = "tavrel-run/1";

// The parts of a record that was written here. Finding them is many times faster than reading the record, and a
// campaign has a hundred thousand of them to look at before it begins.
struct RecordLine {
    TavrelSimulation::Verdict verdict;
    std::string_view planned;  // seed and values
    std::string_view criteria; // behind the bracket that opens their list

    // None for what does not look like the whole record of that number, "}" and a line end behind it. The line must
    // outlive the answer.
    static std::optional<RecordLine> Of(const std::string& line, std::uint64_t number);
};

// Fills in what the plan says of the record of a variant: number, seed and values.
void Complete(RunRecord& record, const Variant& variant, const Plan& plan);

// What a plan says of the records of its runs. It is frozen with a campaign, so that the record of another plan is
// known as such also where neither the plan nor its scenario is there.
class PlannedRecords {
public:
    PlannedRecords() = default;
    PlannedRecords(std::vector<std::string> idsOfValues, const std::vector<std::string>& criteria);

    // The next number, beyond all before.
    void Add(const RunRecord& planned);
    // Of all numbers, eight hexadecimal digits of each that tell its seed and values from others.
    const std::string& Marks() const { return marks; }
    // Takes the numbers and their marks as they were; false if there are not as many of one as of the other.
    bool Take(const std::vector<std::uint64_t>& ofNumbers, const std::string& frozenMarks);

    // What is not as the plan has it, as in "its criteria are not those of the plan"; empty if nothing is.
    std::string ComplaintOf(std::uint64_t number, const RecordLine& line) const;
    // A record that another hand wrote, as the line that it would be here.
    std::string LineOf(RunRecord record) const;

private:
    std::vector<std::string> ids;
    std::vector<std::string> criterionParts; // of a line, before it is told whether they hold
    std::vector<std::uint64_t> numbers;
    std::string marks;
};

} // namespace TavrelVariation

#endif
