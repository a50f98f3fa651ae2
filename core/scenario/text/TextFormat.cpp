// The text format at the level of lines: the cursor, the two forms of line, and their writers.
#include "text/TextFormat.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <ostream>

#include "text/Assertion.h"
#include "text/ByteGroup.h"
#include "text/Kinds.h"
#include "text/Refusal.h"
#include "text/TextUnderWay.h"

namespace {

constexpr char kStreamSource[] = "core/include/scenario/ScenarioItem";
constexpr std::string_view kHeaderWord = "TYPEOF ";
constexpr std::size_t kKeywordLimit = 256; // lengths from here on are refused
constexpr std::size_t kNameLimit = 512;
constexpr std::size_t kJoinBufferSize = 1024;

// All separators are control characters, and hardly any text has others.
constexpr char kLastControl = ' ' - 1;
bool IsControl(char c) { return static_cast<unsigned char>(c) <= static_cast<unsigned char>(kLastControl); }

// Every byte of a text passes through the searches below, so they look at sixteen at once, and the step to the next
// line, which is most of them, at two times sixteen: with its indent, that is nearly every line.
constexpr std::ptrdiff_t kGroup = ByteGroup::kSize;
constexpr std::ptrdiff_t kTwoGroups = 2 * kGroup;

// Hardly ever more than two, so there is nothing to win from counting faster.
std::uint32_t CountBits(std::uint32_t bits) {
    std::uint32_t count = 0;
    for (; bits != 0; bits &= bits - 1) ++count;
    return count;
}

// The first separator at or after `at`, or `end`.
const char* FindSeparator(const char* at, const char* end) {
    for (; end - at >= kGroup; at += kGroup) {
        if (const unsigned found = ByteGroup(at).Separators()) return at + std::countr_zero(found);
    }
    while (at < end && !IsSeparator(*at)) ++at;
    return at;
}

void SkipSeparators(ScenarioTextStream& stream) {
    const char* at = stream.cursor;
    const char* const end = stream.end;
    for (; end - at >= kGroup; at += kGroup) {
        const ByteGroup group(at);
        const int length = std::countr_one(group.Separators());
        const unsigned passed = (1U << length) - 1; // sixteen at most
        stream.line += CountBits(group.Equal('\n') & passed);
        if (length == kGroup) continue;
        stream.cursor = at + length;
        return;
    }
    for (; at < end && IsSeparator(*at); ++at) {
        if (*at == '\n') ++stream.line;
    }
    stream.cursor = at;
}

// The first byte from `at` on that is one of the two or a NUL, or `end`.
const char* FindEither(const char* at, const char* end, char one, char other) {
    for (; end - at >= kGroup; at += kGroup) {
        const ByteGroup group(at);
        const unsigned found = group.Equal(one) | group.Equal(other) | group.Equal('\0');
        if (found) return at + std::countr_zero(found);
    }
    while (at < end && *at != one && *at != other && *at != '\0') ++at;
    return at;
}

// The end of what may be read of a word that begins at `first`.
const char* Limit(const ScenarioTextStream& stream, const char* first, std::size_t length) {
    return first + std::min(length, static_cast<std::size_t>(stream.end - first));
}

void Indent(std::ostream& out) {
    static constexpr std::string_view kTabs = "\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t";
    for (auto left = static_cast<std::size_t>(std::max(scenarioDepth, 0)); left > 0;) {
        const std::size_t now = std::min(left, kTabs.size());
        out.write(kTabs.data(), static_cast<std::streamsize>(now));
        left -= now;
    }
}

void Put(std::ostream& out, std::string_view text) {
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
}

void PutAttribute(std::ostream& out, std::string_view key, std::string_view value) {
    Indent(out);
    Put(out, key);
    Put(out, "=\"");
    Put(out, value);
    Put(out, "\"\n");
}

} // namespace

std::int32_t scenarioDepth = 0;

ScenarioTextStream::ScenarioTextStream(const char* text, std::size_t length)
    : begin(text), end(text + length), cursor(text) {
    if (!text) AssertionFailed(kStreamSource, 394);
    SkipSeparators(*this);
}

void NextLine(ScenarioTextStream& stream) {
    const char* at = stream.cursor;
    for (; stream.end - at >= kTwoGroups; at += kTwoGroups) {
        const ByteGroup low(at);
        const ByteGroup high(at + kGroup);
        const std::uint64_t separators = low.Separators() | (high.Separators() << kGroup);
        if (separators == 0) continue;
        const int first = std::countr_zero(separators);
        const int next = first + std::countr_one(separators >> first);
        const unsigned feeds = low.Equal('\n') | (high.Equal('\n') << kGroup);
        stream.line += CountBits(static_cast<std::uint32_t>(feeds & ((std::uint64_t{1} << next) - 1)));
        stream.cursor = at + next;
        if (next == kTwoGroups) SkipSeparators(stream);
        return;
    }
    stream.cursor = at;
    stream.cursor = FindSeparator(stream.cursor, stream.end);
    SkipSeparators(stream);
}

