#include "SceneFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <limits>

#include <TavrelScenarioTemplateDb/ScenarioScripts.h>
#include <scenario/NearestName.h>

#include "TextChecks.h"

namespace TavrelChecking {

namespace {

constexpr unsigned kDeepestSection = 1000; // as for the library, which reads no file with more

using cfg::ScenarioText;

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlank = " \t\n\r";
    text.remove_prefix(std::min(text.find_first_not_of(kBlank), text.size()));
    while (!text.empty() && kBlank.find(text.back()) != std::string_view::npos) text.remove_suffix(1);
    return text;
}

template <typename Type>
bool ParseNumber(std::string_view text, Type& number) {
    text = Trimmed(text);
    const char* const end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && next == end;
}

bool IsBoolean(std::string_view text) {
    text = Trimmed(text);
    return text == "true" || text == "1" || text == "false" || text == "0";
}

const std::vector<std::string> kTypeWords = {"boolean", "integer", "real", "vector", "list", "enumeration", "string"};

bool IsOfTypeWord(std::string_view value, std::string_view type) {
    std::int32_t whole = 0;
    double real = 0;
    if (type == "boolean") return IsBoolean(value);
    if (type == "integer") return ParseNumber(value, whole);
    if (type == "real") return ParseNumber(value, real);
    return true;
}

struct Reference {
    std::size_t length; // 1 for an "&" that begins none
    bool isKnown;
};

Reference ReferenceAt(std::string_view file, std::size_t at) {
    static constexpr std::string_view kEntities[] = {"amp", "lt", "gt", "quot", "apos"};
    constexpr std::string_view kDigits = "0123456789";
    constexpr std::string_view kHexDigits = "0123456789abcdefABCDEF";
    const auto isLetter = [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '-' ||
               c == '.' || (c & '\x80') != 0;
    };
    std::size_t end = std::min(at + 1, file.size());
    if (end < file.size() && file[end] == '#') ++end;
    while (end < file.size() && isLetter(file[end])) ++end;
    std::string_view name = file.substr(at + 1, end - at - 1);
    if (name.empty() || name == "#" || end == file.size() || file[end] != ';') return {1, false};
    const std::size_t length = end + 1 - at;
    if (!name.starts_with('#'))
        return {length, std::find(std::begin(kEntities), std::end(kEntities), name) != std::end(kEntities)};
    name.remove_prefix(1);
    const bool isHex = name.starts_with('x') && name.size() > 1;
    if (isHex) name.remove_prefix(1);
    return {length, name.find_first_not_of(isHex ? kHexDigits : kDigits) == std::string_view::npos};
}

// Comments, CDATA sections and instructions, from the first to the last.
class Sections {
public:
    explicit Sections(std::string_view text) : file(text) {}

