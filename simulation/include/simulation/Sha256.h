#ifndef TAVREL_SIMULATION_SHA256_H
#define TAVREL_SIMULATION_SHA256_H

#include <string>
#include <string_view>

#include <simulation/Export.h>

namespace TavrelSimulation {

// The SHA-256 of these bytes, as 64 digits in lower case.
TAVREL_SIMULATION_API std::string Sha256(std::string_view bytes);
// The same of a file; empty if it cannot be read.
TAVREL_SIMULATION_API std::string Sha256OfFile(const std::string& path);

} // namespace TavrelSimulation

#endif
