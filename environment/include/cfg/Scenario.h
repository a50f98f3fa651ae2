#ifndef CFG_SCENARIO_H
#define CFG_SCENARIO_H

#include <string>

#include <cfg/Section.h>
#include <environment/Export.h>

namespace cfg {

// The root section of a scenario file.
class TAVREL_ENVIRONMENT_API Scenario : public Section {
public:
    // The name under which sections of this class stand in their parent.
    static const char* sectionName();

    explicit Scenario(const detail::SectionSetup& setup);
    ~Scenario() override;

    std::string name; // the scenario's display name
    std::string description;
};

} // namespace cfg

#endif