    // The end of the one around `at`, which never goes back; nothing where none is.
    std::optional<std::size_t> EndAround(std::size_t at) {
        while (next <= at) {
            const std::size_t begin = file.find('<', next);
            if (begin > at) return std::nullopt;
            next = begin + 1;
            for (Kind& kind : kinds) {
                if (kind.isOver || file.compare(begin, kind.opening.size(), kind.opening) != 0) continue;
                const std::size_t end = file.find(kind.closing, begin + kind.opening.size());
                kind.isOver = end == std::string_view::npos;
                if (!kind.isOver) next = end + kind.closing.size();
            }
        }
        return next;
    }

private:
    struct Kind {
        std::string_view opening;
        std::string_view closing;
        bool isOver; // nothing closes one any more
    };
    const std::string_view file;
    std::size_t next = 0;
    std::array<Kind, 3> kinds = {{{"<!--", "-->", false}, {"<![CDATA[", "]]>", false}, {"<?", "?>", false}}};
};

// What the classes of sections declare.
struct Declared {
    std::string_view section;
    std::string_view name;
    std::string_view type;
};
// clang-format off
constexpr Declared kParameters[] = {
    {"Vehicle", "id", "integer"}, {"Vehicle", "driverId", "integer"}, {"Vehicle", "name", "string"},
    {"Driver",  "id", "integer"}, {"Driver",  "name", "string"},      {"Driver",  "label", "string"},
};
constexpr Declared kFields[] = {
    {"Scenario", "name", "string"}, {"Scenario", "description", "string"},
    {"ScenarioScript", "scriptName", "string"}, {"ScenarioScript", "scriptType", "string"},
    {"ScenarioScript", "text", "string"},
    {"VariadicParameter", "name", "string"}, {"VariadicParameter", "description", "string"},
    {"VariadicParameter", "parameterId", "string"}, {"VariadicParameter", "parameterUnit", "string"},
    {"BooleanParameter", "default", "boolean"}, {"IntegerParameter", "default", "integer"},
    {"RealParameter", "default", "real"},       {"LiteralParameter", "default", "string"},
    {"IntegerRange", "minimum", "integer"}, {"IntegerRange", "maximum", "integer"},
    {"RealRange", "minimum", "real"},       {"RealRange", "maximum", "real"},
    {"LiteralRange", "literal", "string"},
};
// clang-format on

template <std::size_t Size>
const Declared* FindDeclared(const Declared (&rows)[Size], std::string_view section, std::string_view name) {
    for (const Declared& row : rows)
        if (row.section == section && row.name == name) return &row;
    return nullptr;
}

// Steps of an id, as a template splits them: at each "/" but those inside brackets.
std::vector<std::string> StepsOf(const std::string& id) {
    constexpr std::size_t kNone = std::string::npos;
    std::vector<std::string> steps;
    const auto isVariableStep = [](std::string_view text) {
        return text.starts_with("Variable[name=") && text.ends_with("]/value");
    };
    for (std::size_t begin = 0; begin < id.size();) {
        const std::string rest = id.substr(begin);
        if (isVariableStep(rest)) {
            steps.push_back(rest);
            break;
        }
        const std::size_t opening = id.find('[', begin);
        const std::size_t closing = id.find(']', begin);
        const std::size_t slash = id.find('/', begin);
        std::size_t end = slash;
        std::size_t next = slash + 1;
        if (slash >= opening) {
            if (closing == kNone) {
                steps.push_back(rest);
                break;
            }
            end = closing + 1;
            next = closing + 2;
        }
        if (end > begin) steps.push_back(id.substr(begin, end - begin));
        begin = next;
    }
    return steps;
}

// What a unit measures; 0 for none.
int DimensionOf(lmk::t_unit unit) {
    // clang-format off
    static constexpr std::array<std::pair<int, int>, 20> kRanges = {{
        {lmk::UNIT_M, lmk::UNIT_NAUTICAL_MILE}, {lmk::UNIT_S, lmk::UNIT_DAY}, {lmk::UNIT_KG, lmk::UNIT_POUND},
        {lmk::UNIT_HZ, lmk::UNIT_MHZ}, {lmk::UNIT_RAD, lmk::UNIT_TURN}, {lmk::UNIT_PERCENT, lmk::UNIT_PER_MILLE},
        {lmk::UNIT_V, lmk::UNIT_KV}, {lmk::UNIT_A, lmk::UNIT_MA}, {lmk::UNIT_M3, lmk::UNIT_ML},
        {lmk::UNIT_M_S, lmk::UNIT_KNOT}, {lmk::UNIT_RAD_S, lmk::UNIT_RPM},
        {lmk::UNIT_M_S2, lmk::UNIT_STANDARD_GRAVITY}, {lmk::UNIT_RAD_S2, lmk::UNIT_DEG_S2},
        {lmk::UNIT_N, lmk::UNIT_KN}, {lmk::UNIT_N_M, lmk::UNIT_N_M}, {lmk::UNIT_W, lmk::UNIT_METRIC_HORSEPOWER},
        {lmk::UNIT_PA, lmk::UNIT_PSI}, {lmk::UNIT_K, lmk::UNIT_FAHRENHEIT}, {0, 0}, {0, 0}}};
    // clang-format on
    for (std::size_t row = 0; row < kRanges.size(); ++row)
        if (unit > 1 && unit >= kRanges[row].first && unit <= kRanges[row].second) return static_cast<int>(row) + 1;
    return 0;
}

} // namespace

