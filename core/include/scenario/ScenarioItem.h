#ifndef SCENARIO_SCENARIOITEM_H
#define SCENARIO_SCENARIOITEM_H

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <new>
#include <string>
#include <vector>

#include <scenario/Export.h>
#include <scenario/ItemText.h>

class Folders;
class ScenarioItem;
class ScenarioItemObservable;

// Told of the events of an item. A host implements it; it must not change the observer list while it is being told.
class TAVREL_MODEL_API ScenarioItemObserver {
public:
    virtual ~ScenarioItemObserver();
    // A rule raises 0 (became true) and 1 (became false), a task 2 (started again while running).
    virtual void OnItemEvent(ScenarioItemObservable* source, std::uint32_t event) = 0;
};

// The half of an item that others watch. Observers are borrowed: whoever adds one removes it before it dies.
class TAVREL_MODEL_API ScenarioItemObservable {
public:
    std::vector<ScenarioItemObserver*> observers; // borrowed; the same one may stand here twice and is then told twice
    std::uint32_t observableId = 0xFFFFFFFF;      // decimal number of a rule's or task's name

    ScenarioItemObservable() = default;
    ScenarioItemObservable(const ScenarioItemObservable&) = delete;
    ScenarioItemObservable& operator=(const ScenarioItemObservable&) = delete;

    virtual ~ScenarioItemObservable();
    virtual void AddObserver(ScenarioItemObserver* observer);
    // Takes out the first entry that equals `observer`; nothing happens when there is none.
    virtual void RemoveObserver(ScenarioItemObserver* observer);
    // Tells the observers in the order in which they were added.
    virtual void NotifyObservers(std::uint32_t event);
    virtual void SetObservableId(std::uint32_t id);
    virtual std::uint32_t GetObservableId() const;
};

// What the reader hands to the constructors of items: `first` watches scenarios, includes, evaluations, criteria and
// tasks, `second` watches rules. Either may be null.
struct ItemLoadContext {
    ScenarioItemObserver* first;
    ScenarioItemObserver* second;
};

// A node of a scenario script or of the root model: the base of all item classes. The base owns no children: each
// concrete class stores its own and shows them through GetChildren, on which every walk here is written.
// Flags are the file's text, and only "1" is true: `isSelected` is the text, IsSelected() the question.
// Nothing here throws. A null child seen in a walk, and any other broken expectation, ends the process by AssertAbort.
class TAVREL_MODEL_API ScenarioItem : public ScenarioItemObservable {
public:
    ScenarioItemKind kind = KindNone; // set by CreateItem
    std::string name;                 // key of all searches; stands in the header, not among the attributes
    std::string label;                // LABEL; the text for people
    std::string isaIndex;             // ISA_INDEX; "1": refers to a file instead of holding its content
    std::string fileName;             // FILE as written; at a file scope the name of the scope
    std::string isSelected;           // IS_SELECTED
    std::string isExpanded;           // IS_EXPANDED
    std::string resolvedPath;         // `fileName` as ResolveDataPath found it
    ScenarioItem* parent = nullptr;   // borrowed; null at a root
    std::string displayText;          // what a list shows; as fresh as the last UpdateDisplayText
    std::uint64_t hostWordBefore = 0; // the three words belong to the host; only the middle one survives Clone
    std::uint64_t hostWord = 0;
    std::uint64_t hostWordAfter = 0;

    explicit ScenarioItem(ScenarioItem* parentItem = nullptr);
    ~ScenarioItem() override;

