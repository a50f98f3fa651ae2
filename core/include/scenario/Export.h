#ifndef SCENARIO_EXPORT_H
#define SCENARIO_EXPORT_H

// Marks what the item model shows to hosts; everything else stays hidden.
#define TAVREL_MODEL_API __attribute__((visibility("default")))

#endif
