#ifndef SCENARIO_REFUSAL_H
#define SCENARIO_REFUSAL_H

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

// What a class says when it refuses a line or an item. The reader, which alone knows file and row, tells the listener
// of <scenario/LoadDiagnostics.h>; without one nothing here is composed.

class LoadProblemListener;
// As SetLoadProblemListener left it.
inline LoadProblemListener* loadProblemListener = nullptr;
// Whether anyone listens. Guards causes that cost something to find, such as a name that is nearly right.
inline bool RefusalsAreTold() { return loadProblemListener != nullptr; }
// Keeps the cause of the refusal under way. The first one kept for a line stands.
void KeepRefusalCause(std::string cause);
// Gives it out, or an empty text, and keeps none.
std::string TakeRefusalCause();
// The cause of an earlier line explains nothing of this one.
void ForgetKeptCause();
inline void ForgetRefusalCause() {
    if (RefusalsAreTold()) ForgetKeptCause();
}
// `, did you mean "NAME"`, with the candidate nearest to `name`, or nothing when none is near.
std::string DidYouMean(std::string_view name, const std::vector<std::string>& candidates);

// Always false, so that a refusal is one line: return Refuse("KIND \"", word, "\" is not among \"", list, "\"");
// Cold, as is all that tells of faults: the classes stay short where a text is right.
template <class... Parts>
[[gnu::cold, gnu::noinline]] bool Refuse(const Parts&... parts) {
    if (RefusalsAreTold()) {
        std::ostringstream text;
        (text << ... << parts);
        KeepRefusalCause(text.str());
    }
    return false;
}

#endif
