#ifndef COMMONS_FILERIGHTS_H
#define COMMONS_FILERIGHTS_H

#include <string>

#include <sys/stat.h>

// Who may do what with a file that replaces another one.
namespace Commons::detail {

// Gives the open file `replacement` the extended attributes, owner, group, access control list and permissions of the
// file at `path`, which has the status `former`. Where group or list cannot be kept, rights are taken away until nobody
// can do more than before. False, with a reason, if even that is not possible or an attribute of the user would be
// lost. `replacement` must be open to its owner alone until then.
bool KeepRights(const std::string& path, const struct stat& former, int replacement, std::string& reason);

} // namespace Commons::detail

#endif
