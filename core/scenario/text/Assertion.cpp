#include "text/Assertion.h"

#include <new>

#include <lmkUtils/AssertAbort.h>

#include "text/Problems.h"
#include "text/Refusal.h"

namespace {

void Tell(const char* source, int line, const char* cause) {
    if (!RefusalsAreTold()) return;
    try {
        const std::string label = std::string(source) + ":" + std::to_string(line);
        TellFatalProblem(cause ? cause : "the text breaks an expectation of the library, " + label, label);
    } catch (const std::bad_alloc&) {
        // The label comes out all the same.
    }
}

} // namespace

void AssertionFailed(const char* source, int line) {
    Tell(source, line, nullptr);
    AssertAbort(source, line);
}

void AssertionFailed(const char* source, int line, const std::string& cause) {
    Tell(source, line, cause.c_str());
    AssertAbort(source, line);
}
