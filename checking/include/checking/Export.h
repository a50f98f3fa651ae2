#ifndef CHECKING_EXPORT_H
#define CHECKING_EXPORT_H

// What the shared library shows to its users.
#define TAVREL_CHECKING_API [[gnu::visibility("default")]]

#endif
