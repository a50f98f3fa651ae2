#ifndef SCENARIO_VARIABLE_H
#define SCENARIO_VARIABLE_H

#include <scenario/token.h>

struct ParameterValue;

// A named value of a script, below a task or a rule, with what a front end needs to offer it. Its name is a decimal
// number by convention. A variable has no children and no definition: `model` stays the variable itself.
class TAVREL_MODEL_API Variable : public Token {
public:
    std::string type;                           // TYPE: BOOL, FLOAT, INTEGER, STRING, VOID, or empty
    std::string category = "INTERNAL";          // CATEGORY; free text of the front end
    std::string interactiveType = "VOID";       // INTERACTIVE_TYPE; any text
    std::string value;                          // VALUE; changes while the scenario runs
    std::string initialValue;                   // VALUE as loaded; a task starts with it again
    std::string spare = "0";                    // survives Clone, not Save
    bool isInitializationNeededAtStart = false; // IS_INITIALIZATION_NEEDED_AT_START
    double interactiveMinValue = 0.0;           // INTERACTIVE_MIN_VALUE; nothing holds `value` to these three
    double interactiveMaxValue = 9999.0;        // INTERACTIVE_MAX_VALUE
    double interactiveStepValue = 1.0;          // INTERACTIVE_STEP_VALUE

    explicit Variable(ScenarioItem* parentItem = nullptr);
    ~Variable() override;

    void DetachChildren() override;
    void AddChild(ScenarioItem* child, ScenarioItem* reference, bool after) override;
    void RemoveChild(ScenarioItem* child) override;
    void ReplaceChild(ScenarioItem* newChild, ScenarioItem* oldChild) override;
    void SwapChildren(ScenarioItem* a, ScenarioItem* b) override;
    // Throws boost::bad_lexical_cast for a flag or number that does not convert.
    bool LoadAttribute(ScenarioTextStream& stream) override;
    void SaveAttributes(std::ostream& out) const override;
    bool AcceptsChildKind(std::uint32_t childKind) const override;
    ScenarioItem* Clone() const override;
    void UpdateDisplayText() override;

    // Fills the record with the value in the form that its tag asks for. A tag that is neither STRING nor that of
    // `type` is a warning on the log, and the record stays as it is.
    void FillValue(ParameterValue& out) const;
    // 4 (VOID) for any unknown word.
    static int TypeTagOf(const std::string& typeName);
    // The empty text for any unknown number.
    static std::string TypeNameOf(int tag);
};

// A variable that stands as an entry of an EnumTab.
class TAVREL_MODEL_API Enum : public Variable {
public:
    explicit Enum(ScenarioItem* parentItem = nullptr);
    ~Enum() override;

    void UpdateDisplayText() override;
};

#endif
