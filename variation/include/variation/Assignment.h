#ifndef TAVREL_VARIATION_ASSIGNMENT_H
#define TAVREL_VARIATION_ASSIGNMENT_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <lmk/units.h>
#include <variation/Export.h>

namespace cfg {
class CfgScenario;
} // namespace cfg
namespace ScenarioTemplateDb {
class ScenarioNode;
}

// Assignments: what of a scenario may be set, under which names, to which values, and the setting of it.
namespace TavrelVariation {

// Why an assignment cannot be had. One sentence that names the thing.
class TAVREL_VARIATION_API AssignmentError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// What a value is. An enumeration counts as a literal.
enum class ValueType { Boolean, Integer, Real, Literal };
TAVREL_VARIATION_API const char* WordOf(ValueType type); // "boolean", "integer", "real", "literal"

// A name with a value, both as they were written.
struct AssignmentText {
    std::string name;
    std::string value;
};
// Parts "NAME=VALUE" at the first "=" outside brackets. Throws AssignmentError where there is none, or no name before
// it.
TAVREL_VARIATION_API AssignmentText ReadAssignment(const std::string& text);

// One declaration of a scenario, whatever its id leads to.
struct TAVREL_VARIATION_API Declaration {
    struct IntegerRange {
        int minimum;
        int maximum;
    };
    struct RealRange {
        double minimum;
        double maximum;
    };

    std::size_t index = 0; // its position: "#0" is the first
    std::string name;
    std::string parameterId;
    ValueType type = ValueType::Integer;
    lmk::t_unit unit = lmk::UNIT_UNDEFINED;  // what its numbers are in; of none the parameter's counts
    std::vector<IntegerRange> integerRanges; // of an integer, in the order of the file; none: any
    std::vector<RealRange> realRanges;       // of a real, likewise
    std::vector<std::string> literals;       // of a literal, likewise
    // The default as the file has it: a number without trailing zeros, "true" or "false", a text; empty optional for a
    // declaration without a typed section.
    std::optional<std::string> defaultText;
    // How many parameters that can be set have that id. Only one means one: 0 leads nowhere, more to several places.
    std::size_t targets = 0;
};

// A parameter that can be set.
struct TAVREL_VARIATION_API Target {
    std::string id; // full parameter id
    ValueType type = ValueType::Literal;
    bool isEnumeration = false;             // of which only the declared literals can be had, where there are any
    bool isVariable = false;                // of a script: its start value is set
    lmk::t_unit unit = lmk::UNIT_UNDEFINED; // of its value
    std::vector<std::size_t> declarations;  // the indexes of those that name it
};

// A value that a target can take.
struct TAVREL_VARIATION_API Assignment {
    std::size_t target = 0; // its index in Settable::Targets()
    std::string id;         // its full id
    // As an assignment to the id writes it, which gives the same value again: numbers without trailing zeros, with
    // their unit where that is not the target's.
    std::string text;
    double number = 0;                      // of an integer or real, in `unit`
    lmk::t_unit unit = lmk::UNIT_UNDEFINED; // in which it was given
    bool boolean = false;                   // of a boolean
};

// What a name means: a target, and the declaration by which it was named, if any.
struct TAVREL_VARIATION_API Named {
    std::size_t target;
    std::optional<std::size_t> declaration; // of a full id none
};

// Whether the declared ranges bind, or are told when a value leaves them.
enum class Ranges { Bind, AreTold };

// All that can be set in an opened scenario file: every parameter of a node whose type the interface knows,
// enumerations, and the start values of script variables, but for those that an include brings along. The file must
// outlive this object, and its root model must be the one in use while it is made, which reads the scripts. A node tree
// of the file that stands elsewhere shows values as they are set, but the variables of a script, which it read before.
class TAVREL_VARIATION_API Settable {
public:
    // `root` is the root of the file's node tree, which need not outlive this; without one a tree is made, which throws
    // what TavrelScenarioNode throws for a script that cannot be read.
    explicit Settable(cfg::CfgScenario& file, ScenarioTemplateDb::ScenarioNode* root = nullptr);
    ~Settable();
    Settable(const Settable&) = delete;
    Settable& operator=(const Settable&) = delete;

    // In the order of the tree.
    const std::vector<Target>& Targets() const;
    // In the order of the file.
    const std::vector<Declaration>& Declarations() const;

    // What a full parameter id (it begins with "/"), the name of a declaration or "#N" means. Throws AssignmentError
    // for a name that nothing has, with the nearest one; for one that several declarations have; for a declaration or
    // id that leads nowhere or to several places; for a parameter of a type that cannot be set.
    Named Find(const std::string& name) const;

    // The unit in which a plain number is meant when a target is named so: that of the declaration, else the target's.
    lmk::t_unit UnitOf(const Named& named) const;

    // Reads a value text for what was named. Throws AssignmentError for a value that is not of the type, a unit of
    // another dimension or none, a text that its place cannot hold, a number that does not read back as itself, and,
    // where ranges bind, for a value outside of what any declaration of the target allows. Where they do not bind,
    // `left` receives a sentence for each declaration whose ranges the value leaves, if it is not null.
    Assignment Read(const Named& named, const std::string& value, Ranges ranges = Ranges::Bind,
                    std::vector<std::string>* left = nullptr) const;

    // The sentence that says why the value lies outside of the declaration's ranges or literals; empty if it is within.
    std::string OutsideOf(const Declaration& declaration, const Assignment& assignment) const;

    // What the file has now, as Assignment::text writes it.
    std::string Present(std::size_t target) const;

    // Puts the values into the opened file, for a run or a save of it. A value that equals the present one changes
    // nothing. Sections and scripts of the file stay the same objects.
    void Apply(const std::vector<Assignment>& assignments);

private:
    struct Parts;
    std::unique_ptr<Parts> parts;
};

// A number of `from` as one of `to`, rounded to twelve digits, so that 25 m/s are 90 km/h and not a little less. Both
// units must be of one dimension.
TAVREL_VARIATION_API double Converted(double number, lmk::t_unit from, lmk::t_unit to);

// Reads a list of assignments for one run: `second` wins over `first` by target, whatever the names. Throws
// AssignmentError as Find and Read do, and for a target that is named twice within one of the lists.
TAVREL_VARIATION_API std::vector<Assignment> ReadAll(const Settable& settable, const std::vector<AssignmentText>& first,
                                                     const std::vector<AssignmentText>& second,
                                                     Ranges ranges = Ranges::Bind,
                                                     std::vector<std::string>* left = nullptr);

} // namespace TavrelVariation

#endif
