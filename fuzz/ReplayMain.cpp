// Runs a target over files and folders of files, in the order of their names: the ordinary test of what was found. With
// --assertions it lists the fatal assertions that the inputs reached.

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "Support.h"

#if defined(__SANITIZE_ADDRESS__)
#define FUZZ_LEAK_CHECK 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define FUZZ_LEAK_CHECK 1
#endif
#endif
#ifdef FUZZ_LEAK_CHECK
#include <sanitizer/lsan_interface.h>
#endif

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

[[maybe_unused]] std::size_t AssertionsMet() {
    std::size_t sum = 0;
    for (const auto& [site, count] : ReachedAssertions()) sum += count;
    return sum;
}

void Run(const std::string& bytes) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

// What an assertion interrupts is not freed, so only inputs that reach none are held to account for their memory.
void Replay(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    std::fprintf(stderr, "%s\n", path.c_str());
#ifdef FUZZ_LEAK_CHECK
    const std::size_t before = AssertionsMet();
    __lsan_disable();
    Run(bytes);
    __lsan_enable();
    if (AssertionsMet() != before) return;
#endif
    Run(bytes);
}

} // namespace

int main(int count, char** arguments) {
    std::vector<std::string> paths;
    bool list = false;
    for (int i = 1; i < count; ++i) {
        const std::string argument = arguments[i];
        if (argument == "--assertions") {
            list = true;
        } else if (std::filesystem::is_directory(argument)) {
            for (const auto& entry : std::filesystem::recursive_directory_iterator(argument)) {
                if (entry.is_regular_file()) paths.push_back(entry.path().string());
            }
        } else {
            paths.push_back(argument);
        }
    }
    std::sort(paths.begin(), paths.end());
    for (const std::string& path : paths) Replay(path);
    if (list) {
        for (const auto& [site, times] : ReachedAssertions()) std::printf("%s %zu\n", site.c_str(), times);
    }
    std::fprintf(stderr, "%zu inputs\n", paths.size());
    return paths.empty() ? 1 : 0;
}
