// The text of a script, read against the root model of the sample installation.

#include "../Items.h"
#include "../Support.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Folders* const model = SampleRootModel();
    const std::string text = Input(data, size).Rest();
    Outlives([&] {
        ResetModel(model);
        ReadScript(text, true);
        if (const Tree item = ReadScript(text)) Exercise(*item);
    });
    return 0;
}
