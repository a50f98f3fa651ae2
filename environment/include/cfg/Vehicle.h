#ifndef CFG_VEHICLE_H
#define CFG_VEHICLE_H

#include <cstdint>
#include <string>

#include <cfg/Section.h>
#include <environment/Export.h>

namespace cfg {

// A vehicle of the scenario. The fields and the parameters of these names are the same values.
class TAVREL_ENVIRONMENT_API Vehicle : public Section {
public:
    // The name under which sections of this class stand in their parent.
    static const char* sectionName();

    explicit Vehicle(const detail::SectionSetup& setup);
    ~Vehicle() override;

    std::int32_t id = 0;       // the vehicle's number in the scenario
    std::int32_t driverId = 0; // the id of the driver that drives it
    std::string name;
};

} // namespace cfg

#endif
