// A text as constraints on two numbers and a text: it is read or refused with its place, and what it says with some
// values open does not change when they are known.

#include <deque>
#include <stdexcept>

#include <variation/Constraint.h>
#include <variation/Refused.h>

#include "../Support.h"

namespace {

using namespace TavrelVariation;

ConstrainedParameter Resolve(const std::string& name) {
    if (name == "A") return {0, true, lmk::UNIT_KM_H, lmk::UNIT_KM_H};
    if (name == "B") return {1, true, lmk::UNIT_M_S, lmk::UNIT_M_S};
    if (name == "C") return {2, false, lmk::UNIT_NONE, lmk::UNIT_NONE};
    throw std::runtime_error("[" + name + "] is no parameter");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string kTexts[] = {"", "x", "a long text * with ? signs \xc3\xbc"};
    static const Value kNumbers[] = {{{0, 0}, nullptr}, {{36, 1}, nullptr}, {{-9007199254740993, 3}, nullptr}};
    const std::string text = Input(data, size).Rest();
    try {
        for (const Constraint& constraint : Constraint::Read(text, "constraints/0", Resolve)) {
            for (int round = 0; round < 27; ++round) {
                const Value ofText{{}, &kTexts[round / 9]};
                const std::vector<const Value*> known{&kNumbers[round % 3], &kNumbers[round / 3 % 3], &ofText};
                const Truth truth = constraint.Of(known);
                Demand(truth != Truth::Unknown, "a constraint on known values is true or false", text);
                for (std::size_t open = 0; open < known.size(); ++open) {
                    std::vector<const Value*> values = known;
                    values[open] = nullptr;
                    const Truth partly = constraint.Of(values);
                    Demand(partly == Truth::Unknown || partly == truth, "what is decided stays so", text);
                }
            }
        }
    } catch (const Refused& refused) {
        Demand(refused.Place() == "constraints/0" && refused.Reason().substr(0, 7) == "column ",
               "a refusal names the column", refused.what());
    }
    return 0;
}
