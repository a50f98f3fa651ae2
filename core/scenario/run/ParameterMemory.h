#ifndef SCENARIO_PARAMETERMEMORY_H
#define SCENARIO_PARAMETERMEMORY_H

#include <cstdint>
#include <string>
#include <vector>

class Variable;
struct ValueKind;

// What the evaluations of one parameter have found out. Everything stands beside the text it was found for and is
// found again when that text has changed; what was found in the tree holds for one version of TreeWatch.
struct ParameterMemory {
    std::string kindWord;
    const ValueKind* kind = nullptr;

    std::string numberText;
    float number = 0.0F;
    bool hasNumber = false;

    std::uint64_t version = 0; // 0 is none
    std::string name;          // VALUE when it was looked up
    std::string searched;      // for a variable, its number as the text that was looked for
    std::string tabName;       // and the enumeration it was looked up in
    const Variable* entry = nullptr;
    std::vector<const Variable*> variables;
};

#endif
