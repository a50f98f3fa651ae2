#include "ScenarioReader.h"

#include <string_view>
#include <utility>

#include <cfg/Scenario.h>

#include "Document.h"
#include "ValueText.h"
#include "XmlText.h"

namespace cfg::detail {

namespace {

using Commons::detail::NameIs;
using Commons::detail::XmlDocument;
using Commons::detail::XmlFault;
using Fault = std::optional<XmlFault>;

constexpr std::string_view kTopElement = "sce";
constexpr std::string_view kFormatVersion = "1";

// The attributes of an element that mean something here, null where it has none.
struct Attributes {
    const char* value = nullptr; // its presence makes the element a parameter
    const char* type = nullptr;
    const char* unit = nullptr;
    const char* verboseName = nullptr;
};

class Reader {
public:
    Reader(const XmlDocument& parsedXml, Document& target) : xml(parsedXml), document(target) {}

    Fault ReadTop() {
        const pugi::xml_node top = xml.Top();
        if (top.name() != kTopElement)
            return At(top, "the top element is " + Tag(top) + ", not <" + std::string(kTopElement) + ">");
        const pugi::xml_attribute version = top.attribute("version");
        if (version && version.value() != kFormatVersion)
            return At(top, "scenario files of version " + std::string(version.value()) + " are not known");
        const pugi::xml_node root = top.child(Scenario::sectionName());
        if (!root) return At(top, "no <Scenario>");
        if (const pugi::xml_node second = root.next_sibling(Scenario::sectionName()))
            return At(second, "a second <Scenario>");
        document.PlaceRoot(xml.PositionOf(root.name()));
        return ReadSection(root, *document.Root(), 1);
    }

private:
    Fault ReadSection(pugi::xml_node element, Section& section, size_t level) {
        if (level > kMostLevels) return At(element, "more than " + std::to_string(kMostLevels) + " nested sections");
        Value** lastParameter = &Access::ParametersOf(section);
        size_t declared = 0;
        for (; *lastParameter; ++declared) lastParameter = &(*lastParameter)->next;

        for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling()) {
            if (child.type() != pugi::node_element) continue;
            Name* name = document.InternNext(child.name());
            Attributes attributes;
            if (Fault fault = ReadAttributes(child, attributes)) return fault;
            Fault fault;
            if (attributes.value) {
                Value* parameter = FindUnplaced(section, declared, &name->text);
                if (!parameter) {
                    t_ParameterType type = t_ParameterTypeString;
                    if ((fault = ReadType(child, attributes, type))) return fault;
                    parameter = *lastParameter = document.NewValue(&name->text, type);
                    lastParameter = &parameter->next;
                }
                fault = ReadParameter(child, *name, attributes, *parameter);
            } else if (Value* field = FindValue(Access::FieldsOf(section), &name->text)) {
                fault = ReadTextField(child, *field);
            } else {
                Section* subSection = document.NewSection(name, &section, xml.PositionOf(child.name()));
                Access::SubSectionsOf(section).push_back(subSection);
                fault = ReadSection(child, *subSection, level + 1);
            }
            if (fault) return fault;
        }
        return std::nullopt;
    }

    // By hand instead of by range: two calls per attribute less, where most of the time of a load goes.
    Fault ReadAttributes(pugi::xml_node element, Attributes& attributes) const {
        for (pugi::xml_attribute attribute = element.first_attribute(); attribute;
             attribute = attribute.next_attribute()) {
            const char** known = FindKnown(attribute.name(), attributes);
            if (!known) continue;
            if (*known) return At(element, Tag(element) + " has " + attribute.name() + " twice");
            *known = attribute.value();
        }
        return std::nullopt;
    }

    static const char** FindKnown(const char* name, Attributes& attributes) {
        if (NameIs(name, "ScenarioTreeValue")) return &attributes.value;
        if (NameIs(name, "type")) return &attributes.type;
        if (NameIs(name, "unit")) return &attributes.unit;
        if (NameIs(name, "verboseName")) return &attributes.verboseName;
        return nullptr;
    }

    Fault ReadType(pugi::xml_node element, const Attributes& attributes, t_ParameterType& type) const {
        if (!attributes.type || ParseType(attributes.type, type)) return std::nullopt;
        return At(element, Tag(element) + " has the unknown type \"" + attributes.type + "\"");
    }

    Fault ReadParameter(pugi::xml_node element, Name& name, const Attributes& attributes, Value& parameter) const {
        t_ParameterType type = parameter.type;
        if (Fault fault = ReadType(element, attributes, type)) return fault;
        if (type != parameter.type) return At(element, Tag(element) + " must be of type " + TypeWord(parameter.type));
        parameter.place = xml.PositionOf(attributes.value);
        if (attributes.verboseName) parameter.verbosePlace = xml.PositionOf(attributes.verboseName);
        if (attributes.unit) parameter.unit = UnitOf(name, attributes.unit);
        return ReadValue(element, attributes.value, parameter);
    }

    // Parameters of one name have one unit, nearly always.
    static lmk::t_unit UnitOf(Name& name, const char* text) {
        if (name.unitText != text) {
            name.unitText = text;
            name.unit = lmk::toTUnit(text);
        }
        return name.unit;
    }

    Fault ReadTextField(pugi::xml_node element, Value& field) const {
        if (field.place != kNotInFile) return At(element, "a second " + Tag(element));
        field.place = xml.PositionOf(element.name());
        // The parser has it already; the rest is rare.
        if (HoldsPlainText(document.source, field.place)) return ReadValue(element, element.child_value(), field);
        const ElementText content = ReadElementText(document.source, field.place);
        if (content.hasElements) return At(element, Tag(element) + " holds elements, not a text");
        return ReadValue(element, content.text, field);
    }

    Fault ReadValue(pugi::xml_node element, std::string_view text, Value& value) const {
        if (ParseValue(text, value)) return std::nullopt;
        constexpr size_t kLongestQuote = 80;
        const std::string quoted =
            "\"" + std::string(text.substr(0, kLongestQuote)) + (text.size() > kLongestQuote ? "\"..." : "\"");
        return At(element, Tag(element) + " is of type " + TypeWord(value.type) + " and holds " + quoted);
    }

    static Value* FindValue(Value* first, const std::string* name) {
        while (first && first->name != name) first = first->next;
        return first;
    }

    // The declared parameter of that name, if no element has been taken for it yet. Declared ones come first.
    static Value* FindUnplaced(Section& section, size_t declared, const std::string* name) {
        Value* value = Access::ParametersOf(section);
        for (; declared > 0; --declared, value = value->next)
            if (value->name == name) return value->place == kNotInFile ? value : nullptr;
        return nullptr;
    }

    static std::string Tag(pugi::xml_node element) { return "<" + std::string(element.name()) + ">"; }

    XmlFault At(pugi::xml_node element, std::string reason) const {
        return {xml.RowOf(element.name()), std::move(reason), xml.PositionOf(element.name())};
    }

    const XmlDocument& xml;
    Document& document;
};

} // namespace

std::optional<XmlFault> ReadScenario(std::string bytes, Document& document) {
    document.source = std::move(bytes);
    XmlDocument xml;
    if (Fault fault = xml.Parse(document.source)) return fault;
    document.isInOtherEncoding = xml.DeclaresOtherEncoding();
    return Reader(xml, document).ReadTop();
}

} // namespace cfg::detail
