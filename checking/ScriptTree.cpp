#include "ScriptTree.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <new>
#include <tuple>
#include <utility>

#include <scenario/NearestName.h>

#include "Definitions.h"

namespace TavrelChecking {

namespace {

constexpr std::string_view kHeaderWord = "TYPEOF";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsLineSeparator(char c) { return c == '\t' || c == '\r' || c == '\f'; }
bool IsKeyLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

// The words of kinds that stand in a text.
std::vector<std::string> KindWords() {
    std::vector<std::string> words;
    for (const ScenarioItemKind kind : {KindAction,
                                        KindElseAction,
                                        KindCondition,
                                        KindConfig,
                                        KindCriteria,
                                        KindEnum,
                                        KindEnumTab,
                                        KindEvaluation,
                                        KindFolder,
                                        KindFunction,
                                        KindGeneralParameters,
                                        KindGroup,
                                        KindInclude,
                                        KindParameter,
                                        KindProgram,
                                        KindReturn,
                                        KindRule,
                                        KindScenario,
                                        KindTask,
                                        KindVariable})
        words.emplace_back(KindKeyword(kind));
    return words;
}

// Kinds that have a word and no items: the reader refuses one of them and ends its process over the others.
bool HasItems(ScenarioItemKind kind) {
    switch (kind) {
    case KindNone:
    case KindCatalog:
    case KindExerciseLog:
    case KindExerciseNdx:
    case KindHistory:
    case KindModifier:
    case KindSessionLog:
    case KindToken:
        return false;
    default:
        return true;
    }
}

// Kinds whose items mean nothing without a name.
bool IsFoundByName(ScenarioItemKind kind) {
    switch (kind) {
    case KindAction:
    case KindElseAction:
    case KindCondition:
    case KindFunction:
    case KindParameter:
    case KindReturn:
    case KindVariable:
        return true;
    default:
        return false;
    }
}

// What stands in a row.
enum class Form : std::uint8_t { Open, Close, Header, Attribute, Other };

// One row of the text.
struct Row {
    Position begin;  // after the tabs and blanks
    Position end;    // before the line end and the separators before it
    Position blanks; // where leading blanks begin; `begin` if there are none
    unsigned indent; // tabs
    bool isSplit;    // something else stands before it on its line
    Form form;       // Other for a row of blanks

