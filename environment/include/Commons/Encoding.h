#ifndef COMMONS_ENCODING_H
#define COMMONS_ENCODING_H

#include <string>

#include <environment/Export.h>

namespace Commons::Encoding {

// How the bytes of a path are to be read. Every caller passes 1; any other value is taken for it.
enum Mode : int { ModeUtf8 = 1 };

// A path in UTF-8 as wide characters, one per code point. A byte that is no UTF-8 becomes U+DC00 + byte, so that two
// different paths never become one.
TAVREL_ENVIRONMENT_API std::wstring Transcode(const std::string& text, Mode mode);

} // namespace Commons::Encoding

#endif
