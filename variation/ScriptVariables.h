#ifndef TAVREL_VARIATION_SCRIPTVARIABLES_H
#define TAVREL_VARIATION_SCRIPTVARIABLES_H

#include <cstddef>
#include <string>
#include <vector>

namespace TavrelVariation {

// A variable of a script where it stands in the script's text.
struct VariableInText {
    std::string name; // its number as written
    std::string type; // TYPE, and so on
    std::string interactiveType = "VOID";
    std::string value;
    bool hasValueLine = false;
    std::size_t valueBegin = 0; // of the value, or where its line is to be put in
    std::string lineBegin;      // with what a line that is put in there begins: a line end and the indentation
};

// The variables of a script that the reader takes, but for those of includes that stand in it and of rules, in the
// order of the text.
std::vector<VariableInText> VariablesIn(const std::string& script);

// Puts a value into the text for the variable of that index, and keeps the places of all of them right.
void PutValue(std::string& script, std::vector<VariableInText>& variables, std::size_t index, const std::string& value);

} // namespace TavrelVariation

#endif
