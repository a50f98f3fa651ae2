#ifndef TAVREL_VARIATION_COVERINGARRAY_H
#define TAVREL_VARIATION_COVERINGARRAY_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

#include <variation/Constraint.h>
#include <variation/Export.h>

namespace TavrelVariation {

// In a row: the level of the factor is open, or is a value that is none of its levels.
constexpr int kOpenLevel = -1;
constexpr int kOtherLevel = -2;

// A condition on rows: on those `factors`, ascending. `holds` answers for a row in which levels may be open.
struct TAVREL_VARIATION_API CoverRule {
    std::vector<std::size_t> factors;
    std::function<Truth(const std::vector<int>& row)> holds;
};

// What a covering array is asked for.
struct TAVREL_VARIATION_API CoverProblem {
    std::vector<int> levels; // how many levels each factor has, at least 1
    int strength = 2;        // 1 to 6 and at most as many as there are factors
    int effort = 1;          // how long the search goes on; a number of steps, so that it is the same on every machine
    std::vector<CoverRule> rules;
    std::vector<std::vector<int>> given; // rows that are taken first, with open and other levels
};

// Why no array was made: too many combinations, or rules that cannot be decided in a bounded number of steps.
class TAVREL_VARIATION_API CoverFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Says whether rows that obey all rules exist, by going back where a choice fails. The number of steps of one question
// is bounded; beyond it CoverFailure is thrown.
class TAVREL_VARIATION_API RowCompleter {
public:
    // Both stay with the caller and must live as long.
    RowCompleter(const std::vector<int>& levels, const std::vector<CoverRule>& rules);
    ~RowCompleter();
    RowCompleter(const RowCompleter&) = delete;
    RowCompleter& operator=(const RowCompleter&) = delete;

    // Whether the open levels of `row` can be chosen so that no rule is broken.
    bool CanComplete(const std::vector<int>& row) const;
    // Chooses the open levels of all factors that rules name, the level of `wanted` first; false, with `row` as it was,
    // if none fit. Factors that no rule names stay open.
    bool Complete(std::vector<int>& row, const std::vector<int>& wanted) const;
    // Whether no rule on the factor is broken by a row, in which levels may be open.
    bool Obeys(const std::vector<int>& row, std::size_t factor) const;
    // Whether some rule names the factor.
    bool IsRuled(std::size_t factor) const { return groupOf[factor] != kNoGroup; }

private:
    static constexpr std::size_t kNoGroup = static_cast<std::size_t>(-1);
    // Factors that rules join, and these rules. What is chosen in one group bears on no other.
    struct Group {
        std::vector<std::size_t> factors;
        std::vector<std::size_t> rules;
    };

    bool CompleteGroup(const Group& group, std::vector<int>& row, const std::vector<int>& wanted) const;
    bool Choose(const Group& group, std::size_t position, std::vector<int>& row, const std::vector<int>& wanted,
                std::uint64_t& steps) const;
    bool IsBroken(std::size_t factor, const std::vector<int>& row) const;

    const std::vector<int>& levels;
    const std::vector<CoverRule>& rules;
    std::vector<Group> groups;
    std::vector<std::size_t> groupOf;              // by factor
    std::vector<std::vector<std::size_t>> rulesOf; // by factor
    struct Answers;
    std::unique_ptr<Answers> answers; // given before
};

// Rows in which every combination of levels of every `strength` factors that the rules allow stands at least once: the
// given ones, completed with what covers most, then others in ascending order, as few as the search finds. The search
// starts from a greedy array and takes row after row away, each time mending what is then missing one cell at a time:
// tabu search over the rows next to a missing combination (K. J. Nurmela, "Upper bounds for covering arrays by tabu
// search", Discrete Applied Mathematics 138, 2004). The same problem gives the same rows everywhere. Throws
// CoverFailure; no row at all means that the rules allow none.
TAVREL_VARIATION_API std::vector<std::vector<int>> CoveringArray(const CoverProblem& problem);

// Counts by itself which combinations stand in rows.
class TAVREL_VARIATION_API CoverageCounter {
public:
    // Throws CoverFailure for too many combinations.
    CoverageCounter(const std::vector<int>& levels, const std::vector<CoverRule>& rules, int strength);

    // Counts what the row has; levels that are open or other belong to no combination.
    void Add(const std::vector<int>& row);

    struct Result {
        std::uint64_t possible = 0;            // that the rules allow
        std::uint64_t covered = 0;             // of these
        std::vector<std::vector<int>> missing; // the first ones, as rows with open levels
    };
    Result Count(std::size_t mostMissing) const;

private:
    std::vector<int> levels;
    std::vector<CoverRule> rules;
    std::size_t strength;
    std::vector<std::vector<std::size_t>> choices; // of factors
    std::vector<std::vector<bool>> seen;           // by choice; a combination's place as a number with mixed bases
};

} // namespace TavrelVariation

#endif
