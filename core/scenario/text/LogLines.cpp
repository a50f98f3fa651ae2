#include <scenario/LogLines.h>

#include <string_view>
#include <utility>

#include "text/Log.h"

std::vector<LogLine> LogLines::Take() { return std::exchange(lines, {}); }

LogLines::int_type LogLines::overflow(int_type c) {
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    const char one = traits_type::to_char_type(c);
    xsputn(&one, 1);
    return c;
}

std::streamsize LogLines::xsputn(const char* text, std::streamsize size) {
    std::string_view rest(text, static_cast<std::size_t>(size));
    for (std::size_t end; (end = rest.find('\n')) != rest.npos; rest.remove_prefix(end + 1)) {
        current += rest.substr(0, end);
        EndLine();
    }
    current += rest;
    return size;
}

// The severity stands before a line as a byte of its number.
void LogLines::EndLine() {
    constexpr char kLeast = static_cast<char>(LogSeverity::Information);
    constexpr char kHighest = static_cast<char>(LogSeverity::Error);
    const bool isMarked = !current.empty() && current[0] >= kLeast && current[0] <= kHighest;
    if (lines.size() < kMost) lines.push_back({isMarked ? current[0] : 0, current.substr(isMarked ? 1 : 0)});
    current.clear();
}
