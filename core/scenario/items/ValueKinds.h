#ifndef SCENARIO_PARAMETERKINDS_H
#define SCENARIO_PARAMETERKINDS_H

#include <string>
#include <string_view>

#include <scenario/Parameter.h>

// What a word of KIND means for the VALUE beside it. A word has one row, and whatever is asked about a value is
// answered from it, so a new word is a new row and nothing else.
struct ValueKind {
    std::string_view word;
    // Whether the reader takes the VALUE; its definition is linked.
    bool (*accepts)(const Parameter&);
    // What a list shows for the VALUE. The text is final, without a mark for an invalid value, when `isFinal` is set.
    std::string (*text)(const Parameter&, bool& isFinal);
    // Whether the VALUE can be used in the scenario around the parameter.
    bool (*isValid)(const Parameter&);
    // What is wrong where it is not, and whether only a whole scenario can judge: in a script that is included
    // elsewhere the VALUE means nothing. Null where no more can be said.
    const char* whyInvalid;
    bool needsScenario;
    // How the VALUE becomes an argument.
    void (*fill)(const Parameter&, ParameterMemory&, ParameterValue&);
};

// The row of a word; null for a word that is not in the vocabulary.
const ValueKind* FindValueKind(std::string_view word);
// The row of a word, or that of all words which are not in the vocabulary. A KIND can be such a word when a host sets
// it, and none at all before one is read.
const ValueKind& ValueKindOf(std::string_view word);

// The columns. Load checks and fillers stand with the reading and the values of parameters, texts and validity tests
// together.
namespace valueKinds {

bool AnyValue(const Parameter&);
bool EntryOfEnumTab(const Parameter&);
bool LiteralOfType(const Parameter&);
// What LiteralOfType asks of the VALUE of a call, whose definition has that TYPE.
bool IsLiteralOf(std::string_view type, const std::string& text);

std::string ValueText(const Parameter&, bool&);
std::string EntryText(const Parameter&, bool&);
std::string CallText(const Parameter&, bool&);
std::string NameText(const Parameter&, bool&);
std::string ObjectText(const Parameter&, bool&);
std::string VehicleText(const Parameter&, bool&);
std::string DriverText(const Parameter&, bool&);
std::string ChannelText(const Parameter&, bool&);
std::string InputText(const Parameter&, bool&);
std::string OutputText(const Parameter&, bool&);
std::string ItemText(const Parameter&, bool&);

bool Always(const Parameter&);
bool FileExists(const Parameter&);
bool ResultFits(const Parameter&);
bool LiteralInLimits(const Parameter&);
bool VehicleExists(const Parameter&);
bool VariableFits(const Parameter&);
bool InputExists(const Parameter&);
bool OutputExists(const Parameter&);
bool TriggerExists(const Parameter&);
bool DriverExists(const Parameter&);
bool ImageExists(const Parameter&);
bool SoundExists(const Parameter&);
bool ItemExists(const Parameter&);

void FillNothing(const Parameter&, ParameterMemory&, ParameterValue&);
void FillLiteral(const Parameter&, ParameterMemory&, ParameterValue&);
void FillEntry(const Parameter&, ParameterMemory&, ParameterValue&);
void FillResult(const Parameter&, ParameterMemory&, ParameterValue&);
void FillVariable(const Parameter&, ParameterMemory&, ParameterValue&);

} // namespace valueKinds

#endif
