// A scenario that runs for some steps.

#include "../Items.h"
#include "../Support.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Folders* const model = SampleRootModel();
    const std::string text = Input(data, size).Rest();
    Outlives([&] {
        ResetModel(model);
        const Tree item = ReadScript(text);
        if (auto* scenario = dynamic_cast<ScenarioLib::Scenario*>(item.get())) Run(*scenario);
    });
    return 0;
}
