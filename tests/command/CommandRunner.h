#ifndef COMMAND_COMMANDRUNNER_H
#define COMMAND_COMMANDRUNNER_H

#include <map>
#include <ostream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

// What a run of the command left.
struct Result {
    int status = -1; // the exit status; -1 if a signal ended it
    std::string out;
    std::string err;

    nlohmann::json json() const { return nlohmann::json::parse(out); }
    std::vector<std::string> lines() const;
};
std::ostream& operator<<(std::ostream& out, const Result& result);

// Runs the built command as a process of its own, as a shell would.
class CommandRunner {
public:
    // Every run gets these options after its own.
    std::vector<std::string> common;
    std::map<std::string, std::string> environment; // beside that of the test
    std::string folder;                             // to run in; empty for that of the test
    bool heedsPermissions = false;                  // also when root runs the test

    Result operator()(std::vector<std::string> arguments) const;
};

// The sample installation of the source tree.
std::string sampleFile();
// A copy of it in a folder whose name has blanks and letters beyond ASCII; it goes with the object.
class SampleCopy {
public:
    SampleCopy();
    ~SampleCopy();
    SampleCopy(const SampleCopy&) = delete;
    SampleCopy& operator=(const SampleCopy&) = delete;
    std::string file() const { return path + "/tavrel.xml"; }
    std::string path;
};

std::string readFile(const std::string& path);

#endif