    bool IsBlank() const { return begin == end; }
    // Blanks say nothing about the depth.
    bool IsDepthShown() const { return begin == blanks && !isSplit; }
};

Form FormOf(std::string_view line) {
    if (line.front() == '{') return Form::Open;
    if (line.front() == '}') return Form::Close;
    if (line.starts_with(kHeaderWord)) return Form::Header;
    std::size_t letters = 0;
    while (letters < line.size() && IsKeyLetter(line[letters])) ++letters;
    return letters > 0 && letters < line.size() && line[letters] == '=' ? Form::Attribute : Form::Other;
}

} // namespace

const Attribute* Item::Find(std::string_view key) const {
    for (const Attribute& attribute : attributes)
        if (attribute.key == key) return &attribute;
    for (const Attribute& attribute : attributes)
        if (attribute.meant == key) return &attribute;
    return nullptr;
}

std::string_view Item::Value(std::string_view key) const {
    const Attribute* attribute = Find(key);
    return attribute ? attribute->value : std::string_view();
}

// Two characters after the key, then all up to the next quote.
std::optional<std::string_view> Item::Seen(const Attribute& attribute) const {
    const std::string_view whole = text->View();
    const std::size_t first = attribute.KeyEnd() + 2;
    if (attribute.isLost || first > whole.size()) return std::nullopt;
    const std::size_t quote = whole.find('"', first);
    if (quote == std::string_view::npos) return std::nullopt;
    const std::string_view value = whole.substr(first, quote - first);
    return value.find('\0') == std::string_view::npos ? std::optional(value) : std::nullopt;
}

std::string Item::Title() const {
    std::string title(keyword.empty() ? "an item without a kind" : keyword);
    if (!name.empty()) title += " (" + std::string(name) + ")";
    return title;
}

std::string WayTo(const Item* item) {
    return WayOfSteps(item, [](const Item& step) { return step.Title(); });
}

bool IsJunction(const Item& item) { return item.kind == KindCondition && (item.name == "AND" || item.name == "OR"); }

bool IsLostVariable(const Item& item) {
    if (!item.isMalformed || !item.name.empty()) return false;
    if (item.kind == KindVariable) return true;
    return item.kind == KindNone && (item.Find("INTERACTIVE_TYPE") || item.Find("TYPE") || item.Find("CATEGORY"));
}

bool Accepts(ScenarioItemKind parent, bool isIndexEntry, bool isJunction, ScenarioItemKind child) {
    const auto isOneOf = [child](std::initializer_list<ScenarioItemKind> kinds) {
        return std::find(kinds.begin(), kinds.end(), child) != kinds.end();
    };
    switch (parent) {
    case KindScenario:
        return !isIndexEntry &&
               isOneOf({KindEvaluation, KindGeneralParameters, KindInclude, KindRule, KindTask, KindVariable});
    case KindInclude:
        return !isIndexEntry && isOneOf({KindRule, KindScenario, KindTask, KindVariable});
    case KindEvaluation:
        return !isIndexEntry && isOneOf({KindRule, KindScenario, KindTask, KindVariable, KindCriteria});
    case KindTask:
    case KindCriteria:
        return isOneOf({KindRule, KindTask, KindVariable});
    case KindRule:
        return isOneOf({KindAction, KindElseAction, KindCondition});
    case KindCondition:
        return isJunction ? child == KindCondition : isOneOf({KindParameter, KindReturn, KindFunction});
    case KindAction:
    case KindElseAction:
    case KindFunction:
        return isOneOf({KindParameter, KindReturn, KindFunction});
    case KindParameter:
    case KindReturn:
        return child == KindFunction;
    case KindVariable:
    case KindEnum:
        return false;
    case KindEnumTab:
        return child == KindEnum;
    case KindGroup:
    case KindProgram:
        return isOneOf({KindGroup, KindScenario});
    default:
        return true; // a folder, settings, and what is of no known kind
    }
}

namespace {

// The next byte that is no ASCII. Most texts have none, so eight bytes are looked at together.
std::size_t SkipAscii(std::string_view text, std::size_t at) {
    constexpr std::uint64_t kHighestBits = 0x8080808080808080;
    for (std::uint64_t group = 0; text.size() - at >= sizeof group; at += sizeof group) {
        std::memcpy(&group, text.data() + at, sizeof group);
        if ((group & kHighestBits) != 0) break;
    }
    while (at < text.size() && (text[at] & '\x80') == 0) ++at;
    return at;
}

} // namespace

bool IsNoUtf8(std::string_view text, std::size_t at) {
    return (text[at] & '\x80') != 0 && Commons::TextPlaces::CharacterLength(text, at) == 1;
}

std::size_t FindOtherEncoding(std::string_view text) {
    for (std::size_t at = SkipAscii(text, 0); at < text.size();
         at = SkipAscii(text, at + Commons::TextPlaces::CharacterLength(text, at)))
        if (IsNoUtf8(text, at)) return at;
    return std::string_view::npos;
}

std::vector<std::pair<std::size_t, std::size_t>> PartsInOtherEncoding(std::string_view text) {
    std::vector<std::pair<std::size_t, std::size_t>> parts;
    bool hasUtf8 = false;
    std::size_t row = 0; // of the last part, where it begins
    for (std::size_t at = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0; at < text.size();) {
        const std::size_t ascii = SkipAscii(text, at);
        if (const std::size_t feed = text.substr(at, ascii - at).rfind('\n'); feed != std::string_view::npos)
            row = at + feed;
        at = ascii;
        if (at == text.size()) break;
        if (!IsNoUtf8(text, at)) {
            hasUtf8 = true;
            at += Commons::TextPlaces::CharacterLength(text, at);
            continue;
        }
        const std::size_t begin = at;
        while (at < text.size() && IsNoUtf8(text, at)) ++at;
        if (parts.empty() || parts.back().first < row) parts.emplace_back(begin, at);
    }
    if (!hasUtf8 && parts.size() > 1) parts.resize(1);
    return parts;
}

std::string LikelyEncoding(std::string_view text) {
    if (text.starts_with("\xFF\xFE")) return "UTF-16LE";
    if (text.starts_with("\xFE\xFF")) return "UTF-16BE";
    const auto ending = [&](std::size_t from) {
        std::size_t nuls = 0;
        for (std::size_t at = from; at < text.size(); at += 2) nuls += text[at] == '\0' ? 1U : 0U;
        return nuls * 4 > text.size();
    };
    if (ending(1)) return "UTF-16LE";
    if (ending(0)) return "UTF-16BE";
    // Of the bytes that the two differ in, the older standard has control characters only.
    for (const char c : text)
        if (static_cast<unsigned char>(c) >= 0x80 && static_cast<unsigned char>(c) < 0xA0) return "WINDOWS-1252";
    return "ISO-8859-1";
}

std::string ConversionHelp(std::string_view text) {
    const std::string command = "iconv -f " + LikelyEncoding(text) + " -t UTF-8 OLD > NEW";
    bool hasUtf8 = false;
    for (std::size_t at = kByteOrderMark.size(); at < text.size(); at += Commons::TextPlaces::CharacterLength(text, at))
        hasUtf8 = hasUtf8 || Commons::TextPlaces::CharacterLength(text, at) > 1;
    return hasUtf8 ? "Write these characters in UTF-8, as the others of the file are; of a file that has no others, " +
                         command + " makes one in UTF-8."
                   : "Convert the file to UTF-8: " + command;
}

class TreeBuilder {
public:
    TreeBuilder(ScriptTree& target) : tree(target), text(target.Source().View()) {}

    void Build() {
        if (!LookAtBytes()) return;
        SplitRows();
        const bool isBlank = std::all_of(rows.begin(), rows.end(), [](const Row& row) { return row.IsBlank(); });
        if (isBlank) {
            if (!HasFault("TV1016")) Add("TV1020", 0, 0, "there is no item in the text");
            return;
        }
        isPlain = StandsPlain();
        std::size_t row = 0;
        while (row < rows.size() && !isEnded) Take(row++);
        if (isEnded) EndText(row);
        Finish();
        PlaceBytes();
    }

private:
    Fault& Add(const char* rule, std::size_t begin, std::size_t end, std::string message, bool isTaken = false) {
        Fault fault;
        fault.rule = rule;
        fault.begin = begin;
        fault.end = end;
        fault.message = std::move(message);
        fault.item = open.empty() ? nullptr : open.back();
        fault.isTaken = isTaken;
        tree.faults.push_back(std::move(fault));
        return tree.faults.back();
    }
    bool HasFault(std::string_view rule) const {
        return std::any_of(tree.faults.begin(), tree.faults.end(),
                           [&](const Fault& fault) { return fault.rule == rule; });
    }

