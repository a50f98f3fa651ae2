#include "ScenarioLines.h"

#include <algorithm>

#include <utf8proc.h>

#include "Failure.h"
#include "report/ShownText.h"

namespace tavrel {

namespace {

constexpr std::size_t kGap = 2;           // between columns
constexpr std::size_t kLeastColumns = 12; // what a name needs to tell anything; with less it gets a line of its own
constexpr const char* kIndent = "    ";
constexpr const char* kCut = "…";

// Calls `take` with each character and its columns until that answers false.
template <class Take>
void ForEachCharacter(const std::string& text, const Take& take) {
    const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
    for (std::size_t i = 0; i < text.size();) {
        utf8proc_int32_t character = 0;
        const utf8proc_ssize_t size =
            utf8proc_iterate(bytes + i, static_cast<utf8proc_ssize_t>(text.size() - i), &character);
        const std::size_t length = size > 0 ? static_cast<std::size_t>(size) : 1;
        const int columns = size > 0 ? utf8proc_charwidth(character) : 1;
        if (!take(i, length, static_cast<std::size_t>(std::max(columns, 0)))) return;
        i += length;
    }
}

std::string CutBehind(const std::string& text, std::size_t columns) {
    if (ColumnsOf(text) <= columns) return text;
    std::size_t end = 0, taken = 1; // the mark's column
    ForEachCharacter(text, [&](std::size_t begin, std::size_t length, std::size_t width) {
        if (taken + width > columns) return false;
        taken += width;
        end = begin + length;
        return true;
    });
    return text.substr(0, end) + kCut;
}

// The end of a path tells more than its beginning.
std::string CutBefore(const std::string& text, std::size_t columns) {
    const std::size_t all = ColumnsOf(text);
    if (all <= columns) return text;
    std::size_t left = all + 1, begin = text.size();
    ForEachCharacter(text, [&](std::size_t at, std::size_t, std::size_t width) {
        begin = at;
        if (left <= columns) return false;
        left -= width;
        begin = text.size();
        return true;
    });
    return kCut + text.substr(begin);
}

std::string Padded(const std::string& text, std::size_t columns) {
    return text + std::string(columns - std::min(columns, ColumnsOf(text)), ' ');
}

} // namespace

std::size_t ColumnsOf(const std::string& text) {
    std::size_t columns = 0;
    ForEachCharacter(text, [&](std::size_t, std::size_t, std::size_t width) {
        columns += width;
        return true;
    });
    return columns;
}

void ScenarioLines::Add(const std::string& configuration, const std::string& path, const std::string& name) {
    lines.push_back({ShownText(configuration), ShownText(path), OneLine(name)});
    configurationColumns = std::max(configurationColumns, ColumnsOf(lines.back().configuration));
    pathColumns = std::max(pathColumns, ColumnsOf(lines.back().path));
    nameColumns = std::max(nameColumns, ColumnsOf(lines.back().name));
}

void ScenarioLines::Print(std::size_t line) const {
    const auto& [configuration, path, name] = lines[line];
    if (!out.IsTerminal()) return out.Print("{}\t{}\t{}\n", configuration, path, name);
    const std::size_t before = configurationColumns + kGap + pathColumns + kGap;
    const std::size_t width = out.Columns();
    const std::string start = Padded(configuration, configurationColumns) + std::string(kGap, ' ');
    if (before + std::min(nameColumns, kLeastColumns) <= width)
        return out.Print("{}{}  {}\n", start, Padded(path, pathColumns), out.Strong(CutBehind(name, width - before)));
    const std::size_t forPath = width - std::min(width - 1, configurationColumns + kGap);
    out.Print("{}{}\n", CutBehind(start, width - 1), CutBefore(path, forPath));
    if (!name.empty()) out.Print("{}{}\n", kIndent, out.Strong(CutBehind(name, std::max(width, kLeastColumns) - 4)));
}

} // namespace tavrel
