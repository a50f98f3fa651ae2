#include "Spelling.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include <utf8proc.h>

#include "report/ShownText.h"

namespace tavrel {

namespace {

namespace fs = std::filesystem;

// Canonically composed; as it is where it is no UTF-8.
std::string NormalForm(const std::string& text) {
    const bool isPlain =
        std::all_of(text.begin(), text.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
    if (isPlain) return text;
    utf8proc_uint8_t* composed = nullptr;
    const utf8proc_ssize_t size =
        utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()), static_cast<utf8proc_ssize_t>(text.size()),
                     &composed, static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE));
    if (size < 0) return text;
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owned(composed, std::free);
    return {reinterpret_cast<const char*>(composed), static_cast<std::size_t>(size)};
}

// A dangling link is something, too.
bool IsThere(const fs::path& path) {
    std::error_code error;
    return fs::symlink_status(path, error).type() != fs::file_type::not_found;
}

} // namespace

bool IsSpellingOf(const std::string& written, const std::string& name) {
    return written == name || NormalForm(written) == NormalForm(name) || written == ShownText(name);
}

std::string MeantOf(const std::string& written, const std::vector<std::string>& names) {
    if (std::find(names.begin(), names.end(), written) != names.end()) return written;
    const auto found =
        std::find_if(names.begin(), names.end(), [&](const auto& name) { return IsSpellingOf(written, name); });
    return found == names.end() ? written : *found;
}

std::string MeantOnDisk(const std::string& path) {
    const bool hasOneSpelling = std::all_of(
        path.begin(), path.end(), [](char byte) { return byte != '\\' && static_cast<unsigned char>(byte) < 0x80; });
    if (hasOneSpelling || IsThere(path)) return path;
    fs::path meant;
    for (const fs::path& part : fs::path(path)) {
        if (IsThere(meant / part)) {
            meant /= part;
            continue;
        }
        std::vector<std::string> names;
        std::error_code error;
        for (fs::directory_iterator entry(meant.empty() ? "." : meant, error), end; !error && entry != end;
             entry.increment(error))
            names.push_back(entry->path().filename().string());
        // The order of a folder is nobody's.
        std::sort(names.begin(), names.end());
        const std::string name = MeantOf(part.string(), names);
        if (!IsThere(meant / name)) return path;
        meant /= name;
    }
    return meant.string();
}

} // namespace tavrel
