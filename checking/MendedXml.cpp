#include "MendedXml.h"

#include <algorithm>
#include <charconv>

#include <Commons/TextPlaces.h>
#include <scenario/NearestName.h>

#include "ScriptTree.h"

namespace TavrelChecking {

namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::string_view kBlanks = " \t\n\r";

// A file that nests deeper is refused for that.
constexpr std::size_t kDeepestElement = 1100;

bool IsBlank(char c) { return kBlanks.find(c) != kNone; }
bool BeginsName(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == ':' || (c & '\x80') != 0;
}
bool IsInName(char c) { return BeginsName(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; }

// Whether the declaration names another encoding than UTF-8. Such a file keeps its bytes as they are.
bool DeclaresOtherEncoding(std::string_view file) {
    if (file.starts_with("\xEF\xBB\xBF")) file.remove_prefix(3);
    if (!file.starts_with("<?xml")) return false;
    const std::string_view declaration = file.substr(0, file.find("?>"));
    const std::size_t key = declaration.find("encoding");
    const std::size_t quote = declaration.find_first_of("\"'", key == kNone ? declaration.size() : key);
    if (quote == kNone) return false;
    std::string word(declaration.substr(quote + 1, declaration.find(declaration[quote], quote + 1) - quote - 1));
    for (char& c : word)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return !word.empty() && word != "utf-8" && word != "utf8";
}

} // namespace

// Walks through the tags of the file once and writes the copy on the way.
class XmlMender {
public:
    XmlMender(std::string_view text, MendedXml& mended)
        : file(text), target(mended), keepsBytes(DeclaresOtherEncoding(text)) {}

    void Mend() {
        if (!keepsBytes) {
            const std::string encoding = LikelyEncoding(file);
            for (const auto& [begin, end] : PartsInOtherEncoding(file))
                Tell(MendedXml::Fault::Encoding, begin, end, "the file is no UTF-8; it is likely " + encoding);
        }
        std::size_t at = file.starts_with("\xEF\xBB\xBF") ? 3 : 0;
        while (at < file.size() && !isPastTop && open.size() <= kDeepestElement) at = Take(at);
        if (isPastTop) TakeRest(at);
        if (!open.empty()) Close(0, file.size());
        std::stable_sort(target.faults.begin(), target.faults.end(),
                         [](const auto& one, const auto& other) { return one.begin < other.begin; });
    }

private:
    using Fault = MendedXml::Fault;

    struct Open {
        std::string name;
        std::size_t begin;
    };

    void Tell(Fault::What what, std::size_t begin, std::size_t end, std::string reason) {
        target.faults.push_back({what, begin, end, std::move(reason)});
    }
    void TellMarkup(std::size_t begin, std::size_t end, const std::string& reason) {
        Tell(Fault::Markup, begin, end, "not XML: " + reason);
    }

    void Put(std::string_view text, std::size_t place) {
        if (text.empty()) return;
        target.pieces.push_back({target.copy.size(), place, false});
        target.copy += text;
    }

    // A part of the file, with its characters mended; no tags stand in it that are not meant as such.
    void Copy(std::size_t begin, std::size_t end) {
        bool isBegun = false;
        for (std::size_t at = begin; at < end;) {
            const char c = file[at];
            std::size_t length = 1;
            if (c == '\0') {
                Tell(Fault::Nul, at, at + 1, "a NUL character stands in the file");
            } else if (c == '&' && (length = BadReferenceLength(at)) > 0) {
                if (NumberOfReference(at) == 0)
                    Tell(Fault::Nul, at, at + length, "a reference to the NUL character stands in the file");
                else
                    TellMarkup(at, at + length, "a reference to no character");
            } else if (!keepsBytes && IsNoUtf8(file, at)) {
                // As the older standard has it: the code of the character is that of the byte.
                const auto byte = static_cast<unsigned char>(c);
                const char character[] = {static_cast<char>(0xC0 | (byte >> 6)),
                                          static_cast<char>(0x80 | (byte & 0x3F))};
                Put(std::string_view(character, sizeof character), at);
                length = 1;
            } else {
                if (!isBegun) target.pieces.push_back({target.copy.size(), at, true});
                isBegun = true;
                length = std::min(Commons::TextPlaces::CharacterLength(file, at), end - at);
                target.copy += file.substr(at, length);
                at += length;
                continue;
            }
            isBegun = false;
            at += length;
        }
    }

