#include "items/CallUpgrades.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

#include <scenario/Parameter.h>
#include <scenario/function.h>

#include "text/Assertion.h"

namespace {

constexpr const char* kSource = "function";

// The first parameter of that name in the call, nested calls included.
Parameter* Find(Function& call, const char* name) {
    return static_cast<Parameter*>(call.FindItem(KindParameter, name, ""));
}

// A copy of what the definition has at `index`, with its default value; null if the definition is shorter.
Parameter* CloneAt(const Function& definition, std::size_t index) {
    return index < definition.parameters.size() ? static_cast<Parameter*>(definition.parameters[index]->Clone())
                                                : nullptr;
}

void Append(Function& call, Parameter* parameter) {
    if (parameter) call.AddChild(parameter, nullptr, true);
}

void UpgradeGetExportedChannel(Function& call, Function& definition) {
    Parameter* old = Find(call, "USER_DATA_ID");
    const Parameter* wanted = Find(definition, "CHANNEL_ID");
    if (!old || !wanted) return;
    auto* channel = static_cast<Parameter*>(wanted->Clone());
    channel->value = old->value;
    // The one found may stand in a nested call.
    old->parent->ReplaceChild(channel, old);
    delete old;
}

void UpgradeIsVehicleAtPosition(Function& call, Function& definition) {
    if (Find(call, "MAP_RADIUS")) return;
    const Parameter* wanted = Find(definition, "MAP_RADIUS");
    if (!wanted)
        AssertionFailed(kSource, 288, "the definition of \"" + call.name + "\" lacks the parameter MAP_RADIUS");
    Append(call, static_cast<Parameter*>(wanted->Clone()));
}

void UpgradeSetImage(Function& call, Function& definition) {
    if (!Find(call, "DISPLAY_TIME") && Find(definition, "CHANNEL_NAME")) Append(call, CloneAt(definition, 6));
}

// The animated vehicle was the first of the parameters; now an object type and a number stand at the end.
void UpgradeInitAnimation(Function& call, Function& definition) {
    Parameter* vehicle = Find(call, "VHL_NUMBER_PLUS");
    if (!vehicle || call.parameters.size() < 4 || definition.parameters.size() < 5) return;
    const std::string number = vehicle->value;
    call.RemoveChild(call.parameters[1]);
    call.RemoveChild(call.parameters[1]);
    const std::string kept = call.parameters[1]->value;
    call.RemoveChild(call.parameters[1]);

    Parameter* animation = CloneAt(definition, 1);
    Parameter* objectType = CloneAt(definition, 3);
    Parameter* objectNumber = CloneAt(definition, 4);
    const bool isFromDatabase = number == "-1";
    animation->value = kept;
    objectType->value = isFromDatabase ? "ANIMATED_OBJECT_TYPE_DATABASE" : "ANIMATED_OBJECT_TYPE_VEHICLE";
    objectNumber->value = isFromDatabase ? "0" : number;

    // Known by its place alone: it went already if it was among those removed above.
    call.RemoveChild(vehicle);
    call.AddChild(animation, call.parameters.empty() ? nullptr : call.parameters[0], true);
    Append(call, objectType);
    Append(call, objectNumber);
}

void UpgradeSnapshot(Function& call, Function& definition) {
    if (!Find(call, "SUFFIX") && Find(definition, "CHANNEL_NAME")) Append(call, CloneAt(definition, 1));
}

void UpgradeAddTimeMarker(Function& call, Function& definition) {
    if (Find(call, "MARKER_KEYWORDS") || !Find(definition, "MARKER_NOTE")) return;
    Parameter* keywords = CloneAt(definition, 1);
    if (!keywords) return;
    keywords->SetName("MARKER_KEYWORDS");
    Append(call, keywords);
}

struct Upgrade {
    std::string_view name;
    void (*apply)(Function& call, Function& definition);
};

// clang-format off
constexpr Upgrade kUpgrades[] = {
    {"GET_EXPORTED_CHANNEL", UpgradeGetExportedChannel},
    {"IS_VHL_AT_POSITION",   UpgradeIsVehicleAtPosition},
    {"SET_IMAGE",            UpgradeSetImage},
    {"INIT_ANIMATION",       UpgradeInitAnimation},
    {"SNAPSHOT",             UpgradeSnapshot},
    {"ADD_TIME_MARKER",      UpgradeAddTimeMarker},
};
// clang-format on

} // namespace

bool IsUpgraded(std::string_view callName) {
    return std::any_of(std::begin(kUpgrades), std::end(kUpgrades),
                       [callName](const Upgrade& upgrade) { return upgrade.name == callName; });
}

void UpgradeCall(Function& call, Function& definition) {
    for (const Upgrade& upgrade : kUpgrades)
        if (call.name == upgrade.name) upgrade.apply(call, definition);
}
