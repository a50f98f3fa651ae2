#ifndef TAVREL_VARIATION_SOBOL_H
#define TAVREL_VARIATION_SOBOL_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include <variation/Export.h>

namespace TavrelVariation {

// The points of Sobol's sequence with the direction numbers of S. Joe and F. Y. Kuo ("Constructing Sobol sequences with
// better two-dimensional projections", SIAM J. Sci. Comput. 30, 2008), in Gray-code order from the zero point on. Any
// point is found without those before it.
class TAVREL_VARIATION_API Sobol {
public:
    // The largest number of dimensions that there are direction numbers for.
    static std::size_t MaximumDimensions();

    // Fails with std::invalid_argument for more dimensions than that.
    explicit Sobol(std::size_t dimensions);

    // A coordinate of a point as a fraction of 2^64. `dimension` below the number of dimensions.
    std::uint64_t Coordinate(std::uint64_t point, std::size_t dimension) const;

private:
    static constexpr std::size_t kBits = 64;
    std::vector<std::uint64_t> directions; // kBits numbers for each dimension
};

// Owen's nested uniform scrambling of a coordinate (A. B. Owen, "Randomly permuted (t,m,s)-nets and (t,s)-sequences",
// 1995): a bit is flipped or not by a hash of the bits above it, so that equal beginnings stay equal and no table of
// flips is kept (the hash in place of the table as in B. Burley, "Practical hash-based Owen scrambling", JCGT 9(4),
// 2020). The upper 52 bits are scrambled, as many as UnitNumber takes. `key` makes the scrambling.
TAVREL_VARIATION_API std::uint64_t OwenScrambled(std::uint64_t coordinate, std::uint64_t key);

} // namespace TavrelVariation

#endif
