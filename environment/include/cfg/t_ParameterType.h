#ifndef CFG_T_PARAMETERTYPE_H
#define CFG_T_PARAMETERTYPE_H

namespace cfg {

// What a parameter of a section holds. The numbers are part of the interface.
enum t_ParameterType : int {
    t_ParameterTypeBoolean = 0,
    t_ParameterTypeInteger = 1,
    t_ParameterTypeReal = 2,
    t_ParameterTypeVector = 3, // this and the next two are kept as their text
    t_ParameterTypeList = 4,
    t_ParameterTypeEnumeration = 5,
    t_ParameterTypeString = 6,
};

} // namespace cfg

#endif