std::optional<std::int64_t> LongNumberOf(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) return std::nullopt;
    return number;
}

SceneFile::SceneFile(std::shared_ptr<const FileBytes> fileBytes)
    : bytes(std::move(fileBytes)), text(std::make_unique<cfg::ScenarioText>(bytes->bytes)) {
    if (!text->IsXml()) {
        xmlFault = text->FirstFault();
        mended = std::make_shared<MendedXml>(bytes->bytes);
        text = std::make_unique<cfg::ScenarioText>(mended->Copy());
    }
    if (!text->IsXml() || text->Elements().empty()) return;
    const Element& top = text->Elements().front();
    root = text->Child(top, "Scenario");
    if (!root) return;
    FindTables(*root);
    tables.hasLostElements = mended && mended->HasLostElements();
    tables.hasLostVehicle = tables.hasLostVehicle || tables.hasLostElements;
    FindScripts(*root);
    FindDeclarations(*root);
}

bool SceneFile::IsParameter(const Element& element) const {
    return ScenarioText::FindAttribute(element, "ScenarioTreeValue") != nullptr;
}

std::vector<const SceneFile::Element*> SceneFile::Below(const Element& section, std::string_view name) const {
    std::vector<const Element*> found;
    for (const std::size_t child : section.children)
        if (text->Elements()[child].name == name && !IsParameter(text->Elements()[child]))
            found.push_back(&text->Elements()[child]);
    return found;
}

// Of the parameter of that name; empty without one.
std::string SceneFile::Value(const Element& section, std::string_view name) const {
    for (const std::size_t child : section.children) {
        const Element& element = text->Elements()[child];
        if (element.name != name) continue;
        if (const auto* value = ScenarioText::FindAttribute(element, "ScenarioTreeValue"))
            return text->TextOf(*value).Text();
    }
    return {};
}

std::string SceneFile::FieldText(const Element& section, std::string_view name) const {
    for (const std::size_t child : section.children) {
        const Element& element = text->Elements()[child];
        if (element.name == name && !IsParameter(element)) return text->TextOf(element).Text();
    }
    return {};
}

std::optional<std::int32_t> SceneFile::Number(const Element& section) const {
    std::int32_t number = 0;
    const std::string value = Value(section, "id");
    if (value.empty()) return number;
    if (!ParseNumber(value, number)) return std::nullopt;
    return number;
}

void SceneFile::FindTables(const Element& section) {
    for (const Element* vehicle : Below(section, "Vehicle"))
        if (const auto number = Number(*vehicle))
            tables.vehicles[*number] = {Below(*vehicle, "Input").size(), Below(*vehicle, "Output").size()};
        else
            tables.hasLostVehicle = true;
    for (const Element* driver : Below(section, "Driver")) tables.drivers.insert(Value(*driver, "name"));
    for (const Element* trigger : Below(section, "Trigger")) tables.triggers.insert(Value(*trigger, "name"));
    for (const Element* image : Below(section, "Image")) tables.images.insert(Value(*image, "name"));
    for (const Element* sound : Below(section, "Sound")) tables.sounds.insert(Value(*sound, "name"));
}

// Scripts stand in vehicles and other sections as well.
void SceneFile::FindScripts(const Element& section, unsigned level) {
    if (level > kDeepestSection) return; // the library refuses the file for it
    for (const std::size_t child : section.children) {
        const Element& element = text->Elements()[child];
        if (IsParameter(element) || TavrelScenarioTemplateDb::isHiddenSection(element.name)) continue;
        if (element.name != "ScenarioScript") {
            FindScripts(element, level + 1);
            continue;
        }
        const std::string type = FieldText(element, "scriptType");
        const Element* body = text->Child(element, "text");
        if (!body || body->hasElements() || (!type.empty() && type != "nuro")) continue;
        cfg::WrittenText written = text->TextOf(*body);
        if (written.Text().empty()) { // no script for the library
            emptyScripts.push_back(body);
            continue;
        }
        const std::string name = FieldText(element, "scriptName");
        scripts.push_back(
            {name, std::make_shared<ScriptTree>(std::make_shared<Text>(bytes, std::move(written), name, mended))});
        scriptElements.push_back(&element);
    }
}

