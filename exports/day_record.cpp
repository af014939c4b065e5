#include "exports/day_record.h"

#include <string_view>

#include "exports/piece_writer.h"

namespace fleetor {

std::string fileNameOf(const DayRecord& record) {
  constexpr std::size_t longestName = 80;
  std::string name;
  for (const char c : record.vehicle.name.view()) {
    const bool isForbidden = static_cast<unsigned char>(c) < 0x20 ||
                             std::string_view("/\\:*?\"<>|\x7f").find(c) != std::string_view::npos;
    name += isForbidden ? '_' : c;
  }
  if (name.size() > longestName) {
    std::size_t end = longestName;
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80)
      --end;  // not within a character
    name.resize(end);
  }
  // A leading dot would hide the file.
  if (name.starts_with('.')) name[0] = '_';
  return name + (name.empty() ? "" : " ") + record.day;
}

std::string timeTextOf(const DayStop& stop) {
  return stop.time + (stop.time.empty() || stop.duration.empty() ? "" : ", ") + stop.duration;
}

const std::string& addressOf(const DayPoints& points, std::size_t point) {
  return points.addressTexts[points.addresses[point]];
}

}  // namespace fleetor
