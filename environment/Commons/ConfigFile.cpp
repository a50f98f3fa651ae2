#include <Commons/ConfigFile.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <new>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <Commons/WholeFile.h>

#include "Files.h"
#include "Utf8.h"

// The property reader of Poco drops comments on a change and cuts blanks off a text, so the form is read here.
namespace Commons {

namespace {

// One line of meaning: an entry, which may extend over several lines of the file, or a comment or empty line.
struct Line {
    size_t begin;
    size_t end; // after the line feed
    bool isEntry = false;
    std::string key;
    std::string text;
};

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\f'; }
bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }

// Walks over the characters of a property file with the escapes resolved.
class Reader {
public:
    explicit Reader(const std::string& source) : content(source) {}

    std::vector<Line> ReadLines() {
        std::vector<Line> lines;
        while (at < content.size()) lines.push_back(ReadLine());
        return lines;
    }

private:
    Line ReadLine() {
        Line line{at, at, false, {}, {}};
        SkipBlanks();
        if (at < content.size() && (content[at] == '#' || content[at] == '!')) {
            while (at < content.size() && !IsLineEnd(content[at])) ++at;
        } else if (!AtEnd()) {
            line.isEntry = true;
            while (!AtEnd() && content[at] != '=' && content[at] != ':' && !IsBlank(content[at])) Take(line.key);
            SkipBlanks();
            if (!AtEnd() && (content[at] == '=' || content[at] == ':')) ++at;
            SkipBlanks();
            while (!AtEnd()) Take(line.text);
        }
        SkipLineEnd();
        line.end = at;
        return line;
    }

    // At the end of an entry, after passing over the joints between its lines.
    bool AtEnd() {
        while (at + 1 < content.size() && content[at] == '\\' && IsLineEnd(content[at + 1])) {
            ++at;
            SkipLineEnd();
            SkipBlanks();
        }
        return at >= content.size() || IsLineEnd(content[at]);
    }

    void SkipBlanks() {
        while (at < content.size() && IsBlank(content[at])) ++at;
    }

    void SkipLineEnd() {
        if (at < content.size() && content[at] == '\r') ++at;
        if (at < content.size() && content[at] == '\n') ++at;
    }

    void Take(std::string& out) {
        if (content[at] != '\\') {
            out += content[at++];
            return;
        }
        if (++at == content.size()) return; // a backslash that escapes nothing
        const char escaped = content[at++];
        switch (escaped) {
        case 't':
            out += '\t';
            break;
        case 'n':
            out += '\n';
            break;
        case 'r':
            out += '\r';
            break;
        case 'f':
            out += '\f';
            break;
        case 'u':
            TakeCodePoint(out);
            break;
        default:
            out += escaped;
            break;
        }
    }

    // Four hexadecimal digits after "\u"; two such escapes make one character beyond the first 65,536.
    void TakeCodePoint(std::string& out) {
        char32_t point = TakeHexadecimal();
        if (point >= 0xD800 && point < 0xDC00 && content.compare(at, 2, "\\u") == 0) {
            at += 2;
            point = 0x10000 + ((point - 0xD800) << 10) + (TakeHexadecimal() - 0xDC00);
        }
        detail::AppendUtf8(out, point);
    }

    char32_t TakeHexadecimal() {
        const size_t length = std::min<size_t>(4, content.size() - at);
        unsigned point = 0;
        const char* const digits = content.data() + at;
        at += static_cast<size_t>(std::from_chars(digits, digits + length, point, 16).ptr - digits);
        return point;
    }

    const std::string& content;
    size_t at = 0;
};

std::string Escaped(std::string_view text, bool isKey) {
    std::string escaped;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        // Blanks at the ends would be taken for layout, by readers or by editors.
        const bool isExposed = c == ' ' && (isKey || i == 0 || i + 1 == text.size());
        const bool isSign = isKey && (c == '=' || c == ':' || c == '#' || c == '!');
        switch (c) {
        case '\t':
            escaped += "\\t";
            break;
        case '\n':
            escaped += "\\n";
            break;
        case '\r':
            escaped += "\\r";
            break;
        case '\f':
            escaped += "\\f";
            break;
        case '\\':
            escaped += "\\\\";
            break;
        default:
            if (isExposed || isSign) escaped += '\\';
            escaped += c;
        }
    }
    return escaped;
}

// The entry that counts: the last one of that key.
const Line* FindEntry(const std::vector<Line>& lines, const std::string& key) {
    const Line* found = nullptr;
    for (const Line& line : lines)
        if (line.isEntry && line.key == key) found = &line;
    return found;
}

bool IsMissing(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) != 0 && errno == ENOENT;
}

} // namespace

ConfigFile::ConfigFile(const std::string& filePath) : path(detail::WithForwardSlashes(filePath)) {}
ConfigFile::~ConfigFile() = default;

std::string ConfigFile::operator[](const std::string& key) const {
    try {
        std::string content;
        std::string reason;
        if (!detail::ReadPlainFile(path, content, reason)) return {};
        const std::vector<Line> lines = Reader(content).ReadLines();
        const Line* entry = FindEntry(lines, key);
        return entry ? entry->text : std::string();
    } catch (const std::bad_alloc&) {
        return {};
    }
}

bool ConfigFile::create() {
    if (path.empty() || path.find('\0') != std::string::npos) return false;
    const int made = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (made >= 0) return ::close(made) == 0;
    try {
        std::string content;
        std::string reason;
        return detail::ReadPlainFile(path, content, reason);
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void ConfigFile::modifyEntry(const std::string& key, const std::string& value) {
    try {
        // Of two programs that set entries at the same time, one would lose its own.
        const FileLock lock(path);
        std::string content;
        std::string reason;
        // What is there but cannot be read must not be replaced by a file of one entry.
        if (!detail::ReadPlainFile(path, content, reason) && !IsMissing(path)) return;
        const std::vector<Line> lines = Reader(content).ReadLines();
        const std::string entry = Escaped(key, true) + "=" + Escaped(value, false) + "\n";
        if (const Line* old = FindEntry(lines, key)) {
            content.replace(old->begin, old->end - old->begin, entry);
        } else {
            // A last line that is open, or asks to be continued, would take the new one in; an empty line ends it. Of a
            // carriage return and a line feed that follows it, the feed ends no line of its own.
            while (Reader(content + "x").ReadLines().back().begin != content.size()) content += '\n';
            content += entry;
        }
        if (content.size() <= kLargestFile) WriteFileWhole(path, content, reason);
    } catch (const std::bad_alloc&) {
        // Nothing was stored, as with a full disk.
    }
}

} // namespace Commons
