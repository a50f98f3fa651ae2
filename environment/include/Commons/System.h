#ifndef COMMONS_SYSTEM_H
#define COMMONS_SYSTEM_H

#include <map>
#include <string>

#include <environment/Export.h>

namespace Commons::System {

// What a variable looks like in a path, ${NAME}, as an ECMAScript expression with NAME in group 1.
extern TAVREL_ENVIRONMENT_API const char* const DaemonVariableMatchingPattern;

// Writes `in` with its variables expanded to `out`; both may be one object. A name is looked up in `variables`, then in
// the environment of the process; an unknown one stays as it stands. Values are not expanded again. `pattern` is an
// expression like the one above; null means that one. False if a variable was unknown or the pattern is no expression,
// in which case `out` gets the text of `in`.
TAVREL_ENVIRONMENT_API bool ExpandLocalEnvironmentVariables(const std::string& in, std::string& out,
                                                            const char* pattern,
                                                            const std::map<std::string, std::string>& variables);

} // namespace Commons::System

#endif
