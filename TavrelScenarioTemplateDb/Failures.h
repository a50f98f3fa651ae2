#ifndef TAVREL_SCENARIO_TEMPLATE_DB_FAILURES_H
#define TAVREL_SCENARIO_TEMPLATE_DB_FAILURES_H

#include <exception>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include <ScenarioTemplateDb/Exception.h>
#include <TavrelScenarioTemplateDb/TavrelDatabaseDriver.h>
#include <TavrelScenarioTemplateDb/TavrelScenario.h>

// For hosts that want one form of failure. The library fails in three: Exception by value, Exception* that the catcher
// deletes, and what passes through it from below as a std::exception (of Poco, of Boost, of the standard library).
// Everything here is header only and changes nothing of the interface.
namespace TavrelScenarioTemplateDb {

// What went wrong, in the library's words.
class ScenarioFailure : public std::runtime_error {
public:
    ScenarioFailure(const std::string& message, int failureCode) : std::runtime_error(message), code(failureCode) {}

    int code; // one of ScenarioTemplateDb::ExceptionCode...
};

// Answers what `call` answers. Whatever form it fails in leaves as a ScenarioFailure, with the code of an Exception and
// ExceptionCodeGeneric for all others; of these the original is nested in it (std::rethrow_if_nested), since a message
// of Poco says more there than in what(). Memory that runs out stays std::bad_alloc.
template <typename Call>
decltype(auto) translateFailures(Call&& call) {
    try {
        return std::forward<Call>(call)();
    } catch (const ScenarioFailure&) {
        throw;
    } catch (const ScenarioTemplateDb::Exception& failure) {
        throw ScenarioFailure(failure.message, failure.code);
    } catch (ScenarioTemplateDb::Exception* failure) {
        const std::unique_ptr<ScenarioTemplateDb::Exception> owned(failure);
        throw ScenarioFailure(owned->message, owned->code);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& failure) {
        std::throw_with_nested(ScenarioFailure(failure.what(), ScenarioTemplateDb::ExceptionCodeGeneric));
    }
}

// TavrelDatabaseDriver::createTavrelScenario with an owner. Never null; throws ScenarioFailure.
inline std::unique_ptr<TavrelScenario> createScenario(const TavrelDatabaseDriver& driver,
                                                      const std::string& configuration, const std::string& path) {
    return translateFailures(
        [&] { return std::unique_ptr<TavrelScenario>(driver.createTavrelScenario(configuration, path)); });
}

// TavrelScenario::save with an answer: throws ScenarioFailure with the reason, and then the old file is as it was.
inline void saveOrThrow(TavrelScenario& scenario) {
    translateFailures([&] { scenario.save(); });
    if (!scenario.getSaveFailure().empty())
        throw ScenarioFailure("Unable to save scenario " + scenario.getFilePath() + " :\n" + scenario.getSaveFailure(),
                              ScenarioTemplateDb::ExceptionCodeGeneric);
}

} // namespace TavrelScenarioTemplateDb

#endif
