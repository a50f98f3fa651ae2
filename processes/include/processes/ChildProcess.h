#ifndef PROCESSES_CHILDPROCESS_H
#define PROCESSES_CHILDPROCESS_H

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>

namespace TavrelProcesses {

// Broken expectations of the library end the process, and a file may be built to take all time and memory there is. So
// whatever a stranger's file can reach happens in a child process, and the death of that child is one more finding.
//
// A child is a fork of the process that calls: it sees all that was there at the call, and what it changes is lost but
// for its answers. Other threads of a caller are not in the child, and a lock that one of them held stays locked there.
// A child never outlives the thread that made it, whatever ends that.

// What this room fails with: a process that could not be started, or a child of RunInChild that died.
class ProcessFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A child was ended by SIGINT or SIGTERM: someone asked for an end, and no item is to blame. Only a caller that
// outlives these signals itself ever sees it.
class Interrupted : public ProcessFailure {
public:
    using ProcessFailure::ProcessFailure;
};

struct ChildSettings {
    double seconds = 60;                        // for each item
    std::size_t memory = std::size_t(4) << 30;  // address space of a child, in bytes
    std::size_t recycle = std::size_t(1) << 29; // a child that has grown by so much gives way to a fresh one
    bool timed = true;                          // false: as long as it takes
    std::size_t jobs = 1;                       // children side by side; 0 counts as 1
    // For a library, whose host owns the standard streams: the input of a child is empty, its output goes nowhere, and
    // of its error stream only the line of an assertion is read. Otherwise a child has the streams of this process.
    bool quiet = false;
};

// How many cores this process may use.
std::size_t UsableCores();

enum class DeathKind {
    Assertion,   // a named fatal assertion
    OutOfTime,   // ChildSettings::seconds were over
    OutOfMemory, // std::bad_alloc left the work
    Exception,   // another exception left the work; `cause` is what it says
    Signal,      // any other signal
    NoAnswer,    // the work ended the process by itself
};

// How a child died: why, and as far as it knew, what it was reading then.
struct Death {
    std::string cause;
    std::string file;   // that it was reading, unless that is the one it was made for
    std::string script; // the name of the script, where a file holds several
    unsigned row = 0;   // that the reader had come to; 0 if it was not reading
    std::string place;  // the item that was looked at, "SCENARIO (1) / RULE (2)"
    DeathKind kind = DeathKind::NoAnswer;
    std::string assertion; // source and line, "token:757", for DeathKind::Assertion
};

// What a signal is called, the same under any locale: "Killed".
std::string TextOfSignal(int number);

// As one sentence, "SUBJECT: script main, row 3: cause (in RULE (2))", or "SUBJECT: nuro.mdl:3: cause".
std::string DeathSentence(const std::string& subject, const Death& death);

// What is known to break the assertion "token:221" of the library, in words; empty where nothing is.
std::string CauseOfAssertion(const std::string& assertion);

// Ends this process for a broken expectation and leaves to its parent what a Death tells. A program calls it from an
// AssertAbort of its own; without one, the parent learns the assertion alone from what AssertAbort prints.
[[noreturn]] void DieOfAssertion(const std::string& assertion, const Death& known);

// Runs `work` in a child and answers with what it answers, 0 to 255. Fails with a ProcessFailure that says how the
// child died; `subject` begins its sentence.
int RunInChild(const std::string& subject, const ChildSettings& settings, const std::function<int()>& work);

// Calls `work` for each item from 0 to `count` in children, several side by side, and hands each answer to `done` here.
// A child works through as many items as it survives. An item that ends its child goes to `died` with the cause, and
// the others go on.
//
// `done` and `died` are called in the order of the items, one at a time, by the thread that called; before each of
// them, what the child wrote to its error stream about that item is passed on. So the results are the same for any
// number of jobs, as long as `work` answers for an item the same whatever items it was called for before. What `done`
// or `died` throws ends the children and passes through.
void ForEachInChildren(std::size_t count, const ChildSettings& settings,
                       const std::function<std::string(std::size_t)>& work,
                       const std::function<void(std::size_t, const std::string&)>& done,
                       const std::function<void(std::size_t, const Death&)>& died);

} // namespace TavrelProcesses

#endif