    std::size_t DigitsOfReference(std::size_t at) const {
        if (file.compare(at, 2, "&#") != 0) return kNone;
        return file.compare(at + 2, 1, "x") == 0 ? at + 3 : at + 2;
    }
    unsigned long NumberOfReference(std::size_t at) const {
        const std::size_t digits = DigitsOfReference(at);
        unsigned long point = 0;
        std::from_chars(file.data() + digits, file.data() + file.size(), point, digits == at + 3 ? 16 : 10);
        return point;
    }
    // The length of a reference to a number that is no character; 0 for all else.
    std::size_t BadReferenceLength(std::size_t at) const {
        const std::size_t digits = DigitsOfReference(at);
        if (digits == kNone) return 0;
        unsigned long point = 0;
        const char* const last = file.data() + file.size();
        const auto [end, error] =
            std::from_chars(file.data() + std::min(digits, file.size()), last, point, digits == at + 3 ? 16 : 10);
        if (end == file.data() + digits || end == last || *end != ';') return 0;
        const bool isCharacter =
            error == std::errc() && point > 0 && point <= 0x10FFFF && !(point >= 0xD800 && point <= 0xDFFF);
        return isCharacter ? 0 : static_cast<std::size_t>(end - file.data()) + 1 - at;
    }

    // What begins at `at`; the place after it.
    std::size_t Take(std::size_t at) {
        if (file[at] != '<') {
            const std::size_t end = std::min(file.find('<', at), file.size());
            return open.empty() ? TakeOutside(at, end) : (Copy(at, end), end);
        }
        const std::string_view rest = file.substr(at);
        if (rest.starts_with("<!--")) return TakeSection(at, 4, "-->", "a comment is not closed");
        if (rest.starts_with("<![CDATA[")) {
            if (open.empty()) return TakeOutside(at, std::min(file.find("]]>", at), file.size() - 3) + 3);
            return TakeSection(at, 9, "]]>", "a CDATA section is not closed");
        }
        if (rest.starts_with("<?")) return TakeSection(at, 2, "?>", "an instruction is not closed");
        if (rest.starts_with("</")) return TakeEndTag(at);
        if (!IsInScript() && LooksLikeTag(at)) {
            CloseUnclosed(at);
            return TakeTag(at);
        }
        if (rest.starts_with("<!") && open.empty()) {
            // A document type: its brackets nest.
            std::size_t depth = 0;
            for (std::size_t end = at; end < file.size(); ++end) {
                if (file[end] == '<') ++depth;
                if (file[end] == '>' && --depth == 0) return Copy(at, end + 1), end + 1;
            }
        }
        TellMarkup(at, at + 1, "a \"<\" that begins no tag; in a text it is written &lt;");
        if (!open.empty()) Put("&lt;", at);
        return at + 1;
    }

    // No elements stand in the body of a script, whatever its lines look like.
    bool IsInScript() const {
        return open.size() > 1 && open.back().name == "text" && open[open.size() - 2].name == "ScenarioScript";
    }

    std::size_t TakeSection(std::size_t at, std::size_t mark, std::string_view closing, const char* reason) {
        const std::size_t end = file.find(closing, at + mark);
        if (end != kNone) {
            Copy(at, end + closing.size());
            return end + closing.size();
        }
        TellMarkup(at, at + mark, reason);
        return at + mark;
    }

    // Before the top element.
    std::size_t TakeOutside(std::size_t at, std::size_t end) {
        std::size_t begin = at;
        std::size_t stop = end;
        while (begin < stop && IsBlank(file[begin])) ++begin;
        while (stop > begin && IsBlank(file[stop - 1])) --stop;
        if (begin == stop)
            Copy(at, end);
        else
            TellMarkup(begin, stop, "text outside the top element");
        return end;
    }

