#ifndef CHECKING_TEXTCHECKS_H
#define CHECKING_TEXTCHECKS_H

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Definitions.h"

namespace TavrelChecking {

enum class TextRole { Model, Script, SceneScript };

// Looks at a text by itself: its lines, its attributes and how its items are linked to their definitions. What the text
// refers to beyond the root model is looked at by others.
class TextChecks {
public:
    // For a model `definitions` are its own; for others those of the root model, which has been looked at.
    TextChecks(const ScriptTree& scriptTree, const Definitions& knownDefinitions, TextRole textRole);

    // In no particular order.
    std::vector<Fault> Run();

private:
    struct Key;
    Fault& Add(const char* rule, const Item* item, std::size_t begin, std::size_t end, std::string message);
    Fault& AtName(const char* rule, const Item& item, std::string message);
    Fault& AtHeader(const char* rule, const Item& item, std::string message);
    Fault& AtValue(const char* rule, const Item& item, const Attribute& attribute, std::string message);
    Fault& AtKey(const char* rule, const Item& item, const Attribute& attribute, std::string message);
    Fault& AtEnd(const char* rule, const Item& item, std::string message);
    void SuggestWord(Fault& fault, std::string_view word, const std::vector<std::string>& candidates);

    void RefuseHeader(const Item& item);
    void Visit(const Item& item);
    void Link(const Item& item);
    void LookAtTop();
    void LookAtAttributes(const Item& item);
    void LookAtUnknown(const Item& item, const Attribute& attribute, const std::vector<Key>& keys);
    void FindMeant(const Item& item, const Attribute& attribute, const std::vector<Key>& keys);
    std::vector<std::string>& MissingKeys(const Item& item, const std::vector<Key>& keys);
    // The faults of a line or header that the tree has told.
    void SetTaken(std::size_t key, bool isTaken);
    void LookAtOrder(const Item& item);
    void LookAtLosses(const Item& item);
    // The faults of a value; false if the reader would refuse it.
    bool LookAtValue(const Item& item, const Attribute& attribute, std::string_view value, bool isTold);
    bool LookAtDefinitionValue(const Item& item, const Attribute& attribute, std::string_view value, bool isTold);
    bool LookAtUserValue(const Item& item, const Attribute& attribute, std::string_view value, bool isTold);
    bool LookAtWord(const Item& item, const Attribute& attribute, std::string_view value,
                    std::initializer_list<std::string_view> words, bool isTold);
    void LookAtParameter(const Item& item);
    void LookAtCall(const Item& item);
    void LookAtChildren(const Item& item);
    void LookAtLists();
    void LookAtUnknownLines();
    static bool ShutsOut(const Key& key, std::string_view value, const Item& item, std::size_t at);
    bool IsUnset(const Item& item, const Attribute& attribute) const;
    static std::vector<Key> MakeKeys(ScenarioItemKind kind, bool isDefinition);
    static const std::vector<Key>& KeysOf(const Item& item);
    // The definition of that name that may be referred to at this place; sets `isLater` when there is one after it.
    const Item* Definition(std::size_t list, std::string_view name, const Item& from, bool& isLater) const;

    const ScriptTree& tree;
    const Definitions& definitions;
    const TextRole role;
    std::vector<Fault> faults;
    std::unordered_map<std::size_t, std::vector<std::size_t>> faultsByKey; // of the tree, as places among `faults`
    const Item* missingOf = nullptr;
    std::vector<std::string> missingKeys; // keys that `missingOf` has not, nor a misspelt one in its place
    std::vector<std::string_view> given;  // keys of the item that is looked at, up to the line that is
    bool isTopWrong = false;              // then nothing says what it takes
    bool isListTold[kListCount] = {};
};

// Numbers as the library reads them.
bool BeginsWithNumber(std::string_view text);
bool BeginsWithWholeNumber(std::string_view text);
double NumberOf(std::string_view text);
int WholeNumberOf(std::string_view text);
// Whether the text is a number and nothing else.
bool IsNumber(std::string_view text);
bool IsWholeNumber(std::string_view text);
// Whether a value fits a type of the item model; blanks around it are passed over.
bool IsOfType(std::string_view value, std::string_view type);

// The words of KIND and KINDLIST.
const std::vector<std::string>& ValueKinds();
bool IsValueKind(std::string_view word);
// Whether the VALUE names an item of the script, where that is a whole one.
bool IsOfItems(std::string_view valueKind);

} // namespace TavrelChecking

#endif
