#ifndef CHECKING_DEFINITIONS_H
#define CHECKING_DEFINITIONS_H

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "ScriptTree.h"

namespace TavrelChecking {

// The lists of a root model.
struct ListRow {
    std::string_view folder;
    ScenarioItemKind kind; // of the definitions in it
    const char* unknown;   // the rule of a name that it does not have
    const char* word;      // for messages
};
constexpr std::size_t kListCount = 5;
constexpr std::size_t kEnumTabs = 4;
extern const std::array<ListRow, kListCount> kListRows;
// The list in which items of the kind have their definitions; kListCount for kinds without.
std::size_t ListOf(ScenarioItemKind kind);

// What the definition of a parameter allows, read once for all calls that have one.
struct ParameterFacts {
    ParameterFacts(const Item& definition, const Item* enumTab);

    std::vector<std::string_view> kinds; // the words of KINDLIST
    bool isListBroken;                   // one of them is none
    std::string_view type;
    bool isByAddress;
    std::string_view least; // MINVALUE and MAXVALUE, empty where there are none
    std::string_view most;
    double leastNumber;
    double mostNumber;
    bool areLimitsReversed; // between them lies nothing, which is told
    const Item* tab;        // the enumeration that ENUMTAB names, null if there is none
};

// The definitions of a root model by name, the first of each name.
class Definitions {
public:
    explicit Definitions(std::shared_ptr<const ScriptTree> modelTree);

    const ScriptTree& Tree() const { return *tree; }
    // The folder of a list, null if it is missing. One whose header is not read as it is meant is the folder all the
    // same.
    const Item* Folder(std::size_t list) const { return folders[list]; }
    // Whether the folder goes by a name that is only near that of the list.
    bool IsMisspelt(std::size_t list) const { return folders[list] && folders[list]->name != kListRows[list].folder; }
    // Whether the model itself cannot be read without the list, so that nothing of it can be used.
    bool NeedsList(std::size_t list) const { return isNeeded[list]; }
    const Item* Find(std::size_t list, std::string_view name) const;
    // In the order of the model, with repeated ones.
    const std::vector<const Item*>& All(std::size_t list) const { return all[list]; }
    std::vector<std::string> Names(std::size_t list) const;
    // Once the model has been looked at: what its lines are meant for is known then.
    const ParameterFacts& FactsOf(const Item& definition) const;
    ParameterFacts ReadFacts(const Item& definition) const;

private:
    void FindFolders(const Item& item);
    void Enter(std::size_t list, const Item& item);
    void EnterLost(std::size_t list, const Item& folder);
    void FindMisspelt(std::size_t list);
    void FindNeeds(const Item& item);

    std::shared_ptr<const ScriptTree> tree;
    std::array<const Item*, kListCount> folders{};
    std::array<bool, kListCount> isNeeded{};
    std::array<std::vector<const Item*>, kListCount> all;
    std::array<std::unordered_map<std::string_view, const Item*>, kListCount> byName;
    mutable std::unordered_map<const Item*, ParameterFacts> facts;
};

bool IsCall(ScenarioItemKind kind);
bool IsParameter(ScenarioItemKind kind);
// Whether what stands in a call is not understood: it may be any parameter that the call lacks.
bool IsUnknownPart(const Item& part);
// The words of a list attribute.
std::vector<std::string_view> WordsOf(std::string_view value);
bool Holds(const std::vector<std::string_view>& words, std::string_view word);
// The parameters of a call, its RETURN not among them.
std::vector<const Item*> ParametersOf(const Item& call);
// Whether two calls have parameters of the same names in the same order.
bool HaveSameParameters(const Item& call, const Item& other);
// The type of the result of a call's definition.
std::string_view ReturnTypeOf(const Item& definition);
// The type of a parameter, by its definition.
std::string_view TypeOf(const Item& parameter);

// The one name among `candidates` that is a single letter away; empty if there is none or more than one.
std::string OnlyOneLetterAway(std::string_view name, const std::vector<std::string>& candidates);

} // namespace TavrelChecking

#endif
