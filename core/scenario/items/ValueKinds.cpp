#include "items/ValueKinds.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "text/ShortText.h"

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

// Every value of a script is looked up, so the words are found by their first letter.
constexpr auto kFirstOfLetter = [] {
    std::array<std::uint8_t, 'Z' - 'A' + 1> first{};
    first.fill(std::size(kKinds));
    for (std::size_t at = std::size(kKinds); at-- > 0;)
        first[static_cast<std::size_t>(kKinds[at].word[0] - 'A')] = static_cast<std::uint8_t>(at);
    return first;
}();

} // namespace

const ParameterKind* FindParameterKind(std::string_view word) {
    if (word.empty() || word[0] < 'A' || word[0] > 'Z') return nullptr;
    for (std::size_t at = kFirstOfLetter[static_cast<std::size_t>(word[0] - 'A')]; at < std::size(kKinds); ++at)
        if (SameText(kKinds[at].word, word)) return &kKinds[at];
    return nullptr;
}

const ParameterKind& ParameterKindOf(std::string_view word) {
    const ParameterKind* row = FindParameterKind(word);
    return row ? *row : kOther;
}
