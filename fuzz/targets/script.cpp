// The text of a script, read against the root model of the sample installation. The parts of the input: script, an
// include.

#include "../Items.h"
#include "../Support.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Folders* const model = SampleRootModel();
    Input input(data, size);
    const std::string text = input.NextPart();
    Outlives([&] {
        ResetModel(model);
        OfferInclude(input.Rest());
        ReadScript(text, true);
        if (const Tree item = ReadScript(text)) Exercise(*item);
    });
    return 0;
}
