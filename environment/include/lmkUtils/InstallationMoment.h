#ifndef LMKUTILS_INSTALLATIONMOMENT_H
#define LMKUTILS_INSTALLATIONMOMENT_H

#include <environment/Export.h>

namespace lmkUtils {

// While one of these lives, each of the files that describe the installation is read once: all answers of EnvConfig are
// then of the moment of the first that needed the file. For one call of an interface that asks several times, never
// longer: the files may change at any time. They nest, and the outermost counts. A file that is taken into use
// meanwhile is read anew.
class TAVREL_ENVIRONMENT_API InstallationMoment {
public:
    InstallationMoment();
    ~InstallationMoment();
    InstallationMoment(const InstallationMoment&) = delete;
    InstallationMoment& operator=(const InstallationMoment&) = delete;
};

} // namespace lmkUtils

#endif
