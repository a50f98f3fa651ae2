#ifndef CFG_DRIVER_H
#define CFG_DRIVER_H

#include <cstdint>
#include <string>

#include <cfg/Section.h>
#include <environment/Export.h>

namespace cfg {

// A driver of the scenario. The fields and the parameters of these names are the same values.
class TAVREL_ENVIRONMENT_API Driver : public Section {
public:
    // The name under which sections of this class stand in their parent.
    static const char* sectionName();

    explicit Driver(const detail::SectionSetup& setup);
    ~Driver() override;

    std::int32_t id = 0; // the driver's number in the scenario
    std::string name;    // the driver's own name
    std::string label;   // what a display name shows in brackets
};

} // namespace cfg

#endif
