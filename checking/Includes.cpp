#include "Includes.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <set>
#include <system_error>

#include <Commons/WholeFile.h>
#include <lmkUtils/EnvConfig.h>

#include "TreeChecks.h"

namespace TavrelChecking {

namespace {

namespace fs = std::filesystem;
using lmkUtils::EnvConfig;

constexpr const char* kFolder = "data/script/include";

} // namespace

bool ReadBytes(const std::string& path, std::string& bytes, std::string& reason) {
    reason = Commons::ReasonNotToOpen(path);
    if (!reason.empty()) return false;
    std::ifstream file(path, std::ios::binary);
    std::error_code unknown;
    if (const std::uintmax_t size = fs::file_size(path, unknown); !unknown) bytes.reserve(size);
    bytes.clear();
    std::array<char, std::size_t(1) << 16> part;
    while (file.read(part.data(), part.size()) || file.gcount() > 0)
        bytes.append(part.data(), static_cast<std::size_t>(file.gcount()));
    if (file.bad() || !file.is_open()) reason = "it cannot be read";
    return reason.empty();
}

bool IsRefused(const std::vector<Fault>& faults) {
    return std::any_of(faults.begin(), faults.end(), [](const Fault& fault) {
        return !fault.isTaken && !fault.isNote && !fault.isValidity &&
               FindRule(fault.rule)->severity == Severity::Error;
    });
}

const IncludedFile* Includes::Find(const std::string& file) {
    const auto known = files.find(file);
    if (known != files.end()) return known->second.get();
    std::unique_ptr<IncludedFile>& entry = files[file];
    std::string path = EnvConfig::findInPath(kFolder, file);
    const bool isOutside = path.empty();
    if (isOutside) {
        // What lies elsewhere is read all the same, if the first folder of the data path leads there.
        path = EnvConfig()[std::string(kFolder) + "/" + file];
        std::replace(path.begin(), path.end(), '\\', '/');
        std::error_code error;
        if (file.empty() || !fs::is_regular_file(path, error)) return nullptr;
    }
    entry = std::make_unique<IncludedFile>();
    entry->path = path;
    entry->isOutside = isOutside;
    std::string bytes;
    if (!ReadBytes(path, bytes, entry->reason)) {
        entry->isRefused = true;
        return entry.get();
    }
    entry->tree =
        std::make_shared<ScriptTree>(std::make_shared<Text>(std::make_shared<FileBytes>(path, std::move(bytes))));
    entry->faults = TextChecks(*entry->tree, definitions, TextRole::Script).Run();
    entry->isRefused = !entry->tree->Root() || IsRefused(entry->faults);
    for (Fault& fault : FlowFaults(*entry->tree, definitions)) entry->faults.push_back(std::move(fault));
    return entry.get();
}

const std::vector<std::string>& Includes::Names() {
    if (areNamesKnown) return names;
    areNamesKnown = true;
    std::set<std::string> all;
    for (const std::string& folder : EnvConfig::getSeparatedPath(kFolder)) {
        std::error_code error;
        for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
            if (std::error_code unknown; entry->path().extension() == ".sc" && entry->is_regular_file(unknown))
                all.insert(entry->path().lexically_relative(folder).generic_string());
    }
    names.assign(all.begin(), all.end());
    return names;
}

} // namespace TavrelChecking
