#pragma once

#include <string>

#include "platform/documents.h"

namespace fleetor {

/// Writes a file under another name and gives it its own once it is complete: it is there whole or not at
/// all. Without `replace` an existing file stays, and this one is numbered: "Van (2).gpx". Any thread. `path`
/// becomes the path that it got. Never returns `cancelled`.
SaveOutcome writeWholeFile(std::string& path, bool replace,
                           const std::function<bool(const PieceSink&)>& write);

}  // namespace fleetor
