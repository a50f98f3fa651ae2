#include <variation/CoveringArray.h>

#include <algorithm>
#include <limits>
#include <numeric>

namespace TavrelVariation {

namespace {

using Row = std::vector<int>;
using Combination = std::vector<std::pair<std::size_t, int>>; // factors with levels, ascending

constexpr std::uint64_t kMostCombinations = 20000000;
constexpr double kMostGreedyWork = 3e9;        // look-ups of the first array
constexpr double kTrialWork = 3e7;             // look-ups that several trials for each row of it may take
constexpr std::uint64_t kStepsForEach = 20;    // steps of the search for each combination,
constexpr std::uint64_t kLeastSteps = 20000;   // with at least so many,
constexpr std::uint64_t kLookUps = 1500000000; // and no more look-ups than these, each for an effort of 1
constexpr std::uint64_t kForbidden = 2;        // steps for which a cell stays as it was set, up to twice as many

// Numbers for the search. It does not depend on the seed of the plan: the array is as good as its steps make it.
class Dice {
public:
    std::size_t Below(std::size_t end) {
        state += 0x9E3779B97F4A7C15u;
        std::uint64_t mixed = (state ^ (state >> 30)) * 0xBF58476D1CE4E5B9u;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
        return static_cast<std::size_t>(((mixed >> 32) * end) >> 32);
    }

private:
    std::uint64_t state = 1;
};

// What is missing, as a set from which one can be drawn.
class MissingSet {
public:
    void Resize(std::size_t size) { placeOf.assign(size, kNowhere); }
    void Insert(std::size_t combination) {
        placeOf[combination] = static_cast<std::uint32_t>(members.size());
        members.push_back(static_cast<std::uint32_t>(combination));
    }
    void Erase(std::size_t combination) {
        const std::uint32_t place = placeOf[combination], last = members.back();
        members[place] = last;
        placeOf[last] = place;
        placeOf[combination] = kNowhere;
        members.pop_back();
    }
    std::size_t Size() const { return members.size(); }
    std::size_t Draw(Dice& dice) const { return members[dice.Below(members.size())]; }

private:
    static constexpr std::uint32_t kNowhere = std::numeric_limits<std::uint32_t>::max();
    std::vector<std::uint32_t> members;
    std::vector<std::uint32_t> placeOf;
};

// How often each combination of two factors stands in the rows: a matrix over all levels of all factors, so that what a
// cell is worth is read from one line of it. Combinations that are not wanted, and those within a factor, have counts
// that never reach 0 or 1.
class PairTable {
public:
    PairTable(const std::vector<int>& levels, const RowCompleter& completer) {
        for (std::size_t factor = 0; factor < levels.size(); ++factor) {
            first.push_back(factorOf.size());
            factorOf.resize(factorOf.size() + static_cast<std::size_t>(levels[factor]), factor);
        }
        size = factorOf.size();
        counts.assign(size * size, kNeverMissing);
        missing.Resize(size * size);
        Row row(levels.size(), kOpenLevel);
        for (std::size_t a = 0; a < size; ++a)
            for (std::size_t b = a + 1; b < size; ++b) {
                if (factorOf[a] == factorOf[b]) continue;
                SetLevel(row, a);
                SetLevel(row, b);
                if (completer.CanComplete(row)) {
                    counts[a * size + b] = counts[b * size + a] = 0;
                    missing.Insert(a * size + b);
                    ++possible;
                }
                row[factorOf[a]] = row[factorOf[b]] = kOpenLevel;
            }
    }

    const MissingSet& Missing() const { return missing; }
    std::uint64_t Possible() const { return possible; }
    std::uint64_t WorkOfCell() const { return 2 * first.size(); }

    Combination Of(std::size_t combination) const {
        const std::size_t a = combination / size, b = combination % size;
        return {{factorOf[a], static_cast<int>(a - first[factorOf[a]])},
                {factorOf[b], static_cast<int>(b - first[factorOf[b]])}};
    }

