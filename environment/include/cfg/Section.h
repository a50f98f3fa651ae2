#ifndef CFG_SECTION_H
#define CFG_SECTION_H

#include <concepts>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <cfg/t_ParameterType.h>
#include <environment/Export.h>
#include <lmk/units.h>

namespace cfg {

namespace detail {
struct Access;
class Document;
struct SectionSetup;
struct Value;
} // namespace detail

// A named node in the tree of a scenario file, with sub-sections and typed parameters in the order of the file. The
// classes derived from it add fields; which one a section has follows from its name.
//
// Sections belong to the cfg::CfgScenario that they came from and live as long as it does or until its next load, also
// those that were removed from the tree: nodes that still point to one read it safely. None of the operations throws.
class TAVREL_ENVIRONMENT_API Section {
public:
    using t_ParameterType = cfg::t_ParameterType;

    // A position in the parameter list. Copies are independent and stay on their parameter, for as long as the section
    // lives. The position after the last parameter must not be read or moved.
    class TAVREL_ENVIRONMENT_API ParameterIterator {
    public:
        ParameterIterator() = default;

        bool operator==(const ParameterIterator& other) const { return value == other.value; }
        bool operator!=(const ParameterIterator& other) const { return value != other.value; }
        ParameterIterator& operator++();
        ParameterIterator operator++(int) {
            const ParameterIterator before = *this;
            ++*this;
            return before;
        }

        const std::string& getCName() const;       // the name of its element
        const std::string& getVerboseName() const; // the long name, empty if the file gives none
        t_ParameterType getType() const;
        lmk::t_unit getUnit() const;

        // The stored value, in SI units where it has a unit: writing to it changes the section, and the next save
        // stores it. The text is that of every type that is neither boolean, integer nor real. A question for another
        // type than the parameter's own gives a reference to a value that nobody keeps, 0 or empty.
        int& getInt();
        double& getDouble();
        bool& getBool();
        std::string& getString();

    private:
        friend class Section;
        explicit ParameterIterator(detail::Value* position) : value(position) {}

        detail::Value* value = nullptr; // null after the last parameter
    };

    virtual ~Section();
    Section(const Section&) = delete;
    Section& operator=(const Section&) = delete;

    // The name of its element. Stays good as long as the section.
    const char* getName() const;

    size_t getSubSectionCount() const;
    // Null beyond the end.
    Section* getSubSection(size_t index);
    // For an index of another integral type. Without it the literal 0 would name a null text just as well as the first
    // sub-section, and no call with it would compile.
    template <std::integral Index>
    Section* getSubSection(Index index) {
        return getSubSection(static_cast<size_t>(index));
    }
    // The first one of that name, null if there is none.
    Section* getSubSection(const char* name);
    // Empties `out` first.
    void getSubSections(const char* name, std::vector<Section*>& out);
    // The first one of that name, else as createSubSection.
    Section* getOrCreateSubsection(const char* name);
    // Null at the root and for a section that was removed.
    Section* getParentSection();

    // The parameters that the section's class declares come first, whether the file holds them or not, then the others
    // in the order of the file.
    ParameterIterator beginParameter();
    ParameterIterator endParameter();

    // Adds a section after the others, of the class that belongs to the name. Null, and no change, for a name that no
    // element can bear or that is a text field of this section.
    virtual Section* createSubSection(const char* name);
    // Takes a direct sub-section out of the tree; anything else is left alone. The section stays allocated, with
    // everything below it, and has no parent any more.
    virtual void removeSubSection(Section* section);
    virtual void removeSubSections(const char* name);

    // For the file alone: what is handed over is known only to it.
    explicit Section(const detail::SectionSetup& setup);

private:
    friend struct detail::Access;

    detail::Document* document;          // the file that owns this section
    const std::string* name;             // shared by all sections and parameters of that name
    Section* parent;                     // borrowed
    std::vector<Section*> subSections;   // borrowed, in order
    detail::Value* parameters = nullptr; // first of a chain, owned by the document
    detail::Value* fields = nullptr;     // the text fields of the class, likewise
    size_t place;                        // where the element's name stands in the file; see Document
};

} // namespace cfg

#endif
