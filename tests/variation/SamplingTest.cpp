// Random bits, quantiles and point sets.

#include <cmath>
#include <set>

#include <gmock/gmock.h>
#include <variation/Distribution.h>
#include <variation/Philox.h>
#include <variation/Sobol.h>

namespace {

using namespace TavrelVariation;

// The vectors that the authors of the generator publish with it.
TEST(Philox, GivesThePublishedAnswers) {
    using Four = std::array<std::uint32_t, 4>;
    EXPECT_EQ(Philox({0, 0, 0, 0}, {0, 0}), (Four{0x6627e8d5, 0xe169c58d, 0xbc57ac4c, 0x9b00dbd8}));
    const std::uint32_t ones = 0xffffffff;
    EXPECT_EQ(Philox({ones, ones, ones, ones}, {ones, ones}), (Four{0x408f276d, 0x41c83b0e, 0xa20bc7c6, 0x6d5451fd}));
    EXPECT_EQ(Philox({0x243f6a88, 0x85a308d3, 0x13198a2e, 0x03707344}, {0xa4093822, 0x299f31d0}),
              (Four{0xd16cfe09, 0x94fdcceb, 0x5001e420, 0x24126ea1}));
}

TEST(Philox, UnitNumbersStayBetweenTheEnds) {
    EXPECT_EQ(UnitNumber(0), std::ldexp(1.0, -53));
    EXPECT_EQ(UnitNumber(~std::uint64_t{0}), 1 - std::ldexp(1.0, -53));
    EXPECT_EQ(StreamOf(""), 0xcbf29ce484222325u);
    EXPECT_EQ(StreamOf("a"), 0xaf63dc4c8601ec8cu);
}

TEST(Permutation, HitsEachElementOnceAtAnySize) {
    for (const std::uint64_t size : {1u, 2u, 3u, 5u, 16u, 17u, 1000u}) {
        const Permutation permutation(size, 42);
        std::set<std::uint64_t> hit;
        for (std::uint64_t i = 0; i < size; ++i) hit.insert(permutation(i));
        EXPECT_EQ(hit.size(), size);
        EXPECT_LT(*hit.rbegin(), size);
    }
    const Permutation large(std::uint64_t{1} << 53, 7);
    EXPECT_NE(large(1), large(2));
}

// The first points and one far out, as another implementation of the same direction numbers gives them.
TEST(Sobol, KeepsTheZeroPointAndTheirDirectionNumbers) {
    const Sobol points(1000);
    const double expected[][5] = {{0, 0, 0, 0, 0},
                                  {0.5, 0.5, 0.5, 0.5, 0.5},
                                  {0.75, 0.25, 0.25, 0.25, 0.75},
                                  {0.25, 0.75, 0.75, 0.75, 0.25},
                                  {0.375, 0.375, 0.625, 0.875, 0.375}};
    for (std::size_t n = 0; n < 5; ++n)
        for (std::size_t d = 0; d < 5; ++d)
            EXPECT_EQ(std::ldexp(static_cast<double>(points.Coordinate(n, d)), -64), expected[n][d]) << n << ' ' << d;
    EXPECT_EQ(std::ldexp(static_cast<double>(points.Coordinate(77, 0)), -64), 0.8359375);
    EXPECT_THROW(Sobol(Sobol::MaximumDimensions() + 1), std::invalid_argument);
}

TEST(Sobol, StaysANetWhenScrambled) {
    // Each of 2^a x 2^b boxes of a pair of the first dimensions holds one of 2^(a+b) points, whatever the scrambling.
    const Sobol points(2);
    for (const std::uint64_t key : {1u, 99u})
        for (int a = 0; a <= 8; ++a) {
            std::set<std::pair<std::uint64_t, std::uint64_t>> boxes;
            for (std::uint64_t n = 0; n < 256; ++n) {
                const std::uint64_t x = OwenScrambled(points.Coordinate(n, 0), key);
                const std::uint64_t y = OwenScrambled(points.Coordinate(n, 1), key + 1);
                boxes.insert({a == 0 ? 0 : x >> (64 - a), a == 8 ? 0 : y >> (64 - (8 - a))});
            }
            EXPECT_EQ(boxes.size(), 256u) << key << ' ' << a;
        }
    EXPECT_NE(OwenScrambled(0, 1), OwenScrambled(0, 2));
}

NumberDomain Domain(const std::vector<std::pair<const char*, const char*>>& ranges, bool whole, int decimals) {
    std::vector<NumberRange> read;
    for (const auto& [minimum, maximum] : ranges) read.push_back({Decimal::Read(minimum), Decimal::Read(maximum)});
    return NumberDomain(read, whole, decimals);
}

std::string At(const NumberDomain& domain, const NumberQuantile& quantile, double u) {
    return domain.At(quantile.At(u)).Text();
}

// Quantiles of the truncated distributions as scipy.stats gives them.
TEST(NumberQuantile, IsThatOfTheTruncatedDistribution) {
    const NumberDomain narrow = Domain({{"60", "90"}}, false, 6);
    Distribution normal;
    normal.kind = DistributionKind::Normal;
    normal.expectedValue = 80;
    normal.variance = 100;
    const NumberQuantile cut(narrow, normal);
    EXPECT_EQ(At(narrow, cut, 0.1), "67.442846");
    EXPECT_EQ(At(narrow, cut, 0.5), "78.288361");
    EXPECT_EQ(At(narrow, cut, 0.9), "87.046478");

    // Thirty deviations out, where what lies above and below can no longer be told from one.
    const NumberDomain far = Domain({{"380", "400"}}, false, 6);
    EXPECT_EQ(At(far, NumberQuantile(far, normal), 0.5), "380.230705");

    const NumberDomain union2 = Domain({{"0", "1"}, {"10", "13"}}, false, 3);
    const NumberQuantile uniform(union2, {});
    EXPECT_EQ(At(union2, uniform, 0.125), "0.5");
    EXPECT_EQ(At(union2, uniform, 0.5), "11");
    const NumberDomain whole = Domain({{"0", "1"}, {"10", "17"}}, true, 0);
    const NumberQuantile byCount(whole, {});
    EXPECT_EQ(At(whole, byCount, 0.1999), "1");
    EXPECT_EQ(At(whole, byCount, 0.2), "10");
    EXPECT_EQ(At(whole, byCount, 0.99999), "17");

    Distribution poisson;
    poisson.kind = DistributionKind::Poisson;
    poisson.expectedValue = 4;
    const NumberDomain counts = Domain({{"2", "3"}, {"6", "20"}}, true, 0);
    const NumberQuantile rare(counts, poisson);
    EXPECT_EQ(At(counts, rare, 0.25), "2");
    EXPECT_EQ(At(counts, rare, 0.60), "3");
    EXPECT_EQ(At(counts, rare, 0.70), "6");

    Distribution histogram;
    histogram.kind = DistributionKind::Histogram;
    histogram.bins = {{{Decimal::Read("10"), Decimal::Read("20")}, 1}, {{Decimal::Read("0"), Decimal::Read("10")}, 3}};
    const NumberDomain half = Domain({{"5", "20"}}, false, 3);
    EXPECT_EQ(At(half, NumberQuantile(half, histogram), 0.3), "7.5");
    EXPECT_EQ(At(half, NumberQuantile(half, histogram), 0.8), "15");

    EXPECT_THROW(NumberQuantile(Domain({{"30", "40"}}, false, 0), histogram), std::invalid_argument);
    normal.variance = 0;
    EXPECT_THROW(NumberQuantile(narrow, normal), std::invalid_argument);
}

} // namespace