    // How many are missing that the level in this factor brings into a row, of which cells may be open.
    int Gain(const Row& row, std::size_t factor, int level) const {
        const std::uint32_t* line = Line(factor, level);
        int gain = 0;
        for (std::size_t other = 0; other < row.size(); ++other)
            if (row[other] >= 0 && other != factor && line[Place(other, row[other])] == 0) ++gain;
        return gain;
    }

    // By how much a change of one cell of a full row changes the number of missing ones.
    int Change(const Row& row, std::size_t factor, int level) const {
        const std::uint32_t *before = Line(factor, row[factor]), *after = Line(factor, level);
        int change = 0;
        for (std::size_t other = 0; other < row.size(); ++other) {
            const std::size_t place = Place(other, row[other]);
            change += (before[place] == 1) - (after[place] == 0);
        }
        return change;
    }

    void Set(Row& row, std::size_t factor, int level) {
        for (std::size_t other = 0; other < row.size(); ++other) {
            if (other == factor) continue;
            Take(Place(factor, row[factor]), Place(other, row[other]));
            Give(Place(factor, level), Place(other, row[other]));
        }
        row[factor] = level;
    }

    void Add(const Row& row) {
        ForEach(row, [&](std::size_t a, std::size_t b) { Give(a, b); });
    }
    void Remove(const Row& row) {
        ForEach(row, [&](std::size_t a, std::size_t b) { Take(a, b); });
    }
    // How many stand in this row alone.
    std::uint64_t Alone(const Row& row) const {
        std::uint64_t alone = 0;
        ForEach(row, [&](std::size_t a, std::size_t b) { alone += counts[a * size + b] == 1; });
        return alone;
    }

private:
    static constexpr std::uint32_t kNeverMissing = 1u << 30;

    std::size_t Place(std::size_t factor, int level) const { return first[factor] + static_cast<std::size_t>(level); }
    const std::uint32_t* Line(std::size_t factor, int level) const { return &counts[Place(factor, level) * size]; }
    void SetLevel(Row& row, std::size_t place) const {
        row[factorOf[place]] = static_cast<int>(place - first[factorOf[place]]);
    }

    template <typename Visit>
    void ForEach(const Row& row, Visit visit) const {
        for (std::size_t a = 0; a < row.size(); ++a)
            for (std::size_t b = a + 1; b < row.size(); ++b)
                if (row[a] >= 0 && row[b] >= 0) visit(Place(a, row[a]), Place(b, row[b]));
    }

    void Give(std::size_t a, std::size_t b) {
        if (counts[a * size + b]++ == 0) missing.Erase(std::min(a, b) * size + std::max(a, b));
        ++counts[b * size + a];
    }
    void Take(std::size_t a, std::size_t b) {
        if (--counts[a * size + b] == 0) missing.Insert(std::min(a, b) * size + std::max(a, b));
        --counts[b * size + a];
    }