    // Encodings and NULs. False when nothing more is to be said.
    bool LookAtBytes() {
        const std::size_t nul = text.find('\0');
        const auto nuls = static_cast<std::size_t>(
            std::count(text.begin() + static_cast<std::ptrdiff_t>(std::min(nul, text.size())), text.end(), '\0'));
        const bool isWide = nuls * 4 > text.size();
        const std::vector<std::pair<std::size_t, std::size_t>> parts = PartsInOtherEncoding(text);
        const bool isOther = isWide || !parts.empty();
        const std::string encoding = isOther ? LikelyEncoding(text) : std::string();
        const std::string help = isOther ? ConversionHelp(text) : std::string();
        const auto tell = [&](std::size_t begin, std::size_t end) {
            // Values are taken as they are; the reader looks at no byte of them.
            Fault& fault = Add("TV1017", begin, end, "the text is no UTF-8; it is likely " + encoding, true);
            fault.help = help;
        };
        if (isWide) {
            tell(0, 0); // all of it is
            if (!parts.empty()) std::tie(tree.faults.back().begin, tree.faults.back().end) = parts.front();
            tree.faults.back().isTaken = false;
            tree.isOtherEncoding = true;
            return false;
        }
        for (const auto& [begin, end] : parts) tell(begin, end);
        for (std::size_t at = nul; at != std::string_view::npos; at = text.find('\0', at + 1))
            Add("TV1016", at, at + 1, "a NUL character stands in the text");
        if (text.starts_with(kByteOrderMark))
            Add("TV1003", 0, 0, "a byte order mark stands before the header; a text begins with TYPEOF");
        return true;
    }

    // Where characters are wrong is known before there are items.
    void PlaceBytes() {
        for (Fault& fault : tree.faults)
            if (std::string_view(fault.rule) == "TV1016" || std::string_view(fault.rule) == "TV1017")
                fault.item = tree.ItemAt(fault.begin);
    }

    void SplitRows() {
        rows.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1);
        std::size_t at = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
        while (at < text.size()) {
            const std::size_t feed = std::min(text.find('\n', at), text.size());
            AddRows(at, feed, 0);
            at = feed + 1;
        }
    }

    // For the reader a tab begins another line. Here that is so where what stands before it is no attribute and no
    // header, which look at their tabs themselves.
    void AddRows(std::size_t at, std::size_t feed, unsigned indent) {
        Row row{};
        row.indent = indent;
        row.isSplit = indent > 0;
        std::size_t begin = at;
        while (begin < feed && IsLineSeparator(text[begin])) {
            if (text[begin] == '\t') ++row.indent;
            ++begin;
        }
        row.blanks = begin;
        while (begin < feed && (text[begin] == ' ' || IsLineSeparator(text[begin]))) ++begin;
        while (feed > row.blanks && IsLineSeparator(text[feed - 1])) --feed;
        if (feed == row.blanks) return;
        row.begin = std::min(begin, feed);
        row.end = feed;
        const std::string_view line = LineOf(row);
        row.form = line.empty() ? Form::Other : FormOf(line);
        if (row.form != Form::Attribute && row.form != Form::Header) {
            const std::size_t tab = line.find('\t');
            const std::size_t more = tab == std::string_view::npos ? tab : line.find_first_not_of("\t\r\f", tab);
            if (more != std::string_view::npos && FormOf(line.substr(more)) != Form::Other) {
                row.end = row.begin + tab;
                row.form = FormOf(LineOf(row));
                rows.push_back(row);
                return AddRows(row.end, feed, row.indent + 1);
            }
        }
        rows.push_back(row);
    }

    std::string_view LineOf(const Row& row) const { return text.substr(row.begin, row.end - row.begin); }

    // Whether headers and braces alone make a tree in which each item stands where one of its kind may, so that the
    // indentation need not be asked.
    bool StandsPlain() {
        struct Level {
            ScenarioItemKind kind;
            bool isJunction;
        };
        std::vector<Level> levels;
        bool isHeader = false;
        bool isAtEnd = false;
        for (const Row& row : rows) {
            if (row.IsBlank()) continue;
            if (isAtEnd) return FollowsIndent();
            if (isHeader != (row.form == Form::Open)) return false;
            isHeader = row.form == Form::Header;
            if (isHeader) {
                const std::string_view line = LineOf(row);
                const Level level{KindIn(line), line.ends_with("(AND)") || line.ends_with("(OR)")};
                const bool fits = levels.empty() || level.kind == KindNone ||
                                  Accepts(levels.back().kind, false, levels.back().isJunction, level.kind);
                if (!fits && IsIndented() && !FollowsIndent()) return false;
                levels.push_back(level);
            }
            if (row.form != Form::Close) continue;
            if (!levels.empty()) levels.pop_back();
            isAtEnd = levels.empty();
        }
        return isAtEnd && !isHeader;
    }

    static ScenarioItemKind KindIn(std::string_view header) {
        const std::size_t begin = std::min(header.find_first_not_of(" \t", kHeaderWord.size()), header.size());
        const std::size_t end = std::min(header.find_first_of(" (\t", begin), header.size());
        return KindFromKeyword(std::string(header.substr(begin, end - begin)));
    }

    // Whether each closing brace up to the end of the first item stands as deep as its header.
    bool FollowsIndent() const {
        std::vector<unsigned> headers;
        for (const Row& row : rows) {
            if (row.form == Form::Header)
                headers.push_back(row.IsDepthShown() || headers.empty() ? row.indent : headers.back() + 1);
            if (row.form != Form::Close) continue;
            if (headers.empty() || (row.IsDepthShown() && headers.back() != row.indent)) return false;
            headers.pop_back();
            if (headers.empty()) return true;
        }
        return false;
    }

    // Whether blocks are indented by their depth, all but a few lines of them.
    bool IsIndented() {
        if (indentation) return *indentation;
        std::size_t blocks = 0;
        std::size_t indented = 0;
        for (std::size_t at = 0; at + 1 < rows.size(); ++at) {
            if (rows[at].form != Form::Open || rows[at + 1].IsBlank() || rows[at + 1].form == Form::Close) continue;
            ++blocks;
            if (rows[at + 1].indent == rows[at].indent + 1) ++indented;
        }
        constexpr std::size_t kTenths = 10;
        constexpr std::size_t kEnough = 7;
        indentation = blocks > 0 && indented * kTenths >= blocks * kEnough;
        return *indentation;
    }

