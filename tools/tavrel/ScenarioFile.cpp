#include "ScenarioFile.h"

#include <fstream>
#include <iterator>

#include <fmt/format.h>
#include <lmk/units.h>

#include "Arguments.h"
#include "Describe.h"
#include "Failure.h"
#include "Files.h"

namespace tavrel {

namespace {

constexpr const char* kValue = "ScenarioTreeValue";

std::string BytesOf(const std::string& path) {
    const std::string reason = ReasonNotToOpen(path);
    if (!reason.empty()) throw Failure{ExitUnreadable, fmt::format("{}: {}", path, reason)};
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The file keeps values in SI; people know them in their unit.
std::string InUnit(const std::string& value, const std::string& type, const std::string& unit) {
    double number = 0;
    if ((type != "real" && type != "integer") || !ReadNumber(value, number)) return value;
    const lmk::t_unit known = lmk::toTUnit(unit.c_str());
    return known == lmk::UNIT_UNDEFINED ? value : ShortNumber(lmk::convToUnit(known, number));
}

bool IsTextField(std::string_view name) {
    constexpr std::string_view kFields[] = {"scriptName",  "scriptType",    "text",
                                            "parameterId", "parameterUnit", "default"};
    for (const std::string_view field : kFields)
        if (name == field) return true;
    return false;
}

} // namespace

ScenarioFile::ScenarioFile(const std::string& filePath)
    : path(filePath), text(std::make_unique<cfg::ScenarioText>(BytesOf(filePath))),
      places(std::make_unique<Commons::TextPlaces>(text->Bytes())) {
    if (const auto& fault = text->FirstFault())
        throw Failure{ExitUnreadable, PlacedLine(fmt::format("{}:{}: {}", path, fault->row, fault->reason))};
}

const ScenarioFile::Element* ScenarioFile::Root() const {
    return text->Elements().empty() ? nullptr : text->Child(text->Elements().front(), "Scenario");
}

std::string ScenarioFile::TextBelow(const Element& element, const char* name) const {
    const Element* child = text->Child(element, name);
    return child && !child->hasElements() ? text->TextOf(*child).Text() : "";
}

std::string ScenarioFile::ValueOf(const Element& parent, const char* name) const {
    const Element* child = text->Child(parent, name);
    const auto* value = child ? cfg::ScenarioText::FindAttribute(*child, kValue) : nullptr;
    return value ? text->TextOf(*value).Text() : "";
}

std::string ScenarioFile::Name() const { return TextBelow(*Root(), "name"); }
std::string ScenarioFile::Description() const { return TextBelow(*Root(), "description"); }

std::string ScenarioFile::IdOf(const Element& element, const std::string& parentId) const {
    std::string id = parentId + "/" + std::string(element.name);
    if (element.name == "Vehicle" || element.name == "Driver") {
        int number = 0;
        ReadNumber(ValueOf(element, "id"), number);
        id += fmt::format("[id/@{}={}]", kValue, number);
    }
    return id;
}

void ScenarioFile::AddParameters(const Element& element, const std::string& id, std::vector<FileParameter>& out) const {
    for (const std::size_t index : element.children) {
        const Element& child = text->Elements()[index];
        if (child.name == "ScenarioScript" || child.name == "VariadicParameter") continue;
        const auto* value = cfg::ScenarioText::FindAttribute(child, kValue);
        if (!value) {
            if (!IsTextField(child.name)) AddParameters(child, IdOf(child, id), out);
            continue;
        }
        const auto attribute = [&](const char* name, const char* fallback) {
            const auto* found = cfg::ScenarioText::FindAttribute(child, name);
            return found ? text->TextOf(*found).Text() : fallback;
        };
        FileParameter parameter;
        parameter.id = fmt::format("{}/{}", id, child.name);
        parameter.name = child.name;
        parameter.longName = attribute("verboseName", "");
        parameter.type = attribute("type", "string");
        parameter.unit = attribute("unit", "");
        parameter.value = InUnit(text->TextOf(*value).Text(), parameter.type, parameter.unit);
        parameter.row = RowAt(child.begin);
        out.push_back(std::move(parameter));
    }
}

std::vector<FileParameter> ScenarioFile::Parameters() const {
    std::vector<FileParameter> parameters;
    AddParameters(*Root(), "/sce/Scenario", parameters);
    return parameters;
}

std::string ScenarioFile::DomainOf(const Element& declaration) const {
    std::string domain;
    const std::string unit = TextBelow(declaration, "parameterUnit");
    for (const std::size_t index : declaration.children) {
        const Element& typed = text->Elements()[index];
        if (!typed.name.ends_with("Parameter")) continue;
        std::string type(typed.name.substr(0, typed.name.size() - std::string_view("Parameter").size()));
        type[0] = static_cast<char>(type[0] | 0x20); // to lower case
        domain = unit.empty() ? type : type + ", " + unit;
        if (text->Child(typed, "default")) domain += ", default " + TextBelow(typed, "default");
        const char* separator = ", ";
        for (const std::size_t below : typed.children) {
            const Element& range = text->Elements()[below];
            if (!range.name.ends_with("Range")) continue;
            domain += separator;
            domain += range.name == "LiteralRange" ? TextBelow(range, "literal")
                                                   : TextBelow(range, "minimum") + " to " + TextBelow(range, "maximum");
            separator = " or ";
        }
    }
    return domain;
}

std::vector<FileDeclaration> ScenarioFile::Declarations() const {
    std::vector<FileDeclaration> declarations;
    for (const std::size_t index : Root()->children) {
        const Element& element = text->Elements()[index];
        if (element.name != "VariadicParameter") continue;
        declarations.push_back({TextBelow(element, "name"), TextBelow(element, "description"),
                                TextBelow(element, "parameterId"), DomainOf(element), RowAt(element.begin)});
    }
    return declarations;
}

std::vector<FileScript> ScriptsIn(const cfg::ScenarioText& text) {
    std::vector<FileScript> scripts;
    for (const cfg::ScenarioText::Element& element : text.Elements()) {
        if (element.name != "ScenarioScript") continue;
        const auto textOf = [&](const char* name) {
            const auto* child = text.Child(element, name);
            return child && !child->hasElements() ? text.TextOf(*child) : cfg::WrittenText();
        };
        const std::string type = textOf("scriptType").Text();
        if (!type.empty() && type != "nuro") continue; // scripts of other kinds are not for the item model
        FileScript script{textOf("scriptName").Text(), textOf("text")};
        if (!script.text.Text().empty()) scripts.push_back(std::move(script));
    }
    return scripts;
}

std::vector<std::uint32_t> ScenarioFile::RowsOf(const FileScript& script) const {
    const Commons::TextPlaces scriptRows(script.text.Text());
    std::vector<std::uint32_t> rows;
    rows.reserve(scriptRows.RowCount());
    for (std::uint32_t row = 1; row <= scriptRows.RowCount(); ++row) {
        const std::size_t position = scriptRows.PositionOf({row, 1});
        rows.push_back(RowAt(script.text.InFile(position, position).first));
    }
    return rows;
}

std::vector<FileParameter> VariablesOf(const TextItem& script, const std::string& base) {
    std::vector<FileParameter> variables;
    for (const TextItem& child : script.children) {
        if (child.kind == "INCLUDE") continue; // what it holds belongs to a file of its own
        if (child.kind == "VARIABLE")
            variables.push_back({fmt::format("{}/Variable[name={}]/value", base, child.name), child.Value("LABEL"), "",
                                 child.Value("TYPE"), "", child.Value("VALUE"), child.RowOf("VALUE")});
        for (FileParameter& below : VariablesOf(child, base)) variables.push_back(std::move(below));
    }
    return variables;
}

} // namespace tavrel
