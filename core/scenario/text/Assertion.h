#ifndef SCENARIO_ASSERTION_H
#define SCENARIO_ASSERTION_H

#include <string>

// Ends the process by AssertAbort under the label SOURCE:LINE. If a text is being read, the listener of
// <scenario/LoadDiagnostics.h> is told of the reader's line first, since the reader does not come back to do so.
[[noreturn, gnu::cold]] void AssertionFailed(const char* source, int line);
// The same where more can be said than that an expectation is broken.
[[noreturn, gnu::cold]] void AssertionFailed(const char* source, int line, const std::string& cause);

#endif
