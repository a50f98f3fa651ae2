#ifndef SCENARIO_TEMPLATE_DB_PARAMETER_TYPE_H
#define SCENARIO_TEMPLATE_DB_PARAMETER_TYPE_H

namespace ScenarioTemplateDb {

// What kind of value a parameter holds. Hosts store these numbers, so they never change.
enum ParameterType {
    ParameterTypeBoolean = 0,
    ParameterTypeLiteral = 1,
    ParameterTypeInteger = 2,
    ParameterTypeReal = 3
};

} // namespace ScenarioTemplateDb

#endif
