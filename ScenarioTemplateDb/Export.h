#ifndef SCENARIO_TEMPLATE_DB_EXPORT_H
#define SCENARIO_TEMPLATE_DB_EXPORT_H

// Keeps type information visible in a module that hides its symbols by default. Host and driver each emit their
// own copy of what these headers define; only visible copies are merged, and only then does a host catch what a
// driver threw, or cast what a driver handed out.
#define SCENARIO_TEMPLATE_DB_API __attribute__((visibility("default")))

#endif
