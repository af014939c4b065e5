#pragma once

#include <string>

namespace fleetor {

/// Whether the desktop has a program for URLs of that scheme ("tel"). Reads the desktop's lists of programs:
/// a few milliseconds at the first call. Any thread.
bool hasProgramForScheme(const std::string& scheme);

}  // namespace fleetor
