// The main of every test program. A host may work in any folder and under any locale, and so may the tests:
// TAVREL_TEST_LOCALE and TAVREL_TEST_FOLDER say which, `scripts/test-matrix` sets them.

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <locale>
#include <stdexcept>
#include <string>
#include <system_error>

#include <unistd.h>

#include <gmock/gmock.h>

namespace {

// Makes a folder that is the one for temporary files of this program and of those that it starts, and goes with it. So
// a test may give its files fixed names, and programs that run side by side do not meet.
class TemporaryFolder {
public:
    TemporaryFolder() {
        // A death test may start the program once more, which then works in the folder of the first.
        if (std::getenv("TAVREL_TEST_IS_AT_WORK")) return;
        path = (std::filesystem::temp_directory_path() / "tavrel-test-XXXXXX").string();
        if (!::mkdtemp(path.data())) throw std::runtime_error("no temporary folder");
        // Some tests go on as another user.
        using std::filesystem::perms;
        std::filesystem::permissions(path, perms::owner_all | perms::group_read | perms::group_exec |
                                               perms::others_read | perms::others_exec);
        for (const char* name : {"TMPDIR", "TEST_TMPDIR"}) ::setenv(name, path.c_str(), 1);
        ::setenv("TAVREL_TEST_IS_AT_WORK", "1", 1);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        if (!path.empty()) std::filesystem::remove_all(path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

private:
    std::string path;
};

} // namespace

int main(int count, char** arguments) {
    testing::InitGoogleMock(&count, arguments);
    const TemporaryFolder temporaryFolder;
    // What a shell starts in the background ignores an interrupt, and so would the programs that the tests interrupt.
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    if (const char* name = std::getenv("TAVREL_TEST_LOCALE")) {
        std::locale::global(std::locale(name)); // throws for one that the system does not have
        if (!std::setlocale(LC_ALL, name)) return EXIT_FAILURE;
    }
    if (const char* folder = std::getenv("TAVREL_TEST_FOLDER")) {
        if (::chdir(folder) != 0) {
            std::perror(folder);
            return EXIT_FAILURE;
        }
    }
    return RUN_ALL_TESTS();
}
