// Constraints, and rows that cover all combinations which they allow.

#include <deque>
#include <set>

#include <gmock/gmock.h>
#include <variation/Constraint.h>
#include <variation/CoveringArray.h>
#include <variation/Refused.h>

namespace {

using namespace TavrelVariation;

// Three parameters: [A] and [A[1]] are numbers in km/h, [C] a text.
ConstrainedParameter Resolve(const std::string& name) {
    if (name == "A") return {0, true, lmk::UNIT_KM_H, lmk::UNIT_KM_H};
    if (name == "/a[id=1]/b") return {1, true, lmk::UNIT_KM_H, lmk::UNIT_M_S};
    if (name == "C") return {2, false, lmk::UNIT_NONE, lmk::UNIT_NONE};
    throw std::runtime_error("[" + name + "] is no parameter of the plan");
}

std::string Answer(const std::string& text, const char* a, const char* b, const char* c) {
    std::deque<std::string> texts;
    std::deque<Value> kept;
    std::vector<const Value*> values;
    for (const char* number : {a, b}) {
        if (number) kept.push_back({Decimal::Read(number), nullptr});
        values.push_back(number ? &kept.back() : nullptr);
    }
    if (c) {
        texts.emplace_back(c);
        kept.push_back({{}, &texts.back()});
    }
    values.push_back(c ? &kept.back() : nullptr);
    try {
        Truth truth = Truth::True;
        for (const Constraint& constraint : Constraint::Read(text, "constraints/0", Resolve))
            truth = std::min(truth, constraint.Of(values));
        return truth == Truth::True ? "true" : truth == Truth::False ? "false" : "open";
    } catch (const Refused& refused) {
        return refused.what();
    }
}

TEST(Constraint, IsReadWithItsBindingsAndAnswersAsFarAsValuesAreKnown) {
    const struct {
        const char* text;
        const char *a, *b, *c;
        const char* answer;
    } rows[] = {
        {"[A] = 1.0;", "1", "0", "", "true"},
        {"[A] <> 1 ;", "1", "0", "", "false"},
        {"NOT [A] = 1 AND [A] = 2;", "3", "0", "", "false"}, // NOT first: not the negation of both
        {"[A] = 1 OR [A] = 2 AND [C] = \"x\";", "1", "0", "y", "true"},
        {"([A] = 1 OR [A] = 2) AND [C] = \"x\";", "1", "0", "y", "false"},
        {"NOT NOT [A] >= 1;", "1", "0", "y", "true"},
        {"if [C] = \"x\" then [A] < 1 else [A] > 1;", "2", "0", "y", "true"},
        {"IF [C] = \"x\" THEN [A] < 1;", "2", "0", "y", "true"},
        {"IF [C] = \"x\" THEN [A] < 1;", "2", "0", nullptr, "open"},
        {"IF [C] = \"x\" THEN [A] < 1;", "0", "0", nullptr, "true"},
        {"[A] IN {1, 2.50, -3};", "2.5", "0", "y", "true"},
        {"[C] IN {\"a\", \"b\"};", "2.5", "0", "B", "false"},
        {"[C] LIKE \"a*b?d\";", "0", "0", "aXXbcbcd", "true"},
        {"[C] LIKE \"a*b?d\";", "0", "0", "abd", "false"},
        {"[C] LIKE \"?\";", "0", "0", "\xc3\xbc", "true"}, // one letter of two bytes
        {"[C] = \"say \\\"hi\\\" \\\\\";", "0", "0", "say \"hi\" \\", "true"},
        {"[A] <= [/a[id=1]/b];", "90", "90", "", "true"},
        {"[/a[id=1]/b] = 25;", "0", "90", "", "true"}, // m/s, as an assignment to the id would be
        {"[A] = 25 m/s;", "90", "0", "", "true"},
        {"[A] > 1; [A] < 3;", "3", "0", "", "false"},
        {"[A] > 1 OR [C] = \"x\";", "2", nullptr, nullptr, "true"},

        {"[A] = 1", "0", "0", "", "constraints/0: column 8: \";\" was expected, not the end"},
        {"", "0", "0", "", "constraints/0: column 1: a constraint is missing"},
        {"[B] = 1;", "0", "0", "", "constraints/0: column 1: [B] is no parameter of the plan"},
        {"[A] = \"x\";", "0", "0", "", "constraints/0: column 7: [A] is a number and is not compared with a text"},
        {"[C] = 1;", "0", "0", "",
         "constraints/0: column 7: [C] is a text and is not compared with a number; write it in quotes"},
        {"[C] = [A];", "0", "0", "",
         "constraints/0: column 7: [C] is a text and [A] is a number; they are not compared"},
        {"[C] = \"\xc3\xbc\" AND [A] = 1 kg;", "0", "0", "",
         "constraints/0: column 21: [A] is in km/h and is not compared with a number in kg"},
        {"[A] LIKE \"1*\";", "0", "0", "", "constraints/0: column 5: [A] is a number, and LIKE compares texts"},
        {"[A] = 1 AND;", "0", "0", "", "constraints/0: column 12: a name in brackets was expected, not \";\""},
        {"[A = 1;", "0", "0", "", "constraints/0: column 1: the bracket is not closed"},
        {"[C] = \"x;", "0", "0", "", "constraints/0: column 7: the text is not closed"},
        {"IF [A] = 1;", "0", "0", "", "constraints/0: column 11: THEN was expected, not \";\""},
        {"[A] == 1;", "0", "0", "",
         "constraints/0: column 6: a number, a text in quotes or a name in brackets was expected, not \"=\""},
    };
    for (const auto& row : rows) EXPECT_EQ(Answer(row.text, row.a, row.b, row.c), row.answer) << row.text;
    EXPECT_EQ(Answer(std::string(300, '(') + "[A] = 1" + std::string(300, ')') + ";", "1", "0", ""),
              "constraints/0: column 202: nested too deep");
}

// Which combinations stand in rows, and which rows of all there are obey the rules: by plain loops, without the
// library.
struct Counted {
    std::set<std::vector<int>> possible;
    std::set<std::vector<int>> covered;
};

void EachChoice(const std::vector<int>& row, int strength, std::set<std::vector<int>>& into) {
    std::vector<int> picked(row.size(), 0);
    std::fill(picked.begin(), picked.begin() + strength, 1);
    do {
        std::vector<int> combination(row.size(), -1);
        for (std::size_t i = 0; i < row.size(); ++i)
            if (picked[i]) combination[i] = row[i];
        into.insert(combination);
    } while (std::prev_permutation(picked.begin(), picked.end()));
}

Counted Count(const CoverProblem& problem, const std::vector<std::vector<int>>& rows) {
    Counted counted;
    std::vector<int> row(problem.levels.size(), 0);
    for (bool more = true; more;) {
        bool obeys = true;
        for (const CoverRule& rule : problem.rules) obeys = obeys && rule.holds(row) == Truth::True;
        if (obeys) EachChoice(row, problem.strength, counted.possible);
        more = false;
        for (std::size_t i = 0; i < row.size() && !more; ++i) {
            more = ++row[i] < problem.levels[i];
            if (!more) row[i] = 0;
        }
    }
    for (const auto& made : rows) EachChoice(made, problem.strength, counted.covered);
    return counted;
}

CoverRule NotBoth(std::size_t a, int levelA, std::size_t b, int levelB) {
    return {{std::min(a, b), std::max(a, b)}, [=](const std::vector<int>& row) {
                if (row[a] >= 0 && row[a] != levelA) return Truth::True;
                if (row[b] >= 0 && row[b] != levelB) return Truth::True;
                return row[a] < 0 || row[b] < 0 ? Truth::Unknown : Truth::False;
            }};
}

TEST(CoveringArray, CoversWhatTheRulesAllowAtEachStrength) {
    for (int strength = 1; strength <= 6; ++strength) {
        CoverProblem problem;
        problem.levels = {3, 2, 4, 2, 3, 2};
        problem.strength = strength;
        // 0 of the first leaves 1 of the second alone, which leaves 2 of the third out: so 0 and 2 never meet, although
        // no rule names both.
        problem.rules = {NotBoth(0, 0, 1, 0), NotBoth(1, 1, 2, 2), NotBoth(3, 0, 4, 2)};
        const auto rows = CoveringArray(problem);
        const Counted counted = Count(problem, rows);
        EXPECT_EQ(counted.covered, counted.possible) << strength; // all of the possible, and no row beside the rules
        EXPECT_EQ(rows, CoveringArray(problem));

        CoverageCounter counter(problem.levels, problem.rules, strength);
        for (std::size_t i = 1; i < rows.size(); ++i) counter.Add(rows[i]);
        const auto result = counter.Count(1000);
        EXPECT_EQ(result.possible, counted.possible.size());
        EXPECT_EQ(result.covered + result.missing.size(), result.possible);
        EXPECT_EQ(result.covered, Count(problem, {rows.begin() + 1, rows.end()}).covered.size());
    }
}

TEST(CoveringArray, TakesGivenRowsFirstAndFillsWhatTheyLeaveOpen) {
    CoverProblem problem;
    problem.levels = {3, 3, 3, 3};
    problem.rules = {NotBoth(0, 1, 1, 1)};
    problem.given = {{1, kOpenLevel, 2, kOpenLevel}, {kOtherLevel, 0, 0, 0}, {1, 1, 0, 0}};
    const auto rows = CoveringArray(problem);
    EXPECT_EQ(rows[0][0], 1);
    EXPECT_NE(rows[0][1], 1);
    EXPECT_EQ(rows[0][2], 2);
    EXPECT_EQ(rows[1], problem.given[1]);
    EXPECT_EQ(rows[2], problem.given[2]); // written out, so no rule forbids it
    CoverageCounter counter(problem.levels, problem.rules, 2);
    for (const auto& row : rows) counter.Add(row);
    EXPECT_EQ(counter.Count(1).covered, counter.Count(1).possible);
}

TEST(CoveringArray, AnswersRulesThatAllowNothingAndSizesBeyondReason) {
    CoverProblem problem;
    problem.levels = {2, 2};
    problem.rules = {NotBoth(0, 0, 1, 0), NotBoth(0, 0, 1, 1), NotBoth(0, 1, 1, 0), NotBoth(0, 1, 1, 1)};
    EXPECT_TRUE(CoveringArray(problem).empty());
    problem = {};
    problem.levels.assign(6, 1000);
    problem.strength = 6;
    EXPECT_THROW(CoveringArray(problem), CoverFailure);
}

TEST(CoveringArray, NeedsFewRows) {
    const struct {
        std::vector<std::pair<int, int>> levels; // how many levels, of how many factors
        std::size_t rows;
    } rows[] = {
        {{{3, 4}}, 9},    {{{3, 13}}, 16},   {{{4, 15}, {3, 17}, {2, 29}}, 30}, {{{4, 1}, {3, 39}, {2, 35}}, 22},
        {{{2, 100}}, 11}, {{{10, 20}}, 197},
    };
    for (const auto& row : rows) {
        CoverProblem problem;
        for (const auto& [levels, factors] : row.levels)
            problem.levels.insert(problem.levels.end(), static_cast<std::size_t>(factors), levels);
        const auto found = CoveringArray(problem);
        EXPECT_LE(found.size(), row.rows);
        CoverageCounter counter(problem.levels, {}, 2);
        for (const auto& made : found) counter.Add(made);
        EXPECT_EQ(counter.Count(1).missing.size(), 0u);
    }
}

} // namespace