    // Items of every class, a host's included, come from a memory of their own.
    static void* operator new(std::size_t size);
    static void* operator new(std::size_t size, std::align_val_t alignment);
    static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;
    static void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept;
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void* memory, std::size_t size);
    static void operator delete(void* memory, std::size_t size, std::align_val_t alignment);

    // Appends the direct children in their order, all of them for 0, else those of one kind. They stay owned here.
    virtual void GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter = 0) const;
    // Forgets the children without destroying them: the caller owns them from now on.
    virtual void DetachChildren() = 0;
    // Takes `child` over and becomes its parent. With a `reference` that is a child: directly after it when `after`,
    // else directly before it. Otherwise at the end when `after`, else at the front. Which kinds a class takes in is
    // its own business: a child that it ignores stays with the caller.
    virtual void AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) = 0;
    // Takes `child` out and, when its parent is this item, destroys it.
    virtual void RemoveChild(ScenarioItem* child) = 0;
    // Puts `newChild` wherever `oldChild` stood and becomes its parent, even when `oldChild` was nowhere. `oldChild`
    // is not destroyed.
    virtual void ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) = 0;
    // Calls RemoveChild on each child.
    virtual void RemoveAllChildren();
    // Exchanges two children when both are here.
    virtual void SwapChildren(ScenarioItem* a, ScenarioItem* b) = 0;
    virtual void SetName(const std::string& newName);
    // Reads the attribute on the line at the cursor, without moving it. False: this item does not know the line, or
    // refuses its value; the reader then takes the line for the header of a child.
    virtual bool LoadAttribute(ScenarioTextStream& stream);
    virtual void SaveChildren(std::ostream& out) const;
    virtual void SaveAttributes(std::ostream& out) const;
    virtual bool AcceptsChildKind(std::uint32_t childKind) const;
    // Called by the reader when the item stands in the tree but has no content yet. False refuses the item, and with
    // it the whole text.
    virtual bool OnLoadBegin();
    // Called by the reader at the closing brace. False refuses the item, and with it the whole text.
    virtual bool OnLoadEnd();
    // Puts "_" before the label until no visible or nested variable has the same. True: the label came through as it
    // is.
    virtual bool MakeUniqueLabel();
    // A new item that the caller owns, with clones of the children. Display text and observers are not copied, flags
    // come out as "1" or "0". Null when the factory makes no item of this kind.
    virtual ScenarioItem* Clone() const;
    // Writes the item in the text format. Always true. Changes nothing that lasts.
    virtual bool Save(std::ostream& out);
    // Refreshes the display texts of the subtree, children first.
    virtual void UpdateDisplayTextTree();
    virtual void UpdateDisplayText();
    // The first item of that kind and name in this subtree, itself included, in document order, or null. A `scope`
    // confines the search to the file of that name (a scenario is open to all of them); without a file scope above,
    // a scoped search finds nothing. The variables of a rule are invisible from outside.
    virtual ScenarioItem* FindItem(std::uint32_t itemKind, const std::string& itemName, const std::string& scope);
    virtual const ScenarioItem* FindItem(std::uint32_t itemKind, const std::string& itemName,
                                         const std::string& scope) const;
    // This item, or the first hit in the subtrees of its siblings, or null: never anything beside the parent.
    virtual ScenarioItem* FindItemUpward(std::uint32_t itemKind, const std::string& itemName);
    virtual const ScenarioItem* FindItemUpward(std::uint32_t itemKind, const std::string& itemName) const;
    // Appends every item of that kind and name in this subtree; includes are entered only with `crossIncludes`.
    virtual void CollectItems(std::uint32_t itemKind, const std::string& itemName, std::vector<ScenarioItem*>& out,
                              bool includeSelf, bool crossIncludes);
    virtual void CollectItems(std::uint32_t itemKind, const std::string& itemName,
                              std::vector<const ScenarioItem*>& out, bool includeSelf, bool crossIncludes) const;
    // Appends every item of that kind (0: every item) in this subtree, siblings by label. This item itself is appended
    // when its kind fits, whatever `includeSelf` says. Parameters of a call come twice: take the result as a set.
    virtual void CollectItemsOfKind(std::vector<ScenarioItem*>& out, std::uint32_t itemKind, bool includeSelf,
                                    bool crossIncludes);
    virtual void CollectItemsOfKind(std::vector<const ScenarioItem*>& out, std::uint32_t itemKind, bool includeSelf,
                                    bool crossIncludes) const;
    // First hit in document order, this item included, or null.
    virtual ScenarioItem* FindFirstOfKind(std::uint32_t itemKind);
    virtual ScenarioItem* FindByLabel(const std::string& itemLabel);
    virtual bool ContainsItem(const ScenarioItem* item) const;
    // Null without children.
    virtual ScenarioItem* GetFirstChild() const;
    virtual bool IsValid() const;
    // What a script sees from here: the children of that kind, of this item and of each one above up to the border of
    // the file. An empty `itemName` or `scope` fits everything. Hits go to the front of `out`, so the outermost level
    // ends up first.
    virtual void CollectVisibleItems(std::uint32_t itemKind, std::vector<ScenarioItem*>& out,
                                     const std::string& itemName, const std::string& scope) const;

    bool IsSelected() const { return isSelected == "1"; }
    bool IsExpanded() const { return isExpanded == "1"; }
    bool IsIndexEntry() const { return isaIndex == "1"; }
};

