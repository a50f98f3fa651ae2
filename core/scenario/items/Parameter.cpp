#include <scenario/Parameter.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include <scenario/DefinitionLists.h>
#include <scenario/function.h>

#include "items/AttributeRow.h"
#include "items/ValueKinds.h"
#include "link/Definitions.h"
#include "link/Lookup.h"
#include "run/ParameterMemory.h"
#include "text/Assertion.h"
#include "text/Kinds.h"
#include "text/NumberText.h"
#include "text/Refusal.h"
#include "text/TextFormat.h"

namespace {

constexpr const char* kSource = "Parameter";
constexpr const char* kList = DefinitionListOf(KindParameter);
// The KIND that alone has an owner file.
constexpr std::string_view kVariable = "VARIABLE";

const Parameter& DefinitionOf(const Parameter& parameter) { return static_cast<const Parameter&>(*parameter.model); }

bool Contains(const std::vector<std::string>& words, std::string_view word) {
    return std::any_of(words.begin(), words.end(), [word](const std::string& known) { return known == word; });
}

bool IsTypeWord(std::string_view word) {
    return word == "BOOL" || word == "FLOAT" || word == "INTEGER" || word == "STRING" || word == "VOID";
}

bool IsUsageWord(std::string_view word) { return word == "BY_VALUE" || word == "BY_ADDRESS"; }

bool TakeType(Parameter& parameter, std::string_view value) {
    parameter.type = value;
    return IsTypeWord(value) || Refuse("TYPE \"", value, "\" is not among \"BOOL FLOAT INTEGER STRING VOID\"");
}

bool TakeUsage(Parameter& parameter, std::string_view value) {
    parameter.usage = value;
    return IsUsageWord(value) || Refuse("USAGE \"", value, "\" is not among \"BY_VALUE BY_ADDRESS\"");
}

[[gnu::cold, gnu::noinline]] bool RefuseUnknownEnumTab(const Parameter& parameter) {
    if (!RefusalsAreTold()) return false;
    std::vector<std::string> names;
    ScenarioItem* folder = FindDefinitionFolder(GetModelRoot(&parameter), DefinitionListOf(KindEnumTab));
    if (!folder) return Refuse("ENUMTAB needs a folder \"ENUMTAB_LIST\" that stands earlier in the root model");
    std::vector<ScenarioItem*> tabs;
    folder->CollectItemsOfKind(tabs, KindEnumTab, false, true);
    for (const ScenarioItem* tab : tabs) names.push_back(tab->name);
    return Refuse("unknown enumeration \"", parameter.enumTab, "\"", DidYouMean(parameter.enumTab, names));
}

bool TakeEnumTab(Parameter& parameter, std::string_view value) {
    parameter.enumTab = value;
    return parameter.FindEnumTab(parameter.enumTab) || RefuseUnknownEnumTab(parameter);
}

// Looks at what was read before this line, so FILEDIR, ENUMTAB and USAGE stand above KINDLIST, as the writer has them.
bool TakeKindList(Parameter& parameter, std::string_view value) {
    AppendWords(value, parameter.kindList);
    for (const std::string& word : parameter.kindList)
        if (!FindValueKind(word)) return Refuse("\"", word, "\" in KINDLIST is no kind of value");
    if (Contains(parameter.kindList, "FILE") && parameter.fileDir.empty())
        return Refuse("KINDLIST with \"FILE\" needs a FILEDIR above it");
    if (Contains(parameter.kindList, "ENUM") && parameter.enumTab.empty())
        return Refuse("KINDLIST with \"ENUM\" needs an ENUMTAB above it");
    if (parameter.usage == "BY_ADDRESS" && !(parameter.kindList.size() == 1 && parameter.kindList[0] == "VARIABLE"))
        return Refuse("USAGE \"BY_ADDRESS\" allows no other KINDLIST than \"VARIABLE\"");
    return true;
}

bool TakeMaxValue(Parameter& parameter, std::string_view value) {
    parameter.maxValue = value;
    return parameter.minValue.empty() || NumberOf(parameter.maxValue) > NumberOf(parameter.minValue) ||
           Refuse("MAXVALUE \"", value, "\" is not above MINVALUE \"", parameter.minValue, "\"");
}

bool TakeKind(Parameter& parameter, std::string_view value) {
    parameter.valueKind = value;
    if (value != kVariable) parameter.ownerFile.clear();
    const std::vector<std::string>& allowed = DefinitionOf(parameter).kindList;
    // Empty is what the writer prints for a definition without a default.
    return value.empty() || Contains(allowed, value) ||
           Refuse("KIND \"", value, "\" is not among \"", JoinWords(allowed), "\"");
}

bool TakeValue(Parameter& parameter, std::string_view value) {
    parameter.value = value;
    return value.empty() || ValueKindOf(parameter.valueKind).accepts(parameter);
}

bool TakeOwnerFile(Parameter& parameter, std::string_view value) {
    if (parameter.valueKind == kVariable) parameter.ownerFile = value;
    return true;
}

using Row = AttributeRow<Parameter>;

bool HasNoType(const Parameter& parameter) { return parameter.GetType().empty(); }
bool HasNoKindList(const Parameter& parameter) { return parameter.kindList.empty(); }
template <auto Field>
bool HasNo(const Parameter& parameter) {
    return (parameter.*Field).empty();
}

// clang-format off
// Tried from the top, by prefix; the writer's order differs in nothing but the words that it adds around.
constexpr Row kModelRows[] = {
    Row::text<&Parameter::unit>   ("UNIT"),
    {"TYPE",     HasNoType,                    TakeType},
    {"USAGE",    HasNo<&Parameter::usage>,     TakeUsage},
    {"ENUMTAB",  HasNo<&Parameter::enumTab>,   TakeEnumTab},
    Row::text<&Parameter::fileDir>("FILEDIR"),
    Row::text<&Parameter::fileExt>("FILEEXT"),
    {"KINDLIST", HasNoKindList,                TakeKindList},
    Row::text<&Parameter::minValue>("MINVALUE"),
    {"MAXVALUE", HasNo<&Parameter::maxValue>,  TakeMaxValue},
};

// VALUE is read as KIND says, so KIND stands above it. A KINDLIST in an instance is taken for a KIND, and refused.
constexpr Row kUserRows[] = {
    {"KIND",       HasNo<&Parameter::valueKind>, TakeKind},
    {"VALUE",      HasNo<&Parameter::value>,     TakeValue},
    {"OWNER_FILE", HasNo<&Parameter::ownerFile>, TakeOwnerFile},
};
// clang-format on

// The writer prints every attribute of a definition, those that are not set with an empty value, and what it printed
// must read back. An author who writes one of these three empty by himself has left something out, and is told so. So
// they are taken empty inside the writer's own block only: all its lines, one below the other.
struct UnsetRow {
    std::size_t place; // in kWrittenOrder
    bool (*isOpen)(const Parameter&);
};

// clang-format off
constexpr std::string_view kWrittenOrder[] = {"UNIT", "TYPE", "USAGE", "ENUMTAB", "FILEDIR", "FILEEXT", "KINDLIST",
                                              "MINVALUE", "MAXVALUE"};
constexpr UnsetRow kUnsetRows[] = {
    {2, HasNo<&Parameter::usage>},
    {3, HasNo<&Parameter::enumTab>},
    {8, HasNo<&Parameter::maxValue>},
};
// clang-format on

constexpr std::string_view kNoValue = "=\"\"";

bool BeginsWithKey(std::string_view line, std::string_view key) {
    return line.starts_with(key) && line.substr(key.size()).starts_with("=\"");
}

// Moves back to the start of the line above; false at the first line of the text.
bool PreviousLine(ScenarioTextStream& stream) {
    const char* at = stream.cursor;
    while (at > stream.begin && IsSeparator(at[-1])) --at;
    if (at == stream.begin) return false;
    while (at > stream.begin && !IsSeparator(at[-1])) --at;
    stream.cursor = at;
    return true;
}

bool StandsInWrittenBlock(ScenarioTextStream stream, std::size_t place) {
    ScenarioTextStream above = stream;
    for (std::size_t at = place; at > 0; --at) {
        if (!PreviousLine(above) || !BeginsWithKey(RestOfLine(above), kWrittenOrder[at - 1])) return false;
    }
    for (std::size_t at = place + 1; at < std::size(kWrittenOrder); ++at) {
        NextLine(stream);
        if (!BeginsWithKey(RestOfLine(stream), kWrittenOrder[at])) return false;
    }
    return true;
}

bool IsUnsetAsWritten(const Parameter& parameter, const ScenarioTextStream& stream) {
    const char first = CharAt(stream);
    for (const UnsetRow& row : kUnsetRows) {
        const std::string_view key = kWrittenOrder[row.place];
        if (key.front() != first) continue; // as nearly always
        const std::string_view rest(stream.cursor, static_cast<std::size_t>(stream.end - stream.cursor));
        if (rest.starts_with(key) && rest.substr(key.size()).starts_with(kNoValue) &&
            RestOfLine(stream).size() == key.size() + kNoValue.size() && row.isOpen(parameter) &&
            StandsInWrittenBlock(stream, row.place))
            return true;
    }
    return false;
}

// Whether the parameter holds a default value: it stands in the definition of a call.
bool IsDefault(const Parameter& parameter) {
    const ScenarioItem* call = parameter.parent;
    return call && KindIsIn(call->kind, kCallable) && static_cast<const Token*>(call)->model == call;
}

} // namespace

