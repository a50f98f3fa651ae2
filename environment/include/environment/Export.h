#ifndef ENVIRONMENT_EXPORT_H
#define ENVIRONMENT_EXPORT_H

// Marks what the environment library shows to its users; everything else stays hidden.
#define TAVREL_ENVIRONMENT_API __attribute__((visibility("default")))

#endif