void SceneFile::FindDeclarations(const Element& section) {
    for (const Element* element : Below(section, "VariadicParameter"))
        declarations.push_back({element, FieldText(*element, "parameterId"), FieldText(*element, "parameterUnit")});
}

Finding SceneFile::At(const char* rule, std::size_t begin, std::size_t end, std::string message) const {
    if (mended) {
        begin = mended->InFile(begin);
        end = mended->InFile(end);
    }
    return Text(bytes).FindingAt(rule, begin, end, std::move(message));
}

// What stands in a script is told with its place there.
void SceneFile::PlaceInScript(Finding& finding, std::size_t position) const {
    for (const Script& script : scripts)
        if (const auto place = script.tree->Source().InText(position)) {
            finding.isInScript = true;
            finding.script = script.name;
            finding.scriptRow = script.tree->Source().RowOf(*place);
            finding.place = WayTo(script.tree->ItemAt(*place));
        }
}

bool SceneFile::LookAtXml(std::vector<Finding>& findings) const {
    bool hasMarkup = false;
    const std::string help = ConversionHelp(bytes->bytes);
    for (const MendedXml::Fault& fault : mended->Faults()) {
        using What = MendedXml::Fault::What;
        const char* const rule = fault.what == What::Nul        ? "TV1016"
                                 : fault.what == What::Encoding ? "TV1017"
                                                                : "TV6002";
        hasMarkup = hasMarkup || fault.what == What::Markup;
        Finding finding = Text(bytes).FindingAt(rule, fault.begin, fault.end, fault.reason);
        if (fault.what == What::Encoding) finding.help = help;
        PlaceInScript(finding, mended->InCopy(fault.begin));
        findings.push_back(std::move(finding));
    }
    // The reader is the judge of what is XML.
    const bool isWide = mended->Copy().empty() && !mended->Faults().empty();
    if (mended->Faults().empty() || (!text->IsXml() && !hasMarkup && !isWide))
        findings.push_back(Text(bytes).FindingAt("TV6002", xmlFault->position, xmlFault->position, xmlFault->reason));
    return text->IsXml();
}

// The library leaves what it cannot resolve as it is written. What a document type declares is told with that.
void SceneFile::LookAtReferences(std::vector<Finding>& findings) const {
    if (text->DocumentType().first != ScenarioText::kNone) return;
    const std::string_view file = bytes->bytes;
    Sections sections(file);
    for (std::size_t at = file.find('&'); at != std::string_view::npos; at = file.find('&', at + 1)) {
        const Reference reference = ReferenceAt(file, at);
        if (reference.isKnown) continue;
        if (const auto end = sections.EndAround(at)) {
            at = *end - 1;
            continue;
        }
        Finding finding = Text(bytes).FindingAt(
            "TV6002", at, at + reference.length,
            reference.length > 1
                ? "not XML: nothing declares " + std::string(file.substr(at, reference.length)) + ", and it stays so"
                : "not XML: an \"&\" that begins no reference; in a text it is written &amp;");
        finding.severity = Severity::Warning;
        finding.help = "Write &amp; where the sign itself is meant, else a reference that XML has.";
        PlaceInScript(finding, mended ? mended->InCopy(at) : at);
        findings.push_back(std::move(finding));
    }
}

