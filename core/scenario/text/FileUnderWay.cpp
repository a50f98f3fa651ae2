#include "text/FileUnderWay.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "text/Problems.h"

namespace {

constexpr std::size_t kDeepest = 1000;
// Files that each name two others double with every level, long before they are deep.
constexpr std::size_t kMost = 10000;

std::vector<std::string> underWay;
std::size_t readWithin = 0; // files, since the outermost of those under way began

} // namespace

FileUnderWay::FileUnderWay(std::string name) {
    if (underWay.size() >= kDeepest) {
        TellLoadWarning("more than 1000 files lie within one another at \"" + name + "\"");
        return;
    }
    if (underWay.empty()) readWithin = 0;
    if (++readWithin > kMost) {
        TellLoadWarning("more than 10000 files are read for one, the last of them \"" + name + "\"");
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
