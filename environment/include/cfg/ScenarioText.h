#ifndef CFG_SCENARIOTEXT_H
#define CFG_SCENARIOTEXT_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <environment/Export.h>

namespace cfg {

// A text of a scenario file with the bytes that it is written with: plain, in CDATA sections, by references, between
// comments. All offsets are bytes, from 0.
class TAVREL_ENVIRONMENT_API WrittenText {
public:
    // The content of an element of an XML text, from after its start tag to before its end tag. What stands from the
    // first element inside on is left out.
    static WrittenText Between(std::string_view source, std::size_t contentBegin, std::size_t contentEnd);

    // The text as its reader gets it.
    const std::string& Text() const { return text; }

    // Where it begins and ends in the file: after the start tag and before the end tag, or between the quotes.
    std::size_t Begin() const { return begin; }
    std::size_t End() const { return end; }

    // The bytes of the file that a part of the text comes from. A byte of a character that is written as a reference
    // comes from the whole reference. An empty part lies where something could be put in.
    std::pair<std::size_t, std::size_t> InFile(std::size_t textBegin, std::size_t textEnd) const;
    // The byte of the text that the byte of the file belongs to, or the next one that has bytes.
    std::size_t InText(std::size_t position) const;

    // How `replacement` is to be written in place of that part, so that it is read as it is. False if that cannot be
    // done by a change of these bytes alone: in a CDATA section a text cannot hold the mark that ends it.
    bool Write(std::string_view replacement, std::size_t textBegin, std::size_t textEnd, std::string& written) const;

private:
    friend class ScenarioText;

    enum class Form { Plain, CData, Reference };
    struct Piece {
        std::size_t textBegin;
        std::size_t textEnd;
        std::size_t fileBegin;
        std::size_t fileEnd;
        Form form;
    };
    const Piece* PieceAt(std::size_t position) const;
    void AddPlain(std::string_view source, std::size_t from, std::size_t to);
    void AddPiece(std::string_view characters, std::size_t fileBegin, std::size_t fileEnd, Form form);

    std::string text;
    std::vector<Piece> pieces; // without gaps in the text
    std::size_t begin = 0;
    std::size_t end = 0;
    char quote = '\0'; // of an attribute
};

// The elements of a scenario file and where they stand in it, for those who point at places or change some bytes and
// no others. CfgScenario reads what the elements mean.
class TAVREL_ENVIRONMENT_API ScenarioText {
public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    struct Attribute {
        std::string_view name;
        std::size_t nameBegin;
        std::size_t valueBegin; // after the quote
        std::size_t valueEnd;   // at the closing one
    };
    struct Element {
        std::string_view name;
        std::size_t begin;        // at "<"
        std::size_t contentBegin; // after ">"
        std::size_t contentEnd;   // at "</"; as contentBegin for an empty-element tag
        std::size_t end;          // after the last ">"
        std::size_t parent;       // index, kNone at the top
        std::vector<std::size_t> children;
        std::vector<Attribute> attributes;
        bool hasElements() const { return !children.empty(); }
    };
    // The first fault, as CfgScenario::load tells it.
    struct Fault {
        std::size_t position; // of the file
        std::size_t row;      // 0 where the file as a whole is meant
        std::string reason;
    };

    // Reads the bytes of a file.
    explicit ScenarioText(std::string fileBytes);
    ScenarioText(const ScenarioText&) = delete;
    ScenarioText& operator=(const ScenarioText&) = delete;

    const std::string& Bytes() const { return bytes; }
    // Null for a file that loads.
    const std::optional<Fault>& FirstFault() const { return fault; }
    // Whether the file is XML at all, and so has elements.
    bool IsXml() const { return isXml; }
    // In the order of the file; the first one is the top. Empty for what is no XML.
    const std::vector<Element>& Elements() const { return elements; }
    // Where a document type stands, from "<!" to after ">"; two times kNone if there is none.
    std::pair<std::size_t, std::size_t> DocumentType() const { return documentType; }

    // The first child of that name, null if there is none.
    const Element* Child(const Element& element, std::string_view name) const;
    // The attribute of that name, null if there is none.
    static const Attribute* FindAttribute(const Element& element, std::string_view name);

    // The text of an element that holds no elements, and of an attribute.
    WrittenText TextOf(const Element& element) const;
    WrittenText TextOf(const Attribute& attribute) const;

private:
    void FindElements();

    std::string bytes;
    std::optional<Fault> fault;
    bool isXml = false;
    std::vector<Element> elements;
    std::pair<std::size_t, std::size_t> documentType{kNone, kNone};
};

} // namespace cfg

#endif
