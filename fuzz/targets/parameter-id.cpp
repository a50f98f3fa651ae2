// A parameter id, followed through a scenario of the sample installation.

#include <TavrelScenarioTemplateDb/TavrelScenarioTemplateDb.h>

#include "../Items.h"
#include "../Support.h"
#include "../Templates.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static TavrelScenarioTemplateDb::TavrelScenario* const scenario = [] {
        ResetModel(nullptr);
        auto* opened = new TavrelScenarioTemplateDb::TavrelScenario("City", "workshop/Every word.sce",
                                                                    FUZZ_SAMPLE "/packs/city/data/scenario");
        opened->getRootScenarioNode();
        return opened;
    }();
    const std::string id = Input(data, size).Rest();
    Answers([&] {
        const ScenarioTemplateDb::ScenarioParameter* found = scenario->getParameterFromId(id);
        if (!found) return;
        Demand(scenario->getParameterFromId(found->getParameterId()) == found, "an id leads back to its parameter", id);
    });
    const ScenarioTemplateDb::ScenarioNode* root = scenario->getRootScenarioNode();
    Answers([&] { root->getChild(id); });
    Answers([&] { root->getParameter(id); });
    for (std::size_t i = 0; i < root->getChildNumber(); ++i) {
        Answers([&] { root->getChild(i)->getParameter(id); });
        Answers([&] { root->getChild(i)->getChild(id); });
    }
    return 0;
}