std::vector<Finding> SceneFile::FileFindings() const {
    std::vector<Finding> findings;
    if (text->DocumentType().first != ScenarioText::kNone)
        findings.push_back(At("TV6003", text->DocumentType().first, text->DocumentType().second,
                              "the document type is passed over, and its entities are not resolved"));
    const auto& fault = text->FirstFault();
    if (mended && !LookAtXml(findings)) return findings;
    LookAtReferences(findings);
    // A file that says to be in another encoding keeps its bytes as they are.
    const auto parts = mended ? std::vector<std::pair<std::size_t, std::size_t>>() : PartsInOtherEncoding(bytes->bytes);
    const std::string encoding = parts.empty() ? std::string() : LikelyEncoding(bytes->bytes);
    const std::string help = parts.empty() ? std::string() : ConversionHelp(bytes->bytes);
    for (const auto& [begin, end] : parts) {
        Finding finding = At("TV1017", begin, end, "the file is no UTF-8; it is likely " + encoding);
        finding.severity = Severity::Warning;
        finding.help = help;
        PlaceInScript(finding, begin);
        findings.push_back(std::move(finding));
    }
    const Element& top = text->Elements().front();
    const auto atName = [&](const Element& element, const std::string& message) {
        findings.push_back(At("TV6002", element.begin + 1, element.begin + 1 + element.name.size(), message));
    };
    if (top.name != "sce") {
        atName(top, "the top element is <" + std::string(top.name) + ">, not <sce>");
        return findings;
    }
    if (const auto* version = ScenarioText::FindAttribute(top, "version");
        version && text->TextOf(*version).Text() != "1")
        findings.push_back(At("TV6002", version->valueBegin, version->valueEnd,
                              "scenario files of version " + text->TextOf(*version).Text() + " are not known"));
    if (!root) {
        findings.push_back(At("TV6002", top.contentEnd, top.contentEnd, "there is no <Scenario>"));
        return findings;
    }
    bool isSecond = false;
    for (const std::size_t child : top.children) {
        const Element& element = text->Elements()[child];
        if (element.name != "Scenario") continue;
        if (isSecond) atName(element, "a second <Scenario>");
        isSecond = true;
    }
    LookAtElement(*root, "Scenario", true, findings);
    for (const Element* script : emptyScripts) {
        Finding finding = At("TV1020", script->contentBegin, script->contentBegin, "there is no item in the text");
        finding.severity = Severity::Warning;
        findings.push_back(std::move(finding));
    }
    // What else the file is refused for.
    const bool isRefused = std::any_of(findings.begin(), findings.end(),
                                       [](const Finding& finding) { return finding.severity == Severity::Error; });
    if (fault && !isRefused) findings.push_back(At("TV6002", fault->position, fault->position, fault->reason));
    return findings;
}

void SceneFile::LookAtElement(const Element& section, std::string_view sectionName, bool isRoot,
                              std::vector<Finding>& findings, unsigned level) const {
    if (level > kDeepestSection) return;
    std::set<std::string_view> fields;
    std::set<std::string_view> parameters;
    for (const std::size_t child : section.children) {
        const Element& element = text->Elements()[child];
        const std::string tag = "<" + std::string(element.name) + ">";
        for (const auto& attribute : element.attributes) {
            const bool isKnown = attribute.name == "ScenarioTreeValue" || attribute.name == "type" ||
                                 attribute.name == "unit" || attribute.name == "verboseName";
            if (isKnown && &attribute != ScenarioText::FindAttribute(element, attribute.name))
                findings.push_back(At("TV6002", attribute.nameBegin, attribute.nameBegin + attribute.name.size(),
                                      tag + " has " + std::string(attribute.name) + " twice"));
        }
        if (const auto* value = ScenarioText::FindAttribute(element, "ScenarioTreeValue")) {
            const Declared* declared = FindDeclared(kParameters, sectionName, element.name);
            if (declared && !parameters.insert(element.name).second) declared = nullptr;
            std::string type = declared ? std::string(declared->type) : "string";
            if (const auto* word = ScenarioText::FindAttribute(element, "type")) {
                const std::string given = text->TextOf(*word).Text();
                const bool isWord = std::find(kTypeWords.begin(), kTypeWords.end(), given) != kTypeWords.end();
                if (!isWord || (declared && given != type)) {
                    const std::string near = NearestName(given, kTypeWords);
                    findings.push_back(At("TV6005", word->valueBegin, word->valueEnd,
                                          isWord ? tag + " must be of type " + type
                                                 : Quoted(given) + " is no type of a value" +
                                                       (near.empty() ? "" : ", did you mean " + Quoted(near))));
                    continue;
                }
                type = given;
            }
            if (!IsOfTypeWord(text->TextOf(*value).Text(), type))
                findings.push_back(At("TV6006", value->valueBegin, value->valueEnd,
                                      tag + " is of type " + type + " and holds " +
                                          Quoted(text->TextOf(*value).Text().substr(0, 80))));
            continue;
        }
        if (const Declared* field = FindDeclared(kFields, sectionName, element.name)) {
            if (field->section == "Scenario" && !isRoot) field = nullptr;
            if (field) {
                if (!fields.insert(element.name).second) {
                    findings.push_back(
                        At("TV6002", element.begin + 1, element.begin + 1 + element.name.size(), "a second " + tag));
                } else if (element.hasElements()) {
                    findings.push_back(At("TV6002", element.begin + 1, element.begin + 1 + element.name.size(),
                                          tag + " holds elements, not a text"));
                } else if (const std::string value = text->TextOf(element).Text(); !IsOfTypeWord(value, field->type)) {
                    findings.push_back(At("TV6006", element.contentBegin, element.contentEnd,
                                          tag + " is of type " + std::string(field->type) + " and holds " +
                                              Quoted(value.substr(0, 80))));
                }
                continue;
            }
        }
        LookAtElement(element, element.name, false, findings, level + 1);
    }
}

