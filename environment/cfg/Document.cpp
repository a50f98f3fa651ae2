#include "Document.h"

#include <span>
#include <utility>

#include <cfg/Scenario.h>

#include "SectionClass.h"

namespace cfg::detail {

Document::Document() {
    root = static_cast<Scenario*>(NewSection(Intern(Scenario::sectionName()), nullptr, kNotInFile));
}

Document::~Document() = default;

void Document::PlaceRoot(size_t place) { Access::PlaceOf(*root) = place; }

const Name* Document::Intern(std::string_view name) {
    if (const auto found = namesByText.find(name); found != namesByText.end()) return found->second;
    const Name& added = names.emplace_back(Name{std::string(name), SectionClassOf(name)});
    namesByText.emplace(added.text, &added);
    return &added;
}

Section* Document::NewSection(const Name* name, Section* parent, size_t place) {
    const SectionClass& sectionClass = *name->sectionClass;
    sections.push_back(sectionClass.make({this, name, parent, place}));
    Section& section = *sections.back();
    Access::ParametersOf(section) = DeclareValues(section, sectionClass.parameters);
    Access::FieldsOf(section) = DeclareValues(section, sectionClass.fields);
    return &section;
}

Value* Document::NewValue(const std::string* name, t_ParameterType type) {
    Value* value = new (memory.allocate(sizeof(Value), alignof(Value))) Value;
    value->document = this;
    value->name = name;
    value->type = type;
    switch (type) {
    case t_ParameterTypeBoolean:
        value->boolean = &value->own.boolean;
        break;
    case t_ParameterTypeInteger:
        value->integer = &value->own.integer;
        break;
    case t_ParameterTypeReal:
        value->real = &value->own.real;
        break;
    default:
        break;
    }
    return value;
}

std::string* Document::NewText(std::string text) { return &texts.emplace_back(std::move(text)); }

// One value per row, in their order, standing in the fields of the section. All of them begin as 0 or empty.
Value* Document::DeclareValues(Section& section, std::span<const FieldRow> rows) {
    Value* first = nullptr;
    Value** end = &first;
    for (const FieldRow& row : rows) {
        Value* value = NewValue(&Intern(row.element)->text, row.type);
        void* const field = row.address(section);
        switch (row.type) {
        case t_ParameterTypeBoolean:
            value->boolean = static_cast<bool*>(field);
            break;
        case t_ParameterTypeInteger:
            value->integer = static_cast<std::int32_t*>(field);
            break;
        case t_ParameterTypeReal:
            value->real = static_cast<double*>(field);
            break;
        default:
            value->text = static_cast<std::string*>(field);
            break;
        }
        *end = value;
        end = &value->next;
    }
    return first;
}

} // namespace cfg::detail