    // Closes what the indentation of a line shows to have ended above it.
    void CloseAbove(const Row& row) {
        if (isPlain || !row.IsDepthShown() || !IsIndented()) return;
        while (open.size() > 1 && indents.back() >= row.indent) NotClosed(row.begin);
    }

    bool IsOpenNext(std::size_t number) const {
        for (++number; number < rows.size(); ++number)
            if (!rows[number].IsBlank()) return rows[number].form == Form::Open;
        return false;
    }

    void Take(std::size_t number) {
        const Row& row = rows[number];
        if (row.begin > row.blanks) {
            AddBlanks(row.blanks, row.begin);
            if (row.IsBlank()) return;
        }
        const Form form = row.form;
        const Row* const previous = std::exchange(taken, &row);
        if (form == Form::Other && TakeBrokenBrace(row, number)) return;
        if (awaitsBrace && form == Form::Other) return Unknown(row.begin, row.end);
        if (awaitsBrace && form != Form::Open) MissingBrace();
        if (form == Form::Header && previous) LeaveOutDoubled(row, *previous);
        if (form == Form::Open) return TakeOpen(row, previous);
        if (form == Form::Close) return TakeClose(row);
        if (form == Form::Header) return TakeHeader(row);
        if (form == Form::Attribute) CloseAbove(row);
        if (form == Form::Attribute || !IsOpenNext(number)) return TakeLine(row.begin, row.end);
        // It was meant for a header: what follows stands in an item of its own.
        Unknown(row.begin, row.end);
        Drop(row);
        awaitsBrace = true;
    }

    // A header that is written twice, one below the other, begins one item. The first has its finding.
    void LeaveOutDoubled(const Row& row, const Row& previous) {
        if (previous.form != Form::Header || open.size() < 2 || previous.indent != row.indent) return;
        if (open.back()->begin != previous.begin || LineOf(previous) != LineOf(row)) return;
        open.pop_back();
        indents.pop_back();
        open.back()->children.RemoveLast();
    }

    // A line that was a brace, with some sign before it or in its place: it is told, and counts as the brace.
    bool TakeBrokenBrace(const Row& row, std::size_t number) {
        const std::string_view line = LineOf(row);
        constexpr std::size_t kLongest = 3;
        if (line.size() > kLongest || open.empty()) return false;
        std::size_t next = number + 1;
        while (next < rows.size() && rows[next].IsBlank()) ++next;
        const auto standsFor = [&](char brace, Form form) {
            if (line.find(brace) != std::string_view::npos) return true;
            const bool isReplaced = line.size() == 1 && !isPlain && row.IsDepthShown() && row.indent == indents.back();
            return isReplaced && IsIndented() && next < rows.size() &&
                   (rows[next].form != form || rows[next].indent != row.indent);
        };
        const bool isOpen = awaitsBrace && standsFor('{', Form::Open);
        const bool isClose = !awaitsBrace && standsFor('}', Form::Close);
        if (!isOpen && !isClose) return false;
        Unknown(row.begin, row.end);
        if (isOpen) {
            awaitsBrace = false;
        } else {
            open.back()->closing = row.begin;
            Close();
        }
        return true;
    }

    // An item whose header is lost. It counts as present, and so does what stands in it.
    void Drop(const Row& row) {
        Item* const made = tree.NewItem();
        made->begin = made->keywordBegin = made->nameBegin = row.begin;
        made->headerEnd = row.end;
        made->isDropped = made->isMalformed = true;
        const std::string_view line = LineOf(row);
        for (std::size_t at = 0; at < line.size() && made->kind == KindNone;) {
            const std::size_t end = std::min(line.find_first_of(" (\t", at), line.size());
            made->kind = KindFromKeyword(std::string(line.substr(at, end - at)));
            if (made->kind != KindNone) made->keyword = line.substr(at, end - at);
            at = end + 1;
        }
        const std::size_t opening = line.find('(');
        const std::size_t closing = line.find(')', std::min(opening, line.size()));
        if (made->kind != KindNone && closing != std::string_view::npos) {
            made->name = made->seenName = line.substr(opening + 1, closing - opening - 1);
            made->nameBegin = row.begin + opening + 1;
        }
        Enter(*made, row);
    }

    void Enter(Item& made, const Row& row) {
        const unsigned indent = row.IsDepthShown() || indents.empty() ? row.indent : indents.back() + 1;
        made.parent = open.empty() ? nullptr : open.back();
        made.depth = static_cast<unsigned>(open.size()) + 1;
        made.closing = text.size();
        if (open.empty())
            tree.root = &made;
        else
            open.back()->children.Append(tree.memory, &made);
        indents.push_back(indent);
        open.push_back(&made);
    }

    void MissingBrace() {
        awaitsBrace = false;
        Item& item = *open.back();
        lacksBrace = &item;
        // It stands above the header, and is told there.
        if (item.parent && item.parent->children.size() > 1) {
            const Item& above = *item.parent->children.rbegin()[1];
            if (IsBareBrace(above) && above.closing == item.begin && above.children.empty()) return;
        }
        Fault& fault =
            Add("TV1004", item.headerEnd, item.headerEnd, "the opening brace of " + item.Title() + " is missing");
        fault.fixTitle = "put the brace below the header";
        fault.fixBegin = fault.fixEnd = item.headerEnd;
        fault.fixText = "\n" + std::string(indents.back(), '\t') + "{";
        // One that stands behind the header is moved.
        const std::size_t brace = text.find_first_not_of(" \t", item.headerEnd);
        if (brace < text.size() && text[brace] == '{' &&
            text.find_first_not_of(" \t\r", brace + 1) == text.find('\n', brace))
            fault.fixEnd = brace + 1;
    }

