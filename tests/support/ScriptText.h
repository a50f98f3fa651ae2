#ifndef SUPPORT_SCRIPTTEXT_H
#define SUPPORT_SCRIPTTEXT_H

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

// Scripts as tests write them: raw text, indented with the code around it by blanks. Blanks are part of a line in the
// format, so the margin common to all lines is taken off, and each further step of four blanks becomes a tab.
enum class LineEnd { Feed, CarriageReturnAndFeed };

inline std::string ScriptText(std::string_view raw, LineEnd lineEnd = LineEnd::Feed) {
    constexpr std::size_t kStep = 4;
    std::vector<std::string_view> lines;
    for (std::size_t begin = 0; begin <= raw.size();) {
        const std::size_t end = std::min(raw.find('\n', begin), raw.size());
        lines.push_back(raw.substr(begin, end - begin));
        begin = end + 1;
    }
    // What stands before the first line break and behind the last one is the frame of the literal.
    if (lines.size() > 1 && lines.front().find_first_not_of(' ') == std::string_view::npos) lines.erase(lines.begin());
    if (!lines.empty() && lines.back().find_first_not_of(' ') == std::string_view::npos) lines.pop_back();

    std::size_t margin = std::string_view::npos;
    for (const std::string_view line : lines) margin = std::min(margin, line.find_first_not_of(' '));
    std::string text;
    for (const std::string_view line : lines) {
        const std::size_t first = std::min(line.find_first_not_of(' '), line.size());
        if (first < line.size()) {
            text.append((first - margin) / kStep, '\t');
            text.append(line.substr(first));
        }
        text += lineEnd == LineEnd::Feed ? "\n" : "\r\n";
    }
    return text;
}

#endif
