#include "exports/formats.h"
#include "exports/piece_writer.h"
#include "platform/number_text.h"

namespace fleetor {

namespace {

std::string placeAttributes(Coordinate at) {
  return " lat=\"" + decimals(at.latitude, 6) + "\" lon=\"" + decimals(at.longitude, 6) + "\">";
}

}  // namespace

bool writeGpx(const DayRecord& record, const PieceSink& sink) {
  const DayPoints& points = *record.points;
  const std::string name = xmlEscaped(record.vehicle.name) + ' ' + xmlEscaped(record.day);
  PieceWriter file(sink);
  file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
          "<gpx version=\"1.1\" creator=\"Fleetor\" xmlns=\"http://www.topografix.com/GPX/1/1\">\n"
          "<metadata><name>"
       << name << "</name></metadata>\n";
  for (const DayStop& stop : points.stops) {
    if (!points.isPlaced(stop.index)) continue;
    file << "<wpt" << placeAttributes(points.coordinates[stop.index]) << "<name>"
         << xmlEscaped(addressOf(points, stop.index)) << "</name><desc>" << xmlEscaped(timeTextOf(stop))
         << "</desc></wpt>\n";
  }
  file << "<trk><name>" << name << "</name><trkseg>\n";
  TextColumn::Reader times(points.times);
  for (std::size_t i = 0; i < points.size(); ++i) {
    const std::string_view time = times.next();
    if (!points.isPlaced(i)) continue;
    file << "<trkpt" << placeAttributes(points.coordinates[i]);
    if (!time.empty()) file << "<desc>" << xmlEscaped(time) << "</desc>";
    file << "</trkpt>\n";
  }
  file << "</trkseg></trk>\n</gpx>\n";
  return file.finish();
}

}  // namespace fleetor
