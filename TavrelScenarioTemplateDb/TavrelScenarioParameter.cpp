#include <TavrelScenarioTemplateDb/TavrelScenarioParameter.h>

#include <array>
#include <charconv>
#include <limits>
#include <locale>
#include <sstream>
#include <string_view>

#include <ScenarioTemplateDb/Exception.h>
#include <ScenarioTemplateDb/ScenarioNode.h>
#include <lmk/units.h>

namespace TavrelScenarioTemplateDb {

using ScenarioTemplateDb::Exception;
using ScenarioTemplateDb::ExceptionCodeGeneric;
using ScenarioTemplateDb::ExceptionCodeParameterType;
using ScenarioTemplateDb::ParameterType;
using ScenarioTemplateDb::ScenarioNode;

namespace {

// The types that the interface knows; the file has others, which are shown by name only.
constexpr int kBoolean = 0;
constexpr int kInteger = 1;
constexpr int kReal = 2;
constexpr int kString = 6;

// Toward zero. A unit of a small enough measure takes a number beyond 64 bits, which a conversion must not come to: the
// result is then the nearest number that there is.
std::int64_t truncated(double value) {
    constexpr double kBeyond = 9223372036854775808.0; // 2^63, the first one that does not fit
    if (value >= kBeyond) return std::numeric_limits<std::int64_t>::max();
    if (value < -kBeyond) return std::numeric_limits<std::int64_t>::min();
    if (value != value) return 0;
    return static_cast<std::int64_t>(value);
}

// With six decimals, written as the program's global locale says.
std::string fixedText(double value) {
    if (std::locale() == std::locale::classic()) {
        constexpr int kDecimals = 6;
        std::array<char, std::numeric_limits<double>::max_exponent10 + kDecimals + 8> digits;
        const auto written =
            std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, kDecimals);
        return {digits.data(), written.ptr};
    }
    std::ostringstream text;
    text << std::fixed << value;
    return text.str();
}

const cfg::Section::ParameterIterator& given(const cfg::Section::ParameterIterator* position) {
    if (!position) throw new Exception("Failed to initialize the scenario parameter", ExceptionCodeGeneric);
    return *position;
}

} // namespace

TavrelScenarioParameter::TavrelScenarioParameter(const cfg::Section::ParameterIterator* position,
                                                 ScenarioNode* parentNode)
    : iterator(given(position)), parent(parentNode) {
    if (!parent)
        throw new Exception("The parameter (" + position->getCName() + ") has no parent element", ExceptionCodeGeneric);
}

TavrelScenarioParameter::~TavrelScenarioParameter() = default;

std::size_t TavrelScenarioParameter::getIndex() const { return getParentNode()->getParameterIndex(this); }

ScenarioNode* TavrelScenarioParameter::getParentNode() const { return parent; }

std::string TavrelScenarioParameter::getId() const { return iterator.getCName(); }

std::string TavrelScenarioParameter::getName() const { return iterator.getCName(); }

std::string TavrelScenarioParameter::getDescription() const { return iterator.getVerboseName(); }

std::string TavrelScenarioParameter::getParameterId() const { return getParentNode()->getNodeId() + "/" + getName(); }

std::string TavrelScenarioParameter::getParameterUnit() const { return lmk::toText(iterator.getUnit()); }

bool TavrelScenarioParameter::hasParameterUnit() const {
    const int unit = iterator.getUnit();
    return unit != 0 && unit != 1;
}

std::string TavrelScenarioParameter::getValueAsString() const {
    if (isInteger()) return std::to_string(getIntegerValue());
    if (isReal()) return fixedText(getRealValue());
    if (isBoolean()) return getBooleanValue() ? "true" : "false";
    if (isLiteral()) return getLiteralValue();
    // The number of the type is not appended: it says how many characters of the text are left out. Hosts have come to
    // know these texts, "Unkown" included.
    constexpr std::string_view kMessage = "Unable to get parameter value : Unkown parameter type : ";
    const auto left = static_cast<std::size_t>(iterator.getType());
    throw Exception(std::string(kMessage.substr(left < kMessage.size() ? left : kMessage.size())),
                    ExceptionCodeGeneric);
}

bool TavrelScenarioParameter::isInteger() const { return iterator.getType() == kInteger; }

bool TavrelScenarioParameter::isReal() const { return iterator.getType() == kReal; }

bool TavrelScenarioParameter::isLiteral() const { return iterator.getType() == kString; }

bool TavrelScenarioParameter::isBoolean() const { return iterator.getType() == kBoolean; }

std::string TavrelScenarioParameter::getLiteralValue() const {
    if (!isLiteral()) throw new Exception("Parameter type is not a string", ExceptionCodeParameterType);
    return iterator.getString();
}

std::int64_t TavrelScenarioParameter::getIntegerValue() const {
    if (!isInteger()) throw new Exception("Parameter type is not an integer", ExceptionCodeParameterType);
    return truncated(lmk::convToUnit(iterator.getUnit(), static_cast<double>(iterator.getInt())));
}

double TavrelScenarioParameter::getRealValue() const {
    if (!isReal()) throw new Exception("Parameter type is not a real", ExceptionCodeParameterType);
    return lmk::convToUnit(iterator.getUnit(), iterator.getDouble());
}

bool TavrelScenarioParameter::getBooleanValue() const {
    if (!isBoolean()) throw new Exception("Parameter type is not a boolean", ExceptionCodeParameterType);
    return iterator.getBool();
}

ParameterType TavrelScenarioParameter::getParameterType() const {
    switch (static_cast<int>(iterator.getType())) {
    case kBoolean:
        return ScenarioTemplateDb::ParameterTypeBoolean;
    case kInteger:
        return ScenarioTemplateDb::ParameterTypeInteger;
    case kReal:
        return ScenarioTemplateDb::ParameterTypeReal;
    default:
        return ScenarioTemplateDb::ParameterTypeLiteral; // the unknown ones, too: a host can always show a text
    }
}

} // namespace TavrelScenarioTemplateDb
