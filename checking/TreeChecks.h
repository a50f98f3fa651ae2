#ifndef CHECKING_TREECHECKS_H
#define CHECKING_TREECHECKS_H

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "Includes.h"
#include "SceneFile.h"

namespace TavrelChecking {

// A fault with the text that it stands in and the places through which that text is read.
struct PlacedFault {
    Fault fault;
    const Text* text;
    std::vector<RelatedPlace> related;
};

// What a script has around it.
struct Surroundings {
    const Definitions* definitions = nullptr;
    Includes* includes = nullptr;
    const SceneTables* tables = nullptr;      // null for a script that is no part of a scenario file
    std::set<std::int64_t> declaredVariables; // of the script
};

// How the states and rules of one text go together, which has been looked at by itself.
std::vector<Fault> FlowFaults(const ScriptTree& tree, const Definitions& definitions);

// Looks at a script as a whole, with all that it includes, against what it has around it.
class TreeChecks {
public:
    TreeChecks(const ScriptTree& script, const Surroundings& around);

    // Those of the script and its includes as well as `ownFaults`, which were found in the script by itself.
    std::vector<PlacedFault> Run(std::vector<Fault> ownFaults);

private:
    // Through which INCLUDE a text is read, from the outermost.
    struct Mount {
        const Mount* outer = nullptr;
        const Item* include = nullptr;
        std::string path;
        std::string file; // its FILE, the name of its scope
    };
    struct Variable {
        const Item* item;
        std::string scope;
        bool isRead = false;
        bool isWritten = false;
        bool isCompared = false;
    };
    struct Use {
        const Item* parameter;
        const Mount* mount;
    };

    PlacedFault& Add(const char* rule, const Item& item, const Mount* mount, std::size_t begin, std::size_t end,
                     std::string message);
    PlacedFault& AtValue(const char* rule, const Use& use, const char* key, std::string message);
    PlacedFault& AtHeader(const char* rule, const Item& item, const Mount* mount, std::string message);
    static std::string ScopeOf(const Mount* mount);
    std::vector<RelatedPlace> PlacesOf(const Mount* mount) const;

    void AddScores(const Item& evaluation);
    void Enter(const Item& item, const Mount* mount);
    void EnterChildren(const Item& item, const Mount* mount);
    void EnterFile(const Item& item, const Mount* mount);
    void MayUse(const Item& item);
    void GatherUnnamed(const Item& call);
    bool IsUnnamed(std::string_view type);
    bool IsHeldByLost(ScenarioItemKind kind, std::string_view name);
    void NeedsHeader(const Item& item);
    void LookAt(const Use& use);
    void LookAtValue(const Use& use, std::string_view kind, std::string_view value);
    void LookAtVariable(const Use& use, std::string_view value);
    void LookAtVehicle(const Use& use, std::string_view value);
    void LookAtChannel(const Use& use, std::string_view value, bool isInput);
    void LookAtCall(const Use& use);
    void LookAtFile(const Use& use, std::string_view value);
    void LookAtVariables();

    const ScriptTree& tree;
    const Surroundings& around;
    const bool isWhole; // a scenario, in its file or by itself
    std::string rootFile;
    std::vector<PlacedFault> faults;
    std::vector<std::unique_ptr<Mount>> mounts;
    std::map<std::tuple<std::string, std::string, std::string>, unsigned> mountCounts; // by path, FILE, scope
    std::vector<Variable> variables;                                                   // in the order of a search
    std::unordered_map<std::string_view, std::vector<std::size_t>> variablesByName;
    std::set<std::string_view> tasks;
    // Items whose names the reader does not see as they are meant: of another kind, or of a header that is broken.
    std::vector<const Item*> lostItems;
    std::set<int> scores;
    std::size_t unreadScores = 0;                 // lines of which no number is known
    std::set<std::string> files;                  // of includes, as they are written
    std::set<std::string> missingFiles;           // what they hold still counts as present
    std::map<std::string, std::size_t> wrongTops; // the places among `faults` of files that begin with another item
    std::set<std::string_view> mayBeUsed;         // names of variables in parameters that are not understood
    std::vector<std::string_view> unnamed;        // types of the variables that calls should name, and do not
    bool hasLostScores = false;                   // an EVALUATION whose file is not there
    std::vector<Use> uses;
    // Keys whose value is read as one that is not valid, and headers whose name is asked for and read as another one.
    std::set<std::pair<const Text*, std::size_t>> misread;
};

} // namespace TavrelChecking

#endif
