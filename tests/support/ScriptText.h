#ifndef SUPPORT_SCRIPTTEXT_H
#define SUPPORT_SCRIPTTEXT_H

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

// Scripts as tests write them: raw text, indented with the code around it by blanks. Blanks are part of a line in the
// format, so the margin common to all lines is taken off, and each further step of four blanks becomes a tab.
//
// A block may do without its braces: then the entries behind its header and the lines indented below it are its
// content.
//     TYPEOF TASK (1) LABEL="Start"
//         TYPEOF RULE (2)
enum class LineEnd { Feed, CarriageReturnAndFeed };

inline std::string ScriptText(std::string_view raw, LineEnd lineEnd = LineEnd::Feed) {
    constexpr std::size_t kStep = 4;
    constexpr std::size_t kNone = std::string_view::npos;
    std::vector<std::string_view> lines;
    for (std::size_t begin = 0; begin <= raw.size();) {
        const std::size_t end = std::min(raw.find('\n', begin), raw.size());
        lines.push_back(raw.substr(begin, end - begin));
        begin = end + 1;
    }
    // What stands before the first line break and after the last one is the frame of the literal.
    if (lines.size() > 1 && lines.front().find_first_not_of(' ') == kNone) lines.erase(lines.begin());
    if (!lines.empty() && lines.back().find_first_not_of(' ') == kNone) lines.pop_back();

    std::size_t margin = kNone;
    for (const std::string_view line : lines) margin = std::min(margin, line.find_first_not_of(' '));
    const auto indent = [&](std::string_view line) { return (line.find_first_not_of(' ') - margin) / kStep; };
    const auto content = [](std::string_view line) {
        return line.substr(std::min(line.find_first_not_of(' '), line.size()));
    };

    std::string text;
    const auto write = [&](std::size_t depth, std::string_view line) {
        text.append(depth, '\t').append(line) += lineEnd == LineEnd::Feed ? "\n" : "\r\n";
    };
    std::vector<std::size_t> open; // how far the blocks without braces are indented, from the outermost
    const auto closeDownTo = [&](std::size_t depth) {
        for (; !open.empty() && open.back() >= depth; open.pop_back()) write(open.back(), "}");
    };
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string_view line = content(lines[i]);
        if (line.empty()) {
            write(0, line);
            continue;
        }
        const std::size_t depth = indent(lines[i]);
        closeDownTo(depth);
        const bool hasBrace = i + 1 < lines.size() && content(lines[i + 1]) == "{";
        if (hasBrace || line.substr(0, 7) != "TYPEOF ") {
            write(depth, line);
            continue;
        }
        std::size_t end = line.find(')') + 1;
        write(depth, line.substr(0, end));
        write(depth, "{");
        open.push_back(depth);
        for (std::size_t begin; (begin = line.find_first_not_of(' ', end)) != kNone;) {
            end = line.find('"', line.find('"', begin) + 1) + 1;
            write(depth + 1, line.substr(begin, end - begin));
        }
    }
    closeDownTo(0);
    return text;
}

// Entries written as KEY='value' KEY='value', each on a line of its own; anything else stays as it is.
inline std::string EntryLines(std::string_view entries) {
    std::string lines;
    bool isOpen = false;
    for (const char c : entries) {
        const bool isBetween = c == ' ' && !isOpen && lines.ends_with("\"\n");
        if (c == '\'') isOpen = !isOpen;
        if (!isBetween) lines += c != '\'' ? std::string(1, c) : isOpen ? "\"" : "\"\n";
    }
    return lines;
}

#endif