    std::size_t size = 0;
    std::vector<std::size_t> first;    // place of the first level of each factor
    std::vector<std::size_t> factorOf; // by place
    std::vector<std::uint32_t> counts;
    MissingSet missing;
    std::uint64_t possible = 0;
};

// The same for any number of factors: one counter for each combination, those of a choice of factors in a row.
class TupleTable {
public:
    TupleTable(const std::vector<int>& itsLevels, std::size_t itsStrength, const RowCompleter& completer)
        : levels(itsLevels), strength(itsStrength), choicesOf(itsLevels.size()) {
        std::vector<std::size_t> choice(strength);
        std::iota(choice.begin(), choice.end(), std::size_t{0});
        for (bool more = true; more;) {
            Choice made;
            made.factors = choice;
            made.start = counts.size();
            std::size_t size = 1;
            made.strides.resize(strength);
            for (std::size_t i = strength; i-- > 0;) {
                made.strides[i] = size;
                size *= static_cast<std::size_t>(levels[choice[i]]);
            }
            counts.resize(counts.size() + size, 0);
            for (const std::size_t factor : choice) choicesOf[factor].push_back(choices.size());
            choices.push_back(std::move(made));
            std::size_t last = strength;
            while (last > 0 && choice[last - 1] == levels.size() - strength + last - 1) --last;
            more = last > 0;
            if (!more) break;
            ++choice[last - 1];
            for (std::size_t i = last; i < strength; ++i) choice[i] = choice[i - 1] + 1;
        }
        missing.Resize(counts.size());
        Row row(levels.size(), kOpenLevel);
        for (std::size_t combination = 0; combination < counts.size(); ++combination) {
            const Combination cells = Of(combination);
            for (const auto& [factor, level] : cells) row[factor] = level;
            if (completer.CanComplete(row)) {
                missing.Insert(combination);
                ++possible;
            } else {
                counts[combination] = kNeverMissing;
            }
            for (const auto& [factor, level] : cells) row[factor] = kOpenLevel;
        }
    }

    const MissingSet& Missing() const { return missing; }
    std::uint64_t Possible() const { return possible; }
    std::uint64_t WorkOfCell() const { return 2 * strength * choicesOf[0].size(); }

    Combination Of(std::size_t combination) const {
        const auto choice = std::upper_bound(choices.begin(), choices.end(), combination,
                                             [](std::size_t wanted, const Choice& of) { return wanted < of.start; }) -
                            1;
        Combination cells;
        for (std::size_t i = 0; i < strength; ++i) {
            const std::size_t factor = choice->factors[i];
            const std::size_t level =
                (combination - choice->start) / choice->strides[i] % static_cast<std::size_t>(levels[factor]);
            cells.emplace_back(factor, static_cast<int>(level));
        }
        return cells;
    }

    int Gain(const Row& row, std::size_t factor, int level) const {
        int gain = 0;
        for (const std::size_t c : choicesOf[factor]) {
            const std::size_t place = Place(choices[c], row, factor, level);
            if (place != kNoPlace && counts[place] == 0) ++gain;
        }
        return gain;
    }

    int Change(const Row& row, std::size_t factor, int level) const {
        int change = 0;
        for (const std::size_t c : choicesOf[factor])
            change += (counts[Place(choices[c], row, factor, row[factor])] == 1) -
                      (counts[Place(choices[c], row, factor, level)] == 0);
        return change;
    }

    void Set(Row& row, std::size_t factor, int level) {
        for (const std::size_t c : choicesOf[factor]) {
            Take(Place(choices[c], row, factor, row[factor]));
            Give(Place(choices[c], row, factor, level));
        }
        row[factor] = level;
    }

    void Add(const Row& row) {
        ForEach(row, [&](std::size_t place) { Give(place); });
    }
    void Remove(const Row& row) {
        ForEach(row, [&](std::size_t place) { Take(place); });
    }
    std::uint64_t Alone(const Row& row) const {
        std::uint64_t alone = 0;
        ForEach(row, [&](std::size_t place) { alone += counts[place] == 1; });
        return alone;
    }

private:
    static constexpr std::uint32_t kNeverMissing = 1u << 30;
    static constexpr std::size_t kNoPlace = std::numeric_limits<std::size_t>::max();

    struct Choice {
        std::vector<std::size_t> factors;
        std::vector<std::size_t> strides;
        std::size_t start = 0;
    };

    // Of the combination that the row has, with another level in one factor; none if a cell is open.
    std::size_t Place(const Choice& choice, const Row& row, std::size_t changed, int level) const {
        std::size_t place = choice.start;
        for (std::size_t i = 0; i < strength; ++i) {
            const int of = choice.factors[i] == changed ? level : row[choice.factors[i]];
            if (of < 0) return kNoPlace;
            place += static_cast<std::size_t>(of) * choice.strides[i];
        }
        return place;
    }

