#ifndef SCENARIO_PARAMETER_H
#define SCENARIO_PARAMETER_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <scenario/Export.h>
#include <scenario/ParameterValue.h>
#include <scenario/token.h>

class Function;
struct ParameterMemory;

// One argument of a function, an action or a condition. A definition says what may be given: type, unit, limits and
// the kinds of value. An instance says what was chosen: KIND tells how its VALUE is read (a literal, an entry of an
// enumeration, a variable, a file, a nested call). The blocks PARAMETER and RETURN both make this class.
class TAVREL_MODEL_API Parameter : public Token {
public:
    explicit Parameter(ScenarioItem* parentItem = nullptr);
    // Destroys `functionValue`.
    ~Parameter() override;

    bool isReturn = false;             // read as RETURN; also the mark of a renamed parameter in an overloaded call
    std::string unit;                  // UNIT; definition
    std::string type;                  // TYPE; definition: BOOL, FLOAT, INTEGER, STRING or VOID; ask GetType
    std::string usage;                 // USAGE; definition: BY_VALUE or BY_ADDRESS
    Function* functionValue = nullptr; // the nested call of KIND "FUNCTION"; owned
    std::vector<std::string> kindList; // KINDLIST; definition: the words that KIND may hold
    std::string enumTab;               // ENUMTAB; definition: an ENUMTAB in the folder "ENUMTAB_LIST" of the root model
    std::string fileDir;               // FILEDIR; definition: where a file of KIND "FILE" is looked up
    std::string fileExt;               // FILEEXT; definition: kept and written, no one asks
    std::string minValue;              // MINVALUE; definition: empty means no limit
    std::string maxValue;              // MAXVALUE; definition: empty means no limit
    std::string ownerFile;             // OWNER_FILE; instance: the file of the variable; empty for every other KIND
    std::string value;                 // VALUE; instance
    std::string valueKind;             // KIND; instance: one of the definition's kindList

    // `functionValue` is the only child, and the only kind of child that these look at is FUNCTION.
    void GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter = 0) const override;
    void DetachChildren() override;
    // Overwrites a call that is there already without destroying it.
    void AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) override;
    // Forgets the nested call without destroying it, unlike every other store: who removed it owns it now.
    void RemoveChild(ScenarioItem* child) override;
    void ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) override;
    void SwapChildren(ScenarioItem* a, ScenarioItem* b) override;
    void SaveChildren(std::ostream& out) const override;
    bool AcceptsChildKind(std::uint32_t childKind) const override;
    bool OnLoadBegin() override;
    bool OnLoadEnd() override;
    // The clone is an instance of this parameter's definition, also when this is a definition.
    ScenarioItem* Clone() const override;
    // Needs a parent: AssertAbort("Parameter", 120).
    bool Save(std::ostream& out) override;
    void UpdateDisplayTextTree() override;
    void UpdateDisplayText() override;
    bool LoadModelAttribute(ScenarioTextStream& stream) override;
    bool LoadUserAttribute(ScenarioTextStream& stream) override;
    void SaveModelAttributes(std::ostream& out) const override;
    void SaveUserAttributes(std::ostream& out) const override;
    void CopyModelAttributes(Token* target) const override;
    void CopyUserAttributes(Token* target) const override;
    void UpdateValidity() override;
    void MakeUniqueName() override;

    // Whether VALUE can be read as the definition's type. A number may be followed by anything: 12abc is an INTEGER.
    virtual bool CheckValueFormat() const;

    // The type of the definition at the end of the chain of models; empty if the chain is broken.
    const std::string& GetType() const;
    // Any KIND but "VARIABLE" drops the owner file.
    void SetKind(const std::string& word);
    // Kept only while KIND is "VARIABLE".
    void SetOwnerFile(const std::string& text);
    // Takes the call over, and forgets one that is there already; null only forgets.
    void SetFunction(Function* function);
    // Looks in the folder "ENUMTAB_LIST" of the root model; null if the tab or the folder is missing.
    ScenarioItem* FindEnumTab(const std::string& tabName) const;
    // Null if the tab has no such entry; a missing tab is AssertAbort("Parameter", 1176).
    ScenarioItem* FindEnumEntry(const std::string& enumTabName, const std::string& entryName) const;

    // Turns KIND and VALUE into the argument for a call. `out` is to be fresh; a value that cannot be used leaves it
    // so. Changes nothing in the tree.
    void FillValue(ParameterValue& out) const;

private:
    mutable std::unique_ptr<ParameterMemory> memory; // what earlier evaluations found out; made by the first
};

#endif
