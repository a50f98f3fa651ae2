#ifndef CHECKING_SCENEFILE_H
#define CHECKING_SCENEFILE_H

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include <cfg/ScenarioText.h>
#include <cfg/t_ParameterType.h>
#include <lmk/units.h>

#include "MendedXml.h"
#include "ScriptTree.h"

namespace TavrelChecking {

// What values of scripts refer to in the scenario file around them.
struct SceneTables {
    struct Vehicle {
        std::size_t inputs = 0;
        std::size_t outputs = 0;
    };
    std::map<std::int32_t, Vehicle> vehicles;
    bool hasLostVehicle = false; // one whose number is none, and so may be any
    std::set<std::string> drivers, triggers, images, sounds;
    bool hasLostElements = false; // any of them may be missing here
};

// A scenario file: its elements, its scripts, its declarations.
class SceneFile {
public:
    explicit SceneFile(std::shared_ptr<const FileBytes> fileBytes);

    struct Script {
        std::string name;
        std::shared_ptr<const ScriptTree> tree;
    };

    const SceneTables& Tables() const { return tables; }
    const std::vector<Script>& Scripts() const { return scripts; }
    // What is wrong with the file as such: its bytes, its form, its values.
    std::vector<Finding> FileFindings() const;
    // What is wrong with its declarations, once the items of the scripts are known.
    std::vector<Finding> DeclarationFindings() const;
    // The numbers of the variables of a script that are declared as varying.
    std::set<std::int64_t> DeclaredVariables(const Script& script) const;

private:
    using Element = cfg::ScenarioText::Element;
    // What a parameter id leads to.
    struct Target {
        enum Type { Boolean, Integer, Real, Literal };
        Type type = Literal;
        bool isKnown = true; // otherwise nothing more can be said of it
        lmk::t_unit unit = lmk::UNIT_UNDEFINED;
        const Item* variable = nullptr;
        const Script* script = nullptr;
        std::int64_t number = 0;
    };
    struct Declaration {
        const Element* element;
        std::string id;
        std::string unit;
    };

    void FindTables(const Element& root);
    void FindScripts(const Element& section, unsigned level = 0);
    void FindDeclarations(const Element& root);
    bool IsParameter(const Element& element) const;
    std::string Value(const Element& section, std::string_view name) const;
    std::string FieldText(const Element& section, std::string_view name) const;
    std::vector<const Element*> Below(const Element& section, std::string_view name) const;
    std::optional<std::int32_t> Number(const Element& section) const;
    std::optional<Target> Find(const std::string& id) const;
    std::optional<Target> FindVariable(const Script& script, const std::string& step) const;
    struct Variables {
        std::unordered_map<std::int64_t, const Item*> byNumber;
        bool hasLost = false;
    };
    const Variables& VariablesOf(const Script& script) const;
    using Steps = std::unordered_map<std::string, const Element*>;
    const Steps& StepsBelow(const Element& section) const;
    void LookAtElement(const Element& element, std::string_view parentName, bool isRoot, std::vector<Finding>& findings,
                       unsigned level = 0) const;
    Finding At(const char* rule, std::size_t begin, std::size_t end, std::string message) const;

    // What the file cannot be read for. False where nothing more can be said of it.
    bool LookAtXml(std::vector<Finding>& findings) const;
    void LookAtReferences(std::vector<Finding>& findings) const;
    void PlaceInScript(Finding& finding, std::size_t position) const;

    std::shared_ptr<const FileBytes> bytes;
    std::shared_ptr<const MendedXml> mended;          // of a file that is no XML; null for others
    std::optional<cfg::ScenarioText::Fault> xmlFault; // of a file that is no XML
    std::unique_ptr<const cfg::ScenarioText> text;    // of the file, or of its mended copy
    const Element* root = nullptr;                    // the section Scenario
    SceneTables tables;
    std::vector<Script> scripts;
    std::vector<const Element*> scriptElements; // of `scripts`
    std::vector<const Element*> emptyScripts;   // their texts
    std::vector<Declaration> declarations;
    // Made where they are first asked for.
    mutable std::map<const Script*, Variables> variables;
    mutable std::map<const Element*, Steps> stepsBelow;
};

// The whole number that a text begins with, as hosts read the numbers of variables.
std::optional<std::int64_t> LongNumberOf(std::string_view text);

} // namespace TavrelChecking

#endif
