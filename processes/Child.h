#ifndef PROCESSES_CHILD_H
#define PROCESSES_CHILD_H

#include <functional>
#include <string>
#include <vector>

#include <poll.h>
#include <sys/types.h>

#include <processes/ChildProcess.h>

namespace TavrelProcesses {

// How a child came to its end.
struct ChildEnd {
    int status = 0;    // what it left with, if no signal ended it
    int signal = 0;    // that ended it
    bool late = false; // this process gave it up
};

// One child process and the two pipes from it: its answers, and what it writes to its error stream.
class Child {
public:
    // `body` runs in the child, with the descriptor to write its answers to, and gives the status to leave with.
    Child(const ChildSettings& settings, const std::function<int(int)>& body);
    // Ends the child, if it still runs.
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    // What to wait for: something arrives, or the child ends.
    void AddTo(std::vector<pollfd>& waited) const;
    // Appends what has arrived. False when the child has ended and nothing more will come.
    bool Receive(std::string& answered, std::string& complained);
    // Ends a child whose time is over; what it sent before may still be received.
    void GiveUp();
    // Waits for the end.
    ChildEnd End();

private:
    bool HasEnded() const;
    void CloseAll();

    pid_t id = -1;
    int handle = -1; // tells the end of the child even while a stranger's process holds one of its pipes; -1 if the
                     // system has no such thing
    int answers = -1;
    int errors = -1;
    bool late = false;
};

// Waits until something happens on one of `waited`, for at most `milliseconds`, or for ever if that is negative.
void WaitFor(std::vector<pollfd>& waited, int milliseconds);

// For the child: writes all of it, or ends the process if nobody listens any more.
void WriteAll(int descriptor, const char* bytes, std::size_t size);

} // namespace TavrelProcesses

#endif
