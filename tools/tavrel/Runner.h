#ifndef TAVREL_COMMAND_RUNNER_H
#define TAVREL_COMMAND_RUNNER_H

#include "Context.h"

namespace tavrel {

// Runs the sub-command of the command line, in this process or in children, and writes its results. Answers with the
// exit status; what went wrong has been told.
int RunCommand(Context& context);

} // namespace tavrel

#endif