namespace {

bool BeginsWithHeaderWord(const ScenarioTextStream& stream) {
    const auto left = static_cast<std::size_t>(stream.end - stream.cursor);
    return left >= kHeaderWord.size() && std::memcmp(stream.cursor, kHeaderWord.data(), kHeaderWord.size()) == 0;
}

// The header as it stands in nearly every text: short, with its blank and both brackets, and with no control character
// in it. False says nothing.
bool MatchPlainHeader(const ScenarioTextStream& stream, std::string_view& keyword, std::string_view& name) {
    const char* const word = stream.cursor + kHeaderWord.size();
    if (stream.end - word < 3 * kGroup) return false;
    const unsigned ends = ByteGroup(word).AtMost(' ');
    if (ends == 0) return false;
    const char* const blank = word + std::countr_zero(ends);
    if (blank == word || *blank != ' ') return false;
    // Whatever stands in place of the bracket, and the first character of the name, are no end of it.
    const char* const first = blank + 2;
    const ByteGroup group(first);
    const unsigned controls = group.AtMost(kLastControl) | (IsControl(blank[1]) ? 1U : 0U);
    const unsigned found = (group.Equal(')') & ~1U) | controls;
    if (found == 0) return false;
    const char* const bracket = first + std::countr_zero(found);
    if (*bracket != ')' || (controls & 1) != 0) return false;
    keyword = std::string_view(word, static_cast<std::size_t>(blank - word));
    name = std::string_view(first, static_cast<std::size_t>(bracket - first));
    return true;
}

} // namespace

void NextLineFrom(ScenarioTextStream& stream, const char* last) {
    stream.cursor = last;
    const char* const at = last + 1;
    if (stream.end - at > kGroup) {
        const ByteGroup group(at);
        const unsigned feeds = group.Equal('\n');
        const unsigned ends = feeds | group.Equal('\t');
        const int next = std::countr_one(ends);
        if (next > 0 && next < kGroup && !IsControl(at[next])) {
            stream.line += CountBits(feeds & ((1U << next) - 1));
            stream.cursor = at + next;
            return;
        }
    }
    NextLine(stream);
}

bool MatchHeader(const ScenarioTextStream& stream, std::string_view& keyword, std::string_view& name) {
    if (!BeginsWithHeaderWord(stream)) return false;
    if (MatchPlainHeader(stream, keyword, name)) {
        scannedLine = {stream.cursor, name.data() + name.size()};
        return true;
    }

    // A lone line feed does not end the keyword: a header without a name needs a carriage return. The first character
    // is never the end.
    const char* const word = stream.cursor + kHeaderWord.size();
    if (word >= stream.end || *word == '\0') return false;
    const char* at = FindEither(word + 1, Limit(stream, word, kKeywordLimit), ' ', '\r');
    if (at >= Limit(stream, word, kKeywordLimit) || *at == '\0') return false;
    keyword = std::string_view(word, static_cast<std::size_t>(at - word));
    name = {};
    if (*at == '\r') return true;

    // Whatever stands in place of the bracket is stepped over, and so is the first character of the name: "()" is no
    // empty name.
    for (int skipped = 0; skipped < 2; ++skipped) {
        ++at;
        if (at >= stream.end || *at == '\0') return false;
    }
    const char* const first = at;
    const char* const limit = Limit(stream, first, kNameLimit);
    at = FindEither(first + 1, limit, ')', ')');
    if (at >= limit || *at == '\0') return false;
    name = std::string_view(first, static_cast<std::size_t>(at - first));
    return true;
}

bool ReadHeader(const ScenarioTextStream& stream, ScenarioItemKind& kind, std::string& name) {
    std::string_view keywordText;
    std::string_view nameText;
    if (!MatchHeader(stream, keywordText, nameText)) return false;
    kind = KindOfKeyword(keywordText);
    name = nameText;
    return true;
}

namespace {

bool MayHold(std::string_view value) {
    return TextUnderWay::MayTake(value.size()) ||
           Refuse("values without a closing quote hold the same text over and over");
}

} // namespace

bool MatchValue(const ScenarioTextStream& stream, std::size_t keyLength, std::string_view& value) {
    return FindValue(stream, keyLength, value) && MayHold(value);
}

