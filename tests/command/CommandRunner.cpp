#include "CommandRunner.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <linux/capability.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

std::vector<std::string> Result::lines() const {
    std::vector<std::string> result;
    std::istringstream stream(out);
    for (std::string line; std::getline(stream, line);) result.push_back(line);
    return result;
}

std::ostream& operator<<(std::ostream& out, const Result& result) {
    return out << "status " << result.status << "\n-- out\n" << result.out << "-- err\n" << result.err;
}

Result CommandRunner::operator()(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), TAVREL_COMMAND);
    arguments.insert(arguments.end(), common.begin(), common.end());
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);

    std::array<int, 2> out{}, err{};
    if (pipe(out.data()) != 0 || pipe(err.data()) != 0) throw std::runtime_error("no pipe");
    const pid_t child = fork();
    if (child == 0) {
        dup2(out[1], STDOUT_FILENO);
        dup2(err[1], STDERR_FILENO);
        for (const int end : {out[0], out[1], err[0], err[1]}) close(end);
        unsetenv("TAVREL_CONFIG");
        for (const auto& [name, value] : environment) setenv(name.c_str(), value.c_str(), 1);
        if (heedsPermissions)
            for (const int capability : {CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH}) prctl(PR_CAPBSET_DROP, capability);
        if (!folder.empty() && chdir(folder.c_str()) != 0) _exit(126);
        execv(argv[0], argv.data());
        _exit(127);
    }
    close(out[1]);
    close(err[1]);
    Result result;
    std::array<pollfd, 2> ends{{{out[0], POLLIN, 0}, {err[0], POLLIN, 0}}};
    while (ends[0].fd >= 0 || ends[1].fd >= 0) {
        poll(ends.data(), ends.size(), -1);
        for (std::size_t i = 0; i < ends.size(); ++i) {
            if (ends[i].fd < 0 || !ends[i].revents) continue;
            std::array<char, 65536> bytes{};
            const ssize_t size = read(ends[i].fd, bytes.data(), bytes.size());
            if (size > 0) {
                (i == 0 ? result.out : result.err).append(bytes.data(), static_cast<std::size_t>(size));
            } else {
                close(ends[i].fd);
                ends[i].fd = -1;
            }
        }
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (WIFEXITED(status)) result.status = WEXITSTATUS(status);
    return result;
}

std::string sampleFile() { return TAVREL_SAMPLE "/tavrel.xml"; }

SampleCopy::SampleCopy() {
    std::string folder = (std::filesystem::temp_directory_path() / "tavrel Prüfung 試 XXXXXX").string();
    if (!mkdtemp(folder.data())) throw std::runtime_error("no temporary folder");
    path = folder;
    std::filesystem::copy(TAVREL_SAMPLE, path, std::filesystem::copy_options::recursive);
}

SampleCopy::~SampleCopy() {
    std::error_code error;
    std::filesystem::remove_all(path, error);
}

std::string readFile(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}
