#ifndef CHECKING_MENDEDXML_H
#define CHECKING_MENDEDXML_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace TavrelChecking {

// A copy of a file that is no XML, mended as its author most likely meant it, so that one fault does not hide all that
// is written around it: bytes of another encoding are converted, NUL characters left out, signs of markup in a text
// written as such, tags closed. All offsets are bytes, from 0.
class MendedXml {
public:
    // What the file cannot be read for, one for each place.
    struct Fault {
        enum What { Nul, Encoding, Markup };
        What what;
        std::size_t begin; // in the file
        std::size_t end;
        std::string reason;
    };

    // Reads the bytes of a file. Nothing is mended in one that holds two bytes for each character.
    explicit MendedXml(std::string_view file);

    // In the order of the file.
    const std::vector<Fault>& Faults() const { return faults; }
    const std::string& Copy() const { return copy; }
    // Whether an element may be missing from the copy, or stand in another one than it should.
    bool HasLostElements() const { return hasLostElements; }
    // Where a byte of the copy stands in the file, or what was put in.
    std::size_t InFile(std::size_t position) const;
    // Where a byte of the file stands in the copy; the next one that does where it was left out.
    std::size_t InCopy(std::size_t position) const;

private:
    friend class XmlMender;

    struct Piece {
        std::size_t inCopy;
        std::size_t inFile;
        bool isCopied; // otherwise all of it comes from that one place
    };

    std::string copy;
    std::vector<Piece> pieces; // without gaps in the copy
    std::vector<Fault> faults;
    bool hasLostElements = false;
};

} // namespace TavrelChecking

#endif
