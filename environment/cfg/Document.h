#ifndef CFG_DOCUMENT_H
#define CFG_DOCUMENT_H

#include <cstdint>
#include <deque>
#include <memory>
#include <memory_resource>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <sys/types.h>

#include <cfg/Section.h>

namespace cfg {
class Scenario;
}

// How a scenario file is held in memory. The bytes of the file stay as they were loaded; the sections remember where
// in them they stand, and a save puts what has changed into those bytes. Nothing is moved after a save: each one starts
// from the bytes that were loaded, so that two saves in a row write the same.
namespace cfg::detail {

struct FieldRow;
struct SectionClass;

// The place of what the file does not hold.
constexpr size_t kNotInFile = static_cast<size_t>(-1);

// Deeper sections are refused: the walks over the tree are recursive, ours and those of the users.
constexpr size_t kMostLevels = 1000;

// A name that occurs in the file, stored once for all its bearers.
struct Name {
    std::string text;
    const SectionClass* sectionClass;           // what an element of that name is, if it is a section
    std::vector<const std::string*> declared{}; // names of the values of that class, once there is such a section
    Name* likelyNext = nullptr;                 // the name that came after it last time
    std::string unitText{};                     // the unit that an element of that name had last time
    lmk::t_unit unit = lmk::UNIT_UNDEFINED;
};

union Number {
    double real = 0.0; // the widest first, so that an empty one is zero in every form
    bool boolean;
    std::int32_t integer;
};

// A parameter of a section, or a text field of its class. What it holds lies in the section's own field where the
// class declares it, else in `own` or, for texts, in the document's store.
struct Value {
    Value* next = nullptr;
    Document* document = nullptr;
    const std::string* name = nullptr;
    const std::string* verboseName = nullptr; // null until asked for
    size_t place = kNotInFile;                // parameter: of the text of its value; text field: of its element's name
    size_t verbosePlace = kNotInFile;         // of the text of the long name
    t_ParameterType type = t_ParameterTypeString;
    lmk::t_unit unit = lmk::UNIT_UNDEFINED;
    Number own{};
    Number loaded{}; // what a save compares with
    union {
        bool* boolean;
        std::int32_t* integer;
        double* real;
        std::string* text; // null until asked for, which means unchanged
    };

    Value() : text(nullptr) {}
};

// What a section is made from.
struct SectionSetup {
    Document* document;
    const Name* name;
    Section* parent; // null for the root
    size_t place;
};

// The inside of a section, for the document's own code.
struct Access {
    static Document& DocumentOf(const Section& section) { return *section.document; }
    static Section*& ParentOf(Section& section) { return section.parent; }
    static std::vector<Section*>& SubSectionsOf(Section& section) { return section.subSections; }
    static Value*& ParametersOf(Section& section) { return section.parameters; }
    static Value*& FieldsOf(Section& section) { return section.fields; }
    static size_t& PlaceOf(Section& section) { return section.place; }
    // What becomes of a section that its parent gives up: it forgets the parent, and the file loses its text.
    static void Detach(Section& section);
};

// A file that holds the scenario, and what it holds as far as this process knows.
struct Home {
    std::string path; // absolute, without links
    dev_t device = 0;
    ino_t number = 0;
    std::optional<std::string> saved; // the bytes; none if they are those that were loaded

    // Of what stands at the path now.
    void TakeNumber();
};

class Document {
public:
    // An empty scenario. Room is made for a file of that many bytes.
    explicit Document(size_t expectedBytes = 0);
    ~Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    Scenario* Root() const { return root; }
    // For the reader, when it has found where the root stands.
    void PlaceRoot(size_t place);

    Name* Intern(std::string_view name);
    // The same for the names of elements in the order of the file. They repeat from one vehicle to the next, so a look
    // at what followed last time saves most of the searching.
    Name* InternNext(const char* name);
    // Makes a section of the class that belongs to its name, with the values that the class declares.
    Section* NewSection(Name* name, Section* parent, size_t place);
    Value* NewValue(const std::string* name, t_ParameterType type);
    std::string* NewText(std::string text);

    // The bytes that were loaded; empty for a scenario that came from no file.
    std::string source;
    // Where the scenario stands on disk: the file that it was loaded from, and those that it was saved as.
    std::vector<Home> homes;
    // Where sections stand in the file that were removed from the tree.
    std::vector<size_t> removedPlaces;
    // Whether the file says to be in another encoding than UTF-8: its texts are then bytes of that encoding.
    bool isInOtherEncoding = false;
    // False after a failed load: such a document must not be saved over the file.
    bool isSound = true;
    // Whether the last save found too little memory.
    bool lacksMemory = false;

private:
    const std::string* const* DeclaredNames(Name& name);
    Value* DeclareValues(Section& section, std::span<const FieldRow> rows, const std::string* const* names);

    std::pmr::monotonic_buffer_resource memory;
    std::deque<Name> names;
    std::unordered_map<std::string_view, Name*> namesByText;
    Name* lastName = nullptr;
    std::vector<std::unique_ptr<std::string>> texts;
    std::vector<Section*> sections; // in `memory`; the removed ones, too: others may still point to them
    Scenario* root;
};

} // namespace cfg::detail

#endif
