#pragma once

#include <string>

#include "ui/environment.h"

namespace fleetor {

/// Puts the text on the clipboard, and a toast reports it. Main thread only.
void copyToClipboard(Environment& environment, const std::string& text);

}  // namespace fleetor
