#pragma once

#include <string>
#include <string_view>

namespace fleetor::demo {

// iso-8859-1, utf-16 (big endian with a byte-order mark), utf-16le, utf-16be, in any case.
bool canEncode(std::string_view charset);

// UTF-8 text in another character set. What the set lacks becomes a question mark.
std::string encodeText(std::string_view utf8, std::string_view charset);

}  // namespace fleetor::demo
