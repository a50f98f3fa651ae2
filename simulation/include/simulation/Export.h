#ifndef TAVREL_SIMULATION_EXPORT_H
#define TAVREL_SIMULATION_EXPORT_H

// Marks what the simulation library shows to hosts; everything else stays hidden.
#define TAVREL_SIMULATION_API __attribute__((visibility("default")))

#endif
