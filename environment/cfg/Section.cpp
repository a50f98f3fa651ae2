#include <cfg/Section.h>

#include <algorithm>
#include <string_view>

#include "Document.h"
#include "ValueText.h"
#include "XmlText.h"

namespace cfg {

using detail::Access;
using detail::Value;

namespace {

// Stands in for a value that the parameter does not hold. Emptied at each question, so that nobody reads there what
// another left behind.
template <typename Type>
Type& NobodysValue() {
    thread_local Type value;
    value = Type();
    return value;
}

size_t LevelOf(const Section& section) {
    size_t level = 1;
    for (Section* above = Access::ParentOf(const_cast<Section&>(section)); above; above = Access::ParentOf(*above))
        ++level;
    return level;
}

bool IsTextField(Section& section, std::string_view name) {
    for (const Value* field = Access::FieldsOf(section); field; field = field->next)
        if (*field->name == name) return true;
    return false;
}

} // namespace

Section::Section(const detail::SectionSetup& setup)
    : document(setup.document), name(&setup.name->text), parent(setup.parent), place(setup.place) {}

Section::~Section() = default;

// Reading

const char* Section::getName() const { return name->c_str(); }

size_t Section::getSubSectionCount() const { return subSections.size(); }

Section* Section::getSubSection(size_t index) { return index < subSections.size() ? subSections[index] : nullptr; }

Section* Section::getSubSection(const char* wanted) {
    if (!wanted) return nullptr;
    const std::string_view text = wanted;
    const auto found =
        std::find_if(subSections.begin(), subSections.end(), [text](const Section* s) { return *s->name == text; });
    return found == subSections.end() ? nullptr : *found;
}

void Section::getSubSections(const char* wanted, std::vector<Section*>& out) {
    out.clear();
    if (!wanted) return;
    const std::string_view text = wanted;
    for (Section* section : subSections)
        if (*section->name == text) out.push_back(section);
}

Section* Section::getOrCreateSubsection(const char* wanted) {
    Section* existing = getSubSection(wanted);
    return existing ? existing : createSubSection(wanted);
}

Section* Section::getParentSection() { return parent; }

Section::ParameterIterator Section::beginParameter() { return ParameterIterator(parameters); }
Section::ParameterIterator Section::endParameter() { return ParameterIterator(nullptr); }

// Changing

Section* Section::createSubSection(const char* wanted) {
    if (!wanted || !detail::IsXmlName(wanted) || IsTextField(*this, wanted)) return nullptr;
    if (LevelOf(*this) >= detail::kMostLevels) return nullptr; // the file could not be loaded again
    subSections.push_back(document->NewSection(document->Intern(wanted), this, detail::kNotInFile));
    return subSections.back();
}

void Section::removeSubSection(Section* section) {
    const auto found = std::find(subSections.begin(), subSections.end(), section);
    if (found == subSections.end()) return;
    detail::Access::Detach(*section);
    subSections.erase(found);
}

void Section::removeSubSections(const char* wanted) {
    if (!wanted) return;
    const std::string_view text = wanted;
    std::erase_if(subSections, [text](Section* section) {
        const bool leaves = *section->name == text;
        if (leaves) detail::Access::Detach(*section);
        return leaves;
    });
}

// The position in the parameter list

Section::ParameterIterator& Section::ParameterIterator::operator++() {
    value = value->next;
    return *this;
}

const std::string& Section::ParameterIterator::getCName() const { return *value->name; }

const std::string& Section::ParameterIterator::getVerboseName() const {
    if (!value->verboseName) {
        detail::Document& file = *value->document;
        const bool isGiven = value->verbosePlace != detail::kNotInFile;
        const std::string text = isGiven ? detail::AttributeText(file.source, value->verbosePlace) : std::string();
        value->verboseName = &file.Intern(text)->text;
    }
    return *value->verboseName;
}

t_ParameterType Section::ParameterIterator::getType() const { return value->type; }
lmk::t_unit Section::ParameterIterator::getUnit() const { return value->unit; }

int& Section::ParameterIterator::getInt() {
    return value->type == t_ParameterTypeInteger ? *value->integer : NobodysValue<int>();
}

double& Section::ParameterIterator::getDouble() {
    return value->type == t_ParameterTypeReal ? *value->real : NobodysValue<double>();
}

bool& Section::ParameterIterator::getBool() {
    return value->type == t_ParameterTypeBoolean ? *value->boolean : NobodysValue<bool>();
}

std::string& Section::ParameterIterator::getString() {
    if (!detail::HoldsText(value->type)) return NobodysValue<std::string>();
    // Most texts of a file are never asked for, so each is made when it is.
    if (!value->text)
        value->text = value->document->NewText(detail::AttributeText(value->document->source, value->place));
    return *value->text;
}

} // namespace cfg
