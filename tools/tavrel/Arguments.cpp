#include "Arguments.h"

#include <charconv>
#include <cmath>
#include <limits>

#include <fmt/format.h>

#include "Failure.h"

namespace tavrel {

namespace {

template <typename Number>
bool ReadWhole(const std::string& text, Number& number) {
    const char* begin = text.data();
    const char* end = begin + text.size();
    if (begin != end && *begin == '+') ++begin;
    const auto [rest, error] = std::from_chars(begin, end, number);
    return error == std::errc() && rest == end;
}

} // namespace

bool ReadNumber(const std::string& text, double& number) { return ReadWhole(text, number) && std::isfinite(number); }

bool ReadNumber(const std::string& text, int& number) { return ReadWhole(text, number); }

std::string Arguments::Text(const std::string& name, const std::string& fallback) const {
    const auto found = values.find(name);
    return found == values.end() || found->second.empty() ? fallback : found->second.back();
}

std::vector<std::string> Arguments::Texts(const std::string& name) const {
    const auto found = values.find(name);
    return found == values.end() ? std::vector<std::string>() : found->second;
}

double Arguments::Number(const std::string& name, double fallback) const {
    if (!Has(name)) return fallback;
    double number = 0;
    if (!ReadNumber(Text(name), number))
        throw Failure{ExitUsage, fmt::format("{} takes a number, not \"{}\"", name, Text(name))};
    return number;
}

std::size_t Arguments::Index(const std::string& name) const {
    int index = 0;
    if (!ReadNumber(Text(name), index) || index < 0)
        throw Failure{ExitUsage, fmt::format("{} is a position, counted from 0, not \"{}\"", name, Text(name))};
    return static_cast<std::size_t>(index);
}

} // namespace tavrel
