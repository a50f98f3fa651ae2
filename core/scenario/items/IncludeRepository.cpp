#include <scenario/IncludeRepository.h>

#include <algorithm>

#include "items/IncludeRepositories.h"

IncludeRepository::~IncludeRepository() = default;

std::vector<IncludeRepository*>& IncludeRepositories() {
    static std::vector<IncludeRepository*> repositories;
    return repositories;
}

void RegisterIncludeRepository(IncludeRepository* repository) {
    std::vector<IncludeRepository*>& all = IncludeRepositories();
    if (repository && std::find(all.begin(), all.end(), repository) == all.end()) all.push_back(repository);
}

void UnregisterIncludeRepository(IncludeRepository* repository) { std::erase(IncludeRepositories(), repository); }
