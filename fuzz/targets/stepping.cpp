// A scenario that runs for some steps. The parts of the input: script, an include.

#include "../Items.h"
#include "../Support.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Folders* const model = SampleRootModel();
    Input input(data, size);
    const std::string text = input.NextPart();
    Outlives([&] {
        ResetModel(model);
        OfferInclude(input.Rest());
        const Tree item = ReadScript(text);
        if (auto* scenario = dynamic_cast<ScenarioLib::Scenario*>(item.get())) Run(*scenario);
    });
    return 0;
}
