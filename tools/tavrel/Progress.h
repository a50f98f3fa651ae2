#ifndef TAVREL_COMMAND_PROGRESS_H
#define TAVREL_COMMAND_PROGRESS_H

#include <chrono>
#include <string>

namespace tavrel {

// How far a long job is, how fast, and how long it will take, on the standard error stream, if that is a terminal and
// the job lasts longer than a second. The line goes away with the object.
class Progress {
public:
    // `unit` stands after the numbers: "files".
    Progress(double goal, std::string unit);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Reach(double done);
    // Makes room for another line on the terminal.
    void Hide();
    // The same for what a process showed that was ended.
    static void Wipe();

private:
    const double goal;
    const std::string unit;
    const bool wanted;
    bool shown = false;
    const std::chrono::steady_clock::time_point start;
    std::chrono::steady_clock::time_point next; // when to write again
};

} // namespace tavrel

#endif
