#ifndef TAVREL_COMMAND_COMMANDTABLE_H
#define TAVREL_COMMAND_COMMANDTABLE_H

#include <string>
#include <vector>

namespace tavrel {

struct Context;

// How many values: Any and Optional are operands that need not be there, several or one.
enum class Takes { Nothing, One, Many, Any, Optional };

// What the shell offers for a value.
enum class Offers { Nothing, Files, Scenarios, Words, Ids, Configurations, Scripts };

// An option ("--json") or an operand ("SCENARIO") of a sub-command.
struct OptionRow {
    const char* name;
    const char* value; // what stands for its value in the help; empty for a flag and for an operand
    Takes takes;
    Offers offers;
    const char* words; // the values that are allowed, separated by blanks; empty where anything is
    const char* help;
};

// Where a sub-command runs: what the library may stumble over must not take the command along, so a sub-command that
// opens files that others wrote runs in a child process, or looks after children of its own, one for many files.
enum class Runs { Here, InOneChild, InOneChildWithoutLimitOfTime, OverItsOwnChildren };

struct CommandRow {
    const char* name; // two words for a sub-command of a sub-command
    const char* summary;
    const char* description;
    std::vector<OptionRow> operands;
    std::vector<OptionRow> options;
    Runs runs;
    int (*run)(Context&);
    std::vector<const char*> examples;
};

// "SCENARIO", "PATH...", "[ID]", "[EXPRESSION...]"
std::string UsageOf(const OptionRow& operand);

// The one table behind the command line, the help, the man page and the completion.
const std::vector<CommandRow>& Commands();

// Options that every sub-command takes.
const std::vector<OptionRow>& CommonOptions();

// What the four exit statuses mean, in their order.
const std::vector<const char*>& ExitStatusTexts();

// The row of a sub-command of a sub-command begins with the name of the group.
struct GroupRow {
    const char* name;
    const char* summary;
};
const std::vector<GroupRow>& Groups();

} // namespace tavrel

#endif