namespace valueKinds {

bool AnyValue(const Parameter&) { return true; }

bool EntryOfEnumTab(const Parameter& parameter) {
    const std::string& tab = DefinitionOf(parameter).enumTab;
    return parameter.FindEnumEntry(tab, parameter.value) ||
           Refuse("VALUE \"", parameter.value, "\" is no entry of the enumeration \"", tab, "\"");
}

bool IsLiteralOf(std::string_view type, const std::string& text) {
    if (type == "FLOAT") return BeginsWithNumber(text);
    if (type == "INTEGER") return BeginsWithWholeNumber(text);
    return true;
}

// The limits hold for the defaults in a model only: a script is read as it is, and shows its faults as invalid.
bool LiteralOfType(const Parameter& parameter) {
    if (!parameter.CheckValueFormat()) return Refuse("VALUE \"", parameter.value, "\" is no ", parameter.GetType());
    if (!IsDefault(parameter)) return true;
    const Parameter& definition = DefinitionOf(parameter);
    const double number = NumberOf(parameter.value);
    if (!definition.minValue.empty() && !(number >= NumberOf(definition.minValue)))
        return Refuse("VALUE \"", parameter.value, "\" is below MINVALUE \"", definition.minValue, "\"");
    if (!definition.maxValue.empty() && !(NumberOf(definition.maxValue) >= number))
        return Refuse("VALUE \"", parameter.value, "\" is above MAXVALUE \"", definition.maxValue, "\"");
    return true;
}

} // namespace valueKinds

