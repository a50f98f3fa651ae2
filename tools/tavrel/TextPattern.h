#ifndef TAVREL_COMMAND_TEXTPATTERN_H
#define TAVREL_COMMAND_TEXTPATTERN_H

#include <string>
#include <string_view>

namespace tavrel {

// What a user looks for: compared without regard to case, in all alphabets; "*" stands for any characters and "?" for
// one, and then the whole text has to fit. Without them the pattern may stand anywhere in the text. Backslashes of
// stored paths count as slashes.
class TextPattern {
public:
    explicit TextPattern(const std::string& pattern);
    bool Fits(std::string_view text) const;

private:
    std::u32string wanted;
    bool isWhole; // the pattern has wildcards
};

} // namespace tavrel

#endif
