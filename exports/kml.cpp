#include <array>
#include <cstdio>

#include "exports/formats.h"
#include "exports/piece_writer.h"
#include "platform/number_text.h"

namespace fleetor {

namespace {

std::string kmlPlace(Coordinate at) {
  return decimals(at.longitude, 6) + ',' + decimals(at.latitude, 6);
}

/// Opaque; the order is blue, green, red.
std::string kmlColour(std::uint32_t colour) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "ff%02x%02x%02x", colour & 0xff, colour >> 8 & 0xff,
                colour >> 16 & 0xff);
  return text.data();
}

}  // namespace

bool writeKml(const DayRecord& record, const PieceSink& sink) {
  const DayPoints& points = *record.points;
  const std::string name = xmlEscaped(record.vehicle.name) + ' ' + xmlEscaped(record.day);
  PieceWriter file(sink);
  file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
          "<kml xmlns=\"http://www.opengis.net/kml/2.2\"><Document>\n<name>"
       << name << "</name>\n";
  for (const DayStop& stop : points.stops) {
    if (!points.isPlaced(stop.index)) continue;
    file << "<Placemark><name>" << xmlEscaped(addressOf(points, stop.index)) << "</name><description>"
         << xmlEscaped(timeTextOf(stop)) << "</description><Point><coordinates>"
         << kmlPlace(points.coordinates[stop.index]) << "</coordinates></Point></Placemark>\n";
  }
  if (points.size() - points.unplaced.size() >= 2) {
    file << "<Placemark><name>" << name << "</name><Style><LineStyle><color>" << kmlColour(record.colour)
         << "</color><width>4</width></LineStyle></Style><LineString><tessellate>1</"
            "tessellate><coordinates>\n";
    for (std::size_t i = 0; i < points.size(); ++i)
      if (points.isPlaced(i)) file << kmlPlace(points.coordinates[i]) << "\n";
    file << "</coordinates></LineString></Placemark>\n";
  }
  file << "</Document></kml>\n";
  return file.finish();
}

}  // namespace fleetor
