#ifndef TAVREL_VARIATION_REFUSED_H
#define TAVREL_VARIATION_REFUSED_H

#include <stdexcept>
#include <string>

#include <variation/Export.h>

namespace TavrelVariation {

// What is wrong with a plan, and where: `place` is a path of members and positions, such as "parameters/Fog/step" or
// "constraints/0". what() is "PLACE: REASON", or the reason alone where the whole plan is meant and the place empty.
class TAVREL_VARIATION_API Refused : public std::runtime_error {
public:
    Refused(const std::string& place, const std::string& reason)
        : std::runtime_error(place.empty() ? reason : place + ": " + reason), where(place), why(reason) {}

    const std::string& Place() const { return where; }
    const std::string& Reason() const { return why; }

private:
    std::string where;
    std::string why;
};

} // namespace TavrelVariation

#endif
