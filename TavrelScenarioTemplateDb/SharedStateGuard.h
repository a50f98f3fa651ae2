#ifndef TAVREL_SCENARIO_TEMPLATE_DB_SHARED_STATE_GUARD_H
#define TAVREL_SCENARIO_TEMPLATE_DB_SHARED_STATE_GUARD_H

#include <iosfwd>
#include <memory>

#include <TavrelScenarioTemplateDb/Export.h>

namespace TavrelScenarioTemplateDb {

// Puts back at its end what all users of the library in a process share: the log of the item model, what std::cout
// writes to, the root model that scripts are linked to, the installation file in use and the current configuration.
//
// A host opens and browses templates within such an object when something else is at work in the same process: a
// scenario that runs, a second driver, or a program that writes its own results to the standard output, where the
// library tells what it finds in a root model and in includes. Objects nest, and end in the reverse order.
class TAVREL_DRIVER_API SharedStateGuard {
public:
    // What the library writes to std::cout while this object lives goes to `messages`, which must live as long; null
    // drops it.
    explicit SharedStateGuard(std::ostream* messages = nullptr);
    ~SharedStateGuard();
    SharedStateGuard(const SharedStateGuard&) = delete;
    SharedStateGuard& operator=(const SharedStateGuard&) = delete;

private:
    struct Former;
    std::unique_ptr<const Former> former;
};

} // namespace TavrelScenarioTemplateDb

#endif
