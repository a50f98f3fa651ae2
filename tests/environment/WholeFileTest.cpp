#include <Commons/WholeFile.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <locale>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <grp.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/InstallationBuilder.h>

namespace {

using Commons::FileLock;
using Commons::ReplaceFileWhole;
using Commons::WriteFileWhole;
namespace fs = std::filesystem;

constexpr uid_t kUser = 65534;       // an ordinary user, and the group of that number
constexpr gid_t kSecondGroup = 4711; // of the ordinary user, too
constexpr gid_t kForeignGroup = 4712;
constexpr gid_t kNamedUser = 4713;

// An access control list as the kernel keeps it; a group or mask below 0 is left out.
std::string list(int owner, int named, int group, int mask, int others, std::uint32_t namedUser = kNamedUser) {
    std::string bytes("\2\0\0\0", 4);
    const auto add = [&bytes](int tag, int rights, std::uint32_t id) {
        if (rights < 0) return;
        const std::array<std::uint16_t, 2> entry{static_cast<std::uint16_t>(tag), static_cast<std::uint16_t>(rights)};
        bytes.append(reinterpret_cast<const char*>(entry.data()), 4);
        bytes.append(reinterpret_cast<const char*>(&id), 4);
    };
    add(1, owner, 0xFFFFFFFF);
    add(2, named, namedUser);
    add(4, group, 0xFFFFFFFF);
    add(16, mask, 0xFFFFFFFF);
    add(32, others, 0xFFFFFFFF);
    return bytes;
}

bool setAttribute(const std::string& path, const char* name, const std::string& value) {
    return ::setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

// All that a save must leave as it is, as text.
std::string rightsOf(const std::string& path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) return "missing";
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << std::oct << status.st_mode << std::dec << " " << status.st_uid << ":" << status.st_gid;
    if (fs::is_symlink(path)) return out.str() + " -> " + fs::read_symlink(path).string();
    for (const char* name : {"system.posix_acl_access", "user.origin", "user.empty"}) {
        char value[256];
        const ssize_t size = ::lgetxattr(path.c_str(), name, value, sizeof value);
        if (size < 0) continue;
        out << " " << name << "=";
        for (ssize_t i = 0; i < size; ++i) out << std::hex << static_cast<int>(value[i] & 0xFF) << ".";
    }
    return out.str();
}

// Runs it as an ordinary user in a process of its own. What it answers is told by the exit status.
bool asUser(const std::function<bool()>& work) {
    const pid_t child = ::fork();
    if (child == 0) {
        const gid_t groups[] = {kSecondGroup};
        const bool changed = ::setgroups(1, groups) == 0 && ::setgid(kUser) == 0 && ::setuid(kUser) == 0;
        ::_exit(changed && work() ? 0 : 1);
    }
    int status = 1;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// What this user owns has a folder that the ordinary one may enter.
class WholeFileTest : public testing::Test {
protected:
    void SetUp() override {
        fs::permissions(folder.path(), static_cast<fs::perms>(0777));
        fs::create_directory(here);
        fs::permissions(here, static_cast<fs::perms>(0777));
    }

    std::string make(const std::string& name, mode_t mode, uid_t owner, gid_t group) {
        const std::string path = here + "/" + name;
        std::ofstream(path) << "before";
        if (::chown(path.c_str(), owner, group) != 0) return {};
        ::chmod(path.c_str(), mode); // NOLINT(cert-err33-c): a failure shows in what is compared
        return path;
    }

    static std::vector<std::string> restsIn(const std::string& where) {
        std::vector<std::string> rests;
        for (const auto& entry : fs::directory_iterator(where)) {
            const std::string name = entry.path().filename();
            if (name.starts_with(".")) rests.push_back(name);
        }
        return rests;
    }

    InstallationBuilder folder;
    const std::string here = folder.path() + "/files";
};

TEST_F(WholeFileTest, RightsListsAttributesAndLinksStay) {
    struct Row {
        const char* why;
        mode_t mode;
        gid_t group;                    // of the file
        std::string accessList;         // empty for none
        std::vector<const char*> steps; // what else is special
    };
    const Row rows[] = {
        {"usual", 0644, kUser, "", {}},
        {"private", 0600, kUser, "", {}},
        {"shared in a second group", 0660, kSecondGroup, "", {}},
        {"others more than the group", 0604, kSecondGroup, "", {}},
        {"program", 0755, kUser, "", {}},
        {"group and sticky bits", 03775, kSecondGroup, "", {}},
        {"list with a narrower mask", 0640, kUser, list(6, 6, 6, 4, 0), {}},
        {"list in a second group", 0660, kSecondGroup, list(6, 4, 0, 6, 0), {}},
        {"attributes", 0644, kUser, "", {"attribute"}},
        {"folder that gives a list", 0640, kUser, "", {"default"}},
        {"all together, by links", 0640, kSecondGroup, list(6, 4, 4, 4, 0), {"attribute", "default", "link"}},
        {"folder of a group", 0644, kUser, "", {"setgid"}},
    };
    if (::geteuid() != 0) GTEST_SKIP() << "only root can become an ordinary user";
    for (const bool asRoot : {true, false}) {
        for (const Row& row : rows) {
            SCOPED_TRACE(std::string(row.why) + (asRoot ? ", as root" : ", as an ordinary user"));
            const auto has = [&row](std::string_view step) {
                return std::find(row.steps.begin(), row.steps.end(), step) != row.steps.end();
            };
            const std::string path = make("a", row.mode, kUser, row.group);
            if (!row.accessList.empty() && !setAttribute(path, "system.posix_acl_access", row.accessList))
                GTEST_SKIP() << "no access control lists here: " << std::strerror(errno);
            if (has("attribute")) {
                ASSERT_TRUE(setAttribute(path, "user.origin", "pack \n7") && setAttribute(path, "user.empty", ""));
            }
            if (has("default")) {
                ASSERT_TRUE(setAttribute(here, "system.posix_acl_default", list(7, 7, 7, 7, 7)));
            }
            if (has("setgid")) {
                ASSERT_EQ(::chmod(here.c_str(), 02777) | ::chown(here.c_str(), 0, kForeignGroup), 0);
            }
            std::string given = path;
            if (has("link")) {
                fs::create_symlink("a", here + "/inner");
                fs::create_symlink("files/inner", folder.path() + "/outer");
                given = folder.path() + "\\outer";
            }
            const auto described = [&] {
                return rightsOf(path) + rightsOf(here + "/inner") + rightsOf(folder.path() + "/outer");
            };
            const std::string before = described();

            const auto save = [&] {
                std::string reason;
                if (WriteFileWhole(given, "after", reason)) return true;
                std::fprintf(stderr, "%s\n", reason.c_str());
                return false;
            };
            EXPECT_TRUE(asRoot ? save() : asUser(save));
            EXPECT_EQ(described(), before);
            EXPECT_EQ(contentOf(path), "after");
            EXPECT_THAT(restsIn(here), testing::IsEmpty());
            fs::remove_all(here);
            fs::remove(folder.path() + "/outer");
            SetUp();
        }
    }
}

// The ordinary user may write, but is in no group of that number, or cannot give the file back to its owner.
TEST_F(WholeFileTest, RightsAreNarrowedWhereTheGroupIsLost) {
    struct Row {
        const char* why;
        mode_t mode;
        std::string accessList;
        mode_t expectedMode;
        std::string expectedList;
    };
    const Row rows[] = {
        {"the new group gets what others had", 0664, "", 0644, ""},
        {"nothing, where others had nothing", 0660, "", 0600, ""},
        {"the former group stays shut out", 0606, "", 0600, ""},
        {"no rights of a group that is another", 06775, "", 0755, ""},
        {"a list", 0664, list(6, 6, 4, 6, 6), 0664, list(6, 6, 0, 6, 4)},
        {"a list with a mask", 0644, list(6, 6, 6, 4, 7), 0644, list(6, 6, 0, 4, 4)},
    };
    if (::geteuid() != 0) GTEST_SKIP() << "only root can become an ordinary user";
    for (const Row& row : rows) {
        SCOPED_TRACE(row.why);
        const std::string path = make("a", row.mode, kUser, kForeignGroup);
        if (!row.accessList.empty() && !setAttribute(path, "system.posix_acl_access", row.accessList))
            GTEST_SKIP() << "no access control lists here: " << std::strerror(errno);
        const std::string expected = make("b", row.expectedMode, kUser, kUser);
        if (!row.expectedList.empty()) {
            ASSERT_TRUE(setAttribute(expected, "system.posix_acl_access", row.expectedList));
        }
        ::chmod(expected.c_str(), row.expectedMode); // NOLINT(cert-err33-c)
        std::string reason;
        EXPECT_TRUE(asUser([&] { return WriteFileWhole(path, "after", reason); }));
        std::string wanted = rightsOf(expected);
        if (row.mode & 04000) wanted.replace(0, 6, "104755"); // the owner is the same
        EXPECT_EQ(rightsOf(path), wanted);
    }
    // Another's file: a member of its group writes it, and the file is his then.
    const std::string path = make("theirs", 04664, 0, kSecondGroup);
    std::string reason;
    EXPECT_TRUE(asUser([&] { return WriteFileWhole(path, "after", reason); }));
    EXPECT_EQ(rightsOf(path), "100664 " + std::to_string(kUser) + ":" + std::to_string(kSecondGroup));
}

TEST_F(WholeFileTest, RefusalsLeaveAllAsItWas) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root can become an ordinary user";
    const std::string path = make("protected", 0444, kUser, kUser);
    const std::string closed = folder.path() + "/closed";
    fs::create_directory(closed);
    std::ofstream(closed + "/a") << "before";
    fs::permissions(closed + "/a", static_cast<fs::perms>(0666));
    const std::string secret = make("secret", 0622, 0, 0);
    ASSERT_TRUE(setAttribute(secret, "user.origin", "x"));
    struct Row {
        std::string path;
        const char* reason;
    };
    const Row rows[] = {
        {path, "no permission"},
        {closed + "/a", "no permission to make a file in its folder"},
        {secret, "its attribute user.origin cannot be kept: no permission"},
        {here, "a folder, not a file"},
    };
    for (const Row& row : rows) {
        const std::string before = rightsOf(row.path);
        EXPECT_TRUE(asUser([&] {
            std::string reason;
            return !WriteFileWhole(row.path, "after", reason) && reason == row.reason;
        })) << row.path;
        EXPECT_EQ(rightsOf(row.path), before);
        if (fs::is_regular_file(row.path)) {
            EXPECT_EQ(contentOf(row.path), "before") << row.path;
        }
    }
    EXPECT_THAT(restsIn(here), testing::IsEmpty());
    EXPECT_THAT(restsIn(closed), testing::IsEmpty());
}

TEST_F(WholeFileTest, AFileThatChangedMeanwhileIsNotReplaced) {
    const std::string path = make("a", 0644, ::geteuid(), ::getegid());
    std::string reason;
    EXPECT_TRUE(ReplaceFileWhole(path, "before", "mine", reason)) << reason;
    struct stat status {};
    ::stat(path.c_str(), &status);
    std::ofstream(path) << "ours"; // as long, and of the same time
    const timespec times[] = {status.st_atim, status.st_mtim};
    ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
    EXPECT_FALSE(ReplaceFileWhole(path, "mine", "again", reason));
    EXPECT_EQ(reason, "it has been changed by someone else meanwhile, so load it again");
    EXPECT_EQ(contentOf(path), "ours");
    EXPECT_TRUE(WriteFileWhole(path, "again", reason)) << "nobody asked";
    fs::remove(path);
    EXPECT_TRUE(ReplaceFileWhole(path, "again", "new", reason)) << "nothing is replaced";
}

TEST_F(WholeFileTest, ALockIsWaitedForAndStaysWithTheName) {
    using namespace std::chrono_literals;
    const std::string path = make("a", 0644, ::geteuid(), ::getegid());
    std::array<int, 2> toParent{};
    std::array<int, 2> toChild{};
    ASSERT_EQ(::pipe(toParent.data()) | ::pipe(toChild.data()), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        char sign = 0;
        std::string reason;
        {
            const FileLock lock(path);
            const FileLock inner(here + "/../files/a");
            WriteFileWhole(path, "by the child", reason); // the lock is on another file now
            if (::write(toParent[1], "1", 1) != 1 || ::read(toChild[0], &sign, 1) != 1) ::_exit(1);
            std::ofstream(path, std::ios::app) << ", whole";
        }
        ::_exit(::read(toChild[0], &sign, 1) == 1 ? 0 : 1);
    }
    char sign = 0;
    ASSERT_EQ(::read(toParent[0], &sign, 1), 1);
    EXPECT_FALSE(FileLock(path, 20ms).isFree());
    EXPECT_TRUE(FileLock(here + "/missing", 20ms).isFree());
    ASSERT_EQ(::write(toChild[1], "1", 1), 1);
    std::string reason;
    EXPECT_TRUE(ReplaceFileWhole(path, "by the child, whole", "by the parent", reason)) << reason;
    EXPECT_TRUE(FileLock(path, 20ms).isFree());
    ASSERT_EQ(::write(toChild[1], "1", 1), 1);
    ::waitpid(child, nullptr, 0);
}

// Another thread is someone else: what it saves is neither lost nor undone, whichever file each of them locks.
TEST_F(WholeFileTest, ThreadsWaitForEachOther) {
    using namespace std::chrono_literals;
    constexpr int kThreads = 4;
    constexpr int kRounds = 25;
    const std::string path = make("a", 0644, ::geteuid(), ::getegid());
    std::string reason;
    ASSERT_TRUE(WriteFileWhole(path, "0", reason)) << reason;
    std::array<int, kThreads> failed{};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([&, t] {
            std::string why;
            for (int i = 0; i < kRounds; ++i) {
                failed.at(static_cast<size_t>(t)) += !WriteFileWhole(here + "/own" + std::to_string(t), "mine", why);
                const FileLock lock(path, 60s);
                const std::string before = contentOf(path);
                failed.at(static_cast<size_t>(t)) +=
                    !lock.isFree() ||
                    !ReplaceFileWhole(path, before, std::to_string(std::atoi(before.c_str()) + 1), why);
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_THAT(failed, testing::Each(0));
    EXPECT_EQ(contentOf(path), std::to_string(kThreads * kRounds));
}

TEST_F(WholeFileTest, ARestGoesWithTheNextSave) {
    const std::string path = make("a", 0644, ::geteuid(), ::getegid());
    const std::string other = make("b", 0644, ::geteuid(), ::getegid());
    const pid_t child = ::fork();
    if (child == 0) {
        const rlimit small{64, 64}; // beyond which the system ends the process
        ::setrlimit(RLIMIT_FSIZE, &small);
        std::signal(SIGXFSZ, SIG_DFL);
        std::string reason;
        WriteFileWhole(path, std::string(1000, 'x'), reason);
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(contentOf(path), "before");
    ASSERT_EQ(restsIn(here).size(), 1U);
    EXPECT_TRUE(Commons::IsSaveUnderWay(restsIn(here).front()));
    std::string reason;
    EXPECT_TRUE(WriteFileWhole(other, "after", reason)) << reason;
    EXPECT_EQ(restsIn(here).size(), 1U) << "that of another file is not this one's business";
    EXPECT_TRUE(WriteFileWhole(path, "after", reason)) << reason;
    EXPECT_THAT(restsIn(here), testing::IsEmpty());
}

// Four programs count in one file and are killed again and again. TAVREL_TEST_KILLS sets how often.
TEST_F(WholeFileTest, KilledWritersLoseNothing) {
    const char* const wanted = std::getenv("TAVREL_TEST_KILLS");
    const int kills = wanted ? std::atoi(wanted) : 40;
    constexpr int kWriters = 4;
    const std::string path = make("counts", 0640, ::geteuid(), ::getegid());
    std::ofstream(path) << "0 0 0 0";
    auto* const stored = static_cast<volatile int*>(
        ::mmap(nullptr, kWriters * sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    const auto count = [&](int writer) {
        for (;;) {
            const FileLock lock(path);
            const std::string before = contentOf(path);
            std::istringstream in(before);
            std::array<int, kWriters> counts{};
            for (int& number : counts) in >> number;
            const int mine = ++counts[static_cast<size_t>(writer)];
            std::ostringstream out;
            for (const int number : counts) out << number << " ";
            std::string reason;
            // What was told to be stored is there, however often the writers of it have been killed since.
            if (!in || mine <= stored[writer] || !ReplaceFileWhole(path, before, out.str(), reason)) {
                std::fprintf(stderr, "writer %d: %s (%s)\n", writer, reason.c_str(), before.c_str());
                ::_exit(1);
            }
            stored[writer] = mine;
        }
    };
    const auto start = [&](int writer) {
        const pid_t child = ::fork();
        if (child == 0) count(writer);
        return child;
    };
    std::array<pid_t, kWriters> writers{};
    for (int i = 0; i < kWriters; ++i) writers[static_cast<size_t>(i)] = start(i);
    std::mt19937 random(1); // NOLINT(cert-msc51-cpp): each run the same
    size_t rests = 0;
    for (int kill = 0; kill < kills; ++kill) {
        ::usleep(static_cast<useconds_t>(random() % 20'000));
        const size_t victim = random() % kWriters;
        int status = 0;
        ::kill(writers[victim], SIGKILL);
        ::waitpid(writers[victim], &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "a writer gave up";
        writers[victim] = start(static_cast<int>(victim));
    }
    for (const pid_t writer : writers) {
        ::kill(writer, SIGKILL);
        ::waitpid(writer, nullptr, 0);
    }
    rests = restsIn(here).size();
    const std::string left = contentOf(path);
    std::istringstream in(left);
    int sum = 0;
    for (int i = 0; i < kWriters; ++i) {
        int number = 0;
        in >> number;
        EXPECT_GE(number, stored[i]) << left;
        sum += number;
    }
    std::string reason;
    EXPECT_TRUE(ReplaceFileWhole(path, left, "end", reason)) << reason;
    EXPECT_THAT(restsIn(here), testing::IsEmpty());
    RecordProperty("saves", sum);
    std::printf("%d kills, %d saves, %zu rests before the last save\n", kills, sum, rests);
}

TEST_F(WholeFileTest, OnlyItsOwnFilesAreRemoved) {
    const std::string path = make("a", 0644, ::geteuid(), ::getegid());
    const std::vector<std::string> others = {".save",         ".save-1-2",       ".save-0123456789abcdef-", ".saved",
                                             ".save-a.sce-1", ".save-notes.txt", ".save-0123456789abcdeg-1"};
    for (const std::string& name : others) {
        std::ofstream(here + "/" + name) << "kept";
        EXPECT_FALSE(Commons::IsSaveUnderWay(name)) << name;
    }
    EXPECT_TRUE(Commons::IsSaveUnderWay(".save-0123456789abcdef-12"));
    std::string reason;
    EXPECT_TRUE(WriteFileWhole(path, "after", reason)) << reason;
    EXPECT_EQ(restsIn(here).size(), others.size());
}

} // namespace
