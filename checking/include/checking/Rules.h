#ifndef CHECKING_RULES_H
#define CHECKING_RULES_H

#include <string>
#include <string_view>
#include <vector>

#include <checking/Export.h>

namespace TavrelChecking {

enum class Severity { Note, Warning, Error };

// "note", "warning" or "error".
TAVREL_CHECKING_API const char* WordOf(Severity severity);

// One rule of the table. All texts are static, in plain sentences, and never null.
struct Rule {
    const char* id;     // "TV2001"; never given to another rule
    const char* name;   // "unknown-action"
    Severity severity;  // by default; an error that the library takes all the same is told as a warning
    const char* brief;  // one line without a full stop
    const char* full;   // what the rule says
    const char* why;    // what follows from the fault
    const char* sample; // a text that has the fault; may be empty
    const char* remedy; // what to do
};

// All rules by their ids. They stay where they are for the life of the process.
TAVREL_CHECKING_API const std::vector<Rule>& Rules();

// The rule of that id or name, null if there is none.
TAVREL_CHECKING_API const Rule* FindRule(std::string_view idOrName);

// Whether one of `choices`, each an id or the beginning of one such as "TV4", takes the rule in.
TAVREL_CHECKING_API bool IsChosen(const Rule& rule, const std::vector<std::string>& choices);

} // namespace TavrelChecking

#endif
