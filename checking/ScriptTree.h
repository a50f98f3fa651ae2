#ifndef CHECKING_SCRIPTTREE_H
#define CHECKING_SCRIPTTREE_H

#include <cstddef>
#include <memory>
#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <scenario/ItemText.h>

#include "Text.h"

namespace TavrelChecking {

struct Item;
class ScriptTree;

// A line KEY="VALUE" of an item. Positions are bytes of the text.
struct Attribute {
    std::string_view key;
    std::size_t keyBegin = 0;
    std::size_t valueBegin = 0; // as its author means it: between the quotes on its line
    std::size_t valueEnd = 0;
    std::string_view value;
    // What the reader takes for the value; nothing when it takes none. Another one than `value` if the line is broken.
    std::optional<std::string_view> seen;
    bool isBroken = false; // and has its own finding
    bool isLost = false;   // the line is no attribute, and begins like one: `key` is empty
    // The key that its author meant, as the checks find out, where the line has another one.
    mutable std::string_view meant;

    std::size_t KeyEnd() const { return keyBegin + key.size(); }
};

// An item of a text that may be broken: what its author meant, as far as the lines show it.
struct Item {
    ScenarioItemKind kind = KindNone; // KindNone for a word that is no kind
    std::string_view keyword;
    std::string_view name;     // as it is meant
    std::string_view seenName; // as the reader takes it
    std::size_t begin = 0;     // of the header
    std::size_t keywordBegin = 0;
    std::size_t nameBegin = 0; // after the bracket
    std::size_t headerEnd = 0; // after the bracket, or the last character of the header
    std::size_t closing = 0;   // where the closing brace stands, or belongs
    bool isMalformed = false;  // the header has its own finding
    bool isDropped = false;    // it was passed over: of no known kind, or too deep
    unsigned depth = 1;
    Item* parent = nullptr;
    std::pmr::vector<Item*> children; // in the order of the text
    std::pmr::vector<Attribute> attributes;
    const Text* text = nullptr;

    // The memory is that of its tree.
    explicit Item(std::pmr::memory_resource* memory) : children(memory), attributes(memory) {}
    Item(const Item&) = delete;
    Item& operator=(const Item&) = delete;

    // The first attribute of that key, or meant for it; null if there is none.
    const Attribute* Find(std::string_view key) const;
    // Its value as it is meant; empty if there is none.
    std::string_view Value(std::string_view key) const;
    bool IsIndexEntry() const { return Value("ISA_INDEX") == "1"; }
    // "TASK (2)": what stands in its header.
    std::string Title() const;

    // What the checks find out about it.
    mutable const Item* model = nullptr; // its definition; itself for a definition

    mutable bool isMisplaced = false; // its parent takes none of its kind
    mutable bool isLost = false;      // read and not taken in
};

// "SCENARIO (1) / TASK (2)", with the item itself at the end.
std::string WayTo(const Item* item);

// A fault of a text: which rule, and where.
struct Fault {
    const char* rule = nullptr;
    std::size_t begin = 0;
    std::size_t end = 0;
    std::string message;
    std::string help;            // in place of the rule's remedy; empty for that
    const Item* item = nullptr;  // in which it stands; null at the top
    const Item* about = nullptr; // which begins elsewhere; null where the place itself shows that
    bool isTaken = false;        // the library takes it all the same, so it is no error
    bool isRefused = false;      // the library refuses it, though it takes most of that rule
    bool isNote = false;         // it is no more than a note
    bool isValidity = false;     // the text is read, and a part of it is not valid
    std::size_t key = kNoKey;    // where the key of its attribute begins, or its header, for a line that is broken
    // A change that mends it; no title for none.
    std::string fixTitle;
    std::size_t fixBegin = 0;
    std::size_t fixEnd = 0;
    std::string fixText;
    bool fixIsSafe = false;

    static constexpr std::size_t kNoKey = static_cast<std::size_t>(-1);
};

// A text as a tree, with the faults of its lines. Every text has one, however broken: lines that cannot be read are
// passed over, what is not closed is closed where the indentation or the next header shows it.
class ScriptTree {
public:
    explicit ScriptTree(std::shared_ptr<const Text> source);
    ScriptTree(const ScriptTree&) = delete;
    ScriptTree& operator=(const ScriptTree&) = delete;

    const Text& Source() const { return *text; }
    Item* Root() const { return root; }
    const std::vector<Fault>& Faults() const { return faults; }
    // The innermost item that holds the byte of the text; null if none does.
    const Item* ItemAt(std::size_t position) const;
    // Bytes that are no UTF-8, or a text of two bytes for each character: then nothing else is said of it.
    bool IsOtherEncoding() const { return isOtherEncoding; }

private:
    friend class TreeBuilder;
    Item* NewItem();

    std::shared_ptr<const Text> text;
    // Of all items and what they hold. It goes as a whole: no item is destroyed by itself, however deep it stands.
    std::pmr::monotonic_buffer_resource memory;
    Item* root = nullptr;
    std::vector<Fault> faults;
    bool isOtherEncoding = false;
};

// As the reader limits it.
constexpr unsigned kDeepestItem = 1000;

// Where the text ceases to be UTF-8, npos if it is throughout.
std::size_t FindOtherEncoding(std::string_view text);
// Whether the byte belongs to no character of UTF-8.
bool IsNoUtf8(std::string_view text, std::size_t at);
// The bytes that are no UTF-8, each part from its begin to its end. One part stands for all of a text that is in
// another encoding throughout; of one that holds characters of UTF-8 as well, the first part of each row.
std::vector<std::pair<std::size_t, std::size_t>> PartsInOtherEncoding(std::string_view text);
// The name of the encoding that the bytes most likely are in, as iconv knows it.
std::string LikelyEncoding(std::string_view text);
// The remedy, with the command that converts.
std::string ConversionHelp(std::string_view text);

// Whether a parent of the kind takes in children of the other one. `isJunction` for AND and OR.
bool Accepts(ScenarioItemKind parent, bool isIndexEntry, bool isJunction, ScenarioItemKind child);
bool IsJunction(const Item& item);
// Whether it is a variable whose number is lost with its header: it may be any that is looked for.
bool IsLostVariable(const Item& item);

} // namespace TavrelChecking

#endif
