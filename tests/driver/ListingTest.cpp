#include <algorithm>
#include <atomic>
#include <map>
#include <random>
#include <thread>

#include <linux/capability.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <Commons/WholeFile.h>
#include <Poco/Exception.h>
#include <Poco/Path.h>
#include <Poco/RecursiveDirectoryIterator.h>
#include <support/DriverTest.h>

// The walk behind the listings, beside Poco's own traversal, which tells what the order and the failures are.

namespace {

// Root may enter any folder. While this object lives, it may not.
class HeedsPermissions {
public:
    HeedsPermissions() {
        syscall(SYS_capget, &header, former);
        __user_cap_data_struct reduced[2] = {former[0], former[1]};
        reduced[0].effective &= ~((1U << CAP_DAC_OVERRIDE) | (1U << CAP_DAC_READ_SEARCH));
        syscall(SYS_capset, &header, reduced);
    }
    ~HeedsPermissions() { syscall(SYS_capset, &header, former); }
    HeedsPermissions(const HeedsPermissions&) = delete;
    HeedsPermissions& operator=(const HeedsPermissions&) = delete;

private:
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct former[2]{};
};

struct Listing {
    std::vector<std::string> paths;
    std::string failure;

    bool operator==(const Listing& other) const = default;
};

void PrintTo(const Listing& listing, std::ostream* out) {
    for (const std::string& path : listing.paths) *out << testing::PrintToString(path) << '\n';
    *out << listing.failure;
}

Listing ListedByPoco(const std::string& root) {
    Listing listing;
    try {
        const Poco::SiblingsFirstRecursiveDirectoryIterator end;
        for (Poco::SiblingsFirstRecursiveDirectoryIterator entry(root); entry != end; ++entry)
            if (entry->isFile() && Poco::Path(entry->path()).getExtension() == "sce") {
                listing.paths.push_back(entry->path().substr(root.size() + 1));
                std::replace(listing.paths.back().begin(), listing.paths.back().end(), '\\', '/');
            }
    } catch (const Poco::Exception& failure) {
        listing.failure = "Cannot list scenarios : " + failure.displayText();
    }
    return listing;
}

Listing Listed(const TavrelScenarioTemplateDatabase& database) {
    Listing listing;
    std::vector<std::pair<std::string, std::string>> paths{{"from", "before"}};
    const Failure failure = failureOf([&] { database.getScenarioPaths("City", 0, paths); });
    EXPECT_TRUE(failure.form == Failure::None || failure.code == 16);
    listing.failure = failure.message;
    for (const auto& path : paths) listing.paths.push_back(path.second);
    return listing;
}

class ListingTest : public testing::Test {
protected:
    ListingTest() {
        installation.configuration("City", "1", {"city"});
        root = installation.path() + "/city/data/scenario";
        fs::create_directories(root);
    }
    ~ListingTest() override { OpenAgain(); }

    TavrelScenarioTemplateDatabase database() { return {installation.file(), "*", "City"}; }

    // So that the tree can be removed.
    void OpenAgain() {
        for (const std::string& folder : closed) fs::permissions(folder, fs::perms::owner_all);
        closed.clear();
    }

    // Any bytes that a name may have; many are scenarios, some nearly.
    std::string RandomName() {
        static const std::string kLikely = "ab.\\ ~\n\xC3\xB8$%*";
        std::string name;
        for (std::size_t length = 1 + random() % 6; name.size() < length;) {
            const char c =
                random() % 3 == 0 ? static_cast<char>(random() % 255 + 1) : kLikely[random() % kLikely.size()];
            if (c != '/') name += c;
        }
        static const char* const kEnds[] = {".sce", ".sce", ".sce", "", ".SCE", ".sce~"};
        return name + kEnds[random() % std::size(kEnds)];
    }