// Declarations.

// The first variable of each number that a search of the tree meets; null for one that is lost.
const SceneFile::Variables& SceneFile::VariablesOf(const Script& script) const {
    const auto [known, isNew] = variables.try_emplace(&script);
    Variables& found = known->second;
    if (!isNew || !script.tree->Root()) return found;
    std::vector<const Item*> pending{script.tree->Root()};
    while (!pending.empty()) {
        const Item* item = pending.back();
        pending.pop_back();
        if (item->kind == KindInclude) continue;
        found.hasLost = found.hasLost || IsLostVariable(*item);
        // A word that is no kind may be meant for that of a variable.
        if (item->kind == KindVariable || item->isDropped)
            if (const auto number = LongNumberOf(item->name)) {
                const Item*& first = found.byNumber.try_emplace(*number, nullptr).first->second;
                if (!first && item->kind == KindVariable) first = item;
            }
        for (auto child = item->children.rbegin(); child != item->children.rend(); ++child) pending.push_back(*child);
    }
    return found;
}

std::optional<SceneFile::Target> SceneFile::FindVariable(const Script& script, const std::string& step) const {
    Target lost; // in a text that cannot be looked at, or after a header that is lost
    lost.isKnown = false;
    if (!script.tree->Root()) return lost;
    const Variables& all = VariablesOf(script);
    constexpr std::string_view kBefore = "Variable[name=";
    std::uint64_t number = 0;
    const char* const end = step.data() + step.size();
    const bool isStep = step.starts_with(kBefore);
    const auto [after, error] = std::from_chars(step.data() + (isStep ? kBefore.size() : step.size()), end, number);
    const bool isNumber = isStep && error == std::errc() && std::string_view(after, end) == "]/value" &&
                          step == std::string(kBefore) + std::to_string(number) + "]/value";
    const auto found = isNumber ? all.byNumber.find(static_cast<std::int64_t>(number)) : all.byNumber.end();
    if (found == all.byNumber.end()) return all.hasLost ? std::optional(lost) : std::nullopt;
    if (!found->second) return lost;
    const Item& item = *found->second;
    Target target;
    const Attribute* typeLine = item.Find("INTERACTIVE_TYPE");
    target.isKnown = !typeLine || !typeLine->isBroken;
    const std::string_view type = typeLine ? typeLine->value : std::string_view();
    target.type = type == "INTEGER"  ? Target::Integer
                  : type == "STRING" ? Target::Literal
                  : type == "BOOL"   ? Target::Boolean
                                     : Target::Real;
    target.unit = lmk::UNIT_NONE;
    target.variable = &item;
    target.script = &script;
    target.number = found->first;
    return target;
}