    template <typename Visit>
    void ForEach(const Row& row, Visit visit) const {
        for (const Choice& choice : choices) {
            const std::size_t place = Place(choice, row, levels.size(), 0);
            if (place != kNoPlace) visit(place);
        }
    }

    void Give(std::size_t place) {
        if (counts[place]++ == 0) missing.Erase(place);
    }
    void Take(std::size_t place) {
        if (--counts[place] == 0) missing.Insert(place);
    }

    const std::vector<int>& levels;
    std::size_t strength;
    std::vector<Choice> choices;
    std::vector<std::vector<std::size_t>> choicesOf; // by factor
    std::vector<std::uint32_t> counts;
    MissingSet missing;
    std::uint64_t possible = 0;
};

template <typename Table>
class Search {
public:
    Search(const CoverProblem& itsProblem, const RowCompleter& itsCompleter, Table& itsTable, std::uint64_t leastRows)
        : problem(itsProblem), completer(itsCompleter), table(itsTable), least(leastRows) {}

    std::vector<Row> Run() {
        std::vector<Row> given = problem.given;
        for (Row& row : given) {
            Fill(row);
            table.Add(row);
        }
        while (table.Missing().Size() > 0) {
            rows.push_back(GreedyRow());
            table.Add(rows.back());
        }
        std::vector<Row> best = rows;
        const std::uint64_t effort = static_cast<std::uint64_t>(problem.effort);
        stepsLeft = effort * (kLeastSteps + kStepsForEach * table.Possible());
        workLeft = effort * kLookUps;
        while (rows.size() > 1 && given.size() + rows.size() > least) {
            DropRow();
            if (!Mend()) break;
            best = rows;
        }
        std::sort(best.begin(), best.end());
        given.insert(given.end(), best.begin(), best.end());
        return given;
    }

private:
    // Chooses the open cells so that each brings in most, within the rules if the row is.
    void Fill(Row& row) {
        const bool obeys = completer.CanComplete(row);
        std::vector<std::size_t> order;
        for (std::size_t factor = 0; factor < row.size(); ++factor)
            if (row[factor] == kOpenLevel) order.push_back(factor);
        for (std::size_t i = order.size(); i > 1; --i) std::swap(order[i - 1], order[dice.Below(i)]);
        for (const std::size_t factor : order) FillCell(row, factor, obeys && completer.IsRuled(factor));
    }

    void FillCell(Row& row, std::size_t factor, bool ruled) {
        candidates.clear();
        for (int level = 0; level < problem.levels[factor]; ++level)
            candidates.push_back({-table.Gain(row, factor, level), dice.Below(1u << 20), level});
        if (!ruled) {
            row[factor] = std::min_element(candidates.begin(), candidates.end())->level;
            return;
        }
        std::sort(candidates.begin(), candidates.end());
        for (const Candidate& candidate : candidates) {
            row[factor] = candidate.level;
            if (completer.CanComplete(row)) return;
        }
    }

    Row GreedyRow() {
        double work = 0;
        for (const int count : problem.levels) work += count;
        work *= static_cast<double>(table.WorkOfCell()) * static_cast<double>(std::max<std::uint64_t>(least, 1));
        const int trials = static_cast<int>(std::clamp(kTrialWork / work, 1.0, 20.0));
        Row best;
        std::uint64_t most = 0;
        for (int trial = 0; trial < trials; ++trial) {
            Row row(problem.levels.size(), kOpenLevel);
            for (const auto& [factor, level] : table.Of(table.Missing().Draw(dice))) row[factor] = level;
            Fill(row);
            table.Add(row);
            const std::uint64_t brings = table.Alone(row);
            table.Remove(row);
            if (best.empty() || brings > most) {
                best = row;
                most = brings;
            }
        }
        return best;
    }

