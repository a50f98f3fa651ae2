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

// Why a call failed. It leaves the library in two forms, and a host catches both around every call:
//
//     try {
//         ...
//     } catch (const ScenarioTemplateDb::Exception& failure) {
//         report(failure.message);
//     } catch (ScenarioTemplateDb::Exception* failure) {
//         std::unique_ptr<ScenarioTemplateDb::Exception> owned(failure);
//         report(owned->message);
//     }
//
// By value: drivers, databases, directories and scenarios. By pointer, made with new and deleted by whoever
// catches it: look-ups and typed accessors of nodes, parameters and variadic parameters. The few operations that
// differ say so. Neither handler sees the other form, and neither form is a std::exception.
class SCENARIO_TEMPLATE_DB_API Exception {
public:
    Exception(std::string text, int category) : message(std::move(text)), code(category) {}

    std::string message; // English, for the user, complete in itself
    int code;            // one of ExceptionCode...
};

} // namespace ScenarioTemplateDb

#endif
