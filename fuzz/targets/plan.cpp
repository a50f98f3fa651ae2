// A plan file, on a scenario of the sample installation: any text is a plan or is refused with its place, and the
// variants of a plan are what it says.

#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDb.h>
#include <variation/Plan.h>
#include <variation/Refused.h>

#include "../Items.h"
#include "../Support.h"
#include "../Templates.h"

namespace {

using namespace TavrelVariation;

class Opened : public TavrelScenarioTemplateDb::TavrelScenario {
public:
    using TavrelScenario::TavrelScenario;
    cfg::CfgScenario& File() const { return *getCfgScenarioSection(); }
};

const Settable& Sample() {
    static const Settable* const settable = [] {
        ResetModel(nullptr);
        auto* opened = new Opened("City", "orientation/First minutes.sce", FUZZ_SAMPLE "/packs/common/data/scenario");
        return new Settable(opened->File(), opened->getRootScenarioNode());
    }();
    return *settable;
}

void Look(const Plan& plan, std::uint64_t number) {
    Variant variant;
    if (!plan.At(number, variant)) return;
    Demand(variant.values.size() == plan.Parameters().size(), "a variant has a value for each parameter");
    for (std::size_t i = 0; i < variant.values.size(); ++i) {
        Value again;
        const std::string text = plan.TextOf(i, variant.values[i]);
        Demand(plan.ReadValue(i, text, again), "a value reads back", text);
        Demand(plan.TextOf(i, again) == text, "a value reads back as itself", text);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = Input(data, size).Rest();
    try {
        PlanFile file = PlanFile::Read(text);
        const std::string told = file.Text();
        Demand(PlanFile::Read(told).Text() == told, "a plan that is told reads back as itself", told);
        // What takes long on purpose is no fault.
        file.method.effort = 1;
        const Plan plan(file, Sample());
        for (std::uint64_t number = 0; number < 8; ++number) Look(plan, number);
        Look(plan, plan.End() / 2);
        if (plan.End() > 0) Look(plan, plan.End() - 1);
        Variant variant;
        Demand(!plan.NextFrom(plan.End(), variant), "no variant stands after the last");
    } catch (const Refused&) {
    }
    return 0;
}
