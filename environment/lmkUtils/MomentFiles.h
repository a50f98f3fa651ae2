#ifndef LMKUTILS_MOMENTFILES_H
#define LMKUTILS_MOMENTFILES_H

#include <map>
#include <string>
#include <vector>

#include "Installation.h"

// What the files that describe the installation have said, for the time of an InstallationMoment. A failure is not
// kept.
namespace lmkUtils::detail {

struct MomentAnswers {
    std::map<std::string, std::string> bytes;                  // by the path of a file
    std::map<std::string, Installation> installations;         // by the path of the installation file
    std::map<std::string, std::vector<std::string>> dataPaths; // by the folder of a configuration
};

// Null while there is no moment.
MomentAnswers* AnswersOfMoment();
void ForgetMomentAnswers();

// The answer for a path, which `find` gives; in a moment it does so once.
template <class Answer, class Find>
Answer OnceInAMoment(std::map<std::string, Answer> MomentAnswers::*kept, const std::string& path, Find find) {
    MomentAnswers* const answers = AnswersOfMoment();
    if (!answers) return find();
    std::map<std::string, Answer>& known = answers->*kept;
    if (const auto entry = known.find(path); entry != known.end()) return entry->second;
    return known.emplace(path, find()).first->second;
}

} // namespace lmkUtils::detail

#endif
