#ifndef PROCESSES_CHILDPROCESS_H
#define PROCESSES_CHILDPROCESS_H

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>

namespace TavrelProcesses {

// Broken expectations of the library end the process, and a file may be built to take all time and memory there is. So
// whatever a stranger's file can reach happens in a child process, and the death of that child is one more finding.

// What this room fails with: a process that could not be started, or a child of RunInChild that died.
class ProcessFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct ChildSettings {
    double seconds = 60;                        // for each item
    std::size_t memory = std::size_t(4) << 30;  // address space of a child, in bytes
    std::size_t recycle = std::size_t(1) << 29; // a child that has grown so far gives way to a fresh one
    bool timed = true;                          // false: as long as it takes
};

// How a child died: why, and as far as it knew, what it was reading then.
struct Death {
    std::string cause;
    std::string file;   // that it was reading, unless that is the one it was made for
    std::string script; // the name of the script, where a file holds several
    unsigned row = 0;   // that the reader had come to; 0 if it was not reading
    std::string place;  // the item that was looked at, "SCENARIO (1) / RULE (2)"
};

// As one sentence, "SUBJECT: script main, row 3: cause (in RULE (2))", or "SUBJECT: nuro.mdl:3: cause".
std::string DeathSentence(const std::string& subject, const Death& death);

// Ends this process for a broken expectation and leaves to its parent what a Death tells.
[[noreturn]] void DieOfAssertion(const std::string& assertion, const Death& known);

// Runs `work` in a child that shares the standard streams of this process, and answers with what it answers. Fails with
// a ProcessFailure that says how the child died; `subject` begins its sentence.
int RunInChild(const std::string& subject, const ChildSettings& settings, const std::function<int()>& work);

// Calls `work` for each item from 0 to `count` in a child and `done` with its answer here, in order. One child works
// through as many items as it survives. An item that ends its child goes to `died` with the cause, and a new child goes
// on behind it.
void ForEachInChildren(std::size_t count, const ChildSettings& settings,
                       const std::function<std::string(std::size_t)>& work,
                       const std::function<void(std::size_t, const std::string&)>& done,
                       const std::function<void(std::size_t, const Death&)>& died);

} // namespace TavrelProcesses

#endif