Parameter::Parameter(ScenarioItem* parentItem) : Token(parentItem) {}

Parameter::~Parameter() { delete functionValue; }

void Parameter::GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter) const {
    if (functionValue && (kindFilter == 0 || kindFilter == KindFunction)) out.push_back(functionValue);
}

void Parameter::DetachChildren() { functionValue = nullptr; }

void Parameter::AddChild(ScenarioItem* child, ScenarioItem* /*reference*/, bool /*after*/) {
    if (!child || child->kind != KindFunction) return;
    functionValue = static_cast<Function*>(child);
    child->parent = this;
}

void Parameter::RemoveChild(ScenarioItem* child) {
    if (child && child->kind == KindFunction && child == functionValue) functionValue = nullptr;
}

void Parameter::ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) {
    if (!newChild || newChild->kind != KindFunction || !oldChild || oldChild != functionValue) return;
    functionValue = static_cast<Function*>(newChild);
    newChild->parent = this;
}

void Parameter::SwapChildren(ScenarioItem* /*a*/, ScenarioItem* /*b*/) {}

// The nested call stands among the user attributes.
void Parameter::SaveChildren(std::ostream& /*out*/) const {}

bool Parameter::AcceptsChildKind(std::uint32_t childKind) const { return childKind == KindFunction; }

bool Parameter::OnLoadBegin() {
    // RETURN is a form of the text; in memory there are only parameters.
    if (kind == KindReturn) {
        kind = KindParameter;
        isReturn = true;
    }
    if (!Token::OnLoadBegin()) return false;
    return LinkDefinition(*this, kList);
}

bool Parameter::OnLoadEnd() {
    if (model != this) return !valueKind.empty() || Refuse("parameter \"", name, "\" has no KIND");
    if (kindList.empty()) return Refuse("parameter \"", name, "\" has no KINDLIST");
    return !type.empty() || Refuse("parameter \"", name, "\" has no TYPE");
}

bool Parameter::LoadModelAttribute(ScenarioTextStream& stream) {
    return Token::LoadModelAttribute(stream) || IsUnsetAsWritten(*this, stream) ||
           LoadFromRows<kModelRows>(*this, stream);
}

bool Parameter::LoadUserAttribute(ScenarioTextStream& stream) {
    if (!model) AssertionFailed(kSource, 302);
    if (model->kind != KindParameter) AssertionFailed(kSource, 303);
    return Token::LoadUserAttribute(stream) || LoadFromRows<kUserRows>(*this, stream);
}

// Writes RETURN for a return parameter whose call is linked to this very parameter. A call is linked to a call, so a
// parameter that was read as RETURN comes out as PARAMETER, and files in use rely on that.
bool Parameter::Save(std::ostream& out) {
    if (!parent) AssertionFailed(kSource, 120);
    const bool asReturn = isReturn && parent->kind == KindFunction &&
                          static_cast<const Token*>(parent)->model == static_cast<Token*>(this);
    if (asReturn) kind = KindReturn;
    const bool saved = Token::Save(out);
    if (asReturn) kind = KindParameter;
    return saved;
}