    // Takes the row away that the fewest combinations have to themselves.
    void DropRow() {
        std::size_t dropped = 0;
        std::uint64_t fewest = std::numeric_limits<std::uint64_t>::max();
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const std::uint64_t alone = table.Alone(rows[i]);
            if (alone >= fewest) continue;
            fewest = alone;
            dropped = i;
        }
        table.Remove(rows[dropped]);
        rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(dropped));
    }

    // Changes cells until nothing is missing; false when the steps are used up. Each step takes a missing combination
    // and, of the rows that have all of it but one cell, changes the one that is best afterwards, other than those
    // changed just before.
    bool Mend() {
        const std::size_t width = problem.levels.size();
        std::vector<std::uint64_t> freeFrom(rows.size() * width, 0);
        std::size_t lowest = table.Missing().Size();
        for (std::uint64_t step = 1; table.Missing().Size() > 0; ++step) {
            if (stepsLeft == 0 || workLeft == 0) return false;
            --stepsLeft;
            const Combination wanted = table.Of(table.Missing().Draw(dice));
            int bestChange = std::numeric_limits<int>::max();
            std::size_t bestRow = 0, bestFactor = 0, alike = 0;
            int bestLevel = 0;
            for (std::size_t i = 0; i < rows.size(); ++i) {
                Row& row = rows[i];
                std::size_t apart = 0, factor = 0;
                int level = 0;
                for (const auto& [wantedFactor, wantedLevel] : wanted) {
                    if (row[wantedFactor] == wantedLevel) continue;
                    factor = wantedFactor;
                    level = wantedLevel;
                    if (++apart > 1) break;
                }
                if (apart != 1) continue;
                Spend(table.WorkOfCell());
                const int change = table.Change(row, factor, level);
                if (change > bestChange) continue;
                const bool reachesNew =
                    static_cast<std::int64_t>(table.Missing().Size()) + change < static_cast<std::int64_t>(lowest);
                if (freeFrom[i * width + factor] > step && !reachesNew) continue;
                if (completer.IsRuled(factor) && !Allows(row, factor, level)) continue;
                alike = change < bestChange ? 1 : alike + 1;
                if (alike > 1 && dice.Below(alike) != 0) continue;
                bestChange = change;
                bestRow = i;
                bestFactor = factor;
                bestLevel = level;
            }
            if (alike > 0) {
                Spend(2 * table.WorkOfCell());
                table.Set(rows[bestRow], bestFactor, bestLevel);
                freeFrom[bestRow * width + bestFactor] = step + kForbidden + dice.Below(kForbidden);
            } else {
                Rewrite(dice.Below(rows.size()), wanted, step, freeFrom);
            }
            lowest = std::min(lowest, table.Missing().Size());
        }
        return true;
    }

    bool Allows(Row& row, std::size_t factor, int level) {
        Spend(kWorkOfRule);
        const int before = row[factor];
        row[factor] = level;
        const bool allows = completer.Obeys(row, factor);
        row[factor] = before;
        return allows;
    }

    // Puts a combination into a row and changes what else the rules then ask for.
    void Rewrite(std::size_t index, const Combination& wanted, std::uint64_t step,
                 std::vector<std::uint64_t>& freeFrom) {
        Row row(problem.levels.size(), kOpenLevel);
        for (const auto& [factor, level] : wanted) row[factor] = level;
        completer.Complete(row, rows[index]);
        for (std::size_t factor = 0; factor < row.size(); ++factor) {
            Spend(kWorkOfRule);
            if (row[factor] == kOpenLevel || row[factor] == rows[index][factor]) continue;
            Spend(2 * table.WorkOfCell());
            table.Set(rows[index], factor, row[factor]);
            freeFrom[index * row.size() + factor] = step + kForbidden + dice.Below(kForbidden);
        }
    }

    void Spend(std::uint64_t work) { workLeft -= std::min(work, workLeft); }