// The first element for each step of an id below a section.
const SceneFile::Steps& SceneFile::StepsBelow(const Element& section) const {
    const auto [known, isNew] = stepsBelow.try_emplace(&section);
    if (!isNew) return known->second;
    for (const std::size_t child : section.children) {
        const Element& element = text->Elements()[child];
        if (IsParameter(element) || FindDeclared(kFields, section.name, element.name)) continue;
        std::string step(element.name);
        if (element.name == "Vehicle" || element.name == "Driver")
            step += "[id/@ScenarioTreeValue=" + std::to_string(Number(element).value_or(0)) + "]";
        if (element.name == "ScenarioScript") {
            step += "[scriptName=\"" + FieldText(element, "scriptName") + "\"]";
            if (std::find(scriptElements.begin(), scriptElements.end(), &element) == scriptElements.end()) continue;
        }
        known->second.emplace(std::move(step), &element);
    }
    return known->second;
}

std::optional<SceneFile::Target> SceneFile::Find(const std::string& id) const {
    const std::vector<std::string> steps = StepsOf(id);
    if (!root || steps.size() < 3 || steps[0] != "sce" || steps[1] != "Scenario") return std::nullopt;
    const Element* node = root;
    for (std::size_t at = 2; at + 1 < steps.size(); ++at) {
        const Steps& below = StepsBelow(*node);
        const auto next = below.find(steps[at]);
        if (next == below.end()) return std::nullopt;
        node = next->second;
        if (node->name != "ScenarioScript") continue;
        if (at + 2 != steps.size()) return std::nullopt;
        const auto found = std::find(scriptElements.begin(), scriptElements.end(), node);
        return FindVariable(scripts[static_cast<std::size_t>(found - scriptElements.begin())], steps[at + 1]);
    }
    const auto targetOf = [](std::string_view type) {
        Target target;
        target.type = type == "boolean"   ? Target::Boolean
                      : type == "integer" ? Target::Integer
                      : type == "real"    ? Target::Real
                                          : Target::Literal;
        return target;
    };
    const Declared* declared = FindDeclared(kParameters, node->name, steps.back());
    for (const std::size_t child : node->children) {
        const Element& element = text->Elements()[child];
        if (element.name != steps.back() || !IsParameter(element)) continue;
        std::string type = declared ? std::string(declared->type) : "string";
        if (const auto* word = ScenarioText::FindAttribute(element, "type")) type = text->TextOf(*word).Text();
        Target target = targetOf(type);
        if (const auto* unit = ScenarioText::FindAttribute(element, "unit"))
            target.unit = lmk::toTUnit(text->TextOf(*unit).Text().c_str());
        return target;
    }
    if (declared) return targetOf(declared->type);
    return std::nullopt;
}

std::set<std::int64_t> SceneFile::DeclaredVariables(const Script& script) const {
    std::set<std::int64_t> numbers;
    for (const Declaration& declaration : declarations)
        if (const auto target = Find(declaration.id); target && target->script == &script)
            numbers.insert(target->number);
    return numbers;
}

