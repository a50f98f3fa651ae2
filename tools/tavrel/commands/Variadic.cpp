#include <cmath>
#include <limits>
#include <optional>

#include <cfg/IntegerParameter.h>
#include <cfg/VariadicParameter.h>
#include <lmk/units.h>

#include "../Describe.h"
#include "../Installation.h"
#include "../Saving.h"
#include "../report/ShownText.h"
#include "Commands.h"

namespace tavrel {

namespace {

using ScenarioTemplateDb::ParameterType;
using ScenarioTemplateDb::ScenarioParameter;
using TavrelScenarioTemplateDb::TavrelScenario;
using TavrelScenarioTemplateDb::TavrelVariadicParameter;

struct TextRange {
    std::string minimum;
    std::string maximum;
};

template <typename T>
struct NumberRange {
    T minimum;
    T maximum;
};

int ReadInteger(const std::string& text) {
    int number = 0;
    if (!ReadNumber(text, number)) throw Failure{ExitUsage, fmt::format("\"{}\" is no integer of 32 bits", text)};
    return number;
}

double ReadReal(const std::string& text) {
    double number = 0;
    if (!ReadNumber(text, number)) throw Failure{ExitUsage, fmt::format("\"{}\" is no number", text)};
    return number;
}

bool ReadBoolean(const std::string& text) {
    if (text == "true" || text == "1") return true;
    if (text == "false" || text == "0") return false;
    throw Failure{ExitUsage, fmt::format("\"{}\" is neither true nor false", text)};
}

TextRange SplitRange(const std::string& text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos)
        throw Failure{ExitUsage, fmt::format("a range is written MIN:MAX, such as 60:90, not \"{}\"", text)};
    return {text.substr(0, colon), text.substr(colon + 1)};
}

template <typename T, typename Read>
std::vector<NumberRange<T>> ReadRanges(const std::vector<std::string>& texts, const Read& read) {
    std::vector<NumberRange<T>> ranges;
    for (const std::string& text : texts) {
        const TextRange parts = SplitRange(text);
        ranges.push_back({read(parts.minimum), read(parts.maximum)});
        if (ranges.back().minimum > ranges.back().maximum)
            throw Failure{ExitUsage, fmt::format("the range \"{}\" ends before it begins", text)};
    }
    return ranges;
}

ParameterType TypeOfWord(const std::string& word) {
    if (word == "boolean") return ScenarioTemplateDb::ParameterTypeBoolean;
    if (word == "integer") return ScenarioTemplateDb::ParameterTypeInteger;
    return word == "real" ? ScenarioTemplateDb::ParameterTypeReal : ScenarioTemplateDb::ParameterTypeLiteral;
}

// Options of the wrong type are refused, and not silently dropped.
void CheckOptions(const Arguments& arguments, ParameterType type) {
    const bool numbers =
        type == ScenarioTemplateDb::ParameterTypeInteger || type == ScenarioTemplateDb::ParameterTypeReal;
    if (arguments.Has("--range") && !numbers)
        throw Failure{ExitUsage, fmt::format("a declaration of type {} takes no --range", TypeWord(type))};
    if (arguments.Has("--literal") && type != ScenarioTemplateDb::ParameterTypeLiteral)
        throw Failure{ExitUsage, fmt::format("a declaration of type {} takes no --literal", TypeWord(type))};
}

// The present value of the target as the default of a declaration of this type, as far as it can be one.
std::string DefaultFromTarget(const ScenarioParameter& target, ParameterType type) {
    const Json value = ParameterJson(target)["value"];
    if (type == ScenarioTemplateDb::ParameterTypeBoolean)
        return value.is_boolean() && value.get<bool>() ? "true" : "false";
    if (type == ScenarioTemplateDb::ParameterTypeLiteral) {
        const std::string text = ValueText(target);
        return text == "?" ? "" : text;
    }
    const double number = value.is_number() ? value.get<double>() : 0;
    if (type == ScenarioTemplateDb::ParameterTypeReal) return ShortNumber(number);
    constexpr double kLargest = std::numeric_limits<int>::max();
    return std::abs(number) <= kLargest ? std::to_string(static_cast<int>(number)) : "0";
}

void SetDefault(TavrelVariadicParameter& declaration, const std::string& text) {
    switch (declaration.getType()) {
    case ScenarioTemplateDb::ParameterTypeBoolean:
        return declaration.setBooleanDefaultValue(ReadBoolean(text));
    case ScenarioTemplateDb::ParameterTypeInteger:
        return declaration.setIntegerDefaultValue(ReadInteger(text));
    case ScenarioTemplateDb::ParameterTypeReal:
        return declaration.setRealDefaultValue(ReadReal(text));
    case ScenarioTemplateDb::ParameterTypeLiteral:
        return declaration.setLiteralDefaultValue(text);
    }
}

// Adds what may be chosen from. Each new range section stands after those there are in the file, which is the order
// that counts from the next load on; the position only says where it stands among the objects until then.
void AddDomain(TavrelVariadicParameter& declaration, const Arguments& arguments) {
    if (declaration.isInteger())
        for (const auto& range : ReadRanges<int>(arguments.Texts("--range"), ReadInteger)) {
            auto& added = declaration.insertIntegerRange(0);
            added.setMinimum(range.minimum);
            added.setMaximum(range.maximum);
        }
    if (declaration.isReal())
        for (const auto& range : ReadRanges<double>(arguments.Texts("--range"), ReadReal)) {
            auto& added = declaration.insertRealRange(0);
            added.setMinimum(range.minimum);
            added.setMaximum(range.maximum);
        }
    if (declaration.isLiteral())
        for (const std::string& literal : arguments.Texts("--literal")) declaration.insertLiteral(0) = literal;
}

// Takes away what could be chosen from. The default of a literal goes with its texts, so it is put back.
void ClearDomain(TavrelVariadicParameter& declaration) {
    const std::optional<std::string> literalDefault =
        declaration.isLiteral() ? std::optional(declaration.getLiteralDefaultValue()) : std::nullopt;
    declaration.clearRanges();
    if (literalDefault) declaration.setLiteralDefaultValue(*literalDefault);
}

void SetTexts(TavrelVariadicParameter& declaration, const Arguments& arguments) {
    if (arguments.Has("--name")) declaration.setName(arguments.Text("--name"));
    if (arguments.Has("--description")) declaration.setDescription(arguments.Text("--description"));
    if (!arguments.Has("--unit")) return;
    const std::string unit = arguments.Text("--unit");
    // The library takes it for no unit at all.
    if (!unit.empty() && lmk::toTUnit(unit.c_str()) == 0)
        throw Failure{ExitUsage, fmt::format("\"{}\" is no unit", unit)};
    declaration.setParameterUnit(unit);
}

TavrelVariadicParameter& DeclarationAt(const TavrelScenario& scenario, std::size_t index) {
    const std::size_t count = scenario.getVariadicParameterNumber();
    if (index >= count)
        throw Failure{ExitUnreadable,
                      fmt::format("{} has no declaration {}; it has {}", scenario.getPath(), index, count)};
    std::vector<TavrelVariadicParameter*> declarations;
    scenario.getTavrelVariadicParameters(declarations);
    return *declarations[index];
}

// The order of new ranges differs between the objects and the file; a comparison looks at the ranges as a set.
Json Comparable(Json declarations) {
    for (Json& declaration : declarations)
        if (declaration.contains("ranges")) {
            auto& ranges = declaration["ranges"].get_ref<Json::array_t&>();
            std::sort(ranges.begin(), ranges.end());
        }
    return declarations;
}

// Saves the scenario to the target. A fresh template reads the file back and must find what was declared. Answers with
// that template's declarations.
Json Save(OpenedScenario& opened, const std::string& target) {
    const Json wanted = Comparable(DeclarationsJson(*opened.scenario));
    SaveScenario(opened, target);
    const TavrelScenario saved(opened.configuration.name, opened.scenario->getPath(), opened.directory);
    Json found;
    std::string cause;
    try {
        found = DeclarationsJson(saved);
        // As texts, since a number that is none differs from itself.
        if (DumpJson(Comparable(found)) != DumpJson(wanted)) cause = "the file does not hold what was declared";
    } catch (...) {
        cause = CurrentFailure().sentence;
    }
    if (!cause.empty()) throw Failure{ExitUnreadable, fmt::format("{} could not be saved: {}", target, cause)};
    return found;
}

} // namespace

