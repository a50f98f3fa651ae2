#ifndef EXAMPLES_REPORT_H
#define EXAMPLES_REPORT_H

#include <cstdio>
#include <exception>

#include <TavrelScenarioTemplateDb/Failures.h>

// Runs the body of a host and turns whatever leaves it into a sentence and an exit status.
template <typename Body>
int reportFailures(Body body) {
    try {
        TavrelScenarioTemplateDb::translateFailures(body);
        return 0;
    } catch (const TavrelScenarioTemplateDb::ScenarioFailure& failure) {
        std::fprintf(stderr, "%s (code %d)\n", failure.what(), failure.code);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
    }
    return 1;
}

#endif
