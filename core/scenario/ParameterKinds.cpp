#include "ParameterKinds.h"

namespace {

using namespace ParameterKinds;

// clang-format off
constexpr ParameterKind kKinds[] = {
    // word                      load check      display text  validity test    filler
    {"ENUM",                     EntryOfEnumTab, EntryText,    Always,          FillEntry},
    {"FILE",                     AnyValue,       ValueText,    FileExists,      FillLiteral},
    {"FUNCTION",                 AnyValue,       CallText,     ResultFits,      FillResult},
    {"TASK",                     AnyValue,       ItemText,     ItemExists,      FillLiteral},
    {"USER",                     LiteralOfType,  ValueText,    LiteralInLimits, FillLiteral},
    {"VARIABLE",                 AnyValue,       ItemText,     VariableFits,    FillVariable},
    {"VEHICLE",                  AnyValue,       VehicleText,  VehicleExists,   FillLiteral},
    {"PICK",                     AnyValue,       ItemText,     ItemExists,      FillNothing},
    {"TRAFFIC_LIGHT",            AnyValue,       NameText,     ItemExists,      FillLiteral},
    {"BARRIER",                  AnyValue,       NameText,     ItemExists,      FillLiteral},
    {"ROADSIGN",                 AnyValue,       NameText,     ItemExists,      FillLiteral},
    {"OBJECT",                   AnyValue,       ObjectText,   ItemExists,      FillLiteral},
    {"VHC_INPUT",                AnyValue,       InputText,    InputExists,     FillLiteral},
    {"VHC_OUTPUT",               AnyValue,       OutputText,   OutputExists,    FillLiteral},
    {"EXPORT_CHANNEL",           AnyValue,       ChannelText,  ItemExists,      FillLiteral},
    {"EXPORT_CHANNEL_CATEGORY",  AnyValue,       ValueText,    ItemExists,      FillLiteral},
    {"EXPORT_CHANNEL_NAME",      AnyValue,       ValueText,    ItemExists,      FillLiteral},
    {"TRIGGER",                  AnyValue,       ValueText,    TriggerExists,   FillLiteral},
    {"SOURCE",                   AnyValue,       ValueText,    ItemExists,      FillLiteral},
    {"SINK",                     AnyValue,       ValueText,    ItemExists,      FillLiteral},
    {"TRAJECTORY",               AnyValue,       ValueText,    ItemExists,      FillLiteral},
    {"DRIVER",                   AnyValue,       DriverText,   DriverExists,    FillLiteral},
    {"IMAGE",                    AnyValue,       ValueText,    ImageExists,     FillLiteral},
    {"SOUND",                    AnyValue,       ValueText,    SoundExists,     FillLiteral},
};
// The keyword of an item is read as a reference to an item of that kind; anything else means nothing.
constexpr ParameterKind kOther =
    {"",                         AnyValue,       ItemText,     ItemExists,      FillNothing};
// clang-format on

} // namespace

const ParameterKind* FindParameterKind(std::string_view word) {
    if (word.empty()) return nullptr;
    for (const ParameterKind& row : kKinds)
        if (row.word.front() == word.front() && row.word == word) return &row;
    return nullptr;
}

const ParameterKind& ParameterKindOf(std::string_view word) {
    const ParameterKind* row = FindParameterKind(word);
    return row ? *row : kOther;
}
