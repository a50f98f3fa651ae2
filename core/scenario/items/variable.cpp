#include <scenario/variable.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <typeinfo>

#include <boost/lexical_cast.hpp>
#include <scenario/ParameterValue.h>

#include "items/AttributeRow.h"
#include "text/Assertion.h"
#include "text/Log.h"
#include "text/NumberText.h"

namespace {

constexpr char kSource[] = "variable";

constexpr std::string_view kTypeWords[] = {"INTEGER", "FLOAT", "BOOL", "STRING", "VOID"}; // by tag

int TagOf(std::string_view word) {
    for (int tag = 0; tag < TagVoid; ++tag) {
        if (kTypeWords[tag] == word) return tag;
    }
    return TagVoid;
}

bool IsTypeWord(std::string_view word) { return TagOf(word) != TagVoid || word == kTypeWords[TagVoid]; }

template <class Target>
[[noreturn]] void ThrowBadCast() {
    Refuse("the value is not of the form that its key needs");
    throw boost::bad_lexical_cast(typeid(std::string), typeid(Target));
}

// After the digits that stand at `at`.
const char* SkipDigits(const char* at, const char* end) {
    while (at < end && *at >= '0' && *at <= '9') ++at;
    return at;
}

const char* SkipSign(const char* at, const char* end) { return at < end && (*at == '+' || *at == '-') ? at + 1 : at; }

// Decimal notation: digits, one point and an exponent, each where it may stand.
bool IsDecimal(std::string_view text) {
    const char* const end = text.data() + text.size();
    const char* at = SkipSign(text.data(), end);
    const char* mark = at;
    at = SkipDigits(at, end);
    auto digits = at - mark;
    if (at < end && *at == '.') {
        mark = ++at;
        at = SkipDigits(at, end);
        digits += at - mark;
    }
    if (digits == 0) return false;
    if (at < end && (*at == 'e' || *at == 'E')) {
        mark = at = SkipSign(at + 1, end);
        at = SkipDigits(at, end);
        if (at == mark) return false;
    }
    return at == end;
}

// The conversions are those of lexical_cast in the classic locale: the locale of the host must not decide what a file
// says. Decimal notation, which is nearly all there is, goes the short way.
double ToDouble(std::string_view text) {
    const std::size_t plus = !text.empty() && text.front() == '+' ? 1 : 0;
    if (IsDecimal(text)) {
        double number = 0.0;
        const auto [rest, error] = std::from_chars(text.data() + plus, text.data() + text.size(), number);
        if (error == std::errc()) return number;
        // Too small a number is the zero that it is nearest to, too large a one is none.
        number = NumberOf(std::string(text));
        if (std::isfinite(number)) return number;
    }
    // "inf" and "nan" in their many forms; nothing else that begins otherwise is a number in the classic locale.
    const std::string rest(text);
    const std::size_t first = rest.find_first_not_of("+-");
    if (first == std::string::npos || std::strchr("iInN", rest[first]) == nullptr) ThrowBadCast<double>();
    return boost::lexical_cast<double>(rest);
}

bool ToBool(std::string_view text) {
    const char* const end = text.data() + text.size();
    const char* const digits = SkipSign(text.data(), end);
    if (digits == end || SkipDigits(digits, end) != end) ThrowBadCast<bool>();
    return boost::lexical_cast<bool>(std::string(text));
}

// As lexical_cast writes it, seventeen digits at most, but with a point under every locale.
std::string ToText(double number) {
    constexpr int kDigits = 17;
    std::array<char, 40> buffer;
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::general, kDigits);
    return std::string(buffer.data(), end.ptr);
}

using Row = AttributeRow<Variable>;

template <double Variable::*Field>
bool StoreNumber(Variable& item, std::string_view text) {
    item.*Field = ToDouble(text);
    return true;
}

bool StoreValue(Variable& item, std::string_view text) {
    item.value.assign(text);
    item.initialValue.assign(text);
    return true;
}

bool StoreStartFlag(Variable& item, std::string_view text) {
    item.isInitializationNeededAtStart = ToBool(text);
    return true;
}

