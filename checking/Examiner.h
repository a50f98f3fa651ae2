#ifndef CHECKING_EXAMINER_H
#define CHECKING_EXAMINER_H

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <checking/Check.h>

#include "Judge.h"
#include "TreeChecks.h"

namespace TavrelChecking {

// A definition of a root model, for finding those that nobody uses.
struct DefinitionUse {
    std::size_t list;
    std::string name;
    bool operator<(const DefinitionUse& other) const {
        return list != other.list ? list < other.list : name < other.name;
    }
};

// What the look at one file gives.
struct Examined {
    std::vector<Finding> findings;
    std::string unreadable; // why it could not be looked at; empty if it was
    std::string model;      // the root model that it uses, or is
    std::set<DefinitionUse> uses;
    std::vector<std::pair<DefinitionUse, Finding>> definitions; // of a root model
};

// Looks at files, one after another. What is in use in the process is put in place first, once for the files that share
// it.
class Examiner {
public:
    // Definitions and their uses are gathered where somebody asks for those that nothing uses.
    explicit Examiner(const Options& userOptions, bool isForUses = true)
        : options(userOptions), gathersUses(isForUses) {}

    // With `isJudged` the library reads the file as well, and its verdict stands.
    Examined Examine(const Job& job, const std::string* text, bool isJudged);

private:
    // A root model with what was found in it.
    struct Model {
        std::string path;
        std::shared_ptr<const ScriptTree> tree;
        std::unique_ptr<Definitions> definitions;
        std::vector<Finding> findings;
        std::unique_ptr<Includes> includes;
        std::string configuration; // for which the includes were found
    };

    void UseInstallation(Job& job);
    Model* ModelOf(const std::string& path, const std::string& configuration);
    std::string ModelFileFor(const Job& job) const;
    static bool IsRefused(const Model& model, const Verdict& verdict);
    static void ReconcileModel(const Model& model, std::vector<Finding>& findings);
    void ExamineModel(const Job& job, std::string bytes, bool isJudged, Examined& examined);
    void ExamineScript(const Job& job, std::string bytes, bool isJudged, Examined& examined);
    void ExamineScenario(const Job& job, std::string bytes, bool isSaved, bool isJudged, Examined& examined);
    static void TellMissingModel(const Job& job, Examined& examined);
    void LookAtParametersFile(const Item& root, std::vector<Finding>& findings) const;
    static void AddFaults(const ScriptTree& tree, const Definitions& definitions, TextRole role,
                          const Surroundings& around, Examined& examined);
    void GatherUses(const Item& item, Examined& examined) const;

    const Options& options;
    const bool gathersUses;
    std::string installation; // in use
    std::map<std::string, Model> models;
};

// A fault of a text as a finding.
Finding FindingOf(const Fault& fault, const Text& text);
Finding WholeFileFinding(const char* rule, const std::string& file, std::string message);

// What is wrong with an installation file, and with the folder of a configuration of it and the settings there.
std::vector<Finding> InstallationFindings(const std::string& path);
std::vector<Finding> ConfigurationFindings(const std::string& installation, const std::string& configuration);

// The installation that a file on disk belongs to: the nearest "tavrel.xml" in the folders above it, else that of the
// options.
std::string InstallationFor(const std::string& path, const Options& options);
// The configuration of the installation in use whose data path holds the file, else the first.
std::string ConfigurationFor(const std::string& path, const Options& options);

} // namespace TavrelChecking

#endif