    // After the top element.
    void TakeRest(std::size_t at) {
        while (at < file.size()) {
            const std::string_view rest = file.substr(at);
            if (rest.starts_with("<!--") || rest.starts_with("<?") || IsBlank(file[at])) {
                const std::size_t end = rest.front() != '<' ? at + 1
                                        : rest.starts_with("<!--")
                                            ? TakeSection(at, 4, "-->", "a comment is not closed")
                                            : TakeSection(at, 2, "?>", "an instruction is not closed");
                if (rest.front() != '<') Copy(at, end);
                at = end;
                continue;
            }
            std::size_t end = file.size();
            while (end > at && IsBlank(file[end - 1])) --end;
            const bool isElement = rest.front() == '<' && LooksLikeTag(at);
            return isElement ? TellMarkup(at + 1, NameEnd(at + 1), "a second element at the top")
                             : TellMarkup(at, end, "text outside the top element");
        }
    }

    // Ends the elements further in than `depth`, which was found at `at`. One finding stands for all of them.
    void Close(std::size_t depth, std::size_t at) {
        TellMarkup(at, at, "<" + open.back().name + "> is not closed");
        target.hasLostElements = target.hasLostElements || depth > 0;
        while (open.size() > depth) {
            Put("</" + open.back().name + ">", at);
            open.pop_back();
        }
    }

    // Where the next tag of that kind of an element of that name stands.
    std::size_t NextTag(const std::string& opening, const std::string& name, std::size_t at) const {
        for (std::size_t found = file.find(opening + name, at); found != kNone;
             found = file.find(opening + name, found + 1))
            if (NameEnd(found + opening.size()) == found + opening.size() + name.size()) return found;
        return kNone;
    }

    // Whether an end tag of its name stands before the next start tag of that.
    bool HasEnd(const Open& element) const {
        return NextTag("</", element.name, element.begin) < NextTag("<", element.name, element.begin + 1);
    }

    // The tabs and blanks before a tag that begins its line; none for another one.
    std::size_t IndentOf(std::size_t at) const {
        std::size_t begin = at;
        while (begin > 0 && (file[begin - 1] == ' ' || file[begin - 1] == '\t')) --begin;
        return begin == 0 || file[begin - 1] == '\n' ? at - begin : kNone;
    }

    // An element without an end tag ends where the next one stands as far out; one that holds no more than a text ends
    // with that.
    void CloseUnclosed(std::size_t at) {
        while (open.size() > 1) {
            const std::size_t own = IndentOf(open.back().begin);
            const std::size_t next = IndentOf(at);
            if (own == kNone || next == kNone || next > own || HasEnd(open.back())) return;
            std::size_t end = at;
            while (end > 0 && IsBlank(file[end - 1])) --end;
            TellMarkup(end, end, "<" + open.back().name + "> is not closed");
            Put("</" + open.back().name + ">", at);
            open.pop_back();
        }
    }

    std::size_t NameEnd(std::size_t at) const {
        while (at < file.size() && IsInName(file[at])) ++at;
        return at;
    }

    // Whether an end tag of another name is that of the innermost element: by its name, or since that element has no
    // other one.
    bool IsMeantForInnermost(const std::string& name, std::size_t at) const {
        if (!NearestName(name, {open.back().name}).empty()) return true;
        if (IsInScript()) return false;
        const std::size_t begin = open.back().begin;
        if (file.substr(begin, at - begin).find('\n') == kNone) return true;
        const std::size_t own = file.find("</" + open.back().name + ">", at);
        const std::size_t outer =
            open.size() < 2 ? file.size() : file.find("</" + open[open.size() - 2].name + ">", at);
        return own > outer;
    }

