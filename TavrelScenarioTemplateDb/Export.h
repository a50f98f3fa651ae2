#ifndef TAVREL_SCENARIO_TEMPLATE_DB_EXPORT_H
#define TAVREL_SCENARIO_TEMPLATE_DB_EXPORT_H

// Marks what the driver shows to a host; everything else in the shared library stays hidden.
#define TAVREL_DRIVER_API __attribute__((visibility("default")))

#endif
