#pragma once

#include <string>

#include "platform/coordinate.h"

namespace fleetor {

// A place in words and as a URL. Any thread, whatever the locale.

/// "50.061430, 19.937440"
std::string decimalText(Coordinate at);

/// "50°03′41.1″N 19°56′14.8″E"
std::string degreesText(Coordinate at);

/// "geo:50.061430,19.937440"
std::string geoURL(Coordinate at);

/// A new mail with that subject and text, to somebody whom the mail program asks for.
std::string mailURL(const std::string& subject, const std::string& body);

}  // namespace fleetor