    void Fill(const std::string& folder, unsigned depth, bool withFaults) {
        for (std::size_t entries = random() % 7; entries > 0; --entries) {
            const std::string name = RandomName();
            const std::string path = folder + "/" + name;
            std::error_code error;
            if (name == "." || name == ".." || fs::symlink_status(path, error).type() != fs::file_type::not_found)
                continue;
            const unsigned kind = static_cast<unsigned>(random() % (withFaults ? 36 : 28));
            if (kind < 14) {
                std::ofstream(path) << "x";
                files.push_back(path);
            } else if (kind < 22) {
                fs::create_directory(path);
                folders.push_back(path);
                if (depth > 0) Fill(path, depth - 1, withFaults);
            } else if (kind < 24 && !files.empty()) {
                fs::create_symlink(files[random() % files.size()], path);
            } else if (kind < 26) {
                fs::create_directory_symlink(elsewhere, path);
            } else if (kind < 28) {
                mkfifo(path.c_str(), 0600);
            } else if (kind == 28) {
                fs::create_symlink("nowhere", path);
            } else if (kind == 29) {
                fs::create_symlink(name, path); // to itself
            } else if (kind == 30) {
                fs::create_directory_symlink(folder, path);
            } else if (!folders.empty()) {
                closed.push_back(folders[random() % folders.size()]);
            }
        }
    }

