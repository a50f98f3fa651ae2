#include "FileRights.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

#include <endian.h>
#include <linux/posix_acl.h>
#include <linux/posix_acl_xattr.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "Files.h"

namespace Commons::detail {

namespace {

// The list as the kernel shows it. It goes from file to file as it is, so the numbers in it need no names.
constexpr const char* kAccessList = "system.posix_acl_access";

constexpr mode_t kAllRights = 7;
constexpr unsigned kGroup = 3; // where the rights of the group stand in a mode; those of the others stand at 0

// Calls of the kind that tell the size first. Empty for what is not there or may not be read; see errno.
template <typename Read>
std::optional<std::string> ReadSized(Read read) {
    for (;;) {
        const ssize_t size = read(nullptr, 0);
        if (size < 0) return std::nullopt;
        std::string bytes(static_cast<size_t>(size), '\0');
        if (bytes.empty()) return bytes;
        const ssize_t count = read(bytes.data(), bytes.size());
        if (count < 0 && errno == ERANGE) continue; // it has grown meanwhile
        if (count < 0) return std::nullopt;
        bytes.resize(static_cast<size_t>(count));
        return bytes;
    }
}

std::optional<std::string> ReadAttribute(const std::string& path, const char* name) {
    return ReadSized([&](char* out, size_t size) { return ::lgetxattr(path.c_str(), name, out, size); });
}

std::vector<std::string> AttributeNames(const std::string& path) {
    const std::string all =
        ReadSized([&](char* out, size_t size) { return ::llistxattr(path.c_str(), out, size); }).value_or("");
    std::vector<std::string> names;
    for (size_t at = 0; at < all.size(); at += names.back().size() + 1) names.emplace_back(all.c_str() + at);
    return names;
}

// These vouch for bytes that are no longer there.
bool VouchesForContent(std::string_view name) {
    return name == "security.capability" || name == "security.ima" || name == "security.evm";
}

bool KeepAttribute(const std::string& path, const char* name, int replacement) {
    const std::optional<std::string> value = ReadAttribute(path, name);
    if (!value) return errno == ENODATA; // taken off meanwhile
    return ::fsetxattr(replacement, name, value->data(), value->size(), 0) == 0;
}

mode_t RightsAt(mode_t mode, unsigned place) { return (mode >> place) & kAllRights; }

mode_t WithRights(mode_t mode, mode_t group, mode_t others) {
    return (mode & ~((kAllRights << kGroup) | kAllRights)) | (group << kGroup) | others;
}

class AccessList {
public:
    explicit AccessList(const std::string& bytes) {
        posix_acl_xattr_header header{};
        if (bytes.size() < sizeof header) return;
        std::memcpy(&header, bytes.data(), sizeof header);
        isKnown = le32toh(header.a_version) == POSIX_ACL_XATTR_VERSION;
        if (!isKnown) return;
        entries.resize((bytes.size() - sizeof header) / sizeof(posix_acl_xattr_entry));
        std::memcpy(entries.data(), bytes.data() + sizeof header, entries.size() * sizeof(posix_acl_xattr_entry));
    }

    // The mode of a file that does without the list. Named users and groups fall back on the rights of the group or of
    // the others, so neither may have more than any of them had.
    mode_t ModeWithout(mode_t mode) const {
        if (!isKnown) return WithRights(mode, 0, 0);
        mode_t group = 0;
        mode_t named = kAllRights;
        for (const posix_acl_xattr_entry& entry : entries) {
            const std::uint16_t tag = le16toh(entry.e_tag);
            if (tag == ACL_GROUP_OBJ) group = RightsOf(entry);
            if (tag == ACL_USER || tag == ACL_GROUP) named &= RightsOf(entry);
        }
        // With a list, the mode shows the mask in the place of the group.
        const mode_t common = named & RightsAt(mode, kGroup);
        return WithRights(mode, group & common, RightsAt(mode, 0) & named & (HasNamed() ? common : kAllRights));
    }

