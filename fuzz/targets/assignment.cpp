// An assignment, and after a line "%%" a scenario file, else one of the sample: what is set reads back, and the file
// differs in it alone.

#include <fstream>
#include <iterator>

#include <ScenarioTemplateDb/Exception.h>
#include <cfg/CfgScenario.h>
#include <variation/Assignment.h>

#include "../Items.h"
#include "../Support.h"

using namespace TavrelVariation;

namespace {

constexpr const char* kSample = FUZZ_SAMPLE "/packs/road/data/scenario/rural/bends/Hill start.sce";

std::string bytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool load(cfg::CfgScenario& file, const std::string& path) {
    return file.load(path.c_str(), static_cast<Commons::Encoding::Mode>(1), nullptr, nullptr, false, true, true);
}

void set(const std::string& path, const std::string& text) {
    cfg::CfgScenario file;
    if (!load(file, path)) return;
    Settable settable(file);
    const AssignmentText parts = ReadAssignment(text);
    const Assignment assignment = settable.Read(settable.Find(parts.name), parts.value, Ranges::AreTold);
    const bool isPresent = settable.Present(assignment.target) == assignment.text;
    settable.Apply({assignment});
    const std::string before = bytesOf(path);
    if (!file.save(path.c_str(), static_cast<Commons::Encoding::Mode>(1), false)) return;
    cfg::CfgScenario again;
    Demand(load(again, path), "a file with a value set can be read", again.errorMessage);
    const Settable reread(again);
    Demand(reread.Present(assignment.target) == settable.Present(assignment.target), "a value reads back", text);
    Demand(!isPresent || settable.Targets()[assignment.target].type == ValueType::Boolean || bytesOf(path) == before,
           "a value that is there changes no byte", text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Workplace place;
    ResetModel(SampleRootModel());
    Input input(data, size);
    const std::string text = input.NextPart();
    const std::string file = input.Rest();
    const std::string path = place.Write("a.sce", file.empty() ? bytesOf(kSample) : file);
    try {
        Outlives([&] { set(path, text); });
    } catch (const AssignmentError&) {
        // told
    } catch (const ScenarioTemplateDb::Exception&) {
        // a script that cannot be read
    } catch (ScenarioTemplateDb::Exception* failure) {
        delete failure;
    }
    return 0;
}
