#ifndef TESTS_SUPPORT_FAILURE_OF_H
#define TESTS_SUPPORT_FAILURE_OF_H

#include <memory>
#include <ostream>
#include <string>
#include <utility>

#include <ScenarioTemplateDb/Exception.h>

// What left a call of the interface: whether it was thrown by value or by pointer, its code and its whole message.
// Cases compare all three, since a host that catches one form lets the other escape.
struct Failure {
    enum Form { None, ByValue, ByPointer };

    Form form = None;
    int code = 0;
    std::string message;

    bool operator==(const Failure& other) const = default;
};

inline Failure byValue(int code, std::string message) { return {Failure::ByValue, code, std::move(message)}; }
inline Failure byPointer(int code, std::string message) { return {Failure::ByPointer, code, std::move(message)}; }

inline void PrintTo(const Failure& failure, std::ostream* out) {
    if (failure.form == Failure::None)
        *out << "nothing thrown";
    else
        *out << (failure.form == Failure::ByValue ? "by value " : "by pointer ") << failure.code << " \""
             << failure.message << '"';
}

// Any other exception passes and fails the test.
template <typename Call>
Failure failureOf(Call call) {
    try {
        call();
    } catch (const ScenarioTemplateDb::Exception& failure) {
        return byValue(failure.code, failure.message);
    } catch (ScenarioTemplateDb::Exception* failure) {
        const std::unique_ptr<ScenarioTemplateDb::Exception> owned(failure);
        return byPointer(owned->code, owned->message);
    }
    return {};
}

#endif