// A new item of the class of that kind, owned by the caller. `context` may be null. A kind without a class is a fatal
// assertion.
TAVREL_MODEL_API ScenarioItem* CreateItem(std::uint32_t kind, const std::string& name, ItemLoadContext* context);
// From `item` upward, the first that stands for a file: a scenario, general parameters or an include. Null if none.
TAVREL_MODEL_API ScenarioItem* FindFileScope(const ScenarioItem* item);
TAVREL_MODEL_API ScenarioItem* GetTreeRoot(const ScenarioItem* item);
// Where the definitions for `item` are looked up: the root model if there is one, else the root of its own tree.
TAVREL_MODEL_API ScenarioItem* GetModelRoot(const ScenarioItem* item);
// From `item` upward, the first scenario, criteria or include (by class, so evaluations count). Null if none.
TAVREL_MODEL_API ScenarioItem* FindOwningUnit(const ScenarioItem* item);

// While one of these lives, all texts that are read find the definitions of the root model through one index, which the
// reading of the model makes, or else the first text that needs it; otherwise each text makes its own. Uses nest. From
// then on nobody may change the root model meanwhile but the reader, and an include repository when it is asked.
class TAVREL_MODEL_API RootModelUse {
public:
    RootModelUse();
    ~RootModelUse();
    RootModelUse(const RootModelUse&) = delete;
    RootModelUse& operator=(const RootModelUse&) = delete;
};

// Reads a whole file. The result is owned by the caller. Null for a file that cannot be opened, is empty or does not
// parse; `log` (which stays the log of the model, and may be null) then says why in one message.
// With `headerOnly` the top item reads its first attributes and comes back without children and without OnLoadEnd.
// boost::bad_lexical_cast from the numbers of a variable passes through; nothing leaks then.
TAVREL_MODEL_API ScenarioItem* LoadScenarioFile(const char* path, std::ostream* log, bool headerOnly);
// The same for a file whose bytes the caller has read, so that he knows what the result was made from.
TAVREL_MODEL_API ScenarioItem* LoadScenarioFileText(const char* path, const std::string& text, std::ostream* log,
                                                    bool headerOnly);
// Reads one item at the cursor. With a `parent` the new item is added at its end, and the parent owns it; without one
// the caller does. Null when the text does not parse: the row of the failing line is `stream.line`, no message is
// written, and the parent is as it was. Null also when the parent accepts the kind but ignores the item; a warning on
// the log says so.
TAVREL_MODEL_API ScenarioItem* LoadScenarioText(ScenarioTextStream& stream, ScenarioItem* parent,
                                                ItemLoadContext* context, std::ostream* log, bool headerOnly);
// The same without a word on the log.
TAVREL_MODEL_API ScenarioItem* ReadItem(ScenarioTextStream& stream, ScenarioItem* parent, ItemLoadContext* context,
                                        bool headerOnly);
// As LoadScenarioText for a text as a whole, for callers that want its variables and not its rules. Every line is
// checked alike, but a RULE of a TASK, or of what is one, is left out as soon as it has been read, so a long script
// takes little memory. What an INCLUDE takes from a file stays whole, and so does all else while no root model is set,
// as rules may hold definitions then.
TAVREL_MODEL_API ScenarioItem* LoadScenarioVariables(ScenarioTextStream& stream, ItemLoadContext* context,
                                                     std::ostream* log);
// State of the process, unprotected: one call at a time.
// The root model in use, or null. Never freed by the library, since instances in scripts point into it.
TAVREL_MODEL_API extern Folders* scenarioRootModel;

#endif
