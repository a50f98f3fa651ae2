// A parameters file and a new entry in it. The parts of the input: file, key, text.

#include <environment/Environment.h>

#include "../Support.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Workplace place;
    Input input(data, size);
    const std::string bytes = input.NextPart();
    const std::string path = place.Write("scenario.par", bytes);
    const std::string key = input.NextPart();
    const std::string text = input.Rest();

    Commons::ConfigFile file(path);
    Demand(file.create(), "a file that is there can be created");
    Demand(place.Read("scenario.par") == bytes, "and is left alone then");
    const std::string description = file["description"];
    const bool other = key != "description";
    file.modifyEntry(key, text);
    Demand(file[key] == text, "an entry survives whatever it holds", place.Read("scenario.par"));
    if (other) Demand(file["description"] == description, "the other entries stay", place.Read("scenario.par"));
    file.modifyEntry(key, "");
    Demand(file[key].empty(), "an entry can be emptied");
    return 0;
}
