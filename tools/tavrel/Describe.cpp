#include "Describe.h"

#include <Commons/ShortestNumber.h>
#include <TavrelScenarioTemplateDb/TavrelScenarioNode.h>
#include <cfg/Section.h>
#include <fmt/format.h>
#include <scenario/NearestName.h>

#include "Failure.h"
#include "Spelling.h"

namespace tavrel {

using ScenarioTemplateDb::Exception;
using ScenarioTemplateDb::ParameterType;
using ScenarioTemplateDb::Scenario;
using ScenarioTemplateDb::ScenarioNode;
using ScenarioTemplateDb::ScenarioParameter;
using ScenarioTemplateDb::VariadicParameter;

namespace {

constexpr const char* kOtherType = "other"; // of the file, unknown to the interface

// A declaration may lack the section that holds its default; it has none then.
template <typename Read>
auto DefaultOr(const Read& read, decltype(read()) none) {
    try {
        return read();
    } catch (Exception* exception) {
        delete exception;
        return none;
    }
}

Json DefaultJson(const VariadicParameter& declaration) {
    return DefaultOr(
        [&]() -> Json {
            switch (declaration.getType()) {
            case ScenarioTemplateDb::ParameterTypeBoolean:
                return declaration.getBooleanDefaultValue();
            case ScenarioTemplateDb::ParameterTypeInteger:
                return declaration.getIntegerDefaultValue();
            case ScenarioTemplateDb::ParameterTypeReal:
                return declaration.getRealDefaultValue();
            case ScenarioTemplateDb::ParameterTypeLiteral:
                break;
            }
            return declaration.getLiteralDefaultValue();
        },
        Json());
}

template <typename T>
Json RangesJson(const std::vector<const VariadicParameter::Range<T>*>& ranges) {
    Json list = Json::array();
    for (const VariadicParameter::Range<T>* range : ranges)
        list.push_back({{"minimum", range->getMinimum()}, {"maximum", range->getMaximum()}});
    return list;
}

// The permitted values: a member "ranges" or "literals", as the type has it.
void AddDomain(const VariadicParameter& declaration, Json& json) {
    if (declaration.isInteger()) {
        std::vector<const VariadicParameter::Range<int>*> ranges;
        declaration.getIntegerRanges(ranges);
        json["ranges"] = RangesJson(ranges);
    } else if (declaration.isReal()) {
        std::vector<const VariadicParameter::Range<double>*> ranges;
        declaration.getRealRanges(ranges);
        json["ranges"] = RangesJson(ranges);
    } else if (declaration.isLiteral()) {
        std::vector<std::string> literals;
        declaration.getLiterals(literals);
        json["literals"] = literals;
    }
}

std::string ScalarText(const Json& value) {
    if (value.is_string()) return "\"" + value.get<std::string>() + "\"";
    return value.is_number_float() ? ShortNumber(value.get<double>()) : value.dump();
}

// The interface gives no value of an enumeration, a vector or a list; the file has a text for it all the same.
std::string TextInFile(cfg::Section& section, std::size_t index) {
    auto parameter = section.beginParameter();
    for (; index > 0 && parameter != section.endParameter(); --index) ++parameter;
    return parameter == section.endParameter() ? "" : parameter.getString();
}

void AddIds(const ScenarioNode& node, std::vector<std::string>& ids) {
    std::vector<ScenarioParameter*> parameters;
    node.getParameters(parameters);
    for (const ScenarioParameter* parameter : parameters) ids.push_back(parameter->getParameterId());
    if (node.getChildNumber() == 0) return; // a script refuses to list its children
    std::vector<ScenarioNode*> children;
    node.getChildren(children);
    for (const ScenarioNode* child : children) AddIds(*child, ids);
}

} // namespace

std::vector<std::string> ParameterIds(const ScenarioNode& node) {
    std::vector<std::string> ids;
    AddIds(node, ids);
    return ids;
}

const ScenarioParameter& ParameterOf(const Scenario& scenario, const std::string& id) {
    const auto nearest = [&] {
        const std::vector<std::string> ids = ParameterIds(*scenario.getRootScenarioNode());
        // Ids begin alike for long, so those of the same node are compared by their ends.
        const std::string node = id.substr(0, id.rfind('/') + 1);
        std::vector<std::string> siblings;
        for (const std::string& known : ids)
            if (!node.empty() && known.rfind(node, 0) == 0) siblings.push_back(known.substr(node.size()));
        if (siblings.empty()) return DidYouMean(id, ids);
        const std::string near = NearestName(id.substr(node.size()), siblings);
        return near.empty() ? near : fmt::format(", did you mean \"{}{}\"", node, near);
    };
    std::string refusal;
    try {
        if (const ScenarioParameter* parameter = scenario.getParameterFromId(id)) return *parameter;
    } catch (...) {
        refusal = CurrentFailure().sentence;
    }
    const std::string meant = MeantOf(id, ParameterIds(*scenario.getRootScenarioNode()));
    if (meant != id) return ParameterOf(scenario, meant);
    if (!refusal.empty()) throw Failure{ExitUnreadable, refusal + nearest()};
    throw Failure{
        ExitUnreadable,
        fmt::format("\"{}\" is no parameter id{}; one begins with /sce/Scenario/ and ends at a parameter, and "
                    "'tavrel ids {}' shows them all",
                    id, nearest(), scenario.getPath())};
}

std::string DumpJson(const Json& json) { return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n"; }

std::string DumpJsonLine(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n"; }

std::string TypeWord(const ScenarioParameter& parameter) {
    if (parameter.isBoolean()) return "boolean";
    if (parameter.isInteger()) return "integer";
    if (parameter.isReal()) return "real";
    return parameter.isLiteral() ? "literal" : kOtherType;
}

std::string TypeWord(ParameterType type) {
    switch (type) {
    case ScenarioTemplateDb::ParameterTypeBoolean:
        return "boolean";
    case ScenarioTemplateDb::ParameterTypeInteger:
        return "integer";
    case ScenarioTemplateDb::ParameterTypeReal:
        return "real";
    case ScenarioTemplateDb::ParameterTypeLiteral:
        break;
    }
    return "literal";
}

std::string ShortNumber(double number) { return Commons::ShortestNumber(number); }

std::string ValueText(const ScenarioParameter& parameter) {
    using TavrelScenarioTemplateDb::TavrelScenarioNode;
    if (TypeWord(parameter) == kOtherType)
        if (const auto* node = dynamic_cast<const TavrelScenarioNode*>(parameter.getParentNode()))
            return TextInFile(*node->getSection(), parameter.getIndex());
    return parameter.getValueAsString();
}

Json ParameterJson(const ScenarioParameter& parameter) {
    const std::string type = TypeWord(parameter);
    Json json = {{"id", parameter.getId()},
                 {"parameterId", parameter.getParameterId()},
                 {"name", parameter.getName()},
                 {"description", parameter.getDescription()},
                 {"type", type},
                 {"unit", parameter.hasParameterUnit() ? Json(parameter.getParameterUnit()) : Json()},
                 {"value", Json()},
                 {"text", Json()}};
    // The value of a script's variable is any text, whatever its type says; it has a text then and no value.
    try {
        json["text"] = ValueText(parameter);
        if (type == "boolean") json["value"] = parameter.getBooleanValue();
        if (type == "integer") json["value"] = parameter.getIntegerValue();
        if (type == "real") json["value"] = parameter.getRealValue();
        if (type == "literal") json["value"] = parameter.getLiteralValue();
    } catch (...) {
        CurrentFailure();
    }
    return json;
}

Json NodeJson(const ScenarioNode& node) {
    Json json = {{"id", node.getId()},
                 {"nodeId", node.getNodeId()},
                 {"name", node.getName()},
                 {"parameters", Json::array()},
                 {"children", Json::array()}};
    std::vector<ScenarioParameter*> parameters;
    node.getParameters(parameters);
    for (const ScenarioParameter* parameter : parameters) json["parameters"].push_back(ParameterJson(*parameter));
    if (node.getChildNumber() == 0) return json; // a script refuses to list its children
    std::vector<ScenarioNode*> children;
    node.getChildren(children);
    for (const ScenarioNode* child : children) json["children"].push_back(NodeJson(*child));
    return json;
}

Json DeclarationJson(const VariadicParameter& declaration) {
    Json json = {{"name", declaration.getName()},
                 {"description", declaration.getDescription()},
                 {"parameterId", declaration.getParameterId()},
                 {"unit", declaration.getParameterUnit()},
                 {"type", TypeWord(declaration.getType())},
                 {"default", DefaultJson(declaration)}};
    AddDomain(declaration, json);
    return json;
}

Json DeclarationsJson(const Scenario& scenario) {
    Json list = Json::array();
    const std::size_t count = scenario.getVariadicParameterNumber(); // opens the file, which the others do not
    for (std::size_t i = 0; i < count; ++i) list.push_back(DeclarationJson(*scenario.getVariadicParameter(i)));
    return list;
}

std::string DeclarationText(const VariadicParameter& declaration) {
    const Json json = DeclarationJson(declaration);
    std::string text = json["type"].get<std::string>();
    if (!declaration.getParameterUnit().empty()) text += ", " + declaration.getParameterUnit();
    if (!json["default"].is_null()) text += ", default " + ScalarText(json["default"]);
    std::string domain;
    if (json.contains("ranges"))
        for (const Json& range : json["ranges"])
            domain += fmt::format("{}{} to {}", domain.empty() ? "" : " or ", ScalarText(range["minimum"]),
                                  ScalarText(range["maximum"]));
    if (json.contains("literals"))
        for (const Json& literal : json["literals"]) domain += (domain.empty() ? "" : " or ") + ScalarText(literal);
    return domain.empty() ? text : text + ", " + domain;
}

} // namespace tavrel
