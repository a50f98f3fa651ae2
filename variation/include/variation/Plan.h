#ifndef TAVREL_VARIATION_PLAN_H
#define TAVREL_VARIATION_PLAN_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <variation/Assignment.h>
#include <variation/Domain.h>
#include <variation/Export.h>
#include <variation/PlanFile.h>
#include <variation/Value.h>

namespace TavrelVariation {

// A numbered set of values, one for each parameter of the plan, in its order. Texts belong to the plan.
struct TAVREL_VARIATION_API Variant {
    std::uint64_t number = 0;
    std::optional<std::uint64_t> seed; // of the world; none: the scenario's own counts
    std::vector<Value> values;
};

// A parameter that the plan gives values to.
struct TAVREL_VARIATION_API PlannedParameter {
    std::string id;    // full parameter id
    std::string name;  // as the plan names it; of a plan without parameters, the declaration's name, or #N
    std::string place; // in the plan file: "parameters/Fog"
    ValueType type = ValueType::Literal;
    lmk::t_unit unit = lmk::UNIT_NONE; // of the plan's numbers
    std::string unitText;              // what an assignment to the id needs after a number: empty, or "km/h"
    std::string present;               // what the scenario has, as an assignment to the id writes it
};

// How many variants there are.
struct TAVREL_VARIATION_API VariantCount {
    std::uint64_t number = 0;
    bool isExact = true; // false: an upper bound, since counting would take too long
};

// The combinations of values of each `strength` parameters of a plan: how many the constraints allow, how many of these
// a set of variants has, and the first ones that it lacks. Linked parameters count as one.
struct TAVREL_VARIATION_API PlanCoverage {
    std::uint64_t possible = 0;
    std::uint64_t covered = 0;
    std::uint64_t variants = 0;                       // that were counted
    std::vector<std::vector<AssignmentText>> missing; // by full id
};

// A plan that knows its scenario: which variants there are, and the n-th of them without those before it. Reading it
// does all that can fail; what it needs of the scenario is copied. A `cover` plan searches its rows then. One thread at
// a time.
class TAVREL_VARIATION_API Plan {
public:
    // Throws Refused with the place in the plan file for what the scenario and the plan do not have in common, and for
    // a plan that has no variant.
    Plan(const PlanFile& file, const Settable& settable);
    ~Plan();
    Plan(Plan&&) noexcept;
    Plan& operator=(Plan&&) noexcept;

    const PlanFile& File() const;
    const std::vector<PlannedParameter>& Parameters() const;
    // The numbers that the plan takes a parameter's values from; null for texts, booleans and a list of values.
    const NumberDomain* DomainOf(std::size_t parameter) const;

    // Counts, where constraints leave gaps, up to 10^7 candidates. Throws Refused where `random` or `sobol` find too
    // few variants that the constraints allow.
    VariantCount Count() const;
    // All numbers are below, and all from 0 on are there if no constraint leaves gaps. Below 2^53.
    std::uint64_t End() const;

    // The variant of a number; false, with `variant` in no certain state, for a number that there is none of. It costs
    // the same for any number, but in `random` and `sobol` with constraints beyond `count`: there those before must be
    // counted once. Throws Refused like Count.
    bool At(std::uint64_t number, Variant& variant) const;
    // The variant with this number or the next one up to the number `last`, which is the end of the search: constraints
    // may leave long gaps. False, with `variant` in no certain state, where there is none. Throws Refused like Count;
    // whether `random` and `sobol` find enough variants is certain only after a search to the end of all numbers.
    bool NextFrom(std::uint64_t number, Variant& variant,
                  std::uint64_t last = std::numeric_limits<std::uint64_t>::max()) const;

    // What an assignment to the parameter's id takes: a number with its unit, where it needs one.
    void AppendText(std::size_t parameter, const Value& value, std::string& text) const;
    std::string TextOf(std::size_t parameter, const Value& value) const;
    // The whole variant as assignments to full ids.
    std::vector<AssignmentText> Assignments(const Variant& variant) const;
    // The value of such a text; false for one that is none of the parameter's type.
    bool ReadValue(std::size_t parameter, const std::string& text, Value& value) const;

    // Counts combinations of `strength` (1 to 6) parameters, each of the values that the plan gives the parameter as a
    // list, by looking at all of them. `next` fills the values of the next variant, or answers false after the last
    // one. Throws Refused for a plan without such lists, with fewer parameters, or too many combinations.
    using NextValues = std::function<bool(std::vector<Value>& values)>;
    PlanCoverage Coverage(int strength, const NextValues& next, std::size_t mostMissing) const;

private:
    class Builder;
    struct Parts;
    std::unique_ptr<Parts> parts;
};

// A plan to begin with: all declarations of the scenario that have values to choose from, as JSON. `leftOut` receives a
// sentence for each of the others, if it is not null.
TAVREL_VARIATION_API std::string StarterPlan(const std::string& scenario, const std::string& configuration,
                                             const Settable& settable, std::vector<std::string>* leftOut = nullptr);

} // namespace TavrelVariation

#endif