    std::size_t TakeEndTag(std::size_t at) {
        const std::size_t nameBegin = at + 2;
        const std::size_t nameEnd = NameEnd(nameBegin);
        const std::string name(file.substr(nameBegin, nameEnd - nameBegin));
        std::size_t end = nameEnd;
        while (end < file.size() && IsBlank(file[end])) ++end;
        const bool isClosed = end < file.size() && file[end] == '>';
        const std::size_t after = isClosed ? end + 1 : nameEnd;
        const auto meant =
            std::find_if(open.rbegin(), open.rend(), [&](const Open& element) { return element.name == name; });
        const bool isMisspelt = meant == open.rend();
        if (open.empty() || (isMisspelt && !IsMeantForInnermost(name, at))) {
            TellMarkup(at, after, "the end tag belongs to no open element");
            target.hasLostElements = true;
            return after;
        }
        target.hasLostElements =
            target.hasLostElements || (isMisspelt && NearestName(name, {open.back().name}).empty());
        if (isMisspelt)
            TellMarkup(nameBegin, nameEnd, "the end tag of <" + open.back().name + "> has another name");
        else if (meant != open.rbegin())
            Close(static_cast<std::size_t>(open.rend() - meant), at);
        if (!isClosed) TellMarkup(nameEnd, nameEnd, "an end tag is not closed");
        if (!isMisspelt && isClosed)
            Copy(at, after);
        else
            Put("</" + open.back().name + ">", at);
        open.pop_back();
        isPastTop = open.empty();
        return after;
    }

    // A "<" in a text may have a letter behind it.
    bool LooksLikeTag(std::size_t at) const {
        const std::size_t nameEnd = NameEnd(at + 1);
        std::size_t next = nameEnd;
        while (next < file.size() && IsBlank(file[next])) ++next;
        if (nameEnd == at + 1 || !BeginsName(file[at + 1]) || next == file.size()) return false;
        const std::string_view rest = file.substr(next);
        if (rest.starts_with(">") || rest.starts_with("/>")) return true;
        if (rest.starts_with("</")) return rest.substr(2).starts_with(file.substr(at + 1, nameEnd - at - 1));
        if (rest.starts_with("<")) return true;
        const std::size_t keyEnd = NameEnd(next);
        return keyEnd > next && next > nameEnd && file.find_first_not_of(kBlanks, keyEnd) < file.size() &&
               file[file.find_first_not_of(kBlanks, keyEnd)] == '=';
    }

    std::size_t TakeTag(std::size_t at) {
        const std::size_t nameEnd = NameEnd(at + 1);
        Copy(at, nameEnd);
        open.push_back({std::string(file.substr(at + 1, nameEnd - at - 1)), at});
        std::size_t next = nameEnd;
        while (true) {
            const std::size_t begun = next;
            while (next < file.size() && IsBlank(file[next])) ++next;
            if (next >= file.size() || file[next] == '<') {
                TellMarkup(begun, begun, "the tag <" + open.back().name + " is not closed");
                Put(">", begun);
                return begun;
            }
            Copy(begun, next);
            if (file[next] == '>') return Copy(next, next + 1), next + 1;
            if (file[next] == '/' && next + 1 < file.size() && file[next + 1] == '>') {
                Copy(next, next + 2);
                open.pop_back();
                isPastTop = open.empty();
                return next + 2;
            }
            next = BeginsName(file[next]) ? TakeAttribute(next) : PassOver(next);
        }
    }

    // What is no attribute is told and left out.
    std::size_t PassOver(std::size_t at) {
        std::size_t end = at;
        while (end < file.size() && !IsBlank(file[end]) && file[end] != '>' && file[end] != '<' &&
               (end == at || file[end] != '/'))
            ++end;
        TellMarkup(at, end, "malformed attribute");
        return end;
    }

