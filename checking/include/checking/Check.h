#ifndef CHECKING_CHECK_H
#define CHECKING_CHECK_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include <checking/Export.h>
#include <checking/Finding.h>

// Looks at files of an installation and tells all faults of each in one go. The judge is the library that hosts use:
// a file has a finding of severity Error if and only if the library refuses it, would end its process over it, or finds
// one of its parts not valid in its surroundings.
//
// Each file is looked at in a child process, so that a text which would end the process, or take all time and memory
// there is, becomes a finding. The calls use fork: a program with several threads calls them before it starts those, or
// from a process of its own. They use the installation in use of the process (lmkUtils::EnvConfig) and the root model
// in use, and leave them as they were.
namespace TavrelChecking {

// What a file holds.
enum class FileKind { Scenario, Model, Script, Installation, Unknown };

// By the name of the file and its first bytes.
TAVREL_CHECKING_API FileKind KindOfFile(const std::string& path);

// One file to look at, in one configuration of one installation.
struct Job {
    std::string path;
    FileKind kind = FileKind::Unknown;
    std::string installation;  // the installation file; empty to look for it above the file
    std::string configuration; // empty to take the first that holds the file
};

struct Options {
    std::size_t mostFindings = 100;  // of one file
    std::vector<std::string> select; // ids of rules or their beginnings; empty for all
    std::vector<std::string> ignore;
    std::string installation;         // the installation file for files that have none above them; may be empty
    bool isInstallationFixed = false; // `installation` holds for all files, whatever stands above them
    std::string configuration;        // to look at files in this configuration; empty for the one that holds each
    std::string modelFile;            // a root model in place of that of the configuration, for scripts; may be empty
    unsigned jobs = 0;                // files that are looked at side by side; 0 for as many as there are cores
    double seconds = 60;              // for one file; 0 for as long as it takes
    std::size_t memory = std::size_t(4) << 30; // for one child, in bytes of address space
    // Told after each file, in order, with the number of files that are done. May be empty.
    std::function<void(std::size_t done)> progress;
};

// Whether the options ask for the findings of a rule.
TAVREL_CHECKING_API bool IsAskedFor(const Rule& rule, const Options& options);

// What could not be looked at, with the reason. The finding that tells of it stands among the findings, too.
struct Omission {
    std::string file;
    std::string reason;
};

struct Result {
    std::vector<Finding> findings;   // sorted
    std::vector<Omission> omissions; // in the order of the jobs
    std::vector<std::string> files;  // that were looked at, in the order of the jobs, included ones not
};

// The files to look at for a path: a file itself, all files below a folder, all files of an installation file. What is
// found on the way to them is added to `found`. A path that does not exist is a job all the same, and a finding later.
TAVREL_CHECKING_API std::vector<Job> JobsFor(const std::string& path, const Options& options, Result& found);

// Looks at the files. The same files give the same result for any number of jobs. Throws std::runtime_error if no child
// process can be started.
TAVREL_CHECKING_API Result Check(const std::vector<Job>& jobs, const Options& options);

// Looks at a text as if it stood in the file of the job, whatever stands there. For an editor whose text is not saved.
TAVREL_CHECKING_API Result CheckText(const std::string& text, const Job& job, const Options& options);

} // namespace TavrelChecking

#endif