int RunVariadicList(Context& context) {
    const OpenedScenario opened = OpenScenario(context, context.arguments.Text("SCENARIO"));
    const TavrelScenario& scenario = *opened.scenario;
    if (context.arguments.Has("--json")) {
        context.out.Print(DumpJson(DeclarationsJson(scenario)));
        return context.status;
    }
    const std::size_t count = scenario.getVariadicParameterNumber();
    for (std::size_t i = 0; i < count; ++i) {
        const auto& declaration = *scenario.getVariadicParameter(i);
        context.out.Print("{}  {}  ({})\n   {}\n", i, context.out.Strong(OneLine(declaration.getName())),
                          OneLine(DeclarationText(declaration)), ShownText(declaration.getParameterId()));
        if (!declaration.getDescription().empty())
            context.out.Print("   {}\n", context.out.Faint(OneLine(declaration.getDescription())));
    }
    return context.status;
}

int RunVariadicAdd(Context& context) {
    const Arguments& arguments = context.arguments;
    OpenedScenario opened = OpenScenario(context, arguments.Text("SCENARIO"));
    const std::string saveTarget = SaveTarget(context, opened);
    const EditLock lock(saveTarget);
    TavrelScenario& scenario = *opened.scenario;
    const ScenarioParameter& target = ParameterOf(scenario, arguments.Text("ID"));
    const std::string word = TypeWord(target);
    const ParameterType type = TypeOfWord(arguments.Text("--type", word));
    CheckOptions(arguments, type);

    TavrelVariadicParameter& declaration = *scenario.addNewVariadicParameter();
    declaration.setType(type);
    declaration.setParameterId(target.getParameterId());
    declaration.setName(target.getDescription().empty() ? target.getName() : target.getDescription());
    if (target.hasParameterUnit()) declaration.setParameterUnit(target.getParameterUnit());
    SetTexts(declaration, arguments);
    // The default makes the section that the ranges stand in, so it comes first.
    SetDefault(declaration, arguments.Text("--default", DefaultFromTarget(target, type)));
    AddDomain(declaration, arguments);

    const std::size_t index = Save(opened, saveTarget).size() - 1;
    context.out.Print("{}\n", index);
    return context.status;
}

