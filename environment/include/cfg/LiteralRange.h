#ifndef CFG_LITERALRANGE_H
#define CFG_LITERALRANGE_H

#include <string>

#include <cfg/Section.h>
#include <environment/Export.h>

namespace cfg {

// One text that a literal parameter may take.
class TAVREL_ENVIRONMENT_API LiteralRange : public Section {
public:
    // The name under which sections of this class stand in their parent.
    static const char* sectionName();

    explicit LiteralRange(const detail::SectionSetup& setup);
    ~LiteralRange() override;

    std::string literal;
};

} // namespace cfg

#endif
