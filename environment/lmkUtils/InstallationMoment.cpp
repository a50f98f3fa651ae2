#include <lmkUtils/InstallationMoment.h>

#include <map>

#include "../Commons/Files.h"
#include "MomentFiles.h"

namespace lmkUtils {

namespace {

unsigned moments = 0;

std::map<std::string, std::string>& BytesByPath() {
    static std::map<std::string, std::string> bytes;
    return bytes;
}

} // namespace

InstallationMoment::InstallationMoment() { ++moments; }

InstallationMoment::~InstallationMoment() {
    if (--moments == 0) detail::ForgetMomentFiles();
}

namespace detail {

bool ReadMomentFile(const std::string& path, std::string& text, std::string& reason) {
    if (moments == 0) return Commons::detail::ReadPlainFile(path, text, reason);
    const auto known = BytesByPath().find(path);
    if (known != BytesByPath().end()) {
        text = known->second;
        return true;
    }
    if (!Commons::detail::ReadPlainFile(path, text, reason)) return false;
    BytesByPath().emplace(path, text);
    return true;
}

void ForgetMomentFiles() { BytesByPath().clear(); }

} // namespace detail

} // namespace lmkUtils
