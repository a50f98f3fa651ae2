#ifndef TAVREL_VARIATION_DECIMAL_H
#define TAVREL_VARIATION_DECIMAL_H

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include <variation/Export.h>

namespace TavrelVariation {

// Why a text or the result of a calculation is no Decimal.
class TAVREL_VARIATION_API NoDecimal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A decimal number without rounding: units x 10^-decimals. A number of one value may have several forms; `decimals`
// keeps what was written, since "0.50" steps by hundredths and "0.5" by tenths.
struct TAVREL_VARIATION_API Decimal {
    std::int64_t units = 0;
    int decimals = 0; // 0 to kMostDecimals

    static constexpr int kMostDecimals = 40;

    // Reads sign, digits, "." and exponent ("-0.5", "1e3", ".5"). Fails with NoDecimal for another text, and for a
    // number that does not fit.
    static Decimal Read(std::string_view text);
    // The shortest decimal number that reads back as `number`. Fails with NoDecimal for one that does not fit, infinity
    // and what is no number.
    static Decimal Shortest(double number);
    // Rounded to `decimals` places, half away from zero. Fails with NoDecimal for one that does not fit.
    static Decimal Rounded(double number, int decimals);

    // Without trailing zeros and exponent: "0.3", "-12", "0".
    std::string Text() const;
    void AppendTo(std::string& text) const;
    // The nearest double.
    double Number() const;
    // The same value with `places` decimals, rounded half away from zero where these are fewer. Fails with NoDecimal
    // where it does not fit.
    Decimal WithDecimals(int places) const;

    bool IsWhole() const;
};

// -1, 0 or 1, by value.
TAVREL_VARIATION_API int Compare(const Decimal& a, const Decimal& b);

inline bool operator==(const Decimal& a, const Decimal& b) { return Compare(a, b) == 0; }
inline bool operator<(const Decimal& a, const Decimal& b) { return Compare(a, b) < 0; }
inline bool operator<=(const Decimal& a, const Decimal& b) { return Compare(a, b) <= 0; }

// dividend / divisor, rounded half away from zero, of products that need twice the width: `factor1` * `factor2` /
// `divisor`, divisor > 0. Fails with NoDecimal where the result does not fit.
TAVREL_VARIATION_API std::int64_t RoundedQuotient(std::int64_t factor1, std::int64_t factor2, std::int64_t divisor);

// Sum and difference; fail with NoDecimal where they do not fit.
TAVREL_VARIATION_API std::int64_t Sum(std::int64_t a, std::int64_t b);
TAVREL_VARIATION_API std::int64_t Difference(std::int64_t a, std::int64_t b);

} // namespace TavrelVariation

#endif
