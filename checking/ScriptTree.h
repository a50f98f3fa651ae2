#ifndef CHECKING_SCRIPTTREE_H
#define CHECKING_SCRIPTTREE_H

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <memory_resource>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include <scenario/ItemText.h>

#include "Text.h"

namespace TavrelChecking {

struct Item;
class ScriptTree;

// A byte of a text, in half the memory: no file that is looked at is too large for it, and a walk of a tree takes as
// long as its memory takes to pass by.
class Position {
public:
    constexpr Position(std::size_t byte = 0) : number(static_cast<std::uint32_t>(byte)) {}
    constexpr operator std::size_t() const { return number; }

private:
    std::uint32_t number;
};

// A list in the memory of its tree, which goes as a whole.
template <class T>
class TreeList {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    const T* begin() const { return first; }
    const T* end() const { return first + count; }
    auto rbegin() const { return std::reverse_iterator(end()); }
    auto rend() const { return std::reverse_iterator(begin()); }
    std::size_t size() const { return count; }
    bool empty() const { return count == 0; }
    const T* data() const { return first; }
    const T& operator[](std::size_t index) const { return first[index]; }
    T& Last() { return first[count - 1]; }

    void RemoveLast() { --count; }

    void Append(std::pmr::memory_resource& memory, const T& value) {
        if (count == capacity) {
            capacity = capacity == 0 ? 2 : 2 * capacity;
            T* const wider = static_cast<T*>(memory.allocate(capacity * sizeof(T), alignof(T)));
            std::uninitialized_copy_n(first, count, wider);
            first = wider;
        }
        new (first + count++) T(value);
    }

private:
    T* first = nullptr;
    std::uint32_t count = 0;
    std::uint32_t capacity = 0;
};

// A line KEY="VALUE" of an item.
struct Attribute {
    std::string_view key;
    std::string_view value; // as its author means it: between the quotes on its line
    // The key that its author meant, as the checks find out, where the line has another one.
    mutable std::string_view meant;
    Position keyBegin = 0;
    Position valueBegin = 0;
    Position valueEnd = 0;
    bool isBroken = false; // and has its own finding
    bool isLost = false;   // the line is no attribute, and begins like one: `key` is empty

    std::size_t KeyEnd() const { return keyBegin + key.size(); }
};

// An item of a text that may be broken: what its author meant, as far as the lines show it. What each walk of a tree
// asks for stands first, together.
struct Item {
    ScenarioItemKind kind = KindNone; // KindNone for a word that is no kind
    unsigned depth = 1;
    bool isMalformed = false; // the header has its own finding
    bool isDropped = false;   // it was passed over: of no known kind, or too deep
    // What the checks find out about it.
    mutable bool isMisplaced = false; // its parent takes none of its kind
    mutable bool isLost = false;      // read and not taken in
    Position begin = 0;               // of the header
    Item* parent = nullptr;
    mutable const Item* model = nullptr; // its definition, as the checks find out; itself for a definition
    std::string_view name;               // as it is meant
    TreeList<Item*> children;            // in the order of the text
    TreeList<Attribute> attributes;
    std::string_view keyword;
    std::string_view seenName; // as the reader takes it
    const Text* text = nullptr;
    Position keywordBegin = 0;
    Position nameBegin = 0; // after the bracket
    Position headerEnd = 0; // after the bracket, or the last character of the header
    Position closing = 0;   // where the closing brace stands, or belongs

    Item() = default;
    Item(const Item&) = delete;
    Item& operator=(const Item&) = delete;

    // The first attribute of that key, or meant for it; null if there is none.
    const Attribute* Find(std::string_view key) const;
    // Its value as it is meant; empty if there is none.
    std::string_view Value(std::string_view key) const;
    bool IsIndexEntry() const { return Value("ISA_INDEX") == "1"; }
    // What the reader takes for the value of a line; nothing when it takes none. Another one than that which is meant
    // if the line is broken.
    std::optional<std::string_view> Seen(const Attribute& attribute) const;
    // "TASK (2)": what stands in its header.
    std::string Title() const;
};

// "SCENARIO (1) / TASK (2)", with the item itself at the end. Of a way that nobody would read to its end the beginning
// and the end are told. `titleOf` gives the step of an item, which has a `parent`.
template <class AnyItem, class TitleOf>
std::string WayOfSteps(const AnyItem* item, TitleOf titleOf) {
    constexpr std::size_t kLongest = 20;
    std::vector<const AnyItem*> steps;
    for (; item; item = item->parent) steps.push_back(item);
    std::string way;
    for (std::size_t at = 0; at < steps.size(); ++at) {
        if (steps.size() > kLongest && at == kLongest / 2) {
            way += " / ...";
            at = steps.size() - kLongest / 2;
        }
        way += (way.empty() ? "" : " / ") + titleOf(*steps[steps.size() - 1 - at]);
    }
    return way;
}
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
    // Of all items and their lists. It goes as a whole: no item is destroyed by itself, however deep it stands.
    std::pmr::monotonic_buffer_resource memory;
    Item* root = nullptr;
    std::vector<Fault> faults;
    bool isOtherEncoding = false;
};

// What is told of a brace that closes nothing; it may end the text earlier than its author thinks.
constexpr const char* kSurplusBrace = "a closing brace without an item";

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