    // The list and the mode for another group: its members get nothing by it, and those of the former group, who are
    // others now, no more than they had.
    std::string ForStrangers(mode_t& mode) const {
        mode_t former = RightsAt(mode, kGroup);
        const bool hasMask = std::any_of(entries.begin(), entries.end(), [](const posix_acl_xattr_entry& entry) {
            return le16toh(entry.e_tag) == ACL_MASK;
        });
        for (const posix_acl_xattr_entry& entry : entries)
            if (le16toh(entry.e_tag) == ACL_GROUP_OBJ) former &= RightsOf(entry);
        const mode_t others = RightsAt(mode, 0) & former;
        std::vector<posix_acl_xattr_entry> narrowed = entries;
        for (posix_acl_xattr_entry& entry : narrowed) {
            if (le16toh(entry.e_tag) == ACL_GROUP_OBJ) entry.e_perm = 0;
            if (le16toh(entry.e_tag) == ACL_OTHER) entry.e_perm = htole16(static_cast<std::uint16_t>(others));
        }
        mode = WithRights(mode, hasMask ? RightsAt(mode, kGroup) : 0, others);

        posix_acl_xattr_header header{};
        header.a_version = htole32(POSIX_ACL_XATTR_VERSION);
        std::string bytes(sizeof header + narrowed.size() * sizeof(posix_acl_xattr_entry), '\0');
        std::memcpy(bytes.data(), &header, sizeof header);
        std::memcpy(bytes.data() + sizeof header, narrowed.data(), bytes.size() - sizeof header);
        return bytes;
    }

    bool IsKnown() const { return isKnown; }

private:
    static mode_t RightsOf(const posix_acl_xattr_entry& entry) { return le16toh(entry.e_perm) & kAllRights; }

    bool HasNamed() const {
        return std::any_of(entries.begin(), entries.end(), [](const posix_acl_xattr_entry& entry) {
            return le16toh(entry.e_tag) == ACL_USER || le16toh(entry.e_tag) == ACL_GROUP;
        });
    }

    bool isKnown = false;
    std::vector<posix_acl_xattr_entry> entries;
};

// Members of the former group are others now, and a group that had nothing to do with the file has the group's rights.
mode_t ModeForStrangers(mode_t mode) {
    const mode_t common = RightsAt(mode, kGroup) & RightsAt(mode, 0);
    return WithRights(mode, common, common);
}

bool SetList(int replacement, const std::string& list) {
    return ::fsetxattr(replacement, kAccessList, list.data(), list.size(), 0) == 0;
}

// The folder may have given it one of its own.
bool TakeListOff(int replacement) {
    return ::fremovexattr(replacement, kAccessList) == 0 || errno == ENODATA || errno == ENOTSUP;
}

} // namespace

bool KeepRights(const std::string& path, const struct stat& former, int replacement, std::string& reason) {
    bool hasLostList = false;
    for (const std::string& name : AttributeNames(path)) {
        if (name == kAccessList || VouchesForContent(name) || KeepAttribute(path, name.c_str(), replacement)) continue;
        if (name.starts_with("user.")) {
            reason = "its attribute " + name + " cannot be kept: " + SystemReason(errno);
            return false;
        }
        hasLostList = hasLostList || name.starts_with("system.");
    }

    // Apart, since an ordinary user may not give a file to another owner, but to each of his groups.
    const bool keepsOwner = ::fchown(replacement, former.st_uid, static_cast<gid_t>(-1)) == 0;
    const bool keepsGroup = ::fchown(replacement, static_cast<uid_t>(-1), former.st_gid) == 0;
    mode_t mode = former.st_mode & (S_ISUID | S_ISGID | S_ISVTX | S_IRWXU | S_IRWXG | S_IRWXO);
    if (!keepsOwner) mode &= ~mode_t{S_ISUID};
    if (!keepsGroup) mode &= ~mode_t{S_ISGID};
    if (hasLostList) mode = WithRights(mode, 0, 0);

    bool done = true;
    if (const std::optional<std::string> kept = ReadAttribute(path, kAccessList)) {
        const AccessList list(*kept);
        mode_t modeWithList = mode;
        if (!hasLostList && list.IsKnown() &&
            SetList(replacement, keepsGroup ? *kept : list.ForStrangers(modeWithList))) {
            mode = modeWithList;
        } else {
            done = TakeListOff(replacement);
            mode = keepsGroup ? list.ModeWithout(mode) : ModeForStrangers(list.ModeWithout(mode));
        }
    } else {
        // A list that cannot be looked at may forbid what the mode seems to allow.
        done = (errno == ENODATA || errno == ENOTSUP) && TakeListOff(replacement);
        if (!keepsGroup) mode = ModeForStrangers(mode);
    }
    done = done && ::fchmod(replacement, mode) == 0;
    if (!done) reason = "its access rights cannot be kept: " + SystemReason(errno);
    return done;
}

} // namespace Commons::detail
