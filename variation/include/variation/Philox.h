#ifndef TAVREL_VARIATION_PHILOX_H
#define TAVREL_VARIATION_PHILOX_H

#include <array>
#include <cstdint>
#include <string_view>

#include <variation/Export.h>

namespace TavrelVariation {

// Random bits as a function of a key and a counter, without any state: Philox4x32 with ten rounds. J. K. Salmon,
// M. A. Moraes, R. O. Dror, D. E. Shaw, "Parallel random numbers: as easy as 1, 2, 3", SC 2011.
TAVREL_VARIATION_API std::array<std::uint32_t, 4> Philox(std::array<std::uint32_t, 4> counter,
                                                         std::array<std::uint32_t, 2> key);

// The first 64 bits for key = `seed`, counter = (`index`, `stream`).
TAVREL_VARIATION_API std::uint64_t RandomBits(std::uint64_t seed, std::uint64_t index, std::uint64_t stream);

// A number in (0, 1), both ends left out: the upper 52 bits, and half of the last place. It is exact in a double, so
// that it lies within the same of 2^k equal parts as the bits do.
TAVREL_VARIATION_API double UnitNumber(std::uint64_t bits);

// The number of a stream that has a text for a name: FNV-1a with 64 bits.
TAVREL_VARIATION_API std::uint64_t StreamOf(std::string_view name);

// A permutation of 0 to size - 1 of which any element is found without the others: a Feistel network over the next
// even power of two, walked on until it lands inside (J. Black, P. Rogaway, "Ciphers with arbitrary finite domains",
// CT-RSA 2002). At most four rounds of the network are needed on average.
class TAVREL_VARIATION_API Permutation {
public:
    // `size` at least 1 and at most 2^62.
    Permutation(std::uint64_t size, std::uint64_t key);

    // For index < size.
    std::uint64_t operator()(std::uint64_t index) const;

private:
    std::uint64_t count;
    std::uint64_t seed;
    unsigned halfBits = 1;
};

} // namespace TavrelVariation

#endif