    void TakeOpen(const Row& row, const Row* previous) {
        if (!awaitsBrace) {
            const bool isAsDeep = !isPlain && row.IsDepthShown() && IsIndented() && !indents.empty();
            // One that was missed stands further down.
            if (isAsDeep && open.back() == lacksBrace && row.indent == indents.back() && lacksBrace->children.empty()) {
                lacksBrace = nullptr;
                Trailing(row.begin + 1, row.end);
                return;
            }
            // The same brace once more, just as deep, begins nothing.
            const bool isRepeated =
                isAsDeep && previous && previous->form == Form::Open && previous->indent == row.indent;
            if (!isRepeated) CloseAbove(row);
            Unknown(row.begin, row.begin + 1, "a brace without a header");
            if (tree.root && !isRepeated) Drop(row);
            return;
        }
        awaitsBrace = false;
        Trailing(row.begin + 1, row.end);
    }

    // What stands after a brace or a header is passed over by the reader up to the next tab.
    void Trailing(std::size_t begin, std::size_t end) {
        while (begin < end && text[begin] == ' ') ++begin;
        std::size_t stop = begin;
        while (stop < end && !IsLineSeparator(text[stop])) ++stop;
        std::size_t shown = stop;
        while (shown > begin && text[shown - 1] == ' ') --shown;
        if (shown > begin)
            Add("TV1013", begin, shown, "what stands here is passed over, and lost when the text is saved", true);
        // A tab begins another line.
        while (stop < end && IsLineSeparator(text[stop])) ++stop;
        if (stop == end) return;
        std::size_t line = stop;
        while (line < end && (text[line] == ' ' || IsLineSeparator(text[line]))) ++line;
        if (line > stop) AddBlanks(stop, line);
        if (line < end) TakeLine(line, end);
    }

    void AddBlanks(std::size_t begin, std::size_t end) {
        Fault& fault = Add("TV1009", begin, end, "a blank stands before the line; only tabs may stand there");
        fault.fixTitle = "remove the blanks";
        fault.fixBegin = begin;
        fault.fixEnd = end;
    }

    void TakeClose(const Row& row) {
        if (open.empty()) {
            SurplusBrace(row);
            return;
        }
        if (!isPlain && row.IsDepthShown() && IsIndented()) {
            if (row.indent > indents.back() || EndsTooEarly(row)) {
                SurplusBrace(row);
                return;
            }
            // The brace of an item further out shows that those within it are not closed.
            const bool belongsToOuter =
                std::find(indents.begin(), indents.end(), row.indent) != indents.end() && row.indent < indents.back();
            if (belongsToOuter)
                while (open.size() > 1 && indents.back() > row.indent) NotClosed(row.begin);
        }
        open.back()->closing = row.begin;
        Close();
        if (isEnded) {
            if (const std::size_t more = text.find_first_not_of(" \t\r\f", row.begin + 1); more < row.end)
                endsAt = more;
        } else if (!TakeJoinedBrace(row.begin + 1, row.end)) {
            Trailing(row.begin + 1, row.end);
        }
    }

    // A closing brace behind another line, where the item has no other one. The reader passes it over.
    bool TakeJoinedBrace(std::size_t begin, std::size_t end) {
        while (begin < end && text[begin] == ' ') ++begin;
        if (begin + 1 != end || text[begin] != '}' || open.empty() || isPlain || !IsIndented()) return false;
        for (std::size_t next = static_cast<std::size_t>(taken - rows.data()) + 1; next < rows.size(); ++next) {
            if (rows[next].IsBlank()) continue;
            if (rows[next].form == Form::Close && rows[next].indent == indents.back()) return false;
            break;
        }
        const std::size_t told = tree.faults.size();
        NotClosed(begin);
        if (tree.faults.size() > told) tree.faults.back().help = "Put the closing brace on a line of its own.";
        return true;
    }

    // Whether the brace would end the text from far within, and another one does so later.
    bool EndsTooEarly(const Row& row) const {
        if (open.size() < 3 || row.indent != indents.front()) return false;
        // From the end, so that many such braces find the last one at once.
        for (auto other = rows.rbegin(); other != rows.rend() && other->begin > row.begin; ++other)
            if (other->form == Form::Close && other->IsDepthShown() && other->indent == row.indent) return true;
        return false;
    }

    // What a brace without a header begins.
    bool IsBareBrace(const Item& item) const {
        return item.isDropped && item.keyword.empty() && text[item.begin] == '{';
    }
    void NotClosed(std::size_t at) {
        Item& item = *open.back();
        item.closing = at;
        // A brace without a header has its own finding.
        if (!IsBareBrace(item)) Add("TV1005", at, at, item.Title() + " is not closed").about = &item;
        Close();
    }

    void Close() {
        open.pop_back();
        indents.pop_back();
        if (open.empty()) isEnded = true;
    }

    void TakeHeader(const Row& row) {
        if (!isPlain && !open.empty()) {
            if (IsIndented())
                CloseAbove(row);
            else
                CloseWhatTakesNone(row);
        }
        ReadHeader(row);
    }

    // Without indentation the kinds show what is not closed: an item that cannot stand here can stand further out.
    void CloseWhatTakesNone(const Row& row) {
        const ScenarioItemKind kind = KindIn(LineOf(row));
        if (kind == KindNone) return;
        const auto takes = [&](const Item& item) {
            return Accepts(item.kind, item.IsIndexEntry(), IsJunction(item), kind);
        };
        std::size_t depth = open.size();
        while (depth > 0 && !takes(*open[depth - 1])) --depth;
        if (depth == 0) return;
        while (open.size() > depth) NotClosed(row.begin);
    }

