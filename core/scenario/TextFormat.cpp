// The text format at the level of lines: the cursor, the two forms of line, and their writers.
#include <algorithm>
#include <bit>
#include <cstring>
#include <ostream>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include <lmkUtils/AssertAbort.h>
#include <scenario/ScenarioItem.h>

#include "AttributeRow.h"
#include "TextMatch.h"

namespace {

constexpr char kStreamSource[] = "core/include/scenario/ScenarioItem";
constexpr std::string_view kHeaderWord = "TYPEOF ";
constexpr std::size_t kKeywordLimit = 256; // lengths from here on are refused
constexpr std::size_t kNameLimit = 512;
constexpr std::size_t kJoinBufferSize = 1024;

// The first separator at or behind `at`, or `end`. Every byte of a text passes here, so they are looked at in groups
// where the processor can do so.
const char* FindSeparator(const char* at, const char* end) {
#ifdef __SSE2__
    const __m128i beforeTab = _mm_set1_epi8('\t' - 1);
    const __m128i behindReturn = _mm_set1_epi8('\r' + 1);
    const __m128i verticalTab = _mm_set1_epi8('\v');
    for (; end - at >= 16; at += 16) {
        const __m128i group = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        const __m128i inRange = _mm_and_si128(_mm_cmpgt_epi8(group, beforeTab), _mm_cmplt_epi8(group, behindReturn));
        const __m128i separators = _mm_andnot_si128(_mm_cmpeq_epi8(group, verticalTab), inRange);
        const auto found = static_cast<unsigned>(_mm_movemask_epi8(separators));
        if (found != 0) return at + std::countr_zero(found);
    }
#endif
    while (at < end && !IsSeparator(*at)) ++at;
    return at;
}

void SkipSeparators(ScenarioTextStream& stream) {
    const char* at = stream.cursor;
    for (; at < stream.end && IsSeparator(*at); ++at) {
        if (*at == '\n') ++stream.line;
    }
    stream.cursor = at;
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
    if (!text) AssertAbort(kStreamSource, 394);
    SkipSeparators(*this);
}

void NextLine(ScenarioTextStream& stream) {
    stream.cursor = FindSeparator(stream.cursor, stream.end);
    SkipSeparators(stream);
}

bool MatchHeader(const ScenarioTextStream& stream, std::string_view& keyword, std::string_view& name) {
    const std::string_view rest(stream.cursor, static_cast<std::size_t>(stream.end - stream.cursor));
    if (rest.substr(0, kHeaderWord.size()) != kHeaderWord) return false;

    // A lone line feed does not end the keyword: a header without a name needs a carriage return.
    const char* const word = stream.cursor + kHeaderWord.size();
    const char* at = word;
    const char* limit = std::min(stream.end, word + kKeywordLimit);
    do {
        if (at >= limit || *at == '\0') return false;
        ++at;
    } while (at < limit && *at != ' ' && *at != '\r');
    if (at >= limit) return false;
    keyword = std::string_view(word, static_cast<std::size_t>(at - word));
    name = {};
    if (*at == '\r') return true;

    // Whatever stands in place of the bracket is stepped over, and so is the first character of the name: "()" is no
    // empty name.
    ++at;
    if (at >= stream.end || *at == '\0') return false;
    const char* const first = ++at;
    limit = std::min(stream.end, first + kNameLimit);
    do {
        if (at >= limit || *at == '\0') return false;
        ++at;
    } while (at < limit && *at != ')');
    if (at >= stream.end || *at != ')' || static_cast<std::size_t>(at - first) >= kNameLimit) return false;
    name = std::string_view(first, static_cast<std::size_t>(at - first));
    return true;
}

bool ReadHeader(const ScenarioTextStream& stream, ScenarioItemKind& kind, std::string& name) {
    std::string_view keywordText;
    std::string_view nameText;
    if (!MatchHeader(stream, keywordText, nameText)) return false;
    kind = KindOfKeyword(keywordText);
    name.assign(nameText);
    return true;
}

bool MatchAttribute(const ScenarioTextStream& stream, std::string_view key, std::string_view& value) {
    const auto left = static_cast<std::size_t>(stream.end - stream.cursor);
    if (left < key.size() || std::memcmp(stream.cursor, key.data(), key.size()) != 0) return false;
    // The two characters behind the key are taken on trust, as long as they are there.
    const char* at = stream.cursor + key.size();
    for (int skipped = 0; skipped < 2; ++skipped, ++at) {
        if (at >= stream.end || *at == '\0') return false;
    }
    const char* quote = at;
    while (quote < stream.end && *quote != '"' && *quote != '\0') ++quote;
    if (quote == stream.end || *quote != '"') return false;
    value = std::string_view(at, static_cast<std::size_t>(quote - at));
    return true;
}

bool ReadStringAttribute(const ScenarioTextStream& stream, const char* key, std::string& value) {
    std::string_view found;
    if (!MatchAttribute(stream, key, found)) return false;
    value.assign(found);
    return true;
}

std::string_view RestOfLine(const ScenarioTextStream& stream) {
    const char* at = stream.cursor;
    while (at < stream.end && *at != '\0' && !IsSeparator(*at)) ++at;
    return {stream.cursor, static_cast<std::size_t>(at - stream.cursor)};
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

bool ScenarioItem::Save(std::ostream& out) {
    WriteHeader(out, kind, name);
    Indent(out);
    Put(out, "{\n");
    ++scenarioDepth;
    SaveAttributes(out);
    if (!IsIndexEntry()) SaveChildren(out);
    --scenarioDepth;
    Indent(out);
    Put(out, "}\n");
    return true;
}

void SplitWords(const std::string& value, std::vector<std::string>& words) {
    // The white space of a stream in the classic locale: six characters, the blank among them.
    constexpr std::string_view kWhite = " \t\n\v\f\r";
    std::size_t at = 0;
    while ((at = value.find_first_not_of(kWhite, at)) != std::string::npos) {
        const std::size_t stop = std::min(value.find_first_of(kWhite, at), value.size());
        words.emplace_back(value, at, stop - at);
        at = stop;
    }
}

std::string JoinWords(const std::vector<std::string>& words) {
    std::string joined;
    for (const std::string& word : words) {
        if (!joined.empty()) joined += ' ';
        joined += word;
    }
    return joined;
}

void JoinWords(const std::vector<std::string>& words, char* buffer) {
    const std::string joined = JoinWords(words).substr(0, kJoinBufferSize - 1);
    std::memcpy(buffer, joined.c_str(), joined.size() + 1);
}
