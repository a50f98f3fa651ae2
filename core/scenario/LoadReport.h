#ifndef SCENARIO_LOADREPORT_H
#define SCENARIO_LOADREPORT_H

#include <string>

#include <scenario/ScenarioItem.h>

#include "Refusal.h"

// How the reader tells the listener of <scenario/LoadDiagnostics.h> why a text was refused.

// What the reader itself finds wrong. A cause that a class has kept says more and stands before these.
enum class Cause { NoHeader, UnknownKind, TooDeep, NoBrace, ItemRefused, ItemIncomplete, TextEnds, NoNumber };

// `item` is the one whose lines are being read, or null. Always false.
[[gnu::cold]] bool ReportRefusal(const ScenarioTextStream& stream, Cause cause, const ScenarioItem* item);
void ForgetKeptCause();
// The cause of an earlier line explains nothing of this one.
inline void ForgetRefusalCause() {
    if (RefusalsAreTold()) ForgetKeptCause();
}
void ReportWarning(const ScenarioTextStream& place, const std::string& cause);
void ReportUnreadableFile(const std::string& cause);

// The name under which problems are told while it lives.
class LoadSource {
public:
    explicit LoadSource(const std::string& name);
    ~LoadSource();
    LoadSource(const LoadSource&) = delete;
    LoadSource& operator=(const LoadSource&) = delete;

private:
    std::string outer;
};

#endif