    // What the reader takes for word and name; false when it takes none.
    bool SeenHeader(std::size_t begin, std::string& word, std::string_view& name) const {
        const std::string_view rest = text.substr(begin);
        if (!rest.starts_with("TYPEOF ")) return false;
        constexpr std::size_t kWordLimit = 256;
        constexpr std::size_t kNameLimit = 512;
        const std::size_t first = kHeaderWord.size() + 1;
        if (first >= rest.size() || rest[first] == '\0') return false;
        std::size_t at = first + 1;
        while (at < rest.size() && at < first + kWordLimit && rest[at] != ' ' && rest[at] != '\r' && rest[at] != '\0')
            ++at;
        if (at >= rest.size() || at >= first + kWordLimit || rest[at] == '\0') return false;
        word = rest.substr(first, at - first);
        name = {};
        if (rest[at] == '\r') return true;
        const std::size_t nameBegin = at + 2;
        if (nameBegin >= rest.size()) return false;
        std::size_t end = nameBegin + 1;
        while (end < rest.size() && end < nameBegin + kNameLimit && rest[end] != ')' && rest[end] != '\0') ++end;
        if (end >= rest.size() || end >= nameBegin + kNameLimit || rest[end] != ')') return false;
        name = rest.substr(nameBegin, end - nameBegin);
        return true;
    }

    void ReadHeader(const Row& row) {
        const std::string_view line = LineOf(row);
        Item& item = *tree.NewItem();
        item.begin = row.begin;
        item.depth = static_cast<unsigned>(open.size()) + 1;

        const char* what = nullptr; // is wrong with the header
        bool isNameless = false;    // and read all the same
        bool endsEarly = false;
        std::size_t faultBegin = 0;
        std::size_t faultEnd = 0;
        std::size_t fixEnd = 0;
        std::string fix;
        const auto isWrong = [&](const char* message, std::size_t begin, std::size_t end, const char* mended) {
            if (what) return;
            what = message;
            faultBegin = row.begin + begin;
            faultEnd = fixEnd = row.begin + end;
            fix = mended;
        };

        std::size_t at = kHeaderWord.size();
        const auto skipBlanks = [&] {
            const std::size_t begin = at;
            while (at < line.size() && (line[at] == ' ' || line[at] == '\t')) ++at;
            return at - begin;
        };
        std::size_t begin = at;
        const std::size_t blanksBefore = skipBlanks();
        if (at == line.size()) {
            isWrong("the header names no kind", line.size(), line.size(), "");
        } else if (blanksBefore == 0) {
            isWrong("the blank after TYPEOF is missing", begin, begin, " ");
        } else if (blanksBefore > 1 || line[begin] != ' ') {
            isWrong("one blank stands after TYPEOF, and no more", begin, at, " ");
        }
        item.keywordBegin = row.begin + at;
        begin = at;
        while (at < line.size() && IsKeyLetter(line[at])) ++at;
        // Whatever else stands there belongs to the word, up to a bracket.
        while (at < line.size() && line[at] != ' ' && line[at] != '\t' && line[at] != '(') ++at;
        item.keyword = line.substr(begin, at - begin);
        item.kind = KindFromKeyword(std::string(item.keyword));
        begin = at;
        const std::size_t blanks = skipBlanks();
        if (at == line.size()) {
            item.nameBegin = item.headerEnd = row.begin + begin;
            // A carriage return after the word makes a header without a name.
            const std::size_t after = row.begin + begin;
            isNameless = after < text.size() && text[after] == '\r' && !IsFoundByName(item.kind);
            if (!isNameless) isWrong("the name in brackets is missing", begin, begin, " (1)");
        } else {
            if (blanks == 0)
                isWrong("the blank before the bracket is missing", begin, begin, " ");
            else if (blanks > 1 || line[begin] != ' ')
                isWrong("one blank stands before the bracket, and no more", begin, at, " ");
            char closing = ')';
            if (line[at] == '(') {
                ++at;
            } else if (line[at] == '[' || line[at] == '{' || line[at] == '<') {
                const std::string_view signs = "[]{}<>";
                const char other = signs[signs.find(line[at]) + 1];
                const std::size_t last = line.find(other, at);
                const bool isPair = last != std::string_view::npos && line.find(')', at) == std::string_view::npos;
                const bool isFirst = !what;
                isWrong("the name stands in round brackets", at, at + 1, "(");
                ++at;
                if (isPair) closing = other;
                if (isPair && isFirst) {
                    fixEnd = row.begin + last + 1;
                    fix += std::string(line.substr(at, last - at)) + ")";
                }
            } else {
                isWrong("the bracket before the name is missing", at, at, "(");
            }
            item.nameBegin = row.begin + at;
            std::size_t bracket = line.find(closing, at);
            if (bracket == at && line.find(closing, at + 1) == std::string_view::npos) {
                isWrong("the name between the brackets is missing", at, at, "1");
            } else if (bracket == at) {
                bracket = line.find(closing, at + 1); // as the reader takes it
            }
            if (bracket == std::string_view::npos) {
                std::size_t end = line.size();
                while (end > at && (line[end - 1] == ' ' || line[end - 1] == '\t')) --end;
                isWrong("the bracket after the name is missing", end, end, ")");
                item.name = line.substr(at, end - at);
                item.headerEnd = row.begin + end;
            } else {
                item.name = line.substr(at, bracket - at);
                item.headerEnd = row.begin + bracket + 1;
            }
        }

        // A tab ends the line, and what follows it is taken for the next one.
        if (const std::size_t tab = line.substr(0, item.headerEnd - row.begin).find('\t', kHeaderWord.size());
            tab != std::string_view::npos) {
            isWrong("a tab stands in the header and ends it", tab, tab + 1, " ");
            endsEarly = true;
        }

        std::string seenWord;
        const bool isSeen = SeenHeader(row.begin, seenWord, item.seenName);
        if (!isSeen) item.seenName = item.name;
        item.isMalformed = what != nullptr;
        if (what) {
            // The reader goes on with another name, where names are free.
            const bool isTaken =
                isSeen && !endsEarly && KindFromKeyword(seenWord) == item.kind && item.kind != KindNone;
            Fault& fault = Add("TV1003", faultBegin, faultEnd, what, isTaken);
            fault.key = row.begin;
            const bool isNameKnown = !item.name.empty() || !IsFoundByName(item.kind);
            if (isNameKnown) fault.fixTitle = "write the header as it is read";
            fault.fixBegin = faultBegin;
            fault.fixEnd = fixEnd;
            fault.fixText = fix;
        }
        if (!HasItems(item.kind)) {
            item.isDropped = true;
            if (!what) UnknownKind(item);
        } else if (isNameless && !what) {
            Fault& fault = Add("TV1003", item.headerEnd, item.headerEnd,
                               "the name in brackets is missing, and only the carriage return makes it a header");
            fault.isNote = fault.isTaken = true;
            fault.key = row.begin;
            fault.help = "Give the item a name; with bare line feeds the text cannot be read without one.";
        }
        if (item.depth > kDeepestItem && !HasFault("TV1015"))
            Add("TV1015", item.keywordBegin, item.headerEnd,
                "blocks are nested more than " + std::to_string(kDeepestItem) + " deep");

        const std::size_t after = item.headerEnd;
        Enter(item, row);
        awaitsBrace = true;
        const std::size_t more = text.find_first_not_of(" \t", after);
        if (after < row.end && (more >= row.end || text[more] != '{')) Trailing(after, row.end);
    }

