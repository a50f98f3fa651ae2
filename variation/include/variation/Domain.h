#ifndef TAVREL_VARIATION_DOMAIN_H
#define TAVREL_VARIATION_DOMAIN_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <variation/Decimal.h>
#include <variation/Export.h>

namespace TavrelVariation {

// A list of values never grows beyond this; what would is refused.
constexpr std::size_t kMostValues = 1000000;

// From `minimum` to `maximum`, both included.
struct TAVREL_VARIATION_API NumberRange {
    Decimal minimum;
    Decimal maximum;
};

// The numbers that a parameter may have: a union of ranges in ascending order that neither overlap nor touch, all ends
// in units of 10^-Decimals(). Whole numbers are such ranges with no decimals, of which neighbours (0 to 4, 5 to 9) are
// one. Values are in those units, too. All operations but the maker leave the object as it is.
class TAVREL_VARIATION_API NumberDomain {
public:
    struct Range {
        std::int64_t minimum;
        std::int64_t maximum;
    };

    // Joins `ranges`. `whole` tells that only whole numbers are meant; their ends must be whole. Fails with NoDecimal
    // for ends that do not fit into 18 digits at the `decimals` asked for (more are taken where the ends have more),
    // and with std::invalid_argument, whose text names them, for a range whose ends are the wrong way round.
    NumberDomain(const std::vector<NumberRange>& ranges, bool whole, int decimals);

    const std::vector<Range>& Ranges() const { return ranges; }
    int Decimals() const { return decimals; }
    bool IsWhole() const { return whole; }
    bool IsEmpty() const { return ranges.empty(); }
    Decimal At(std::int64_t units) const { return {units, decimals}; }

    bool Contains(const Decimal& value) const;
    // Whether all of `range` is in it.
    bool Contains(const NumberRange& range) const;
    // The value itself, or the nearest end of a range, the lower of two.
    std::int64_t Nearest(std::int64_t units) const;
    // How many whole numbers there are; of a domain of whole numbers only.
    std::uint64_t Count() const;
    // "60 to 90 or 100 to 120"
    std::string Text() const;

    // Lists in ascending order without doubles; they fail with std::length_error beyond kMostValues. From each range's
    // minimum in steps > 0 (in units of 10^-Decimals()), as long as the maximum is not passed:
    std::vector<std::int64_t> Steps(std::int64_t step) const;
    // `count` > 0 values evenly spaced from the first minimum to the last maximum, the middle for 1; one that falls
    // into a gap is the nearer end:
    std::vector<std::int64_t> Spaced(std::size_t count) const;
    // Each whole number:
    std::vector<std::int64_t> All() const;
    // Minimum, the next above, the next below the maximum and the maximum of each range:
    std::vector<std::int64_t> Boundary(std::int64_t step) const;

private:
    std::vector<Range> ranges;
    int decimals;
    bool whole;
};

} // namespace TavrelVariation

#endif
