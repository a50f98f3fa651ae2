#include "Xml.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <new>
#include <utility>

#include "Utf8.h"

namespace Commons::detail {

namespace {

// Text outside the top element makes no document, so it is kept for the test that refuses it.
constexpr unsigned kParseFlags =
    kXmlValueFlags | pugi::parse_ws_pcdata_single | pugi::parse_declaration | pugi::parse_fragment;

std::string ReasonOf(const pugi::xml_parse_result& result, bool atEnd) {
    switch (result.status) {
    case pugi::status_end_element_mismatch:
        return atEnd ? "not XML: an element is not closed" : "not XML: the end tag belongs to no open element";
    case pugi::status_bad_start_element:
        return "not XML: malformed start tag";
    case pugi::status_bad_attribute:
        return "not XML: malformed attribute";
    case pugi::status_bad_end_element:
        return "not XML: malformed end tag";
    case pugi::status_bad_comment:
        return "not XML: malformed comment";
    case pugi::status_bad_cdata:
        return "not XML: malformed CDATA section";
    case pugi::status_bad_doctype:
        return "not XML: malformed document type";
    case pugi::status_bad_pi:
        return "not XML: malformed processing instruction or declaration";
    case pugi::status_bad_pcdata:
        return "not XML: malformed text";
    case pugi::status_unrecognized_tag:
        return "not XML: no tag begins like this";
    default:
        return "not XML";
    }
}

bool EqualIgnoringCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == (b >= 'A' && b <= 'Z' ? b - 'A' + 'a' : b);
    });
}

bool IsReferableCodePoint(unsigned long point) {
    return point > 0 && point <= 0x10FFFF && !(point >= 0xD800 && point <= 0xDFFF);
}

// The parser resolves any number, which would cut a value at a NUL or put broken UTF-8 into it.
size_t FindBadReference(std::string_view text) {
    // By the second character: a script is full of the first.
    for (size_t number = text.find('#'); number != std::string_view::npos; number = text.find('#', number + 1)) {
        if (number == 0 || text[number - 1] != '&') continue;
        const size_t at = number - 1;
        const bool hexadecimal = at + 2 < text.size() && text[at + 2] == 'x';
        const char* const digits = text.data() + at + (hexadecimal ? 3 : 2);
        unsigned long point = 0;
        const auto [end, error] = std::from_chars(digits, text.data() + text.size(), point, hexadecimal ? 16 : 10);
        const bool isReference = end != text.data() + text.size() && *end == ';' && end != digits;
        if (isReference && (error != std::errc() || !IsReferableCodePoint(point))) return at;
    }
    return std::string_view::npos;
}

// Larger ones are given back at once.
constexpr size_t kMostKept = size_t{4} << 20;

struct Spare {
    std::unique_ptr<char[]> bytes;
    size_t capacity = 0;
};
Spare spare;

} // namespace

XmlBuffer::~XmlBuffer() {
    if (capacity <= spare.capacity || capacity > kMostKept) return;
    spare.bytes = std::move(bytes);
    spare.capacity = capacity;
}

char* XmlBuffer::Take(size_t size) {
    if (size + kRoomAfter <= spare.capacity) {
        bytes = std::move(spare.bytes);
        capacity = std::exchange(spare.capacity, 0);
    } else {
        bytes = std::make_unique_for_overwrite<char[]>(size + kRoomAfter);
        capacity = size + kRoomAfter;
    }
    std::memset(bytes.get() + size, 0, kRoomAfter);
    return bytes.get();
}

size_t RowAt(std::string_view text, size_t position) {
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(position, text.size()));
    return 1 + static_cast<size_t>(std::count(text.begin(), end, '\n'));
}

std::optional<XmlFault> XmlDocument::Parse(const std::string& text) {
    source = &text;
    if (text.empty()) return XmlFault{1, "not XML: the file is empty"};
    if (const size_t nul = text.find('\0'); nul != std::string::npos)
        return XmlFault{RowAt(text, nul), "not XML: a NUL character", nul};

    char* const copy = buffer.Take(text.size());
    std::memcpy(copy, text.data(), text.size());
    const pugi::xml_parse_result result =
        document.load_buffer_inplace(copy, text.size(), kParseFlags, pugi::encoding_utf8);

    if (!DeclaresOtherEncoding())
        if (const size_t broken = FindBrokenUtf8(text); broken != std::string::npos)
            return XmlFault{RowAt(text, broken), "invalid UTF-8", broken};
    if (const size_t bad = FindBadReference(text); bad != std::string::npos)
        return XmlFault{RowAt(text, bad), "not XML: a reference to no character", bad};
    if (result.status == pugi::status_out_of_memory) throw std::bad_alloc();
    if (!result) {
        const size_t position = static_cast<size_t>(std::max<std::ptrdiff_t>(result.offset, 0));
        return XmlFault{RowAt(text, position), ReasonOf(result, position + 1 >= text.size()), position};
    }
    return FindTop();
}

bool XmlDocument::DeclaresOtherEncoding() const {
    const pugi::xml_node first = document.first_child();
    if (first.type() != pugi::node_declaration) return false;
    const std::string_view encoding = first.attribute("encoding").value();
    return !encoding.empty() && !EqualIgnoringCase(encoding, "UTF-8") && !EqualIgnoringCase(encoding, "UTF8");
}

std::optional<XmlFault> XmlDocument::FindTop() {
    for (const pugi::xml_node node : document) {
        switch (node.type()) {
        case pugi::node_element:
            if (top)
                return XmlFault{RowOf(node.name()), "not XML: a second element at the top", PositionOf(node.name())};
            top = node;
            break;
        case pugi::node_pcdata:
        case pugi::node_cdata:
            if (const std::string_view text = TrimmedXml(node.value()); !text.empty())
                return XmlFault{RowOf(text.data()), "not XML: text outside the top element", PositionOf(text.data())};
            break;
        default:
            break;
        }
    }
    if (!top) return XmlFault{RowAt(*source, source->size()), "not XML: no element", source->size()};
    return std::nullopt;
}

size_t FindForbiddenCharacter(std::string_view text) {
    for (size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (c >= 0 && c < ' ' && c != '\t' && c != '\n' && c != '\r') return at;
        if (c == '\xEF' && (text.substr(at, 3) == "\xEF\xBF\xBE" || text.substr(at, 3) == "\xEF\xBF\xBF")) return at;
    }
    return std::string_view::npos;
}

bool IsXmlBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

std::string_view TrimmedXml(std::string_view text) {
    while (!text.empty() && IsXmlBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsXmlBlank(text.back())) text.remove_suffix(1);
    return text;
}

} // namespace Commons::detail
