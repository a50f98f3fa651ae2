#ifndef LMKUTILS_CONFIGURATIONERROR_H
#define LMKUTILS_CONFIGURATIONERROR_H

#include <stdexcept>
#include <string>

#include <environment/Export.h>

namespace lmkUtils {

// An installation that cannot be taken into use. what() is one sentence, "file:row: reason", with row 0 where the
// file as a whole is meant. Thrown by value; the only exception that leaves the environment.
class TAVREL_ENVIRONMENT_API ConfigurationError : public std::runtime_error {
public:
    explicit ConfigurationError(const std::string& text);
    ConfigurationError(const ConfigurationError& other);
    ConfigurationError& operator=(const ConfigurationError& other);
    ~ConfigurationError() override;
};

} // namespace lmkUtils

#endif
