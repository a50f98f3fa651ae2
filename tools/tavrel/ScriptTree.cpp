#include "ScriptTree.h"

#include <algorithm>

#include <fmt/format.h>

#include "Failure.h"

namespace tavrel {

namespace {

constexpr std::string_view kHeader = "TYPEOF ";
constexpr std::size_t kMostBlocks = 1000; // within one another, as for the library's reader

// Cuts a text into what the reader takes for lines: they end with a line feed, a carriage return, a form feed or a tab,
// and only line feeds count as rows.
class Scanner {
public:
    Scanner(std::string_view whole, const std::string& where) : text(whole.substr(0, whole.find('\0'))), place(where) {}

    TextItem ReadTop() {
        std::string_view line = NextLine();
        if (line.substr(0, kHeader.size()) != kHeader) Fail("here an item should begin");
        return ReadItem(line, 1);
    }

private:
    [[noreturn]] void Fail(const std::string& reason) const {
        throw Failure{ExitUnreadable, fmt::format("{}:{}: {}", place, row, reason)};
    }

    // The next line that is not empty; empty at the end. `row` is its row.
    std::string_view NextLine() {
        while (position < text.size() && IsEnd(text[position])) Step();
        const std::size_t begin = position;
        while (position < text.size() && !IsEnd(text[position])) ++position;
        return text.substr(begin, position - begin);
    }

    static bool IsEnd(char c) { return c == '\n' || c == '\r' || c == '\f' || c == '\t'; }

    void Step() {
        if (text[position] == '\n') ++row;
        ++position;
    }

    TextItem ReadItem(std::string_view header, std::size_t depth) {
        if (depth > kMostBlocks) Fail("the blocks are nested too deeply");
        TextItem item;
        item.row = row;
        header.remove_prefix(kHeader.size());
        const std::size_t bracket = header.find(" (");
        item.kind = header.substr(0, bracket);
        if (bracket != std::string_view::npos) {
            const std::string_view name = header.substr(bracket + 2);
            item.name = name.substr(0, name.find(')'));
        }
        if (NextLine().substr(0, 1) != "{") Fail("here the brace of " + item.Title() + " should open");
        for (;;) {
            const std::string_view line = NextLine();
            if (line.empty()) Fail(item.Title() + " is not closed");
            if (line[0] == '}') return item;
            if (line.substr(0, kHeader.size()) == kHeader)
                item.children.push_back(ReadItem(line, depth + 1));
            else
                item.attributes.push_back(Attribute(line));
        }
    }

    TextAttribute Attribute(std::string_view line) const {
        const std::size_t equals = line.find("=\"");
        if (equals == std::string_view::npos) return {std::string(line), "", row};
        const std::string_view value = line.substr(equals + 2);
        return {std::string(line.substr(0, equals)), std::string(value.substr(0, value.find('"'))), row};
    }

    std::string_view text;
    const std::string& place;
    std::size_t position = 0;
    std::uint32_t row = 1;
};

const std::string kNothing;

} // namespace

const std::string& TextItem::Value(std::string_view key) const {
    for (const TextAttribute& attribute : attributes)
        if (attribute.key == key) return attribute.value;
    return kNothing;
}

std::uint32_t TextItem::RowOf(std::string_view key) const {
    for (const TextAttribute& attribute : attributes)
        if (attribute.key == key) return attribute.row;
    return row;
}

std::string TextItem::Title() const { return name.empty() ? kind : fmt::format("{} ({})", kind, name); }

TextItem ReadTextTree(std::string_view text, const std::string& place) { return Scanner(text, place).ReadTop(); }

} // namespace tavrel