void Parameter::SaveModelAttributes(std::ostream& out) const {
    Token::SaveModelAttributes(out);
    WriteAttribute(out, "UNIT", unit);
    WriteAttribute(out, "TYPE", GetType());
    WriteAttribute(out, "USAGE", usage);
    WriteAttribute(out, "ENUMTAB", enumTab);
    WriteAttribute(out, "FILEDIR", fileDir);
    WriteAttribute(out, "FILEEXT", fileExt);
    WriteAttribute(out, "KINDLIST", JoinWords(kindList));
    WriteAttribute(out, "MINVALUE", minValue);
    WriteAttribute(out, "MAXVALUE", maxValue);
}

void Parameter::SaveUserAttributes(std::ostream& out) const {
    Token::SaveUserAttributes(out);
    WriteAttribute(out, "KIND", valueKind);
    if (valueKind == "FUNCTION") {
        if (!functionValue) AssertionFailed(kSource, 452);
        functionValue->Save(out);
    } else {
        WriteAttribute(out, "VALUE", value);
    }
    WriteAttribute(out, "OWNER_FILE", ownerFile);
}

// Leaves unit and file extension behind on purpose.
void Parameter::CopyModelAttributes(Token* target) const {
    if (!target) AssertionFailed(kSource, 481);
    if (target->kind != KindParameter) AssertionFailed(kSource, 482);
    auto* copy = static_cast<Parameter*>(target);
    copy->type = GetType();
    copy->usage = usage;
    copy->enumTab = enumTab;
    copy->fileDir = fileDir;
    copy->minValue = minValue;
    copy->maxValue = maxValue;
    // Appended, not assigned; the words are taken aside in case the target is this parameter.
    const std::vector<std::string> words = kindList;
    copy->kindList.insert(copy->kindList.end(), words.begin(), words.end());
}

void Parameter::CopyUserAttributes(Token* target) const {
    if (!target) AssertionFailed(kSource, 516);
    target->SetModel(model);
    if (target->kind != KindParameter) AssertionFailed(kSource, 516);
    auto* copy = static_cast<Parameter*>(target);
    copy->isReturn = isReturn;
    copy->value = value;
    copy->SetKind(valueKind);
}

ScenarioItem* Parameter::Clone() const {
    auto* clone = static_cast<Parameter*>(Token::Clone());
    // KIND is there by now, so only a variable gets its file.
    clone->SetOwnerFile(ownerFile);
    clone->type = GetType();
    return clone;
}

void Parameter::UpdateDisplayTextTree() {
    if (functionValue) functionValue->UpdateDisplayTextTree();
    UpdateValidity();
    UpdateDisplayText();
}

// The name of a definition is its meaning, and two of one name are left as they are.
void Parameter::MakeUniqueName() {}

bool Parameter::CheckValueFormat() const {
    if (!model) AssertionFailed(kSource, 89);
    if (model->kind != KindParameter) AssertionFailed(kSource, 90);
    return valueKinds::IsLiteralOf(GetType(), value);
}

const std::string& Parameter::GetType() const {
    static const std::string none;
    const Token* definition = RootDefinitionOf(*this);
    if (definition && definition->kind == KindParameter) return static_cast<const Parameter*>(definition)->type;
    const auto* unnamed = dynamic_cast<const Parameter*>(definition);
    return unnamed ? unnamed->type : none;
}

void Parameter::SetKind(const std::string& word) {
    valueKind = word;
    if (valueKind != kVariable) ownerFile.clear();
}

void Parameter::SetOwnerFile(const std::string& text) {
    if (valueKind == kVariable) ownerFile = text;
}

void Parameter::SetFunction(Function* function) {
    if (function)
        AddChild(function, nullptr, false);
    else
        functionValue = nullptr;
}

ScenarioItem* Parameter::FindEnumTab(const std::string& tabName) const {
    ScenarioItem* root = GetModelRoot(this);
    if (!root) AssertionFailed(kSource, 1153);
    return FindDefinition(root, DefinitionListOf(KindEnumTab), KindEnumTab, tabName);
}

ScenarioItem* Parameter::FindEnumEntry(const std::string& enumTabName, const std::string& entryName) const {
    ScenarioItem* tab = FindEnumTab(enumTabName);
    if (!tab) AssertionFailed(kSource, 1176);
    return FindEnumEntryIn(tab, entryName);
}
