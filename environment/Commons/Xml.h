#ifndef COMMONS_XML_H
#define COMMONS_XML_H

#include <cstddef>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <pugixml.hpp>

// XML as the environment reads it: strict about what is a document, and without any change to the characters of values
// (no line end and no blank is normalised, nothing is recoded).
namespace Commons::detail {

struct XmlFault {
    size_t row; // 0 where the text as a whole is meant
    std::string reason;
    size_t position = 0; // the byte of the text that is meant
};

// The row of a position, counted from 1 by line feeds.
size_t RowAt(std::string_view text, size_t position);

// The memory that a text is parsed in. It goes from one document to the next, since new memory of that size costs more
// to come by than to fill.
class XmlBuffer {
public:
    XmlBuffer() = default;
    ~XmlBuffer();
    XmlBuffer(const XmlBuffer&) = delete;
    XmlBuffer& operator=(const XmlBuffer&) = delete;

    // So many zeros follow the bytes that were asked for.
    static constexpr size_t kRoomAfter = 32;
    char* Take(size_t size);
    const char* get() const { return bytes.get(); }

private:
    std::unique_ptr<char[]> bytes;
    size_t capacity = 0;
};

// A parsed document. The nodes point into a copy of the text in which every name and value begins at the position at
// which it begins in the text itself, so that positions lead from one to the other.
class XmlDocument {
public:
    // Parses a text that must outlive this object's use of PositionOf and RowOf. The fault that it has, if any. Throws
    // std::bad_alloc.
    std::optional<XmlFault> Parse(const std::string& text);

    // Whether the text says to be in another encoding than UTF-8. Such a text keeps its bytes as they are.
    bool DeclaresOtherEncoding() const;

    // The one element at the top.
    pugi::xml_node Top() const { return top; }

    // Where a name or value of a node begins in the text.
    size_t PositionOf(const char* nameOrValue) const { return static_cast<size_t>(nameOrValue - buffer.get()); }
    size_t RowOf(const char* nameOrValue) const { return RowAt(*source, PositionOf(nameOrValue)); }

private:
    std::optional<XmlFault> FindTop();

    const std::string* source = nullptr;
    XmlBuffer buffer;
    pugi::xml_document document;
    pugi::xml_node top;
};

// Whether a name of a parsed document is that word. Nothing is called, and nothing searched for the end of the name.
template <size_t Size>
bool NameIs(const char* name, const char (&word)[Size]) {
    static_assert(Size <= XmlBuffer::kRoomAfter);
    return *name != '\0' && std::memcmp(name, word, Size) == 0; // an empty name stands outside the buffer
}

// How values are read everywhere: references resolved, all else as it stands.
constexpr unsigned kXmlValueFlags = pugi::parse_cdata | pugi::parse_escapes;

// Where the first character stands that no XML can hold, not even as a reference: a control character, U+FFFE or
// U+FFFF. npos if there is none. The parser takes them, so that a file which has them can be loaded and mended.
size_t FindForbiddenCharacter(std::string_view text);

// The text with blanks, tabs and line ends cut at both ends, as for numbers in a file that was laid out by hand.
std::string_view TrimmedXml(std::string_view text);
bool IsXmlBlank(char c);

} // namespace Commons::detail

#endif
