#include <lmkUtils/InstallationMoment.h>

#include "MomentFiles.h"

namespace lmkUtils {

namespace {

unsigned moments = 0;

detail::MomentAnswers& Answers() {
    static detail::MomentAnswers answers;
    return answers;
}

} // namespace

InstallationMoment::InstallationMoment() { ++moments; }

InstallationMoment::~InstallationMoment() {
    if (--moments == 0) detail::ForgetMomentAnswers();
}

namespace detail {

MomentAnswers* AnswersOfMoment() { return moments == 0 ? nullptr : &Answers(); }

void ForgetMomentAnswers() { Answers() = {}; }

} // namespace detail

} // namespace lmkUtils
