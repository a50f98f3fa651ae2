#include <variation/Assignment.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <map>
#include <queue>
#include <string_view>
#include <unordered_map>

#include <Commons/CodePoint.h>
#include <Commons/ShortestNumber.h>
#include <TavrelScenarioTemplateDb/ScriptNode.h>
#include <TavrelScenarioTemplateDb/TavrelScenario.h>
#include <TavrelScenarioTemplateDb/TavrelScenarioNode.h>
#include <cfg/BooleanParameter.h>
#include <cfg/CfgScenario.h>
#include <cfg/IntegerParameter.h>
#include <cfg/IntegerRange.h>
#include <cfg/LiteralParameter.h>
#include <cfg/LiteralRange.h>
#include <cfg/RealParameter.h>
#include <cfg/RealRange.h>
#include <cfg/ScenarioScript.h>
#include <cfg/VariadicParameter.h>
#include <scenario/NearestName.h>
#include <variation/Decimal.h>

#include "ScriptVariables.h"
#include "Units.h"

namespace TavrelVariation {

namespace {

using ScenarioTemplateDb::ScenarioNode;
using TavrelScenarioTemplateDb::ScriptNode;
using TavrelScenarioTemplateDb::TavrelScenario;
using TavrelScenarioTemplateDb::TavrelScenarioNode;

constexpr double kRounding = 1e-9; // what conversions between units may lose, as a share of the number

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

std::string DidYouMean(const std::string& name, const std::vector<std::string>& known) {
    const std::string near = NearestName(name, known);
    return near.empty() ? "" : ", did you mean " + Quoted(near);
}

bool IsNoUnit(lmk::t_unit unit) { return unit == lmk::UNIT_UNDEFINED || unit == lmk::UNIT_NONE; }

// Id texts that lead to the same place, alike: the steps that the driver sees in them.
std::string Normal(const std::string& id) {
    struct Splitter : TavrelScenario {
        using TavrelScenario::splitId;
    };
    std::queue<std::string> steps;
    Splitter::splitId(id, steps);
    std::string normal;
    for (; !steps.empty(); steps.pop()) normal += "/" + steps.front();
    return normal;
}

std::string NumberText(double number) {
    try {
        return Decimal::Shortest(number).Text();
    } catch (const NoDecimal&) {
        return Commons::ShortestNumber(number);
    }
}

// A number as it was written, without what says nothing.
std::string NumberText(std::string_view written, double number) {
    try {
        return Decimal::Read(written).Text();
    } catch (const NoDecimal&) {
        return NumberText(number);
    }
}

std::string Below(const std::string& place, const std::string& step) {
    std::string id;
    id.reserve(place.size() + 1 + step.size());
    return id.append(place).append(1, '/').append(step);
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Sign, digits, point and exponent, and nothing else.
bool ReadReal(std::string_view text, double& number) {
    if (text.starts_with('+')) text.remove_prefix(1);
    const std::size_t first = text.starts_with('-') ? 1 : 0;
    if (text.size() <= first || !(IsDigit(text[first]) || text[first] == '.')) return false;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && std::isfinite(number);
}

bool ReadInteger(std::string_view text, std::int64_t& number) {
    if (text.starts_with('+')) text.remove_prefix(1);
    if (text.empty() || !(IsDigit(text[0]) || (text[0] == '-' && text.size() > 1 && IsDigit(text[1])))) return false;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

// What is missing in "60km/h"; empty for other texts.
std::string HintAtBlank(const std::string& text) {
    const std::size_t end = text.find_first_not_of("+-.0123456789");
    if (end == 0 || end == std::string::npos || IsNoUnit(lmk::toTUnit(text.c_str() + end))) return "";
    return "; a blank parts the number from its unit: " + Quoted(text.substr(0, end) + " " + text.substr(end));
}

// Whether an attribute of a scenario file can hold the text: characters that XML knows, in UTF-8.
bool IsXmlText(std::string_view text) {
    for (Commons::CodePoint point{}; !text.empty(); text.remove_prefix(point.size)) {
        point = Commons::FirstCodePoint(text);
        if (!point.IsInXml()) return false;
    }
    return true;
}

template <typename Typed>
Typed* FindTyped(cfg::VariadicParameter& section) {
    return dynamic_cast<Typed*>(section.getSubSection(Typed::sectionName()));
}

template <typename RangeSection, typename Add>
void EachRange(cfg::Section& typed, const Add& add) {
    std::vector<cfg::Section*> sections;
    typed.getSubSections(RangeSection::sectionName(), sections);
    for (cfg::Section* section : sections)
        if (const auto* range = dynamic_cast<RangeSection*>(section)) add(*range);
}

// The typed sections decide the type, the boolean one before the integer one, then the real and the literal one.
Declaration DeclarationOf(cfg::VariadicParameter& section, std::size_t index) {
    Declaration declaration;
    declaration.index = index;
    declaration.name = section.name;
    declaration.parameterId = section.parameterId;
    declaration.unit = lmk::toTUnit(section.parameterUnit.c_str());
    if (const auto* boolean = FindTyped<cfg::BooleanParameter>(section)) {
        declaration.type = ValueType::Boolean;
        declaration.defaultText = boolean->defaultValue ? "true" : "false";
    } else if (auto* integer = FindTyped<cfg::IntegerParameter>(section)) {
        declaration.defaultText = std::to_string(integer->defaultValue);
        EachRange<cfg::IntegerRange>(*integer, [&](const cfg::IntegerRange& range) {
            declaration.integerRanges.push_back({range.minimum, range.maximum});
        });
    } else if (auto* real = FindTyped<cfg::RealParameter>(section)) {
        declaration.type = ValueType::Real;
        declaration.defaultText = NumberText(real->defaultValue);
        EachRange<cfg::RealRange>(*real, [&](const cfg::RealRange& range) {
            declaration.realRanges.push_back({range.minimum, range.maximum});
        });
    } else if (auto* literal = FindTyped<cfg::LiteralParameter>(section)) {
        declaration.type = ValueType::Literal;
        declaration.defaultText = literal->defaultValue;
        EachRange<cfg::LiteralRange>(
            *literal, [&](const cfg::LiteralRange& range) { declaration.literals.push_back(range.literal); });
    }
    return declaration;
}

// The type that a variable is set by; empty for a word that the interface does not know.
std::optional<ValueType> TypeOf(const VariableInText& variable) {
    const auto typeOfWord = [](const std::string& word) -> std::optional<ValueType> {
        if (word == "BOOL") return ValueType::Boolean;
        if (word == "INTEGER") return ValueType::Integer;
        if (word == "FLOAT") return ValueType::Real;
        if (word == "STRING") return ValueType::Literal;
        return std::nullopt;
    };
    if (variable.interactiveType != "VOID") return typeOfWord(variable.interactiveType);
    return typeOfWord(variable.type).value_or(ValueType::Real);
}

std::optional<ValueType> TypeOf(cfg::t_ParameterType type) {
    switch (type) {
    case cfg::t_ParameterTypeBoolean:
        return ValueType::Boolean;
    case cfg::t_ParameterTypeInteger:
        return ValueType::Integer;
    case cfg::t_ParameterTypeReal:
        return ValueType::Real;
    case cfg::t_ParameterTypeEnumeration:
    case cfg::t_ParameterTypeString:
        return ValueType::Literal;
    default:
        return std::nullopt;
    }
}

// A stored integer as the interface shows it in that unit.
double Shown(int stored, lmk::t_unit unit) { return std::trunc(lmk::convToUnit(unit, stored)); }

bool IsNear(double a, double b) { return std::abs(a - b) <= kRounding * std::max(std::abs(a), std::abs(b)); }

// The number that an integer parameter stores for a value in `given`; empty if it would read back as another one.
std::optional<int> Stored(double number, lmk::t_unit given, lmk::t_unit unit) {
    const double si = lmk::convToSI(given, number);
    const double inUnit = lmk::convToUnit(unit, si), shown = std::round(inUnit);
    const double stored = std::round(si);
    constexpr double kLargest = std::numeric_limits<int>::max(), kSmallest = std::numeric_limits<int>::min();
    if (!(stored <= kLargest && stored >= kSmallest) || !IsNear(inUnit, shown)) return std::nullopt;
    const int whole = static_cast<int>(stored);
    return Shown(whole, unit) == shown ? std::optional(whole) : std::nullopt;
}

} // namespace

const char* WordOf(ValueType type) {
    constexpr const char* kWords[] = {"boolean", "integer", "real", "literal"};
    return kWords[static_cast<std::size_t>(type)];
}

AssignmentText ReadAssignment(const std::string& text) {
    // Ids hold "=" in their brackets, and brackets within brackets.
    std::size_t depth = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '[') ++depth;
        if (text[at] == ']' && depth > 0) --depth;
        if (text[at] != '=' || depth > 0) continue;
        if (at == 0) throw AssignmentError(Quoted(text) + " has no name before its \"=\"");
        return {text.substr(0, at), text.substr(at + 1)};
    }
    throw AssignmentError("an assignment is written NAME=VALUE, not " + Quoted(text));
}

double Converted(double number, lmk::t_unit from, lmk::t_unit to) {
    if (from == to || (IsNoUnit(from) && IsNoUnit(to))) return number;
    const double exact = lmk::convToUnit(to, lmk::convToSI(from, number));
    const std::string text = WithDigits(exact, 12);
    double rounded = exact;
    std::from_chars(text.data(), text.data() + text.size(), rounded);
    return rounded;
}

namespace {

// Which targets have an id. A table of their indexes alone, since files have many targets and few of them are asked
// for.
class IdIndex {
public:
    // To be made when all are there.
    void Make(const std::vector<Target>& all) {
        std::size_t size = 2;
        while (size < 2 * all.size()) size *= 2;
        slots.assign(size, 0);
        for (std::size_t index = 0; index < all.size(); ++index) {
            std::size_t slot = FirstSlotOf(all[index].id);
            while (slots[slot] != 0) slot = Next(slot);
            slots[slot] = index + 1;
        }
    }
    // In their order.
    std::vector<std::size_t> Find(const std::string& id, const std::vector<Target>& all) const {
        std::vector<std::size_t> found;
        for (std::size_t slot = FirstSlotOf(id); slots[slot] != 0; slot = Next(slot))
            if (all[slots[slot] - 1].id == id) found.push_back(slots[slot] - 1);
        return found;
    }

private:
    std::size_t FirstSlotOf(const std::string& id) const { return std::hash<std::string>()(id) & (slots.size() - 1); }
    std::size_t Next(std::size_t slot) const { return (slot + 1) & (slots.size() - 1); }

