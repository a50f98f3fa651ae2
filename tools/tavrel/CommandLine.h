#ifndef TAVREL_COMMAND_COMMANDLINE_H
#define TAVREL_COMMAND_COMMANDLINE_H

#include <string>

#include "Arguments.h"

namespace tavrel {

// Reads the command line by the option table. `answer` receives the text that --help or --version asks for, and is
// empty if there is a sub-command to run. Fails with a Failure of ExitUsage.
Arguments ReadCommandLine(int argc, const char* const* argv, std::string& answer);

// The explanation of the whole command, and of one sub-command or group.
std::string HelpText();
std::string HelpText(const CommandRow& command);

} // namespace tavrel

#endif
