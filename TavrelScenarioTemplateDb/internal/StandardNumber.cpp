#include <TavrelScenarioTemplateDb/internal/StandardNumber.h>

#include <cerrno>
#include <cstdlib>
#include <stdexcept>

#include <locale.h>

namespace TavrelScenarioTemplateDb {

namespace {

// Made once and kept for the life of the process.
locale_t plainLocale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

// `convert` is one of the C functions, with the locale as its last argument. Leaves errno as it was.
template <typename Number, typename Convert>
std::optional<Number> converted(const std::string& text, const char* outOfRange, Convert convert) {
    const int errorBefore = errno;
    errno = 0;
    char* end = nullptr;
    const Number number = convert(text.c_str(), &end);
    const bool isOutOfRange = errno == ERANGE;
    errno = errorBefore;
    if (end == text.c_str()) return std::nullopt;
    if (isOutOfRange) throw std::out_of_range(outOfRange);
    return number;
}

} // namespace

std::optional<std::int64_t> standardWholeNumber(const std::string& text) {
    return converted<std::int64_t>(text, "stoll argument out of range", [](const char* begin, char** end) {
        return static_cast<std::int64_t>(strtoll_l(begin, end, 10, plainLocale()));
    });
}

std::optional<double> standardNumber(const std::string& text) {
    return converted<double>(text, "stod argument out of range",
                             [](const char* begin, char** end) { return strtod_l(begin, end, plainLocale()); });
}

} // namespace TavrelScenarioTemplateDb