    std::vector<std::size_t> slots; // an index and one, 0 for none; a power of two of them, at most half of them taken
};

// The variables of a text by what their ids call them. Mostly they are asked for in the order of the text.
class VariablesByNumber {
public:
    explicit VariablesByNumber(const std::vector<VariableInText>& variables) : all(variables) {}

    std::optional<std::size_t> Find(std::string_view number) {
        if (next < all.size() && all[next].name == number) return next++;
        if (byNumber.empty())
            for (std::size_t index = 0; index < all.size(); ++index) byNumber.emplace(NumberOf(all[index].name), index);
        const auto known = byNumber.find(std::string(number));
        if (known == byNumber.end()) return std::nullopt;
        next = known->second + 1;
        return known->second;
    }

private:
    static std::string NumberOf(const std::string& name) {
        std::int64_t number = 0;
        return ReadInteger(name, number) ? std::to_string(static_cast<std::uint64_t>(number)) : name;
    }

    const std::vector<VariableInText>& all;
    std::unordered_map<std::string, std::size_t> byNumber;
    std::size_t next = 0;
};

} // namespace

struct Settable::Parts {
    // Where a target stands in the file.
    struct Place {
        cfg::Section::ParameterIterator parameter; // of a section's parameter
        cfg::ScenarioScript* script = nullptr;     // of a variable
        std::size_t variable = 0;                  // its index in the text
    };

