#include "Support.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

#include <unistd.h>

#include <lmkUtils/AssertAbort.h>

namespace {

std::map<std::string, std::size_t> reachedAssertions;

// A site "source:line" a line, "#" begins a remark.
std::set<std::string> ReadNamedAssertions() {
    std::set<std::string> sites;
    std::ifstream file(FUZZ_ASSERTION_TABLE);
    for (std::string text; std::getline(file, text);) {
        std::istringstream line(text.substr(0, text.find('#')));
        std::string site;
        if (line >> site) sites.insert(site);
    }
    Demand(!sites.empty(), "the table of assertions can be read");
    return sites;
}

} // namespace

// A program's definition stands before the library's.
[[gnu::visibility("default")]] void AssertAbort(const char* source, int line) {
    static const std::set<std::string> named = ReadNamedAssertions();
    const std::string site = std::string(source) + ":" + std::to_string(line);
    Demand(named.count(site) == 1, "the assertion is a named one", site);
    ++reachedAssertions[site];
    throw Asserted();
}

// Saves name their temporary file by it, and its number of digits must not make two runs of the same inputs differ.
// Each process writes to a folder of its own.
[[gnu::visibility("default")]] pid_t getpid() noexcept { return 10000; }

const std::map<std::string, std::size_t>& ReachedAssertions() { return reachedAssertions; }

void Demand(bool holds, const char* sentence) { Demand(holds, sentence, ""); }

void Demand(bool holds, const char* sentence, const std::string& detail) {
    if (holds) return;
    std::fprintf(stderr, "Does not hold: %s\n%s\n", sentence, detail.c_str());
    std::fflush(stderr);
    std::abort();
}

std::string Input::NextPart() {
    constexpr std::string_view kBorder = "\n%%\n";
    const std::size_t border = rest.find(kBorder);
    std::string part(rest.substr(0, border));
    rest.remove_prefix(border == std::string_view::npos ? rest.size() : border + kBorder.size());
    return part;
}

Workplace::Workplace() {
    std::error_code failure;
    const auto memory = std::filesystem::status("/dev/shm", failure);
    std::string pattern =
        std::filesystem::is_directory(memory) ? "/dev/shm" : std::filesystem::temp_directory_path().string();
    pattern += "/tavrel-fuzz-XXXXXX";
    const char* made = ::mkdtemp(pattern.data());
    Demand(made, "a folder can be made", pattern);
    folder = pattern;
}

Workplace::~Workplace() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

std::string Workplace::Write(const std::string& relative, std::string_view bytes) const {
    const std::filesystem::path path = Path(relative);
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    Demand(file.good(), "the workplace takes a file", path.string());
    return path.string();
}

std::string Workplace::Read(const std::string& relative) const {
    std::ifstream file(Path(relative), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
