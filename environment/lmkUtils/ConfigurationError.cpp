#include <lmkUtils/ConfigurationError.h>

namespace lmkUtils {

// All of it stands here, so that the type information exists once and a host on the other side can catch it.
ConfigurationError::ConfigurationError(const std::string& text) : std::runtime_error(text) {}
ConfigurationError::ConfigurationError(const ConfigurationError& other) = default;
ConfigurationError& ConfigurationError::operator=(const ConfigurationError& other) = default;
ConfigurationError::~ConfigurationError() = default;

} // namespace lmkUtils
