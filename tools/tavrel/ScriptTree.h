#ifndef TAVREL_COMMAND_SCRIPTTREE_H
#define TAVREL_COMMAND_SCRIPTTREE_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

// A model or script as its text has it: blocks and their attributes with rows, nothing linked and nothing judged. For
// those who compare and search texts; the library's items know neither their rows nor what a file leaves to a model.

struct TextAttribute {
    std::string key;
    std::string value;
    std::uint32_t row; // in the text, from 1
};

struct TextItem {
    std::string kind; // the word after TYPEOF
    std::string name;
    std::uint32_t row = 1; // of the header
    std::vector<TextAttribute> attributes;
    std::vector<TextItem> children;

    // The value of a key; empty without it.
    const std::string& Value(std::string_view key) const;
    std::uint32_t RowOf(std::string_view key) const; // that of the header without the key
    // "RULE (1)"
    std::string Title() const;
};

// The top item of a text. Fails with a Failure of ExitUnreadable, "PLACE:ROW: reason", where the blocks of the text do
// not close or it has none.
TextItem ReadTextTree(std::string_view text, const std::string& place);

// Calls `look` for the item and all below it in the order of the text, with the way from the top, "SCENARIO (1) / RULE
// (2)", the item itself included.
template <class Look>
void ForEachItem(const TextItem& item, const Look& look, const std::string& way = "") {
    const std::string here = way.empty() ? item.Title() : way + " / " + item.Title();
    look(item, here);
    for (const TextItem& child : item.children) ForEachItem(child, look, here);
}

} // namespace tavrel

#endif
