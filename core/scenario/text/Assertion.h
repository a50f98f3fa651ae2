#ifndef SCENARIO_ASSERTION_H
#define SCENARIO_ASSERTION_H

#include <string_view>

// Ends the process by AssertAbort under the label SOURCE:LINE. If a text is being read, the listener of
// <scenario/LoadDiagnostics.h> is told of the reader's line first, since the reader does not come back to do so.
[[noreturn, gnu::cold]] void AssertionFailed(const char* source, int line);
// The same where more can be said than that an expectation is broken. Nothing is allocated for the label, which comes
// out also where memory is short.
[[noreturn, gnu::cold]] void AssertionFailed(const char* source, int line, std::string_view cause);

#endif
