#ifndef SCENARIO_CALLUNDERWAY_H
#define SCENARIO_CALLUNDERWAY_H

#include <cstddef>

#include <scenario/Export.h>

class Function;
class Parameter;
class Variable;

// The call whose implementation runs: an action, a condition or a function of the script that is being stepped, of
// calls within calls the innermost. Null when none runs. It says which item calls, what the twelve arguments do not.
TAVREL_MODEL_API const Function* CallUnderWay();

// The variable that a parameter by address names: of those with its number that it sees, the innermost one whose file
// scope is its owner file, which is the one that a parameter by value reads. Null if it sees none. Belongs to the tree.
TAVREL_MODEL_API Variable* ReferencedVariable(const Parameter& parameter);

// The same for an argument of the call under way, counted from 0: what an implementation asks that is to write a
// variable. Null also where no call is under way or it has no such parameter.
TAVREL_MODEL_API Variable* ReferencedVariable(std::size_t argument);

#endif
