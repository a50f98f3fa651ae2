#ifndef TAVREL_VARIATION_CONSTRAINT_H
#define TAVREL_VARIATION_CONSTRAINT_H

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <lmk/units.h>
#include <variation/Export.h>
#include <variation/Value.h>

namespace TavrelVariation {

enum class Truth { False, Unknown, True };

// What a constraint has to know of a parameter that it names.
struct TAVREL_VARIATION_API ConstrainedParameter {
    std::size_t index = 0; // of its value in what a constraint is asked for
    bool isNumber = false;
    lmk::t_unit unit = lmk::UNIT_NONE;      // its numbers are in
    lmk::t_unit plainUnit = lmk::UNIT_NONE; // of a number without a unit that is compared with it under this name
};

// A condition on the values of a variant, in the language of PICT:
//
//   constraint = "IF" p "THEN" p [ "ELSE" p ] ";" | p ";"
//   p          = p "OR" p | p "AND" p | "NOT" p | "(" p ")" | term          (NOT binds before AND before OR)
//   term       = name relation (value | name) | name "IN" "{" value { "," value } "}" | name "LIKE" text
//   relation   = "=" | "<>" | ">" | ">=" | "<" | "<="
//   name       = "[" ... "]" with brackets that balance
//   value      = number [ unit ] | text in quotes, with \" and \\ inside
//
// Words in capitals are read in any case. Texts compare letter by letter, with their case; in LIKE "*" stands for any
// letters and "?" for one. Numbers compare exactly.
class TAVREL_VARIATION_API Constraint {
public:
    // Tells what a name means; throws std::runtime_error with the reason for one that is no parameter.
    using Resolver = std::function<ConstrainedParameter(const std::string& name)>;

    // Reads the constraints of one text. Throws Refused with `place` and the column, counted from 1 in letters, for a
    // text that is none, and for a comparison of a number with a text.
    static std::vector<Constraint> Read(const std::string& text, const std::string& place, const Resolver& resolve);

    // Whether it holds. `values` has one entry for each parameter; null for a value that is not chosen yet, which
    // leaves open what depends on it.
    Truth Of(const std::vector<const Value*>& values) const;

    // The indexes of the parameters that it names, ascending.
    const std::vector<std::size_t>& Parameters() const;
    const std::string& Place() const;

private:
    struct Tree;
    class Reader;
    std::shared_ptr<const Tree> tree;
};

} // namespace TavrelVariation

#endif
