// A root model from a file, and a script that is read against it. The parts of the input: root model, script.

#include <sstream>

#include "../Items.h"
#include "../Support.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Workplace place;
    Input input(data, size);
    const std::string path = place.Write("nuro.mdl", input.NextPart());
    const std::string script = input.Rest();
    Outlives([&] {
        ResetModel(nullptr);
        std::ostringstream log;
        Tree item;
        try {
            item.reset(LoadScenarioFile(path.c_str(), &log, false));
            Demand(item || !log.str().empty(), "a refusal is told");
        } catch (const std::bad_cast&) {
        }
        scenarioLog = nullptr;
        if (!item) return;
        Exercise(*item);
        ResetModel(dynamic_cast<Folders*>(item.get()));
        if (const Tree call = ReadScript(script)) Exercise(*call);
        ResetModel(nullptr);
    });
    return 0;
}
