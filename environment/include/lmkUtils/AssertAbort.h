#ifndef LMKUTILS_ASSERTABORT_H
#define LMKUTILS_ASSERTABORT_H

#include <environment/Export.h>

// Reports a failed internal expectation as "source:line" on the standard error stream and ends the process by abort.
// Source and line are labels by which people in the field find the site. A program may define the function itself, as a
// checker does that must outlive an assertion; such a replacement may throw, but it must not return.
[[noreturn, gnu::cold]] TAVREL_ENVIRONMENT_API void AssertAbort(const char* source, int line);

#endif