    std::vector<Target> targets;
    std::vector<Place> places;
    std::vector<Declaration> declarations;
    IdIndex byId;
    // Ids as the tree forms them to the reason of what cannot be set.
    std::unordered_map<std::string, std::string> others;
    std::map<cfg::ScenarioScript*, std::vector<VariableInText>> variables;

    void Add(Target target, Place place) {
        targets.push_back(std::move(target));
        places.push_back(std::move(place));
    }

    // `place` is the id of the node.
    void Walk(ScenarioNode& node, const std::string& place) {
        if (auto* script = dynamic_cast<ScriptNode*>(&node)) return WalkScript(*script, place);
        auto* sectionNode = dynamic_cast<TavrelScenarioNode*>(&node);
        if (!sectionNode) return;
        cfg::Section& section = *sectionNode->getSection();
        for (auto parameter = section.beginParameter(); parameter != section.endParameter(); ++parameter) {
            Target target;
            target.id = Below(place, parameter.getCName());
            const std::optional<ValueType> type = TypeOf(parameter.getType());
            if (!type) {
                others[target.id] = parameter.getType() == cfg::t_ParameterTypeVector ? "a vector" : "a list";
                continue;
            }
            target.type = *type;
            target.isEnumeration = parameter.getType() == cfg::t_ParameterTypeEnumeration;
            target.unit = parameter.getUnit();
            Add(std::move(target), {parameter, nullptr, 0});
        }
        std::vector<ScenarioNode*> children;
        node.getChildren(children);
        for (ScenarioNode* child : children) Walk(*child, Below(place, child->getId()));
    }

