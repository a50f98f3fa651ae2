#include <lmkUtils/paths.h>

#include <Commons/FileUtils.h>
#include <Commons/System.h>

#include "../Commons/Files.h"

namespace lmkUtils {

bool fileExist(const std::string& path, Commons::Encoding::Mode mode) {
    return Commons::FileUtils::DoesFileExist(resolveGenericPath(path, mode));
}

std::string resolveGenericPath(const std::string& path, Commons::Encoding::Mode) {
    std::string resolved;
    Commons::System::ExpandLocalEnvironmentVariables(path, resolved, Commons::System::DaemonVariableMatchingPattern,
                                                     {});
    return Commons::detail::WithForwardSlashes(resolved);
}

void removePath(std::string& path) {
    const size_t separator = path.find_last_of("/\\");
    if (separator != std::string::npos) path.erase(0, separator + 1);
}

} // namespace lmkUtils