    void UnknownKind(const Item& item) {
        const std::string word(item.keyword);
        const std::size_t end = item.keywordBegin + word.size();
        if (item.kind != KindNone) {
            Add("TV1002", item.keywordBegin, end, "items of kind " + word + " stand in no text");
            return;
        }
        const std::string near = NearestName(word, KindWords());
        Fault& fault =
            Add("TV1002", item.keywordBegin, end,
                "\"" + word + "\" is no kind of item" + (near.empty() ? "" : ", did you mean \"" + near + "\""));
        if (near.empty()) return;
        fault.fixTitle = "replace \"" + word + "\" by \"" + near + "\"";
        fault.fixBegin = item.keywordBegin;
        fault.fixEnd = end;
        fault.fixText = near;
        fault.fixIsSafe = OnlyOneLetterAway(word, KindWords()) == near;
    }

    void SurplusBrace(const Row& row) {
        Unknown(row.begin, row.begin + 1, kSurplusBrace);
        tree.faults.back().help = "Remove the brace, or write the header that it belongs to.";
    }

    void Unknown(std::size_t begin, std::size_t end, std::string message = "") {
        if (message.empty())
            message = open.empty() ? "the text does not begin with the header of an item"
                                   : "the line is neither an attribute of " + open.back()->Title() +
                                         " nor the header of an item";
        Add("TV1001", begin, end, std::move(message));
    }

    // An attribute, or nothing that is known; and what stands after a tab on its line.
    void TakeLine(std::size_t begin, std::size_t end) {
        const std::string_view line = text.substr(begin, end - begin);
        // Behind an equals sign in the key stands another one, with the value.
        const std::size_t sign = line.find('=');
        const bool isKeyBroken =
            sign + 1 < line.size() && line[sign + 1] != '"' && line.find("=\"", sign + 1) != std::string_view::npos;
        if (FormOf(line) != Form::Attribute || isKeyBroken || open.empty()) {
            std::size_t stop = end;
            while (stop > begin && (text[stop - 1] == ' ' || text[stop - 1] == '\t')) --stop;
            Unknown(begin, stop);
            if (!open.empty()) KeepLost(begin, stop);
            return;
        }
        Attribute attribute;
        attribute.keyBegin = begin;
        const std::size_t equals = line.find('=');
        attribute.key = line.substr(0, equals);
        const std::size_t first = equals + 1; // where the quote belongs
        const bool hasOpening = first < line.size() && line[first] == '"';
        const std::size_t from = hasOpening ? first + 1 : first;
        const std::size_t quote = line.find('"', from);
        attribute.valueBegin = begin + from;
        if (quote == std::string_view::npos) {
            attribute.valueEnd = end;
            attribute.isBroken = true;
            Keep(attribute);
            Fault& fault = Add("TV1007", end, end,
                               "the value of " + std::string(attribute.key) +
                                   (hasOpening ? " has no closing quote" : " has no quotes"));
            fault.fixTitle = hasOpening ? "put the closing quote" : "put the quotes";
            fault.fixBegin = hasOpening ? end : begin + first;
            fault.fixEnd = end;
            fault.fixText = hasOpening ? "\"" : "\"" + std::string(line.substr(first)) + "\"";
            fault.fixIsSafe = hasOpening;
            fault.key = begin;
            return;
        }
        attribute.valueEnd = begin + quote;
        if (!hasOpening) {
            attribute.isBroken = true;
            Keep(attribute);
            Fault& fault = Add("TV1007", begin + first, begin + first,
                               "the value of " + std::string(attribute.key) + " has no opening quote");
            fault.fixTitle = "put the opening quote";
            fault.fixBegin = fault.fixEnd = begin + first;
            fault.fixText = "\"";
            fault.key = begin;
            return;
        }
        // What follows the quote: nothing, another line after a tab, more of the value, or something else.
        std::size_t after = quote + 1;
        while (after < line.size() && line[after] == ' ') ++after;
        const bool hasTab = line.substr(from, quote - from).find('\t') != std::string_view::npos;
        const std::size_t last = line.rfind('"');
        const std::string_view rest = line.substr(after);
        const bool isNextLine =
            !rest.empty() && rest.front() == '\t' &&
            FormOf(rest.substr(std::min(rest.find_first_not_of('\t'), rest.size() - 1))) != Form::Other;
        if (!isNextLine && last != quote && LastIsQuote(line)) {
            attribute.valueEnd = begin + last;
            attribute.isBroken = true;
            Keep(attribute);
            Add("TV1008", attribute.valueBegin, attribute.valueEnd,
                "a quote stands inside the value of " + std::string(attribute.key) + " and ends it")
                .key = begin;
            return;
        }
        if (hasTab) attribute.isBroken = true;
        Keep(attribute);
        if (hasTab) {
            Fault& fault = Add("TV1008", attribute.valueBegin, attribute.valueEnd,
                               "a tab stands inside the value of " + std::string(attribute.key) + " and ends the line");
            fault.fixTitle = "write blanks in place of the tabs";
            fault.fixBegin = fault.begin;
            fault.fixEnd = fault.end;
            fault.fixText = attribute.value;
            std::replace(fault.fixText.begin(), fault.fixText.end(), '\t', ' ');
        }
        if (rest.empty() || TakeJoinedBrace(begin + after, end)) return;
        if (rest.front() != '\t' && quote + 1 == after) {
            Add("TV1008", attribute.valueBegin, end,
                "a quote stands inside the value of " + std::string(attribute.key) + " and ends it", true);
            if (!open.back()->attributes.empty()) open.back()->attributes.Last().isBroken = true;
            return;
        }
        Trailing(begin + after, end);
    }