    // The node says which variables there are and under which ids, the text where they stand.
    void WalkScript(ScriptNode& node, const std::string& place) {
        cfg::ScenarioScript* script = node.getScript();
        std::vector<VariableInText>& found = variables[script] = VariablesIn(script->text);
        VariablesByNumber byNumber(found);
        std::vector<ScenarioTemplateDb::ScenarioParameter*> parameters;
        node.getParameters(parameters);
        for (const ScenarioTemplateDb::ScenarioParameter* parameter : parameters) {
            Target target;
            // "Variable[name=12]/value"
            const std::string step = parameter->getId();
            target.id = Below(place, step);
            target.isVariable = true;
            const std::size_t equals = step.find('=');
            const std::optional<std::size_t> known =
                byNumber.Find(std::string_view(step).substr(equals + 1, step.find(']') - equals - 1));
            const std::optional<ValueType> type = known ? TypeOf(found[*known]) : std::nullopt;
            if (!type) {
                others[target.id] = "of a type that nobody knows";
                continue;
            }
            target.type = *type;
            Add(std::move(target), {{}, script, *known});
        }
    }

    void ReadDeclarations(cfg::CfgScenario& file) {
        std::vector<cfg::Section*> sections;
        file.getRootSection()->getSubSections(cfg::VariadicParameter::sectionName(), sections);
        for (cfg::Section* section : sections) {
            auto* variadic = dynamic_cast<cfg::VariadicParameter*>(section);
            if (!variadic) continue;
            declarations.push_back(DeclarationOf(*variadic, declarations.size()));
            Declaration& declaration = declarations.back();
            const std::vector<std::size_t> found = WithId(declaration.parameterId);
            declaration.targets = found.size();
            for (const std::size_t target : found) targets[target].declarations.push_back(declaration.index);
        }
    }

    // Those whose id leads to the same place as this text.
    std::vector<std::size_t> WithId(const std::string& id) const {
        std::vector<std::size_t> found = byId.Find(id, targets);
        return found.empty() ? byId.Find(Normal(id), targets) : found;
    }

    // The one target of an id that `subject` has.
    std::size_t TargetOf(const std::string& id, const std::string& subject) const {
        const std::vector<std::size_t> found = WithId(id);
        if (found.size() == 1) return found.front();
        if (found.size() > 1)
            throw AssignmentError(subject + " leads to " + std::to_string(found.size()) +
                                  " places, so it is not known which of them is meant");
        const auto known = others.find(id);
        const auto other = known == others.end() ? others.find(Normal(id)) : known;
        if (other != others.end()) throw AssignmentError(subject + " is " + other->second + ", which cannot be set");
        std::vector<std::string> ids;
        for (const Target& target : targets) ids.push_back(target.id);
        throw AssignmentError(subject + " leads nowhere" + DidYouMean(id, ids));
    }

    const VariableInText& VariableOf(const Place& place) const { return variables.at(place.script)[place.variable]; }