std::vector<Finding> SceneFile::DeclarationFindings() const {
    std::vector<Finding> findings;
    std::set<std::string> ids;
    const auto wordOf = [](Target::Type type) {
        static constexpr const char* kWords[] = {"boolean", "integer", "real", "literal"};
        return std::string(kWords[type]);
    };
    for (const Declaration& declaration : declarations) {
        const Element& element = *declaration.element;
        const auto tell = [&](const char* rule, std::string message) -> Finding& {
            findings.push_back(At(rule, element.begin, element.end, std::move(message)));
            return findings.back();
        };
        const std::string what = "the declaration of " + Quoted(declaration.id);
        const std::optional<Target> target = Find(declaration.id);
        if (!target && !tables.hasLostElements) {
            // An id of another form is passed over when the file is opened.
            const std::vector<std::string> steps = StepsOf(declaration.id);
            const bool isLookedUp = steps.size() > 2 && steps[0] == "sce" && steps[1] == "Scenario";
            if (!isLookedUp)
                tell("TV5001", declaration.id.empty() ? "a declaration has no parameterId"
                                                      : what + " names no parameter of the scenario")
                    .severity = Severity::Warning;
            else
                tell("TV5001", what + " names no parameter of the scenario");
        } else if (target && !ids.insert(declaration.id).second) {
            tell("TV5007", "the parameter " + Quoted(declaration.id) + " is declared already");
        }

        std::optional<Target::Type> type;
        const Element* typed = nullptr;
        constexpr std::pair<const char*, Target::Type> kTyped[] = {{"BooleanParameter", Target::Boolean},
                                                                   {"IntegerParameter", Target::Integer},
                                                                   {"RealParameter", Target::Real},
                                                                   {"LiteralParameter", Target::Literal}};
        for (const auto& [name, typedType] : kTyped) {
            const std::vector<const Element*> found = Below(element, name);
            if (found.empty()) continue;
            type = typedType;
            typed = found.front();
            break;
        }
        if (target && target->isKnown && type && *type != target->type)
            tell("TV5006", what + " is of type " + wordOf(*type) + ", its parameter of type " + wordOf(target->type));
        if (target && target->isKnown && !declaration.unit.empty()) {
            const lmk::t_unit unit = lmk::toTUnit(declaration.unit.c_str());
            const int wanted = DimensionOf(target->unit);
            if (unit == lmk::UNIT_UNDEFINED)
                tell("TV5005", what + " has the unknown unit " + Quoted(declaration.unit));
            else if (wanted != 0 && DimensionOf(unit) != wanted)
                tell("TV5005", what + " is in " + Quoted(declaration.unit) + ", its parameter in " +
                                   Quoted(lmk::toText(target->unit)));
        }
        if (!typed || type == Target::Boolean) {
            if (!typed) tell("TV5008", what + " has no type and no range");
            continue;
        }
        if (type == Target::Literal) {
            std::vector<std::string> literals;
            for (const Element* range : Below(*typed, "LiteralRange")) literals.push_back(FieldText(*range, "literal"));
            const std::string given = FieldText(*typed, "default");
            if (literals.empty())
                tell("TV5008", what + " has no texts to choose from");
            else if (std::find(literals.begin(), literals.end(), given) == literals.end())
                tell("TV5002", "the default " + Quoted(given) + " is none of its texts");
            continue;
        }
        bool areNumbers = true; // one that is none has its own finding
        const auto numberOf = [&](const Element& section, const char* field) {
            double number = 0;
            const std::string written = FieldText(section, field);
            areNumbers = areNumbers && (written.empty() || ParseNumber(written, number));
            return number;
        };
        const std::vector<const Element*> ranges =
            Below(*typed, type == Target::Integer ? "IntegerRange" : "RealRange");
        if (ranges.empty()) {
            tell("TV5008", what + " has no range");
            continue;
        }
        const Element* reversed = nullptr;
        bool isInside = false;
        bool isBeyond = false;
        const double given = numberOf(*typed, "default");
        for (const Element* range : ranges) {
            const double least = numberOf(*range, "minimum");
            const double most = numberOf(*range, "maximum");
            if (least > most) reversed = range;
            isInside = isInside || (given >= std::min(least, most) && given <= std::max(least, most));
            if (!target || !target->variable) continue;
            // What is no number, and so has its own finding, limits nothing.
            const auto limitOf = [&](const char* key, double fallback, double none) {
                const Attribute* line = target->variable->Find(key);
                if (line && (line->isBroken || (!line->value.empty() && !IsNumber(line->value)))) return none;
                return line && !line->value.empty() ? NumberOf(line->value) : fallback;
            };
            constexpr double kInfinity = std::numeric_limits<double>::infinity();
            isBeyond = isBeyond || std::min(least, most) < limitOf("INTERACTIVE_MIN_VALUE", 0.0, -kInfinity) ||
                       std::max(least, most) > limitOf("INTERACTIVE_MAX_VALUE", 9999.0, kInfinity);
        }
        if (!areNumbers) continue;
        if (reversed)
            tell("TV5003", "the range from " + FieldText(*reversed, "minimum") + " to " +
                               FieldText(*reversed, "maximum") + " ends before it begins");
        if (!isInside) tell("TV5002", "the default " + FieldText(*typed, "default") + " lies in no range");
        if (isBeyond) tell("TV5004", "a range lies outside the interactive limits of its variable");
    }
    return findings;
}

} // namespace TavrelChecking
