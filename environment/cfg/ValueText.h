#ifndef CFG_VALUETEXT_H
#define CFG_VALUETEXT_H

#include <string>
#include <string_view>

#include "Document.h"

// Values of parameters and text fields as the text of the file, independent of the locale.
namespace cfg::detail {

// Whether values of a type are kept as their text: all but booleans, integers and reals.
bool HoldsText(t_ParameterType type);

// The type of a word in the file; false for an unknown word.
bool ParseType(std::string_view word, t_ParameterType& type);
std::string TypeWord(t_ParameterType type);

// Stores a text of the file as the value and as what was loaded. Blanks around numbers and booleans are passed over.
// False if the text is not of the value's type.
bool ParseValue(std::string_view text, Value& value);

std::string FormatValue(const Value& value);

// Whether a boolean, integer or real differs from what was loaded, bit by bit.
bool IsChangedNumber(const Value& value);

} // namespace cfg::detail

#endif
