#ifndef TAVREL_COMMAND_CONTEXT_H
#define TAVREL_COMMAND_CONTEXT_H

#include <string>

#include <processes/ChildProcess.h>

#include "Arguments.h"
#include "Failure.h"
#include "Output.h"

namespace tavrel {

struct ListedScenario;

// What a sub-command works with.
struct Context {
    const Arguments& arguments;
    Output& out;
    int status = ExitClean;                 // of the faults told so far
    std::string verdict = "";               // of a run; empty where there is none
    const ListedScenario* listed = nullptr; // the operand, with --all: the listing has found its place

    // Tells a fault that does not end the work: the rest is still done, and the status remembers the gravest.
    void Tell(const Failure& failure) {
        Report(failure.sentence);
        if (failure.status > status) status = failure.status;
    }

    // How long a file may take, and how much memory, before it is given up, and how many are looked at side by side.
    TavrelProcesses::ChildSettings Children() const;

    // Tells what the library logged, if the user wants to know; with `onFailure` what it logged as wrong in any case.
    void TellLog(bool onFailure);
};

} // namespace tavrel

#endif
