#ifndef TAVREL_VARIATION_VALUE_H
#define TAVREL_VARIATION_VALUE_H

#include <string>

#include <variation/Decimal.h>

namespace TavrelVariation {

// A value of a parameter: a number in the parameter's unit of the plan or, where `text` is set, a text; booleans are
// the texts "true" and "false". The text belongs to the plan.
struct Value {
    Decimal number;
    const std::string* text = nullptr;
};

inline bool operator==(const Value& a, const Value& b) {
    if (a.text && b.text) return a.text == b.text || *a.text == *b.text;
    return !a.text && !b.text && a.number == b.number;
}

} // namespace TavrelVariation

#endif
