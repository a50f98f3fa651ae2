#ifndef SCENARIO_LOADSTATE_H
#define SCENARIO_LOADSTATE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <scenario/ScenarioItem.h>

class Config;

// First item of each name; a name that comes again is ignored. Names must not change meanwhile.
class NameTable {
public:
    // The beginning and the end of a name, which is all of it up to sixteen bytes. Kept beside the item, whose own
    // memory is far from that of the next one: a search would wait for it longer than for all the rest.
    struct Key {
        std::uint64_t first = 0;
        std::uint64_t last = 0;
        std::size_t size = 0;
        explicit Key(std::string_view name);
        bool operator==(const Key&) const = default;
    };
    struct Entry {
        Key key;
        ScenarioItem* named;
        ScenarioItem* unit; // what the table is asked for: the item itself or one around it
    };
    // Makes room for so many names at once.
    void Reserve(std::size_t names);
    void InsertIfAbsent(ScenarioItem* named, ScenarioItem* unit);
    // The entry of that name, or null.
    const Entry* Find(std::string_view name) const;

private:
    // Small, since a search hops through them and every name of a script is searched for.
    struct Place {
        std::uint32_t hash = 0;
        std::uint32_t entry = 0; // counted from one; 0 is empty
    };
    // The place of that name, or the empty one where it belongs.
    std::size_t PlaceOf(std::string_view name, const Key& key, std::uint32_t hash) const;
    void Resize(std::size_t size);

    std::vector<Place> places; // a power of two, at most half full
    std::vector<Entry> entries;
};

// The definitions of one tree by name, for the time of one load. It must give exactly what the search of the tree
// gives: the first match in document order, in sub-folders and inside other items as well.
//
// A unit is an item that stands in a list through folders alone. For each name the index keeps the first unit that
// holds a match somewhere, and asks that unit: so what happens inside units costs no bookkeeping. A unit that is still
// being read is asked last and in full.
class DefinitionIndex {
public:
    // `Whole`: the tree stands, and nothing of it changes during the load. `Growing`: it is what the load builds, and
    // the reader reports each item.
    enum class Form { Whole, Growing };
    DefinitionIndex(ScenarioItem* treeRoot, Form treeForm);

    ScenarioItem* Root() const { return root; }
    ScenarioItem* Folder(std::size_t list) const { return lists[list].folder; }
    ScenarioItem* Find(std::size_t list, std::string_view name);
    ScenarioItem* FindEntry(ScenarioItem* enumTab, std::string_view name);

    void Open(ScenarioItem* item);
    void Close(ScenarioItem* item);

private:
    struct List {
        ScenarioItem* folder = nullptr;
        ScenarioItem* openUnit = nullptr; // the unit that is being read or walked
        NameTable units;
    };
    void Walk(ScenarioItem* item);
    void SetOpen(std::size_t list, bool isOpen);
    // Enters every item of that kind in the subtree under its name, as `entry` or, without one, as itself.
    void Enter(NameTable& table, std::uint32_t kind, ScenarioItem* entry, ScenarioItem* item);

    ScenarioItem* root;
    Form form;
    std::array<List, 5> lists;
    std::uint32_t openLists = 0;                                // bits of those whose folder is being read or walked
    std::uint32_t wanted = std::uint32_t{1} << KindFolder;      // bits of the kinds that a walk looks for
    std::unordered_map<const ScenarioItem*, NameTable> entries; // of each tab that was asked
    std::vector<ScenarioItem*> pending;                         // the children still to visit, of all levels of a walk
};

// One entry into the reader, from the first header to the last brace. Loads nest, since an include reads its file.
class Load {
public:
    Load(ScenarioTextStream& text, ScenarioItem* parent);
    ~Load();
    Load(const Load&) = delete;
    Load& operator=(const Load&) = delete;

    // The innermost load under way, or null.
    static Load* Current();

    // Around the reading of one item; items that their parent ignored, and what they hold, are not part of the tree.
    void Open(ScenarioItem* item, bool isInTree);
    void Close(ScenarioItem* item, bool isInTree);

    // Whether the load under way may take one more value of that many bytes. Values are parts of the text and do not
    // overlap, unless quotes are missing: then each line holds all that follows up to the next quote, and a text of
    // such lines would cost the square of its length.
    static bool MayTake(std::size_t bytes) {
        constexpr std::size_t kOrdinary = 4096;
        return bytes <= kOrdinary || !Current() || Current()->TakeLong(bytes);
    }

    // The index that answers for definitions below `root`, or null when only a search can tell.
    DefinitionIndex* IndexOf(const ScenarioItem* root);

    ScenarioTextStream& stream;
    ScenarioItem* root = nullptr;     // of the tree that is being read
    ScenarioItem* current = nullptr;  // whose lines are being read
    std::string name;                 // of the header that is being read, to use one buffer for all
    std::vector<Config*> configs;     // so far; they do not destroy their children
    bool emptiesRules = false;        // the caller has no use for what rules hold
    std::vector<ScenarioItem*> letGo; // by the last of them, to use one buffer for all
    unsigned depth = 0;               // blocks that are open
    unsigned outerDepth;              // the same of the loads around this one

private:
    bool TakeLong(std::size_t bytes);

    Load* outer;
    Load* outermost;
    std::size_t longBytes = 0; // in all long values so far
    bool isRooted;             // what is read is a tree of its own
    bool isComplete = false;   // and it has been read to its end
    bool modelIsStill;         // the root model does not change during this load
    std::size_t itemsOutsideTree = 0;
    std::unique_ptr<DefinitionIndex> ownIndex;
    std::unique_ptr<DefinitionIndex> modelIndex; // of the outermost load only, and while no index is shared
};

// As folders go: another root model may come to stand in their place while an index is shared.
void ForgetIndexOf(const Folders& root);

// The root of the tree of `item` if that is the item whose lines are being read, else null. Saves the way up for each
// of a million items that stand a thousand levels deep.
ScenarioItem* RootOfItemBeingRead(const ScenarioItem* item);

// Nested blocks of one text, and of a text with all that it includes: beyond that a read fails.
constexpr unsigned kMaxNesting = 1000;
constexpr unsigned kMaxNestingOfAllTexts = 2500;

#endif
