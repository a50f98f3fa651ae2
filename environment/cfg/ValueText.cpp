#include "ValueText.h"

#include <bit>
#include <charconv>
#include <cstdint>

#include <Commons/ShortestNumber.h>

#include "../Commons/Xml.h"

namespace cfg::detail {

namespace {

constexpr std::string_view kTypeWords[] = {"boolean", "integer", "real", "vector", "list", "enumeration", "string"};

template <typename Type>
bool ParseNumber(std::string_view text, Type& number) {
    const char* const end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && next == end;
}

bool ParseBoolean(std::string_view text, bool& boolean) {
    boolean = text == "true" || text == "1";
    return boolean || text == "false" || text == "0";
}

} // namespace

bool HoldsText(t_ParameterType type) { return type > t_ParameterTypeReal; }

bool ParseType(std::string_view word, t_ParameterType& type) {
    int number = 0;
    for (const std::string_view known : kTypeWords) {
        if (word == known) {
            type = static_cast<t_ParameterType>(number);
            return true;
        }
        ++number;
    }
    return false;
}

std::string TypeWord(t_ParameterType type) { return std::string(kTypeWords[type]); }

bool ParseValue(std::string_view text, Value& value) {
    const std::string_view trimmed = Commons::detail::TrimmedXml(text);
    switch (value.type) {
    case t_ParameterTypeBoolean:
        if (!ParseBoolean(trimmed, *value.boolean)) return false;
        value.loaded.boolean = *value.boolean;
        return true;
    case t_ParameterTypeInteger:
        if (!ParseNumber(trimmed, *value.integer)) return false;
        value.loaded.integer = *value.integer;
        return true;
    case t_ParameterTypeReal:
        if (!ParseNumber(trimmed, *value.real)) return false;
        value.loaded.real = *value.real;
        return true;
    default:
        // Only where the class has a field for it; other texts are taken from the file when asked for.
        if (value.text) value.text->assign(text);
        return true;
    }
}

std::string FormatValue(const Value& value) {
    switch (value.type) {
    case t_ParameterTypeBoolean:
        return *value.boolean ? "true" : "false";
    case t_ParameterTypeInteger:
        return Commons::ShortestNumber(*value.integer);
    case t_ParameterTypeReal:
        return Commons::ShortestNumber(*value.real);
    default:
        return value.text ? *value.text : std::string();
    }
}

bool IsChangedNumber(const Value& value) {
    switch (value.type) {
    case t_ParameterTypeBoolean:
        return *value.boolean != value.loaded.boolean;
    case t_ParameterTypeInteger:
        return *value.integer != value.loaded.integer;
    // A zero that changed its sign is a change, and a value that is no number equals itself.
    default:
        return std::bit_cast<std::uint64_t>(*value.real) != std::bit_cast<std::uint64_t>(value.loaded.real);
    }
}

} // namespace cfg::detail
