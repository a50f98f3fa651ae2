#ifndef SCENARIO_INCLUDEREPOSITORIES_H
#define SCENARIO_INCLUDEREPOSITORIES_H

#include <vector>

class IncludeRepository;

// The repositories of this process, in the order of their registration; borrowed.
std::vector<IncludeRepository*>& IncludeRepositories();

#endif
