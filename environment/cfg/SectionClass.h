#ifndef CFG_SECTIONCLASS_H
#define CFG_SECTIONCLASS_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include <cfg/Section.h>

// Which class the sections of a name have, and what the class declares.
namespace cfg::detail {

// A field of a section class that the file holds, as a parameter or as the text of an element.
struct FieldRow {
    const char* element;
    t_ParameterType type;
    void* (*address)(Section&); // of the field, whose C++ type follows from `type`

    template <auto Field>
    static constexpr FieldRow of(const char* element) {
        return {element, TypeOf(Field), &AddressOf<Field>};
    }

private:
    template <typename Class, typename Type>
    static constexpr t_ParameterType TypeOf(Type Class::*) {
        if constexpr (std::is_same_v<Type, bool>) return t_ParameterTypeBoolean;
        if constexpr (std::is_same_v<Type, std::int32_t>) return t_ParameterTypeInteger;
        if constexpr (std::is_same_v<Type, double>) return t_ParameterTypeReal;
        if constexpr (std::is_same_v<Type, std::string>) return t_ParameterTypeString;
    }

    template <auto Field>
    static void* AddressOf(Section& section) {
        return Locate(section, Field);
    }

    template <typename Class, typename Type>
    static void* Locate(Section& section, Type Class::*field) {
        return &(static_cast<Class&>(section).*field);
    }
};

struct SectionClass {
    const char* name;
    size_t size;
    Section* (*make)(void* room, const SectionSetup&); // in a room of that size
    std::span<const FieldRow> parameters;
    std::span<const FieldRow> fields;
};

// Never null: names without a class of their own belong to the plain one.
const SectionClass* SectionClassOf(std::string_view name);

} // namespace cfg::detail

#endif