int RunVariadicSet(Context& context) {
    const Arguments& arguments = context.arguments;
    const std::size_t index = arguments.Index("INDEX");
    OpenedScenario opened = OpenScenario(context, arguments.Text("SCENARIO"));
    const std::string saveTarget = SaveTarget(context, opened);
    const EditLock lock(saveTarget);
    TavrelVariadicParameter& declaration = DeclarationAt(*opened.scenario, index);
    CheckOptions(arguments, declaration.getType());

    SetTexts(declaration, arguments);
    if (arguments.Has("--target"))
        declaration.setParameterId(ParameterOf(*opened.scenario, arguments.Text("--target")).getParameterId());
    if (arguments.Has("--range") || arguments.Has("--literal") || arguments.Has("--any")) ClearDomain(declaration);
    // A declaration without a section for its type counts as an integer one. Its ranges need the section, which comes
    // with a default.
    const bool lacksSection =
        declaration.isInteger() && !declaration.getSection()->getSubSection(cfg::IntegerParameter::sectionName());
    if (arguments.Has("--default"))
        SetDefault(declaration, arguments.Text("--default"));
    else if (lacksSection && arguments.Has("--range"))
        SetDefault(declaration, DefaultFromTarget(ParameterOf(*opened.scenario, declaration.getParameterId()),
                                                  ScenarioTemplateDb::ParameterTypeInteger));
    AddDomain(declaration, arguments);
    Save(opened, saveTarget);
    return context.status;
}

int RunVariadicRemove(Context& context) {
    const std::size_t index = context.arguments.Index("INDEX");
    OpenedScenario opened = OpenScenario(context, context.arguments.Text("SCENARIO"));
    const std::string saveTarget = SaveTarget(context, opened);
    const EditLock lock(saveTarget);
    DeclarationAt(*opened.scenario, index);
    opened.scenario->removeVariadicParameter(index);
    Save(opened, saveTarget);
    return context.status;
}

} // namespace tavrel
