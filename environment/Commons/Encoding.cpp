#include <Commons/Encoding.h>

#include "Utf8.h"

namespace Commons::Encoding {

std::wstring Transcode(const std::string& text, Mode) {
    constexpr wchar_t kStrayByte = 0xDC00; // the range that encodes nothing by itself, so no clash is possible
    std::wstring wide;
    wide.reserve(text.size());
    for (size_t at = 0; at < text.size();) {
        const size_t length = detail::Utf8SequenceLength(text, at);
        if (length == 0)
            wide += static_cast<wchar_t>(kStrayByte + static_cast<unsigned char>(text[at++]));
        else
            wide += static_cast<wchar_t>(detail::Utf8CodePoint(text, at, length)), at += length;
    }
    return wide;
}

} // namespace Commons::Encoding
