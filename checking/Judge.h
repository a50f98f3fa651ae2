#ifndef CHECKING_JUDGE_H
#define CHECKING_JUDGE_H

#include <string>
#include <string_view>
#include <vector>

#include <checking/Check.h>

class ScenarioItem;

namespace TavrelChecking {

// What the library says of a file: whether it takes it, and whether all parts of it are valid in their surroundings.
struct Verdict {
    struct Refusal {
        std::string file;   // empty for the text itself
        std::string script; // in a scenario file
        unsigned row = 0;   // 0 where the file as a whole is meant
        std::string cause;
    };
    struct Invalid {
        std::string script;
        std::string way; // "SCENARIO (1) / RULE (2)"
        std::string cause;
        std::string display; // what a list of the application shows for the item, in one line
    };
    std::vector<Refusal> refusals;
    std::vector<Invalid> invalid; // the innermost items

    bool IsRead() const { return refusals.empty(); }
    bool IsFine() const { return refusals.empty() && invalid.empty(); }
};

// The readings change the root model in use. A text over which the library ends its process ends the child that asks.
Verdict JudgeScenario(const std::string& path, const std::string& configuration);
// `rootModel` is the file to link to.
Verdict JudgeScript(const std::string& text, const std::string& rootModel);
Verdict JudgeModel(const std::string& text);

} // namespace TavrelChecking

#endif
