#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ui/controls/controls.h"

namespace fleetor {

/// A text as it is compared: no case, no accents, letters such as "ł" and "ß" as "l" and "ss", every digit
/// as an ASCII one. Any thread.
struct FoldedText {
  std::string text;                ///< UTF-8
  std::vector<TextRange> sources;  ///< for each byte of `text` the bytes of the original that it stands for
};

FoldedText fold(std::string_view text);

/// The same with letters and digits only, as registrations are compared: "KR 1-23" is "kr123".
FoldedText foldTight(std::string_view text);

}  // namespace fleetor
