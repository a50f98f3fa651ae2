#include "FileUnderWay.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "Refusal.h"

namespace {

constexpr std::size_t kDeepest = 1000;

std::vector<std::string> underWay;

} // namespace

FileUnderWay::FileUnderWay(std::string name) {
    if (underWay.size() >= kDeepest) {
        TellLoadWarning("more than 1000 files lie within one another at \"" + name + "\"");
        return;
    }
    if (std::find(underWay.begin(), underWay.end(), name) != underWay.end()) {
        TellLoadWarning("the file \"" + name + "\" leads back to itself");
        return;
    }
    underWay.push_back(std::move(name));
    isEntered = true;
}

FileUnderWay::~FileUnderWay() {
    if (isEntered) underWay.pop_back();
}