    std::size_t TakeAttribute(std::size_t at) {
        const std::size_t nameEnd = NameEnd(at);
        std::size_t next = nameEnd;
        while (next < file.size() && IsBlank(file[next])) ++next;
        if (next >= file.size() || file[next] != '=') return PassOver(at);
        ++next;
        while (next < file.size() && IsBlank(file[next])) ++next;
        if (next >= file.size()) return PassOver(at);
        const char quote = file[next];
        const bool hasQuote = quote == '"' || quote == '\'';
        const std::size_t valueBegin = hasQuote ? next + 1 : next;
        const std::size_t closing = hasQuote ? file.find(quote, valueBegin) : kNone;
        if (closing != kNone && !RunsOn(valueBegin, closing)) {
            Copy(at, closing + 1);
            return closing + 1;
        }
        // A quote is missing: the value ends with its tag, or where the next attribute begins.
        std::size_t valueEnd = valueBegin;
        while (valueEnd < file.size() && file[valueEnd] != '>' && file[valueEnd] != '<' && file[valueEnd] != '\n' &&
               file[valueEnd] != '\r' && !(hasQuote ? BeginsAttribute(valueEnd) : IsBlank(file[valueEnd])))
            ++valueEnd;
        if (valueEnd > valueBegin && file[valueEnd - 1] == '/') --valueEnd;
        std::size_t textEnd = valueEnd;
        if (!hasQuote && textEnd > valueBegin && (file[textEnd - 1] == '"' || file[textEnd - 1] == '\'')) --textEnd;
        const std::size_t place = hasQuote ? valueEnd : valueBegin;
        TellMarkup(place, place,
                   "the value of " + std::string(file.substr(at, nameEnd - at)) + " has no " +
                       (hasQuote ? "closing quote" : "opening quote"));
        Copy(at, next);
        Put("\"", next);
        Copy(valueBegin, textEnd);
        Put("\"", textEnd);
        return valueEnd;
    }

    // A blank with another attribute behind it.
    bool BeginsAttribute(std::size_t at) const {
        if (!IsBlank(file[at])) return false;
        while (at < file.size() && IsBlank(file[at])) ++at;
        const std::size_t nameEnd = NameEnd(at);
        return nameEnd > at && nameEnd + 1 < file.size() && file[nameEnd] == '=' &&
               (file[nameEnd + 1] == '"' || file[nameEnd + 1] == '\'');
    }

    // Whether a value goes on to the quote of another attribute: what follows that quote goes on like a value.
    bool RunsOn(std::size_t begin, std::size_t closing) const {
        const std::size_t after = closing + 1;
        if (after >= file.size()) return file.substr(begin, closing - begin).find('<') != kNone;
        const char c = file[after];
        return !IsBlank(c) && c != '/' && c != '>';
    }

    const std::string_view file;
    MendedXml& target;
    const bool keepsBytes;
    std::vector<Open> open;
    bool isPastTop = false;
};

MendedXml::MendedXml(std::string_view file) {
    const auto nuls = static_cast<std::size_t>(std::count(file.begin(), file.end(), '\0'));
    if (nuls * 4 > file.size()) {
        std::size_t end = 0;
        while (end < file.size() && (file[end] & '\x80') != 0) ++end;
        faults.push_back({Fault::Encoding, 0, end, "the file is no UTF-8; it is likely " + LikelyEncoding(file)});
        return;
    }
    XmlMender(file, *this).Mend();
}

std::size_t MendedXml::InFile(std::size_t position) const {
    const auto after = std::upper_bound(pieces.begin(), pieces.end(), position,
                                        [](std::size_t at, const Piece& piece) { return at < piece.inCopy; });
    if (after == pieces.begin()) return 0;
    const Piece& piece = after[-1];
    return piece.isCopied ? piece.inFile + (position - piece.inCopy) : piece.inFile;
}

std::size_t MendedXml::InCopy(std::size_t position) const {
    const auto after = std::upper_bound(pieces.begin(), pieces.end(), position,
                                        [](std::size_t at, const Piece& piece) { return at < piece.inFile; });
    if (after == pieces.begin()) return 0;
    const Piece& piece = after[-1];
    const std::size_t end = after == pieces.end() ? copy.size() : after->inCopy;
    return piece.isCopied ? std::min(piece.inCopy + (position - piece.inFile), end) : piece.inCopy;
}

} // namespace TavrelChecking
