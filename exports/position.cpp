#include "exports/position.h"

#include <array>
#include <cmath>
#include <cstdio>

#include "exports/piece_writer.h"
#include "platform/number_text.h"

namespace fleetor {

namespace {

std::string degrees(double value, char positive, char negative) {
  // Counted in tenths of a second, so that 59.96 seconds carry.
  const long tenths = std::lround(std::abs(value) * 36000);
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%02ld°%02ld′%02ld.%ld″%c", tenths / 36000, tenths / 600 % 60,
                tenths / 10 % 60, tenths % 10, value < 0 ? negative : positive);
  return text.data();
}

std::string percentEncoded(const std::string& text) {
  std::string encoded;
  for (const char c : text) {
    const bool isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                         c == '-' || c == '.' || c == '_' || c == '~';
    if (isPlain) {
      encoded += c;
      continue;
    }
    std::array<char, 4> escape{};
    std::snprintf(escape.data(), escape.size(), "%%%02X",
                  static_cast<unsigned>(static_cast<unsigned char>(c)));
    encoded += escape.data();
  }
  return encoded;
}

}  // namespace

std::string decimalText(Coordinate at) {
  return decimals(at.latitude, 6) + ", " + decimals(at.longitude, 6);
}

std::string degreesText(Coordinate at) {
  return degrees(at.latitude, 'N', 'S') + ' ' + degrees(at.longitude, 'E', 'W');
}

std::string geoURL(Coordinate at) {
  return "geo:" + decimals(at.latitude, 6) + ',' + decimals(at.longitude, 6);
}

std::string mailURL(const std::string& subject, const std::string& body) {
  return "mailto:?subject=" + percentEncoded(subject) + "&body=" + percentEncoded(body);
}

}  // namespace fleetor
