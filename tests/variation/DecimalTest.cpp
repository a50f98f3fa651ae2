// Decimal numbers, and the values that ranges give.

#include <variation/Decimal.h>

#include <gmock/gmock.h>
#include <variation/Domain.h>

namespace {

using namespace TavrelVariation;
using testing::ElementsAre;

std::string ReadAndTell(const std::string& text) {
    try {
        return Decimal::Read(text).Text();
    } catch (const NoDecimal& refused) {
        return refused.what();
    }
}

TEST(Decimal, IsReadWithoutRoundingOrRefused) {
    const struct {
        const char* text;
        const char* told;
    } rows[] = {
        {"0.30", "0.3"},
        {"-0.0", "0"},
        {"+12", "12"},
        {"1e3", "1000"},
        {"12.5e-3", "0.0125"},
        {"1E+2", "100"},
        {".5", "0.5"},
        {"5.", "5"},
        {"9223372036854775807", "9223372036854775807"},
        {"9223372036854775808", "\"9223372036854775808\" has more digits than can be kept, 18"},
        {"1e19", "\"1e19\" has more digits than can be kept, 18"},
        {"0e99", "0"},
        {"1e-40", "0.0000000000000000000000000000000000000001"},
        {"1e-41", "\"1e-41\" has more digits than can be kept, 18"},
        {"", "\"\" is no decimal number"},
        {"-", "\"-\" is no decimal number"},
        {"1,5", "\"1,5\" is no decimal number"},
        {"0x10", "\"0x10\" is no decimal number"},
        {"1e", "\"1e\" is no decimal number"},
        {"1e+-5", "\"1e+-5\" is no decimal number"},
        {" 1", "\" 1\" is no decimal number"},
        {"nan", "\"nan\" is no decimal number"},
    };
    for (const auto& row : rows) EXPECT_EQ(ReadAndTell(row.text), row.told) << row.text;
}

TEST(Decimal, RoundsHalfAwayFromZeroAndComparesByValue) {
    EXPECT_EQ(Decimal::Read("2.5").WithDecimals(0).Text(), "3");
    EXPECT_EQ(Decimal::Read("-2.5").WithDecimals(0).Text(), "-3");
    EXPECT_EQ(Decimal::Read("-2.49").WithDecimals(1).Text(), "-2.5");
    EXPECT_EQ(Compare(Decimal::Read("0.50"), Decimal::Read("0.5")), 0);
    EXPECT_LT(Compare(Decimal::Read("-9e18"), Decimal::Read("1e-40")), 0);
    EXPECT_GT(Compare(Decimal::Read("9e18"), Decimal::Read("1e-40")), 0);
    EXPECT_LT(Compare(Decimal::Read("0.09"), Decimal::Read("0.1")), 0);
    EXPECT_EQ(Decimal::Shortest(0.1).Text(), "0.1");
}

std::vector<std::string> Texts(const NumberDomain& domain, const std::vector<std::int64_t>& values) {
    std::vector<std::string> texts;
    for (const std::int64_t value : values) texts.push_back(domain.At(value).Text());
    return texts;
}

NumberDomain Domain(const std::vector<std::pair<const char*, const char*>>& ranges, bool whole, int decimals) {
    std::vector<NumberRange> read;
    for (const auto& [minimum, maximum] : ranges) read.push_back({Decimal::Read(minimum), Decimal::Read(maximum)});
    return NumberDomain(read, whole, decimals);
}

TEST(NumberDomain, JoinsWhatOverlapsOrTouches) {
    EXPECT_EQ(Domain({{"5", "9"}, {"0", "4"}}, true, 0).Text(), "0 to 9");
    EXPECT_EQ(Domain({{"5", "9"}, {"0", "4"}}, false, 0).Text(), "0 to 4 or 5 to 9");
    EXPECT_EQ(Domain({{"1", "2"}, {"0", "5"}, {"5", "6"}}, false, 1).Text(), "0 to 6");
    EXPECT_THROW(Domain({{"5", "4"}}, false, 0), std::invalid_argument);
}

TEST(NumberDomain, StepsSpacesAndTakesTheEndsWithoutDoubles) {
    const NumberDomain tenth = Domain({{"0", "1"}}, false, 2);
    const auto steps = Texts(tenth, tenth.Steps(5));
    ASSERT_EQ(steps.size(), 21u);
    EXPECT_EQ(steps[6], "0.3");

    const NumberDomain gap = Domain({{"60", "90"}, {"100", "120"}}, false, 0);
    EXPECT_THAT(Texts(gap, gap.Steps(25)), ElementsAre("60", "85", "100"));
    EXPECT_THAT(Texts(gap, gap.Spaced(4)), ElementsAre("60", "80", "100", "120"));
    EXPECT_THAT(Texts(gap, gap.Spaced(13)), // 95 lies between both ends: the lower
                ElementsAre("60", "65", "70", "75", "80", "85", "90", "100", "105", "110", "115", "120"));
    EXPECT_THAT(Texts(gap, gap.Spaced(1)), ElementsAre("90"));
    const NumberDomain below = Domain({{"-3", "0"}}, true, 0);
    EXPECT_THAT(Texts(below, below.Spaced(1)), ElementsAre("-2"));
    EXPECT_THAT(Texts(below, below.Spaced(3)), ElementsAre("-3", "-2", "0"));

    const NumberDomain mixed = Domain({{"0", "10"}, {"20", "20"}, {"30", "31"}}, true, 0);
    EXPECT_THAT(Texts(mixed, mixed.Boundary(1)), ElementsAre("0", "1", "9", "10", "20", "30", "31"));
    EXPECT_THAT(Texts(mixed, mixed.Boundary(7)), ElementsAre("0", "7", "3", "10", "20", "30", "31"));
    EXPECT_THROW(Domain({{"0", "1e9"}}, true, 0).All(), std::length_error);
}

} // namespace
