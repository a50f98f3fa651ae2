#ifndef SCENARIO_FUNCTION_H
#define SCENARIO_FUNCTION_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <scenario/Export.h>
#include <scenario/ParameterValue.h>
#include <scenario/token.h>

class CallArguments;
class Parameter;

// A call in a script, or the definition of one: a definition stands in the folder "FUNCTION_LIST" of the root model
// and says which parameters, which type of result and which CODE the call has. An instance holds the values, and has
// been compared with its definition, and upgraded to it, since it was read. Actions and conditions are calls too.
class TAVREL_MODEL_API Function : public Token {
public:
    explicit Function(ScenarioItem* parentItem = nullptr);
    // Destroys `parameters` and `returnParameter`.
    ~Function() override;

    std::string code;                     // CODE as written
    std::string returnType;               // set when a definition is read, and from the type of `returnParameter`
    std::string wizard;                   // WIZARD
    Parameter* returnParameter = nullptr; // what the text gives as RETURN; owned, no child; null if none
    std::string overloadable;             // IS_OVERLOADABLE; only "1" counts as true
    std::vector<std::string> seeAlso;     // SEE_ALSO
    std::int32_t codeNumber = -1;         // CODE as a number; -1 has no implementation
    Parameter* boundParameter = nullptr;  // the parameter of the enclosing call that this call fills; borrowed
    double weight = 50000.0;              // copied with the user attributes; no one asks
    std::vector<Parameter*> parameters;   // owned, in the order of the call

    void GetChildren(std::vector<ScenarioItem*>& out, std::uint32_t kindFilter = 0) const override;
    void DetachChildren() override;
    // These take parameters only; anything else is left alone.
    void AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) override;
    void RemoveChild(ScenarioItem* child) override;
    void ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) override;
    void SwapChildren(ScenarioItem* a, ScenarioItem* b) override;
    void SaveChildren(std::ostream& out) const override;
    bool AcceptsChildKind(std::uint32_t childKind) const override;
    bool OnLoadBegin() override;
    bool OnLoadEnd() override;
    // Places nested calls into the parameters that they fit before it descends.
    void UpdateDisplayTextTree() override;
    void UpdateDisplayText() override;
    ScenarioItem* FindItem(std::uint32_t itemKind, const std::string& itemName, const std::string& scope) override;
    const ScenarioItem* FindItem(std::uint32_t itemKind, const std::string& itemName,
                                 const std::string& scope) const override;
    bool LoadModelAttribute(ScenarioTextStream& stream) override;
    bool LoadUserAttribute(ScenarioTextStream& stream) override;
    void SaveModelAttributes(std::ostream& out) const override;
    void SaveUserAttributes(std::ostream& out) const override;
    void CopyModelAttributes(Token* target) const override;
    void CopyUserAttributes(Token* target) const override;
    void UpdateValidity() override;

    // Appends this item if kind and name match, then every item of that kind below, whatever its name. What stands
    // below a parameter is gathered twice.
    virtual void CollectAllItems(std::uint32_t itemKind, const std::string& itemName, std::vector<ScenarioItem*>& out);
    virtual void CollectAllItems(std::uint32_t itemKind, const std::string& itemName,
                                 std::vector<const ScenarioItem*>& out) const;
    // The same with no test of the name.
    virtual void CollectAllItemsOfKind(std::uint32_t itemKind, std::vector<ScenarioItem*>& out);
    virtual void CollectAllItemsOfKind(std::uint32_t itemKind, std::vector<const ScenarioItem*>& out) const;
    // Brings a call of an older script up to `definition`; nothing for a definition itself. The link is not touched.
    virtual void SetFunctionModel(Token* definition);

    // The result of the implementation behind CODE; 0.0 without one. Throws what the implementation throws.
    float Evaluate() const;

private:
    friend class CallArguments;
    mutable bool isTooLongTold = false; // that it has more parameters than an implementation can receive
};

// The implementations of functions by CODE, for a host to extend; entry 0 is the default and gives 0.0. A CODE
// without an entry is logged as an error and counts as the default. Entries may look at items and change values, but
// must not change this table while they run.
using FunctionEntry = std::function<float(const ParameterValues&)>;
TAVREL_MODEL_API std::vector<FunctionEntry>& FunctionTable();

#endif
