// The command without its child processes: what the processes do, done in this process. Compared with the command
// itself it tells what the protection costs.
#include <cstdlib>

#include <processes/ChildProcess.h>

namespace TavrelProcesses {

std::string DeathSentence(const std::string& subject, const Death& death) { return subject + ": " + death.cause; }

void DieOfAssertion(const std::string&, const Death&) { std::abort(); }

std::size_t UsableCores() { return 1; }

int RunInChild(const std::string&, const ChildSettings&, const std::function<int()>& work) { return work(); }

void ForEachInChildren(std::size_t count, const ChildSettings&, const std::function<std::string(std::size_t)>& work,
                       const std::function<void(std::size_t, const std::string&)>& done,
                       const std::function<void(std::size_t, const Death&)>&) {
    for (std::size_t item = 0; item < count; ++item) done(item, work(item));
}

} // namespace TavrelProcesses