bool FindValue(const ScenarioTextStream& stream, std::size_t keyLength, std::string_view& value) {
    // The two characters after the key are taken on trust, as long as they are there.
    const char* at = stream.cursor + keyLength;
    // Nearly every value ends on its line, and then nothing up to the quote ends that.
    if (stream.end - at > kGroup && !IsControl(at[0]) && !IsControl(at[1])) {
        for (const char* group = at + 2; stream.end - group >= kGroup; group += kGroup) {
            const unsigned found = ByteGroup(group).Equal('"') | ByteGroup(group).AtMost(kLastControl);
            if (found == 0) continue;
            const char* const quote = group + std::countr_zero(found);
            if (*quote != '"') break;
            scannedLine = {stream.cursor, quote};
            value = std::string_view(at + 2, static_cast<std::size_t>(quote - at - 2));
            return true;
        }
    }
    for (int skipped = 0; skipped < 2; ++skipped, ++at) {
        if (at >= stream.end || *at == '\0') return false;
    }
    const char* const quote = FindEither(at, stream.end, '"', '"');
    if (quote == stream.end || *quote != '"') return false;
    value = std::string_view(at, static_cast<std::size_t>(quote - at));
    return true;
}

bool ReadStringAttribute(const ScenarioTextStream& stream, const char* key, std::string& value) {
    if (*key != '\0' && *key != CharAt(stream)) return false; // as nearly always
    const std::string_view keyText = key;
    const auto left = static_cast<std::size_t>(stream.end - stream.cursor);
    std::string_view found;
    if (left < keyText.size() || std::memcmp(stream.cursor, key, keyText.size()) != 0) return false;
    if (!MatchValue(stream, keyText.size(), found)) return false;
    // A key of the host's own may end a line, which those of the tables do not.
    if (std::any_of(keyText.begin(), keyText.end(), IsControl)) scannedLine = {};
    value.assign(found);
    return true;
}

std::string_view RestOfLine(const ScenarioTextStream& stream) {
    const char* at = stream.cursor;
    while (at < stream.end && *at != '\0' && !IsSeparator(*at)) ++at;
    return {stream.cursor, static_cast<std::size_t>(at - stream.cursor)};
}

std::optional<std::string_view> KeyOf(std::string_view line) {
    const std::size_t equals = line.find("=\"");
    if (equals == 0 || equals == std::string_view::npos) return std::nullopt;
    if (line.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789") < equals) return std::nullopt;
    return line.substr(0, equals);
}

void SkipBlock(ScenarioTextStream& stream) {
    while (scenarioDepth > 0 && stream.cursor < stream.end) {
        NextLine(stream);
        const char first = CharAt(stream);
        if (first == '{') ++scenarioDepth;
        if (first == '}') --scenarioDepth;
    }
}

std::string LoadFailureText(const std::string& source, const ScenarioTextStream& stream) {
    // The apostrophe ends the line too, and 255 characters are all that a message shows of it.
    constexpr std::size_t kShown = 255;
    std::string_view rest = RestOfLine(stream);
    rest = rest.substr(0, std::min(rest.find('\''), kShown));
    return source + " - row " + std::to_string(stream.line) + ":\n" + std::string(rest);
}

void WriteHeader(std::ostream& out, std::uint32_t kind, const std::string& name) {
    out.put('\n');
    Indent(out);
    Put(out, kHeaderWord);
    Put(out, KindKeyword(kind));
    if (!name.empty()) {
        Put(out, " (");
        Put(out, name);
        out.put(')');
    }
    out.put('\n');
}

void WriteAttribute(std::ostream& out, const char* key, const char* value) {
    if (value) PutAttribute(out, key, value);
}

void WriteAttribute(std::ostream& out, const char* key, const std::string& value) { PutAttribute(out, key, value); }

void WriteBrace(std::ostream& out, char brace) {
    Indent(out);
    out.put(brace);
    out.put('\n');
}

void SplitWords(const std::string& value, std::vector<std::string>& words) { AppendWords(value, words); }

void AppendWords(std::string_view value, std::vector<std::string>& words) {
    // The white space of a stream in the classic locale: six characters, the blank among them.
    const auto isWhite = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    const char* at = value.data();
    const char* const end = at + value.size();
    // Room for all words of an ordinary list, not for what a text of blanks could ask for.
    constexpr std::ptrdiff_t kOrdinary = 8;
    words.reserve(words.size() + static_cast<std::size_t>(std::min(1 + std::count(at, end, ' '), kOrdinary)));
    for (;;) {
        while (at < end && isWhite(*at)) ++at;
        if (at == end) return;
        const char* const first = at;
        while (at < end && !isWhite(*at)) ++at;
        words.emplace_back(first, at);
    }
}

std::string JoinWords(const std::vector<std::string>& words) {
    std::string joined;
    for (std::size_t at = 0; at < words.size(); ++at) {
        if (at > 0) joined += ' ';
        joined += words[at];
    }
    return joined;
}

void JoinWords(const std::vector<std::string>& words, char* buffer) {
    const std::string joined = JoinWords(words).substr(0, kJoinBufferSize - 1);
    std::memcpy(buffer, joined.c_str(), joined.size() + 1);
}
