#ifndef SCENARIO_BYTEGROUP_H
#define SCENARIO_BYTEGROUP_H

#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

// Sixteen bytes of a text that are looked at together. Each answer has one bit for each byte, the first one lowest.
class PlainByteGroup {
public:
    static constexpr std::ptrdiff_t kSize = 16;

    explicit PlainByteGroup(const char* at) { std::memcpy(bytes, at, sizeof bytes); }

    // Bytes that are equal to `c`.
    std::uint32_t Equal(char c) const {
        return Bits([c](unsigned char byte) { return byte == static_cast<unsigned char>(c); });
    }
    // Bytes that are at most `c`, unsigned.
    std::uint32_t AtMost(char c) const {
        return Bits([c](unsigned char byte) { return byte <= static_cast<unsigned char>(c); });
    }
    // Tab, line feed, form feed and carriage return: IsSeparator of TextFormat.h.
    std::uint32_t Separators() const {
        return Bits([](unsigned char byte) { return byte >= '\t' && byte <= '\r' && byte != '\v'; });
    }

private:
    template <class Test>
    std::uint32_t Bits(Test test) const {
        std::uint32_t bits = 0;
        for (std::ptrdiff_t at = 0; at < kSize; ++at) bits |= (test(bytes[at]) ? std::uint32_t{1} : 0) << at;
        return bits;
    }
    unsigned char bytes[kSize];
};

#ifdef __SSE2__

// The same answers from instructions of the processor.
class ByteGroup {
public:
    static constexpr std::ptrdiff_t kSize = PlainByteGroup::kSize;

    explicit ByteGroup(const char* at) : bytes(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at))) {}

    std::uint32_t Equal(char c) const { return Bits(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(c))); }
    std::uint32_t AtMost(char c) const { return Bits(_mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(c)), bytes)); }
    std::uint32_t Separators() const {
        const __m128i fromTab = _mm_cmpgt_epi8(bytes, _mm_set1_epi8('\t' - 1));
        const __m128i toReturn = _mm_cmplt_epi8(bytes, _mm_set1_epi8('\r' + 1));
        const __m128i verticalTab = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\v'));
        return Bits(_mm_andnot_si128(verticalTab, _mm_and_si128(fromTab, toReturn)));
    }

private:
    static std::uint32_t Bits(__m128i marks) { return static_cast<std::uint32_t>(_mm_movemask_epi8(marks)); }
    __m128i bytes;
};

#else

using ByteGroup = PlainByteGroup;

#endif

#endif