    InstallationBuilder installation;
    std::string root;
    std::string elsewhere; // a folder that links lead to
    std::vector<std::string> files, folders, closed;
    std::mt19937 random{20};
};

TEST_F(ListingTest, IsThatOfPocoWhateverIsInTheFolders) {
    const TavrelScenarioTemplateDatabase all = database();
    const TavrelConfigurationScenarioDirectory directory(std::make_shared<TavrelScenarioTemplateDatabase>(all), "City",
                                                         0);
    elsewhere = installation.path() + "/elsewhere";
    installation.write("elsewhere/behind a link.sce", "x");
    installation.write("elsewhere/deeper/one more.sce", "x");
    const fs::perms kRights[] = {fs::perms::none, fs::perms::owner_read, fs::perms::owner_exec};
    std::size_t failed = 0, most = 0;
    for (int tree = 0; tree < 250; ++tree) {
        SCOPED_TRACE(tree);
        files.clear();
        folders.clear();
        Fill(root, 3, tree % 2 == 0);
        // A folder that may be listed but not entered fails only where it holds something.
        for (const std::string& folder : closed) fs::permissions(folder, kRights[random() % 3]);
        {
            const HeedsPermissions heeds;
            const Listing expected = ListedByPoco(root);
            ASSERT_EQ(Listed(all), expected);
            failed += expected.failure.empty() ? 0U : 1U;
            most = std::max(most, expected.paths.size());

            std::vector<std::shared_ptr<Scenario>> scenarios{nullptr};
            EXPECT_EQ(failureOf([&] { directory.getScenarios(scenarios); }).message, expected.failure);
            EXPECT_EQ(scenarios.size(), expected.failure.empty() ? expected.paths.size() : 1U);
            for (const std::size_t index : {std::size_t(0), expected.paths.size() / 2, expected.paths.size()}) {
                std::string path, found;
                const std::string failure = failureOf([&] { path = directory.getScenario(index)->getPath(); }).message;
                if (!expected.failure.empty()) {
                    EXPECT_EQ(failure, expected.failure);
                } else if (index < expected.paths.size()) {
                    EXPECT_EQ(path, expected.paths[index]);
                    EXPECT_EQ(scenarios[index]->getPath(), path);
                } else {
                    EXPECT_THAT(failure, testing::StartsWith("Invalid scenario template index"));
                }
            }
            // The first one of a path counts, and what fails after it is never come to.
            for (const std::string& path : expected.paths) EXPECT_EQ(all.getScenarioDirectory(path), root);
            if (expected.failure.empty())
                EXPECT_EQ(all.getScenarioDirectory("absent\\x.sce"), "");
            else
                EXPECT_THROW(all.getScenarioDirectory("absent\\x.sce"), Poco::Exception);
        }
        OpenAgain();
        fs::remove_all(root);
        fs::create_directory(root);
    }
    EXPECT_GT(failed, 30U);
    EXPECT_GT(most, 20U);
}

// Others save, add, remove and rename while a walk is under way. What nobody touches is listed once each, and no
// listing fails over what came and went.
TEST_F(ListingTest, BearsChangesUnderTheWalk) {
    std::set<std::string> still;
    for (int folder = 0; folder < 8; ++folder)
        for (int file = 0; file < 30; ++file) {
            const std::string path = "still " + std::to_string(folder) + "/" + std::to_string(file) + ".sce";
            installation.write("city/data/scenario/" + path, "x");
            still.insert(path);
        }
    const TavrelScenarioTemplateDatabase all = database();
    std::atomic<bool> finished = false;
    const auto change = [&](unsigned seed) {
        std::mt19937 own(seed);
        std::error_code error;
        const std::string name = "moved " + std::to_string(seed);
        while (!finished) {
            const std::string folder = root + "/still " + std::to_string(own() % 8);
            std::string reason;
            fs::create_directory(folder + "/" + name, error);
            std::ofstream(folder + "/" + name + "/a.sce") << "x";
            fs::create_symlink(root + "/still 0/0.sce", folder + "/" + name + "/link.sce", error);
            Commons::WriteFileWhole(folder + "/" + name + "/a.sce", "y", reason);
            fs::rename(folder + "/" + name, root + "/" + name, error);
            fs::create_directory_symlink(folder, root + "/" + name + "/up.sce", error);
            fs::remove(root + "/" + name + "/link.sce", error);
            fs::remove_all(root + "/" + name, error);
            fs::remove_all(folder + "/" + name, error);
        }
    };
    std::vector<std::thread> others;
    for (unsigned seed = 1; seed <= 2; ++seed) others.emplace_back(change, seed);
    const auto expectStill = [&](const std::vector<std::string>& paths) {
        std::map<std::string, int> count;
        for (const std::string& path : paths)
            if (path.find("moved") == std::string::npos) ++count[path];
        EXPECT_EQ(count.size(), still.size());
        for (const auto& [path, times] : count) EXPECT_TRUE(times == 1 && still.count(path) == 1) << path;
    };
    for (int round = 0; round < 300 && !HasFailure(); ++round) {
        const Listing listing = Listed(all);
        EXPECT_EQ(listing.failure, "");
        expectStill(listing.paths);
        EXPECT_EQ(all.getScenarioDirectory("still 7/29.sce"), root);
    }
    // The way that tells failures, too, fails over what is wrong and stays so, and over nothing else.
    fs::create_symlink("nowhere", root + "/still 5/broken");
    for (int round = 0; round < 100 && !HasFailure(); ++round) {
        const std::string failure = Listed(all).failure; // come to by one of the links, perhaps
        EXPECT_THAT(failure, testing::StartsWith("Cannot list scenarios : File not found: " + root));
        EXPECT_THAT(failure, testing::EndsWith("/broken"));
    }
    finished = true;
    for (std::thread& other : others) other.join();
}

TEST_F(ListingTest, PassesOverTheFilesOfASaveUnderWay) {
    installation.write("city/data/scenario/a.sce", "x");
    const std::string rest = root + "/.save-0123456789abcdef-17";
    ASSERT_TRUE(Commons::IsSaveUnderWay(".save-0123456789abcdef-17"));
    fs::create_symlink("nowhere", rest);
    EXPECT_EQ(Listed(database()), (Listing{{"a.sce"}, ""}));
    fs::create_symlink("nowhere", root + "/real");
    EXPECT_EQ(Listed(database()).failure, "Cannot list scenarios : File not found: " + root + "/real");
}

} // namespace
