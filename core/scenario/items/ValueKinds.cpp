#include "items/ValueKinds.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace {

using namespace valueKinds;

constexpr char kNoFile[] = "the data path has no such file";
constexpr char kNoResult[] = "its call is missing, or returns another type";
constexpr char kNoTask[] = "there is no such task";
constexpr char kNoLiteral[] = "the value is not of the type of its definition, or outside its limits";
constexpr char kNoVariable[] =
    "there is no such variable, or it has another type, or its OWNER_FILE is no file of the scenario";
constexpr char kNoVehicle[] = "the scenario has no such vehicle";
constexpr char kNoInput[] = "the vehicle has no such input";
constexpr char kNoOutput[] = "the vehicle has no such output";
constexpr char kNoTrigger[] = "the scenario has no such trigger";
constexpr char kNoDriver[] = "the scenario has no such driver";
constexpr char kNoImage[] = "the scenario has no such image";
constexpr char kNoSound[] = "the scenario has no such sound";

// clang-format off
constexpr ValueKind kKinds[] = {
    // word                     load check      display text  validity test    why not        of a   filler
    //                                                                                       scenario
    {"ENUM",                    EntryOfEnumTab, EntryText,    Always,          nullptr,       false, FillEntry},
    {"FILE",                    AnyValue,       ValueText,    FileExists,      kNoFile,       false, FillLiteral},
    {"FUNCTION",                AnyValue,       CallText,     ResultFits,      kNoResult,     false, FillResult},
    {"TASK",                    AnyValue,       ItemText,     ItemExists,      kNoTask,       true,  FillLiteral},
    {"USER",                    LiteralOfType,  ValueText,    LiteralInLimits, kNoLiteral,    false, FillLiteral},
    {"VARIABLE",                AnyValue,       ItemText,     VariableFits,    kNoVariable,   true,  FillVariable},
    {"VEHICLE",                 AnyValue,       VehicleText,  VehicleExists,   kNoVehicle,    true,  FillLiteral},
    {"PICK",                    AnyValue,       ItemText,     ItemExists,      nullptr,       false, FillNothing},
    {"TRAFFIC_LIGHT",           AnyValue,       NameText,     ItemExists,      nullptr,       false, FillLiteral},
    {"BARRIER",                 AnyValue,       NameText,     ItemExists,      nullptr,       false, FillLiteral},
    {"ROADSIGN",                AnyValue,       NameText,     ItemExists,      nullptr,       false, FillLiteral},
    {"OBJECT",                  AnyValue,       ObjectText,   ItemExists,      nullptr,       false, FillLiteral},
    {"VHC_INPUT",               AnyValue,       InputText,    InputExists,     kNoInput,      true,  FillLiteral},
    {"VHC_OUTPUT",              AnyValue,       OutputText,   OutputExists,    kNoOutput,     true,  FillLiteral},
    {"EXPORT_CHANNEL",          AnyValue,       ChannelText,  ItemExists,      nullptr,       false, FillLiteral},
    {"EXPORT_CHANNEL_CATEGORY", AnyValue,       ValueText,    ItemExists,      nullptr,       false, FillLiteral},
    {"EXPORT_CHANNEL_NAME",     AnyValue,       ValueText,    ItemExists,      nullptr,       false, FillLiteral},
    {"TRIGGER",                 AnyValue,       ValueText,    TriggerExists,   kNoTrigger,    true,  FillLiteral},
    {"SOURCE",                  AnyValue,       ValueText,    ItemExists,      nullptr,       false, FillLiteral},
    {"SINK",                    AnyValue,       ValueText,    ItemExists,      nullptr,       false, FillLiteral},
    {"TRAJECTORY",              AnyValue,       ValueText,    ItemExists,      nullptr,       false, FillLiteral},
    {"DRIVER",                  AnyValue,       DriverText,   DriverExists,    kNoDriver,     true,  FillLiteral},
    {"IMAGE",                   AnyValue,       ValueText,    ImageExists,     kNoImage,      true,  FillLiteral},
    {"SOUND",                   AnyValue,       ValueText,    SoundExists,     kNoSound,      true,  FillLiteral},
};
// The keyword of an item is read as a reference to an item of that kind; anything else means nothing.
constexpr ValueKind kOther =
    {"",                        AnyValue,       ItemText,     ItemExists,      nullptr,       false, FillNothing};
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

const ValueKind* FindValueKind(std::string_view word) {
    if (word.empty() || word[0] < 'A' || word[0] > 'Z') return nullptr;
    for (std::size_t at = kFirstOfLetter[static_cast<std::size_t>(word[0] - 'A')]; at < std::size(kKinds); ++at)
        if (kKinds[at].word == word) return &kKinds[at];
    return nullptr;
}

const ValueKind& ValueKindOf(std::string_view word) {
    const ValueKind* row = FindValueKind(word);
    return row ? *row : kOther;
}