    static bool LastIsQuote(std::string_view line) {
        const std::size_t last = line.find_last_not_of(" \t");
        return last != std::string_view::npos && line[last] == '"';
    }

    // What the line says is not known; which key it has counts as present.
    void KeepLost(std::size_t begin, std::size_t end) {
        Attribute attribute;
        attribute.isLost = attribute.isBroken = true;
        attribute.keyBegin = begin;
        const std::size_t quote = std::min(text.find('"', begin), end);
        attribute.valueBegin = std::min(quote + 1, end);
        attribute.valueEnd = std::min(text.find('"', attribute.valueBegin), end);
        Keep(attribute);
    }

    void Keep(Attribute& attribute) {
        attribute.value = text.substr(attribute.valueBegin, attribute.valueEnd - attribute.valueBegin);
        open.back()->attributes.Append(tree.memory, attribute);
    }

    // `row` is the first one after that of the last brace.
    void EndText(std::size_t row) {
        while (row < rows.size() && rows[row].IsBlank()) ++row; // blanks are no text
        if (endsAt == std::string_view::npos && row == rows.size()) return;
        const std::size_t begin =
            std::min<std::size_t>(endsAt, row < rows.size() ? std::size_t(rows[row].begin) : text.size());
        std::size_t end = rows.back().end;
        while (end > begin && std::string_view(" \t\r\f\n").find(text[end - 1]) != std::string_view::npos) --end;
        if (end > begin) Add("TV1006", begin, end, "the reader does not see what stands after the last brace", true);
    }

    void Finish() {
        if (awaitsBrace) MissingBrace();
        while (!open.empty()) NotClosed(text.size());
        // A brace too many may just end the text earlier than its author thinks.
        if (isPlain || !ReadsByBraces()) return;
        for (Fault& fault : tree.faults)
            if (fault.message == kSurplusBrace) fault.isTaken = true;
    }

    // Whether the braces as they stand, too many or too few, make a tree that the reader takes.
    bool ReadsByBraces() const {
        std::vector<ScenarioItemKind> levels;
        bool isHeader = false;
        for (const Row& row : rows) {
            if (isHeader != (row.form == Form::Open) || row.form == Form::Other) return false;
            isHeader = row.form == Form::Header;
            if (isHeader) {
                const ScenarioItemKind kind = KindIn(LineOf(row));
                const bool isJunction = false;
                if (!levels.empty() && !Accepts(levels.back(), false, isJunction, kind)) return false;
                levels.push_back(kind);
            }
            if (row.form != Form::Close) continue;
            if (levels.empty()) return false;
            levels.pop_back();
            if (levels.empty()) return true;
        }
        return false;
    }

    ScriptTree& tree;
    const std::string_view text;
    std::vector<Row> rows;
    std::vector<Item*> open;
    std::vector<unsigned> indents; // of the headers of `open`
    bool awaitsBrace = false;
    const Item* lacksBrace = nullptr; // the last one of which that is told
    const Row* taken = nullptr;       // the last one that holds something
    bool isEnded = false;
    std::size_t endsAt = std::string_view::npos; // where text stands after the last brace on its row
    bool isPlain = false;
    std::optional<bool> indentation;
};

ScriptTree::ScriptTree(std::shared_ptr<const Text> source) : text(std::move(source)) { TreeBuilder(*this).Build(); }

const Item* ScriptTree::ItemAt(std::size_t position) const {
    const auto holds = [&](const Item* item) { return item && item->begin <= position && position <= item->closing; };
    const Item* item = holds(root) ? root : nullptr;
    while (item) {
        const auto after = std::partition_point(item->children.begin(), item->children.end(),
                                                [&](const Item* child) { return child->begin <= position; });
        if (after == item->children.begin() || !holds(after[-1])) break;
        item = after[-1];
    }
    return item;
}

Item* ScriptTree::NewItem() {
    static_assert(std::is_trivially_destructible_v<Item>);
    Item* const item = new (memory.allocate(sizeof(Item), alignof(Item))) Item;
    item->text = text.get();
    return item;
}

} // namespace TavrelChecking