    struct Candidate {
        int loss; // less is better; then what the dice say
        std::size_t lot;
        int level;
        bool operator<(const Candidate& other) const {
            return loss != other.loss ? loss < other.loss : lot != other.lot ? lot < other.lot : level < other.level;
        }
    };
    static constexpr std::uint64_t kWorkOfRule = 100;

    const CoverProblem& problem;
    const RowCompleter& completer;
    Table& table;
    std::uint64_t least;
    Dice dice;
    std::vector<Row> rows;
    std::vector<Candidate> candidates;
    std::uint64_t stepsLeft = 0;
    std::uint64_t workLeft = 0;
};

// No array can have fewer rows: of the factors with most levels each combination needs a row of its own, if no rule
// says otherwise; and of pairs, n rows tell at most C(n - 1, n / 2 - 1) factors apart (G. O. H. Katona, "Two
// applications of Sperner type theorems", 1973; D. J. Kleitman, J. Spencer, "Families of k-independent sets", 1973).
std::uint64_t LeastRows(const CoverProblem& problem, const RowCompleter& completer) {
    std::vector<std::uint64_t> counts;
    std::uint64_t several = 0;
    for (std::size_t factor = 0; factor < problem.levels.size(); ++factor) {
        if (completer.IsRuled(factor)) continue;
        counts.push_back(static_cast<std::uint64_t>(problem.levels[factor]));
        several += problem.levels[factor] > 1;
    }
    std::sort(counts.rbegin(), counts.rend());
    std::uint64_t least = 1;
    for (std::size_t i = 0; i < counts.size() && i < static_cast<std::size_t>(problem.strength); ++i)
        least *= std::min<std::uint64_t>(counts[i], kMostCombinations);
    if (problem.strength < 2 || several < 2) return least;
    std::uint64_t rows = 4;
    const auto apart = [](std::uint64_t n) {
        std::uint64_t chosen = 1;
        const std::uint64_t from = n - 1, size = n / 2 - 1;
        for (std::uint64_t i = 1; i <= size; ++i) chosen = chosen * (from - size + i) / i;
        return chosen;
    };
    while (apart(rows) < several) ++rows;
    return std::max(least, rows);
}

void CheckSize(const CoverProblem& problem) {
    // The elementary symmetric sum of the numbers of levels is the number of combinations.
    const auto strength = static_cast<std::size_t>(problem.strength);
    std::vector<double> sums(strength + 1, 0.0);
    sums[0] = 1;
    double all = 0;
    for (const int count : problem.levels) {
        all += count;
        for (std::size_t i = strength; i > 0; --i) sums[i] += sums[i - 1] * count;
    }
    const auto refuse = [&] {
        throw CoverFailure("has too many combinations of " + std::to_string(strength) +
                           " parameters to cover; take fewer values or a lower strength");
    };
    if (sums[strength] > static_cast<double>(kMostCombinations)) refuse();
    if (problem.strength == 2 && all * all > 4.0 * static_cast<double>(kMostCombinations)) refuse();
    std::vector<int> counts = problem.levels;
    std::sort(counts.rbegin(), counts.rend());
    double rows = 1, choices = 1;
    for (std::size_t i = 0; i < strength; ++i) rows *= counts[i];
    for (std::size_t i = 1; i < strength; ++i)
        choices *= static_cast<double>(problem.levels.size() - i) / static_cast<double>(i);
    if (rows * all * choices * static_cast<double>(strength) > kMostGreedyWork) refuse();
}

} // namespace

std::vector<std::vector<int>> CoveringArray(const CoverProblem& problem) {
    CheckSize(problem);
    const RowCompleter completer(problem.levels, problem.rules);
    const std::uint64_t least = LeastRows(problem, completer);
    if (problem.strength == 2) {
        PairTable table(problem.levels, completer);
        return Search<PairTable>(problem, completer, table, least).Run();
    }
    TupleTable table(problem.levels, static_cast<std::size_t>(problem.strength), completer);
    return Search<TupleTable>(problem, completer, table, least).Run();
}

} // namespace TavrelVariation
