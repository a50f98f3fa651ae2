#include <cfg/ScenarioText.h>

#include <algorithm>
#include <charconv>

#include "../Commons/Utf8.h"
#include "../Commons/Xml.h"
#include "Document.h"
#include "ScenarioReader.h"
#include "XmlText.h"

namespace cfg {

namespace {

using Commons::detail::IsXmlBlank;

constexpr std::string_view kCDataBegin = "<![CDATA[";
constexpr std::string_view kCDataEnd = "]]>";

bool StandsAt(std::string_view source, std::size_t position, std::string_view text) {
    return source.substr(std::min(position, source.size()), text.size()) == text;
}

std::size_t After(std::string_view source, std::size_t position, std::string_view text) {
    const std::size_t found = source.find(text, position);
    return found == std::string_view::npos ? source.size() : found + text.size();
}

// After a document type that begins at `position`: its own brackets nest, and quotes hide them.
std::size_t AfterDocumentType(std::string_view source, std::size_t position) {
    std::size_t depth = 0;
    while (position < source.size()) {
        const char c = source[position];
        if (StandsAt(source, position, "<!--")) {
            position = After(source, position, "-->");
            continue;
        }
        ++position;
        if (c == '"' || c == '\'') position = After(source, position, std::string_view(&c, 1));
        if (c == '<') ++depth;
        if (c == '>' && --depth == 0) break;
    }
    return position;
}

// The character that a reference at the beginning of `text` stands for and the length of the reference; 0 for what is
// none, as an unknown name is. The same forms as the parser of XML resolves.
std::size_t ReadReference(std::string_view text, std::string& character) {
    struct Named {
        std::string_view reference;
        char character;
    };
    static constexpr Named kNamed[] = {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};
    for (const Named& named : kNamed) {
        if (!text.starts_with(named.reference)) continue;
        character = named.character;
        return named.reference.size();
    }
    if (!text.starts_with("&#")) return 0;
    const bool hexadecimal = text.substr(2).starts_with('x');
    const char* const digits = text.data() + (hexadecimal ? 3 : 2);
    const char* const last = text.data() + text.size();
    std::uint32_t point = 0;
    const auto [end, error] = std::from_chars(digits, last, point, hexadecimal ? 16 : 10);
    if (error != std::errc() || end == digits || end == last || *end != ';') return 0;
    character.clear();
    Commons::detail::AppendUtf8(character, static_cast<char32_t>(point));
    return static_cast<std::size_t>(end - text.data()) + 1;
}

} // namespace

void WrittenText::AddPiece(std::string_view characters, std::size_t fileBegin, std::size_t fileEnd, Form form) {
    if (characters.empty()) return;
    pieces.push_back({text.size(), text.size() + characters.size(), fileBegin, fileEnd, form});
    text += characters;
}

void WrittenText::AddPlain(std::string_view source, std::size_t from, std::size_t to) {
    std::string character;
    std::size_t begun = from;
    for (std::size_t at = source.find('&', from); at < to; at = source.find('&', at)) {
        const std::size_t length = ReadReference(source.substr(at, to - at), character);
        if (length == 0) {
            ++at;
            continue;
        }
        AddPiece(source.substr(begun, at - begun), begun, at, Form::Plain);
        AddPiece(character, at, at + length, Form::Reference);
        begun = at += length;
    }
    AddPiece(source.substr(begun, to - begun), begun, to, Form::Plain);
}

WrittenText WrittenText::Between(std::string_view source, std::size_t contentBegin, std::size_t contentEnd) {
    WrittenText written;
    written.begin = contentBegin;
    written.end = contentEnd;
    for (std::size_t at = written.begin; at < written.end;) {
        if (source[at] != '<') {
            const std::size_t end = std::min(source.find('<', at), written.end);
            written.AddPlain(source, at, end);
            at = end;
        } else if (StandsAt(source, at, kCDataBegin)) {
            const std::size_t begin = at + kCDataBegin.size();
            const std::size_t end = std::min(source.find(kCDataEnd, begin), written.end);
            written.AddPiece(source.substr(begin, end - begin), begin, end, Form::CData);
            at = std::min(end + kCDataEnd.size(), written.end);
        } else if (StandsAt(source, at, "<!--")) {
            at = After(source, at + 4, "-->");
        } else if (StandsAt(source, at, "<?")) {
            at = After(source, at + 2, "?>");
        } else {
            break; // an element, which makes this no text
        }
    }
    return written;
}

const WrittenText::Piece* WrittenText::PieceAt(std::size_t position) const {
    const auto after = std::upper_bound(pieces.begin(), pieces.end(), position,
                                        [](std::size_t at, const Piece& piece) { return at < piece.textBegin; });
    return after == pieces.begin() ? nullptr : &after[-1];
}

std::pair<std::size_t, std::size_t> WrittenText::InFile(std::size_t textBegin, std::size_t textEnd) const {
    if (pieces.empty()) return {begin, begin};
    textEnd = std::min(textEnd, text.size());
    textBegin = std::min(textBegin, textEnd);
    // An empty part at the end lies after the last character, inside of its section.
    const bool isAtEnd = textBegin == text.size();
    const Piece& first = *PieceAt(isAtEnd ? text.size() - 1 : textBegin);
    std::size_t from = first.fileBegin;
    if (isAtEnd)
        from = first.fileEnd;
    else if (first.form != Form::Reference)
        from += textBegin - first.textBegin;
    if (textEnd == textBegin) return {from, from};
    const Piece& last = *PieceAt(textEnd - 1);
    return {from, last.form == Form::Reference ? last.fileEnd : last.fileBegin + (textEnd - last.textBegin)};
}

std::size_t WrittenText::InText(std::size_t position) const {
    const auto piece =
        std::partition_point(pieces.begin(), pieces.end(), [&](const Piece& one) { return one.fileEnd <= position; });
    if (piece == pieces.end()) return text.size();
    if (position <= piece->fileBegin || piece->form == Form::Reference) return piece->textBegin;
    return piece->textBegin + (position - piece->fileBegin);
}

bool WrittenText::Write(std::string_view replacement, std::size_t textBegin, std::size_t textEnd,
                        std::string& written) const {
    const std::size_t place = textBegin < text.size() ? textBegin : text.size() - 1;
    const Piece* const piece = pieces.empty() ? nullptr : PieceAt(place);
    if (piece && piece->form == Form::CData) {
        if (textEnd > piece->textEnd) return false;
        // What stands around may complete the mark.
        std::string around = text.substr(piece->textBegin, textBegin - piece->textBegin);
        around += replacement;
        around += text.substr(textEnd, piece->textEnd - textEnd);
        if (around.find(kCDataEnd) != std::string::npos) return false;
        written = replacement;
        return true;
    }
    written = quote == '\0' ? detail::EscapedText(replacement) : detail::EscapedAttribute(replacement, quote);
    return true;
}

ScenarioText::ScenarioText(std::string fileBytes) : bytes(std::move(fileBytes)) {
    Commons::detail::XmlDocument xml;
    if (auto found = xml.Parse(bytes)) {
        fault = Fault{found->position, found->row, found->reason};
        return;
    }
    isXml = true;
    FindElements();
    detail::Document document(bytes.size());
    if (auto found = detail::ReadScenario(bytes, document)) fault = Fault{found->position, found->row, found->reason};
}

// The text is XML, so each "<" outside of markup begins or ends an element.
void ScenarioText::FindElements() {
    const std::string_view source = bytes;
    std::vector<std::size_t> open;
    std::size_t at = 0;
    while ((at = source.find('<', at)) != std::string_view::npos) {
        if (StandsAt(source, at, "<!--")) {
            at = After(source, at + 4, "-->");
        } else if (StandsAt(source, at, kCDataBegin)) {
            at = After(source, at + kCDataBegin.size(), kCDataEnd);
        } else if (StandsAt(source, at, "<?")) {
            at = After(source, at + 2, "?>");
        } else if (StandsAt(source, at, "<!")) {
            const std::size_t begin = at;
            at = AfterDocumentType(source, at);
            documentType = {begin, at};
        } else if (StandsAt(source, at, "</")) {
            const std::size_t endTag = at;
            at = After(source, at, ">");
            if (open.empty()) continue;
            elements[open.back()].contentEnd = endTag;
            elements[open.back()].end = at;
            open.pop_back();
        } else {
            Element element{};
            element.begin = at++;
            const auto endsName = [](char c) { return IsXmlBlank(c) || c == '>' || c == '/' || c == '='; };
            const auto word = [&] {
                const std::size_t begin = at;
                while (at < source.size() && !endsName(source[at])) ++at;
                return source.substr(begin, at - begin);
            };
            element.name = word();
            bool isEmptyTag = false;
            while (at < source.size() && source[at] != '>') {
                isEmptyTag = source[at] == '/';
                if (endsName(source[at])) {
                    ++at;
                    continue;
                }
                Attribute attribute{};
                attribute.nameBegin = at;
                attribute.name = word();
                while (at < source.size() && (IsXmlBlank(source[at]) || source[at] == '=')) ++at;
                if (at >= source.size()) break;
                const char quote = source[at];
                if (quote != '"' && quote != '\'') continue;
                attribute.valueBegin = ++at;
                attribute.valueEnd = std::min(source.find(quote, at), source.size());
                at = std::min(attribute.valueEnd + 1, source.size());
                element.attributes.push_back(attribute);
            }
            at = std::min(at + 1, source.size());
            element.contentBegin = element.contentEnd = element.end = at;
            element.parent = open.empty() ? kNone : open.back();
            if (!open.empty()) elements[open.back()].children.push_back(elements.size());
            if (!isEmptyTag) open.push_back(elements.size());
            elements.push_back(std::move(element));
        }
    }
}

const ScenarioText::Element* ScenarioText::Child(const Element& element, std::string_view name) const {
    for (const std::size_t child : element.children)
        if (elements[child].name == name) return &elements[child];
    return nullptr;
}

const ScenarioText::Attribute* ScenarioText::FindAttribute(const Element& element, std::string_view name) {
    for (const Attribute& attribute : element.attributes)
        if (attribute.name == name) return &attribute;
    return nullptr;
}

WrittenText ScenarioText::TextOf(const Element& element) const {
    return WrittenText::Between(bytes, element.contentBegin, element.contentEnd);
}

WrittenText ScenarioText::TextOf(const Attribute& attribute) const {
    WrittenText written;
    written.begin = attribute.valueBegin;
    written.end = attribute.valueEnd;
    written.quote = bytes[attribute.valueBegin - 1];
    written.AddPlain(bytes, written.begin, written.end);
    return written;
}

} // namespace cfg
