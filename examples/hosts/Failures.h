#ifndef EXAMPLES_FAILURES_H
#define EXAMPLES_FAILURES_H

#include <cstdio>
#include <exception>
#include <memory>

#include <ScenarioTemplateDb/Exception.h>

// Runs the body of a host and turns whatever leaves it into a sentence and an exit status. The library fails in two
// forms, and neither handler sees the other one; what comes from the standard library or from Poco is a third.
template <typename Body>
int reportFailures(Body body) {
    try {
        body();
        return 0;
    } catch (const ScenarioTemplateDb::Exception& failure) {
        std::fprintf(stderr, "%s (code %d)\n", failure.message.c_str(), failure.code);
    } catch (ScenarioTemplateDb::Exception* failure) {
        const std::unique_ptr<ScenarioTemplateDb::Exception> owned(failure);
        std::fprintf(stderr, "%s (code %d)\n", owned->message.c_str(), owned->code);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
    }
    return 1;
}

#endif
