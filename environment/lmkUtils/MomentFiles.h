#ifndef LMKUTILS_MOMENTFILES_H
#define LMKUTILS_MOMENTFILES_H

#include <string>

// The files that describe the installation, for the time of an InstallationMoment.
namespace lmkUtils::detail {

// As ReadPlainFile, but a file that was read since the moment began is not read again.
bool ReadMomentFile(const std::string& path, std::string& text, std::string& reason);
void ForgetMomentFiles();

} // namespace lmkUtils::detail

#endif
