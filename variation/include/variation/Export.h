#ifndef TAVREL_VARIATION_EXPORT_H
#define TAVREL_VARIATION_EXPORT_H

// Marks what the variation library shows to hosts; everything else stays hidden.
#define TAVREL_VARIATION_API __attribute__((visibility("default")))

#endif