// clang-format off
constexpr Row kReadOrder[] = {
    Row::word<&Variable::type, IsTypeWord>("TYPE"),
    {"VALUE", [](const Variable& item) { return item.value.empty(); }, StoreValue},
    Row::lastText<&Variable::interactiveType>("INTERACTIVE_TYPE"),
    Row::custom("IS_INITIALIZATION_NEEDED_AT_START", StoreStartFlag),
    Row::custom("INTERACTIVE_MIN_VALUE",  StoreNumber<&Variable::interactiveMinValue>),
    Row::custom("INTERACTIVE_MAX_VALUE",  StoreNumber<&Variable::interactiveMaxValue>),
    Row::custom("INTERACTIVE_STEP_VALUE", StoreNumber<&Variable::interactiveStepValue>),
    Row::lastText<&Variable::category>("CATEGORY"),
};
// clang-format on

} // namespace

Variable::Variable(ScenarioItem* parentItem) : Token(parentItem) {}

Variable::~Variable() = default;

void Variable::DetachChildren() {}
void Variable::AddChild(ScenarioItem*, ScenarioItem*, bool) {}
void Variable::RemoveChild(ScenarioItem*) {}
void Variable::ReplaceChild(ScenarioItem*, ScenarioItem*) {}
void Variable::SwapChildren(ScenarioItem*, ScenarioItem*) {}

bool Variable::LoadAttribute(ScenarioTextStream& stream) {
    return Token::LoadAttribute(stream) || LoadFromRows<kReadOrder>(*this, stream);
}

void Variable::SaveAttributes(std::ostream& out) const {
    Token::SaveAttributes(out);
    WriteAttribute(out, "TYPE", type);
    WriteAttribute(out, "VALUE", value);
    WriteAttribute(out, "INTERACTIVE_TYPE", interactiveType);
    WriteAttribute(out, "IS_INITIALIZATION_NEEDED_AT_START", isInitializationNeededAtStart ? "1" : "0");
    WriteAttribute(out, "INTERACTIVE_MIN_VALUE", ToText(interactiveMinValue));
    WriteAttribute(out, "INTERACTIVE_MAX_VALUE", ToText(interactiveMaxValue));
    WriteAttribute(out, "INTERACTIVE_STEP_VALUE", ToText(interactiveStepValue));
    WriteAttribute(out, "CATEGORY", category);
}

bool Variable::AcceptsChildKind(std::uint32_t) const { return false; }

ScenarioItem* Variable::Clone() const {
    auto* copy = dynamic_cast<Variable*>(Token::Clone());
    if (!copy) AssertionFailed(kSource, 101);
    copy->label = label;
    copy->type = type;
    copy->value = value;
    copy->initialValue = initialValue;
    copy->interactiveType = interactiveType;
    copy->isInitializationNeededAtStart = isInitializationNeededAtStart;
    copy->interactiveMinValue = interactiveMinValue;
    copy->interactiveMaxValue = interactiveMaxValue;
    copy->interactiveStepValue = interactiveStepValue;
    copy->spare = spare;
    copy->category = category;
    return copy;
}

void Variable::UpdateDisplayText() { displayText = label + "=" + value; }

void Variable::FillValue(ParameterValue& out) const {
    const int tag = out.tag;
    if (tag != TagString && tag != TypeTagOf(type)) {
        LogMessage(LogSeverity::Warning,
                   "Var " + name + ": types " + TypeNameOf(tag) + " and " + type + " are different");
        return;
    }
    if (tag == TagString) {
        out.text = value;
    } else if (tag >= 0 && tag < TagString) {
        out.number = Narrow(NumberOf(value));
    }
}

int Variable::TypeTagOf(const std::string& typeName) { return TagOf(typeName); }

std::string Variable::TypeNameOf(int tag) {
    return tag >= 0 && tag <= TagVoid ? std::string(kTypeWords[tag]) : std::string();
}

Enum::Enum(ScenarioItem* parentItem) : Variable(parentItem) {}

Enum::~Enum() = default;

void Enum::UpdateDisplayText() { displayText = name + "    (" + label + ")"; }
