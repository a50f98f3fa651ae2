#include "text/Assertion.h"

#include <new>
#include <string>

#include <lmkUtils/AssertAbort.h>

#include "text/Problems.h"
#include "text/Refusal.h"

namespace {

void Tell(const char* source, int line, std::string_view cause) {
    if (!RefusalsAreTold()) return;
    try {
        const std::string label = std::string(source) + ":" + std::to_string(line);
        TellFatalProblem(cause.empty() ? "the text breaks an expectation of the library, " + label : std::string(cause),
                         label);
    } catch (const std::bad_alloc&) {
        // The label comes out all the same.
    }
}

} // namespace

void AssertionFailed(const char* source, int line) {
    Tell(source, line, {});
    AssertAbort(source, line);
}

void AssertionFailed(const char* source, int line, std::string_view cause) {
    Tell(source, line, cause);
    AssertAbort(source, line);
}
