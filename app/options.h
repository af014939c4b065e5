#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/device.h"

namespace fleetor {

/// The options of the command line.
struct Options {
  std::optional<Idiom> deviceClass;  ///< nothing: by the screen and the window
  bool fresh = false;                ///< forget what this client has kept, as if it had just been installed
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

/// The given size, or that of a phone or tablet within the available part of the screen, with room for a
/// title bar. It fills a screen of a phone's size.
Opening openingOf(const Options& options, Idiom deviceClass, int availableWidth, int availableHeight);

inline constexpr int smallestSide = 240;
inline constexpr int largestSide = 8000;

/// What a client that runs already is asked to do: to open the URL, to become a phone or a tablet, or, where
/// it is empty, to come forward.
std::string requestOf(const Options& options);

/// Of such a request; nothing where it asks for something else.
std::optional<Idiom> deviceClassNamed(const std::string& request);

/// How to call the client; asks the application, which must be made by then, for the program's name.
std::string usage();

/// Reads the words after the program's name; a language must be one of `languages`. Nothing when one of them
/// is invalid; `problem` is then the reason.
std::optional<Options> parseOptions(const std::vector<std::string>& words,
                                    const std::vector<std::string>& languages, std::string& problem);

}  // namespace fleetor
