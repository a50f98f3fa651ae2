#ifndef TAVREL_SIMULATION_CALLS_H
#define TAVREL_SIMULATION_CALLS_H

#include <functional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

#include <scenario/CallUnderWay.h>
#include <scenario/ItemModel.h>
#include <simulation/Export.h>

namespace TavrelSimulation {

// What a host puts behind the calls of a script by their names. The CODE comes from the root model in use, so a host
// needs to know no number; the tables by CODE (ActionTable and its like) are what is written to, and serve as before.

// One call while its implementation runs.
struct Call {
    const Function& item;          // the action, condition or function of the script that calls; belongs to its tree
    const ParameterValues& values; // its arguments, in the order of its parameters

    // The variable that an argument by address names, null if there is none.
    Variable* Reference(std::size_t argument) const { return ReferencedVariable(argument); }
};

// There is no call of that name to provide, or nothing by which it could be provided.
class UnknownCall : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Put an implementation behind a call of that name in the root model in use, in place of a former one. It may refer to
// anything that lives as long as scripts are run. Throw UnknownCall, with the nearest name, where the root model has no
// action (condition, function) of that name, or gives it no CODE, or where no root model is in use.
TAVREL_SIMULATION_API void ProvideAction(const std::string& name, std::function<void(const Call&)> body);
TAVREL_SIMULATION_API void ProvideCondition(const std::string& name, std::function<bool(const Call&)> body);
TAVREL_SIMULATION_API void ProvideFunction(const std::string& name, std::function<float(const Call&)> body);

// The three in one: what the implementation answers with says which of them is meant, nothing an action, a bool a
// condition, a number a function.
//
//     provide("SET_SPEED", [&](const Call& call) { speed = call.values[0].number; });
template <typename Body>
void provide(const std::string& name, Body body) {
    using Answer = std::invoke_result_t<Body, const Call&>;
    if constexpr (std::is_void_v<Answer>) {
        ProvideAction(name, std::move(body));
    } else if constexpr (std::is_same_v<Answer, bool>) {
        ProvideCondition(name, std::move(body));
    } else {
        static_assert(std::is_arithmetic_v<Answer>, "an implementation answers with nothing, a bool or a number");
        ProvideFunction(name, [body = std::move(body)](const Call& call) { return static_cast<float>(body(call)); });
    }
}

} // namespace TavrelSimulation

#endif
