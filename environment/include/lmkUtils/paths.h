#ifndef LMKUTILS_PATHS_H
#define LMKUTILS_PATHS_H

#include <string>

#include <Commons/Encoding.h>
#include <environment/Export.h>

namespace lmkUtils {

// Whether the path, generic or concrete, leads to something that is not a folder.
TAVREL_ENVIRONMENT_API bool fileExist(const std::string& path, Commons::Encoding::Mode mode);

// A generic path made concrete: variables expanded, forward slashes. An unknown variable stays as it stands.
TAVREL_ENVIRONMENT_API std::string resolveGenericPath(const std::string& path, Commons::Encoding::Mode mode);

// Cuts everything up to and including the last separator, of either kind.
TAVREL_ENVIRONMENT_API void removePath(std::string& path);

} // namespace lmkUtils

#endif
