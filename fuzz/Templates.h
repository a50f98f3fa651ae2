#ifndef FUZZ_TEMPLATES_H
#define FUZZ_TEMPLATES_H

#include <ScenarioTemplateDb/Exception.h>

// Runs `body`; both forms of the library's exceptions are an answer.
template <class Body>
bool Answers(Body&& body) {
    try {
        body();
        return true;
    } catch (const ScenarioTemplateDb::Exception&) {
    } catch (ScenarioTemplateDb::Exception* failure) {
        delete failure;
    }
    return false;
}

#endif
