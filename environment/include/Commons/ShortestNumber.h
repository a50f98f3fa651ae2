#ifndef COMMONS_SHORTESTNUMBER_H
#define COMMONS_SHORTESTNUMBER_H

#include <charconv>
#include <string>

namespace Commons {

// A number in the shortest spelling that reads back as the same number of its type, under any locale: 0.1, 1e+30, -12.
template <typename Number>
std::string ShortestNumber(Number number) {
    char text[32]; // enough for every double
    return {text, std::to_chars(text, text + sizeof text, number).ptr};
}

} // namespace Commons

#endif
