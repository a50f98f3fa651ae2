#ifndef SCENARIO_INCLUDEREPOSITORY_H
#define SCENARIO_INCLUDEREPOSITORY_H

#include <string>

#include <scenario/Export.h>

// A source of include texts other than the data path of the installation, such as the includes that travel inside a
// scenario. A host implements it; the library has none of its own. When it is asked it may read texts and change any
// tree, the root model included, but that which is being read: what comes later in the text finds the definitions as
// they stand then. A definition that goes must not be that of a call which is still used.
class TAVREL_MODEL_API IncludeRepository {
public:
    virtual ~IncludeRepository();

    // Whether it has a text for this FILE, compared as the host sees fit.
    virtual bool Contains(const std::string& file) = 0;
    // The text of an include, asked for only if Contains answered true. A std::runtime_error counts as "not contained":
    // its text goes to the log and the disk is searched.
    virtual std::string Read(const std::string& file) = 0;
};

// Repositories are asked in the order of their registration, before the disk. They stay the host's, which must
// unregister a repository before destroying it. Registering one twice, or null, does nothing; nor does unregistering
// an unknown one.
TAVREL_MODEL_API void RegisterIncludeRepository(IncludeRepository* repository);
TAVREL_MODEL_API void UnregisterIncludeRepository(IncludeRepository* repository);

#endif
