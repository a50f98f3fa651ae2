#ifndef SCENARIO_ACTION_H
#define SCENARIO_ACTION_H

#include <functional>
#include <vector>

#include <scenario/function.h>

// A call that a rule performs: kind ACTION in its THEN branch, kind ELSE_ACTION in its ELSE branch. Both find their
// definition among the actions of "ACTION_LIST".
class TAVREL_MODEL_API Action : public Function {
public:
    explicit Action(ScenarioItem* parentItem = nullptr);
    ~Action() override;

    bool OnLoadBegin() override;
    // Needs a parent, as a display line names the branch.
    void UpdateDisplayText() override;
    void UpdateValidity() override;

    // Calls the implementation behind CODE; nothing without one. Throws what the implementation throws.
    void Execute();
};

// The implementations of actions by CODE, for a host to extend; entry 0 is the default and does nothing. A CODE
// without an entry is logged as an error and does nothing. Entries may change the whole tree except for the rule that
// is running them and what encloses it, but must not change this table while they run. Whatever they change, by an
// operation or by writing a field (a name, a list, a parent), is seen by the next look-up: the entry's own, that of a
// step which the entry makes, and that of the next rule.
using ActionEntry = std::function<void(const ParameterValues&)>;
TAVREL_MODEL_API std::vector<ActionEntry>& ActionTable();

#endif