    // What the file has in place of the value, so that it need not be touched.
    bool IsPresent(const Target& target, const Place& place, const Assignment& assignment) const {
        if (place.script) {
            const VariableInText& variable = VariableOf(place);
            double number = 0;
            std::int64_t whole = 0;
            switch (target.type) {
            case ValueType::Boolean:
                return !variable.value.empty() && (variable.value != "0") == assignment.boolean;
            case ValueType::Integer:
                return ReadInteger(variable.value, whole) && std::to_string(whole) == assignment.text;
            case ValueType::Real:
                return ReadReal(variable.value, number) && number == InSI(assignment);
            case ValueType::Literal:
                return variable.value == assignment.text;
            }
        }
        cfg::Section::ParameterIterator parameter = place.parameter;
        switch (target.type) {
        case ValueType::Boolean:
            return parameter.getBool() == assignment.boolean;
        case ValueType::Integer:
            return Stored(assignment.number, assignment.unit, target.unit) == parameter.getInt();
        case ValueType::Real:
            return parameter.getDouble() == InSI(assignment) ||
                   lmk::convToUnit(assignment.unit, parameter.getDouble()) == assignment.number;
        case ValueType::Literal:
            break;
        }
        return parameter.getString() == assignment.text;
    }

    static double InSI(const Assignment& assignment) { return lmk::convToSI(assignment.unit, assignment.number); }
};

Settable::Settable(cfg::CfgScenario& file, ScenarioNode* root) : parts(std::make_unique<Parts>()) {
    std::unique_ptr<TavrelScenarioNode> own;
    if (!root) {
        own = std::make_unique<TavrelScenarioNode>(file.getRootSection(), nullptr);
        root = own.get();
    }
    parts->Walk(*root, root->getNodeId());
    parts->byId.Make(parts->targets);
    parts->ReadDeclarations(file);
}

Settable::~Settable() = default;

const std::vector<Target>& Settable::Targets() const { return parts->targets; }
const std::vector<Declaration>& Settable::Declarations() const { return parts->declarations; }

Named Settable::Find(const std::string& name) const {
    if (name.starts_with('/')) return {parts->TargetOf(name, "parameter " + Quoted(name)), std::nullopt};
    const std::vector<Declaration>& all = parts->declarations;
    std::size_t position = 0;
    const char* const end = name.data() + name.size();
    const bool isPosition = name.size() > 1 && name[0] == '#' &&
                            std::all_of(name.begin() + 1, name.end(), [](char c) { return IsDigit(c); });
    if (isPosition) {
        const bool fits = std::from_chars(name.data() + 1, end, position).ec == std::errc();
        if (!fits || position >= all.size())
            throw AssignmentError("there is no declaration " + name + "; there are " + std::to_string(all.size()) +
                                  (all.empty() ? "" : ", the first is #0"));
    } else {
        std::vector<std::string> known;
        std::vector<std::size_t> found;
        for (const Declaration& declaration : all) {
            known.push_back(declaration.name);
            if (declaration.name == name) found.push_back(declaration.index);
        }
        if (found.empty()) throw AssignmentError("there is no declaration " + Quoted(name) + DidYouMean(name, known));
        if (found.size() > 1) {
            std::string places;
            for (const std::size_t index : found) places += (places.empty() ? "#" : ", #") + std::to_string(index);
            throw AssignmentError("several declarations are named " + Quoted(name) + ": " + places);
        }
        position = found.front();
    }
    const Declaration& declaration = all[position];
    return {parts->TargetOf(declaration.parameterId,
                            "declaration " + Quoted(name) + ", whose id is " + Quoted(declaration.parameterId) + ","),
            position};
}

lmk::t_unit Settable::UnitOf(const Named& named) const {
    const lmk::t_unit declared = named.declaration ? parts->declarations[*named.declaration].unit : lmk::UNIT_UNDEFINED;
    return IsNoUnit(declared) ? parts->targets[named.target].unit : declared;
}

Assignment Settable::Read(const Named& named, const std::string& value, Ranges ranges,
                          std::vector<std::string>* left) const {
    const Target& target = parts->targets[named.target];
    Assignment assignment{named.target, target.id, value, 0, lmk::UNIT_UNDEFINED, false};
    const auto refuse = [&](const std::string& reason) {
        throw AssignmentError(Quoted(value) + " for " + target.id + " " + reason);
    };
    switch (target.type) {
    case ValueType::Boolean:
        if (value != "true" && value != "false") refuse("is neither true nor false");
        assignment.boolean = value == "true";
        break;
    case ValueType::Literal:
        if (target.isVariable && value.find_first_of("\"\t\n\r\f\v") != std::string::npos)
            refuse("cannot be held by a script, where a quote, a tab and a line end end a value");
        if (!IsXmlText(value))
            refuse("cannot be held by a scenario file, which takes characters of UTF-8 that XML knows");
        for (const std::size_t index : target.declarations) {
            const std::vector<std::string>& literals = parts->declarations[index].literals;
            if (!target.isEnumeration || literals.empty() ||
                std::find(literals.begin(), literals.end(), value) != literals.end())
                continue;
            refuse("is not among " + OutsideOf(parts->declarations[index], assignment) + DidYouMean(value, literals));
        }
        break;
    case ValueType::Integer:
    case ValueType::Real: {
        const bool isInteger = target.type == ValueType::Integer;
        const std::size_t blank = value.find(' ');
        const std::string digits = value.substr(0, blank);
        assignment.unit = UnitOf(named);
        if (blank != std::string::npos) {
            const std::string unit = value.substr(blank + 1);
            assignment.unit = lmk::toTUnit(unit.c_str());
            if (unit.empty() || (IsNoUnit(assignment.unit)))
                refuse("has " + (unit.empty() ? "a blank after the number" : Quoted(unit) + ", which is no unit"));
        }
        if (!lmk::sameDimension(assignment.unit, target.unit))
            refuse(std::string("is in ") + (IsNoUnit(assignment.unit) ? "no unit" : lmk::toText(assignment.unit)) +
                   ", and the parameter " +
                   (IsNoUnit(target.unit) ? std::string("has no unit")
                                          : "is in " + std::string(lmk::toText(target.unit))));
        std::int64_t whole = 0;
        if (isInteger ? !ReadInteger(digits, whole) : !ReadReal(digits, assignment.number))
            refuse((isInteger ? "is no integer" : "is no decimal number") + HintAtBlank(digits));
        if (isInteger) assignment.number = static_cast<double>(whole);
        const bool hasOwnUnit = assignment.unit == target.unit || (IsNoUnit(assignment.unit) && IsNoUnit(target.unit));
        assignment.text = (isInteger ? std::to_string(whole) : NumberText(digits, assignment.number)) +
                          (hasOwnUnit ? "" : std::string(" ") + lmk::toText(assignment.unit));
        const double si = Parts::InSI(assignment);
        if (isInteger && target.isVariable) {
            if (!hasOwnUnit && (std::round(si) != si || std::abs(si) > 9007199254740992.0))
                refuse("would not read back as itself");
        } else if (isInteger) {
            if (!Stored(assignment.number, assignment.unit, target.unit))
                refuse("would not read back as itself, since an integer of 32 bits is stored" +
                       (IsNoUnit(target.unit) ? std::string() : std::string(" in SI units")));
        } else if (!std::isfinite(si) || !IsNear(lmk::convToUnit(assignment.unit, si), assignment.number)) {
            refuse("would not read back as itself");
        }
        break;
    }
    }
    for (const std::size_t index : target.declarations) {
        const Declaration& declaration = parts->declarations[index];
        const std::string allowed = OutsideOf(declaration, assignment);
        if (allowed.empty()) continue;
        const std::string sentence =
            "lies outside of what declaration " + Quoted(declaration.name) + " allows: " + allowed;
        if (ranges == Ranges::Bind) refuse(sentence);
        if (left) left->push_back(Quoted(value) + " for " + target.id + " " + sentence);
    }
    return assignment;
}

std::string Settable::OutsideOf(const Declaration& declaration, const Assignment& assignment) const {
    const Target& target = parts->targets[assignment.target];
    std::string allowed;
    const auto tell = [&](const std::string& text) { allowed += (allowed.empty() ? "" : " or ") + text; };
    bool within = false;
    if (target.type == ValueType::Integer || target.type == ValueType::Real) {
        const lmk::t_unit unit = IsNoUnit(declaration.unit) ? target.unit : declaration.unit;
        const double number = Converted(assignment.number, assignment.unit, unit);
        // An end that is told in another unit has lost digits, and may lie outside when it comes back.
        const auto isEnd = [&](double end) { return Converted(end, unit, assignment.unit) == assignment.number; };
        const auto look = [&](double minimum, double maximum) {
            within = within || (minimum <= number && number <= maximum) || isEnd(minimum) || isEnd(maximum);
            tell(NumberText(minimum) + " to " + NumberText(maximum));
        };
        for (const auto& range : declaration.integerRanges) look(range.minimum, range.maximum);
        for (const auto& range : declaration.realRanges) look(range.minimum, range.maximum);
        if (!allowed.empty() && !IsNoUnit(unit)) allowed += std::string(" ") + lmk::toText(unit);
    }
    for (const std::string& literal : declaration.literals) {
        within = within || literal == assignment.text;
        tell(Quoted(literal));
    }
    return within ? "" : allowed;
}

std::string Settable::Present(std::size_t index) const {
    const Target& target = parts->targets[index];
    const Parts::Place& place = parts->places[index];
    if (place.script) {
        const std::string& value = parts->VariableOf(place).value;
        if (target.type == ValueType::Boolean) return value.empty() || value == "0" ? "false" : "true";
        std::int64_t whole = 0;
        double number = 0;
        if (target.type == ValueType::Integer && ReadInteger(value, whole)) return std::to_string(whole);
        if (target.type == ValueType::Real && ReadReal(value, number)) return NumberText(value, number);
        return value;
    }
    cfg::Section::ParameterIterator parameter = place.parameter;
    switch (target.type) {
    case ValueType::Boolean:
        return parameter.getBool() ? "true" : "false";
    case ValueType::Integer:
        return NumberText(Shown(parameter.getInt(), target.unit));
    case ValueType::Real:
        return NumberText(lmk::convToUnit(target.unit, parameter.getDouble()));
    case ValueType::Literal:
        break;
    }
    return parameter.getString();
}

void Settable::Apply(const std::vector<Assignment>& assignments) {
    for (const Assignment& assignment : assignments) {
        const Target& target = parts->targets[assignment.target];
        Parts::Place& place = parts->places[assignment.target];
        if (parts->IsPresent(target, place, assignment)) continue;
        if (place.script) {
            const double si = Parts::InSI(assignment);
            const bool asGiven = assignment.text.find(' ') == std::string::npos;
            const std::string value = target.type == ValueType::Boolean   ? (assignment.boolean ? "1" : "0")
                                      : target.type == ValueType::Literal ? assignment.text
                                      : asGiven                           ? assignment.text
                                                                          : NumberText(si);
            PutValue(place.script->text, parts->variables[place.script], place.variable, value);
            continue;
        }
        switch (target.type) {
        case ValueType::Boolean:
            place.parameter.getBool() = assignment.boolean;
            break;
        case ValueType::Integer:
            place.parameter.getInt() = *Stored(assignment.number, assignment.unit, target.unit);
            break;
        case ValueType::Real:
            place.parameter.getDouble() = Parts::InSI(assignment);
            break;
        case ValueType::Literal:
            place.parameter.getString() = assignment.text;
            break;
        }
    }
}

std::vector<Assignment> ReadAll(const Settable& settable, const std::vector<AssignmentText>& first,
                                const std::vector<AssignmentText>& second, Ranges ranges,
                                std::vector<std::string>* left) {
    std::vector<Assignment> all;
    std::map<std::size_t, std::string> own;   // of the list that is being read: target to name
    std::map<std::size_t, std::size_t> place; // target to position in `all`
    const auto read = [&](const std::vector<AssignmentText>& list) {
        own.clear();
        for (const AssignmentText& text : list) {
            const Named named = settable.Find(text.name);
            const auto [former, isNew] = own.emplace(named.target, text.name);
            if (!isNew)
                throw AssignmentError(settable.Targets()[named.target].id + " is set twice, as " +
                                      Quoted(former->second) + " and as " + Quoted(text.name));
            Assignment assignment = settable.Read(named, text.value, ranges, left);
            const auto [position, isFirst] = place.emplace(named.target, all.size());
            if (isFirst)
                all.push_back(std::move(assignment));
            else
                all[position->second] = std::move(assignment);
        }
    };
    read(first);
    read(second);
    return all;
}

} // namespace TavrelVariation
