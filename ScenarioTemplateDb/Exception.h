#ifndef SCENARIO_TEMPLATE_DB_EXCEPTION_H
#define SCENARIO_TEMPLATE_DB_EXCEPTION_H

#include <string>
#include <utility>

#include <ScenarioTemplateDb/Export.h>

namespace ScenarioTemplateDb {

// Values of Exception::code.
inline constexpr int ExceptionCodeGeneric = -1; // no category of its own; never "no failure"
inline constexpr int ExceptionCodeInvalidIndex =
    4; // beyond the end of a listing, or a listing that holds no such thing
inline constexpr int ExceptionCodeDirectoryAccess = 16; // a scenario directory cannot be read
inline constexpr int ExceptionCodeScenarioRead = 20;    // the bytes of a scenario file cannot be read
inline constexpr int ExceptionCodeScenarioLoad = 24;    // a scenario cannot be found, or its file cannot be loaded
inline constexpr int ExceptionCodeParameterType = 32;   // a typed accessor was used on a parameter of another type

// Why a call failed. It leaves the library in three forms, and a host catches all of them around every call:
//     try {
//         ...
//     } catch (const ScenarioTemplateDb::Exception& failure) {
//         report(failure.message);
//     } catch (ScenarioTemplateDb::Exception* failure) {
//         report(std::unique_ptr<ScenarioTemplateDb::Exception>(failure)->message);
//     } catch (const std::exception& failure) {
//         report(failure.what());
//     }
// By value: drivers, databases, directories and scenarios. By pointer, made with new and deleted by whoever catches it:
// look-ups and typed accessors of nodes, parameters and variadic parameters. The few operations that differ say so. As
// a std::exception, which the first two are not: what passes through from below, such as the failure of a walk at a
// link that leads nowhere. <TavrelScenarioTemplateDb/Failures.h> makes one std::exception of all three.
class SCENARIO_TEMPLATE_DB_API Exception {
public:
    Exception(std::string text, int category) : message(std::move(text)), code(category) {}

    std::string message; // English, for the user, complete in itself
    int code;            // one of ExceptionCode...
};

} // namespace ScenarioTemplateDb

#endif
