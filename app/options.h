#pragma once

#include <optional>
#include <string>
#include <vector>

namespace fleetor {

/// What a person asks of the client on its command line.
struct Options {
  bool tablet = false;
  bool fresh = false;  ///< forget what this client has kept, as if it had just been installed
  bool dark = false;
  bool help = false;
  std::optional<std::string> language;  ///< its code; nothing: the system's
  std::optional<int> textSize;          ///< percent of the normal size; nothing: the system's
  std::string url;                      ///< what the desktop asks the client to open; may be empty
  std::optional<int> width;             ///< points; both or none
  std::optional<int> height;
};

/// How large the window opens, in points.
struct Opening {
  int width = 0;
  int height = 0;
  bool fills = false;  ///< the whole of the screen's available part

  friend bool operator==(const Opening&, const Opening&) = default;
};

/// As it was asked for, or else as is usual for a phone or a tablet: within the available part of the screen,
/// with room for a title bar, and filling that on a screen of a phone's size.
Opening openingOf(const Options& options, bool tablet, int availableWidth, int availableHeight);

inline constexpr int smallestSide = 240;
inline constexpr int largestSide = 8000;

extern const char* const usage;

/// Reads the words after the program's name; a language must be one of `languages`. Nothing when one of them
/// is wrong; `problem` then says which and why.
std::optional<Options> parseOptions(const std::vector<std::string>& words,
                                    const std::vector<std::string>& languages, std::string& problem);

}  // namespace fleetor
