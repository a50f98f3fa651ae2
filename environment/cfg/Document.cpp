#include "Document.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <memory_resource>
#include <span>
#include <utility>
#include <vector>

#include <sys/stat.h>

#include <cfg/Scenario.h>

#include "SectionClass.h"

namespace cfg::detail {

namespace {

// Sections and values take about twice the room of their text. Small files get by with one piece of memory.
constexpr size_t kLeastRoom = 2048;
constexpr size_t kMostRoomAtOnce = size_t{1} << 15; // larger pieces would be fetched from the system each time
constexpr size_t kUsualNames = 64;

// A checker must see that memory was given back.
#if defined(__SANITIZE_ADDRESS__)
constexpr size_t kMostKept = 0;
#else
constexpr size_t kMostKept = size_t{4} << 20;
#endif

// Where documents get their memory. The larger pieces of one that is gone are kept for the next, which asks for pieces
// of the same sizes: given back, they would go to the system and come from there again, a page at a time, at each
// opening.
class KeptPieces : public std::pmr::memory_resource {
public:
    // Giving back must not ask for memory.
    KeptPieces() { kept.reserve(kMostKept / kMostRoomAtOnce); }

private:
    void* do_allocate(size_t bytes, size_t alignment) override {
        const auto fitting = std::find_if(kept.begin(), kept.end(), [&](const Piece& piece) {
            return piece.bytes == bytes && piece.alignment == alignment;
        });
        if (fitting == kept.end()) return std::pmr::new_delete_resource()->allocate(bytes, alignment);
        void* const memory = fitting->memory;
        keptBytes -= bytes;
        *fitting = kept.back();
        kept.pop_back();
        return memory;
    }

    void do_deallocate(void* memory, size_t bytes, size_t alignment) override {
        if (bytes >= kMostRoomAtOnce && keptBytes + bytes <= kMostKept && kept.size() < kept.capacity()) {
            kept.push_back({memory, bytes, alignment});
            keptBytes += bytes;
        } else {
            std::pmr::new_delete_resource()->deallocate(memory, bytes, alignment);
        }
    }

    bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override { return this == &other; }

    struct Piece {
        void* memory;
        size_t bytes;
        size_t alignment;
    };
    std::vector<Piece> kept;
    size_t keptBytes = 0;
};

// Never destroyed: a host's document may outlive every static object.
KeptPieces& Pieces() {
    static KeptPieces& pieces = *new KeptPieces;
    return pieces;
}

} // namespace

void Access::Detach(Section& section) {
    section.parent = nullptr;
    if (section.place != kNotInFile) section.document->removedPlaces.push_back(section.place);
}

void Home::TakeNumber() {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return;
    device = status.st_dev;
    number = status.st_ino;
}

Document::Document(size_t expectedBytes)
    : memory(std::clamp(2 * expectedBytes, kLeastRoom, kMostRoomAtOnce), &Pieces()) {
    namesByText.reserve(kUsualNames);
    root = static_cast<Scenario*>(NewSection(Intern(Scenario::sectionName()), nullptr, kNotInFile));
}

Document::~Document() {
    for (Section* section : sections) section->~Section();
}

void Document::PlaceRoot(size_t place) { Access::PlaceOf(*root) = place; }

Name* Document::Intern(std::string_view name) {
    const auto found = namesByText.find(name);
    if (found != namesByText.end()) return lastName = found->second;
    lastName = &names.emplace_back(Name{std::string(name), SectionClassOf(name)});
    namesByText.emplace(lastName->text, lastName);
    return lastName;
}

Name* Document::InternNext(const char* name) {
    Name* const before = lastName;
    if (before->likelyNext && std::strcmp(before->likelyNext->text.c_str(), name) == 0)
        return lastName = before->likelyNext;
    Intern(name);
    before->likelyNext = lastName;
    return lastName;
}

Section* Document::NewSection(Name* name, Section* parent, size_t place) {
    const SectionClass& sectionClass = *name->sectionClass;
    void* const room = memory.allocate(sectionClass.size, alignof(std::max_align_t));
    Section* const section = sectionClass.make(room, {this, name, parent, place});
    sections.push_back(section);
    const std::string* const* declared = DeclaredNames(*name);
    Access::ParametersOf(*section) = DeclareValues(*section, sectionClass.parameters, declared);
    Access::FieldsOf(*section) =
        DeclareValues(*section, sectionClass.fields, declared + sectionClass.parameters.size());
    return section;
}

// Those of the parameters, then those of the text fields.
const std::string* const* Document::DeclaredNames(Name& name) {
    const SectionClass& sectionClass = *name.sectionClass;
    if (name.declared.empty()) {
        for (const FieldRow& row : sectionClass.parameters) name.declared.push_back(&Intern(row.element)->text);
        for (const FieldRow& row : sectionClass.fields) name.declared.push_back(&Intern(row.element)->text);
        lastName = &name;
    }
    return name.declared.data();
}

Value* Document::NewValue(const std::string* name, t_ParameterType type) {
    Value* value = new (memory.allocate(sizeof(Value), alignof(Value))) Value;
    value->document = this;
    value->name = name;
    value->type = type;
    switch (type) {
    case t_ParameterTypeBoolean:
        value->own.boolean = value->loaded.boolean = false;
        value->boolean = &value->own.boolean;
        break;
    case t_ParameterTypeInteger:
        value->own.integer = value->loaded.integer = 0;
        value->integer = &value->own.integer;
        break;
    case t_ParameterTypeReal:
        value->own.real = value->loaded.real = 0.0;
        value->real = &value->own.real;
        break;
    default:
        break;
    }
    return value;
}

std::string* Document::NewText(std::string text) {
    return texts.emplace_back(std::make_unique<std::string>(std::move(text))).get();
}

// One value per row, in their order, standing in the fields of the section. All of them begin as 0 or empty.
Value* Document::DeclareValues(Section& section, std::span<const FieldRow> rows, const std::string* const* declared) {
    Value* first = nullptr;
    Value** end = &first;
    for (const FieldRow& row : rows) {
        Value* value = NewValue(*declared++, row.type);
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
