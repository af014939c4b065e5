#include "exports/formats.h"
#include "exports/piece_writer.h"
#include "platform/number_text.h"

namespace fleetor {

namespace {

std::string jsonPlace(Coordinate at) {
  return '[' + decimals(at.longitude, 6) + ',' + decimals(at.latitude, 6) + ']';
}

/// The texts of the points that have a position.
template <class TextOf>
void writePlaced(PieceWriter& file, const DayPoints& points, const char* comma, TextOf textOf) {
  const char* separator = "";
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (!points.isPlaced(i)) continue;
    file << separator << textOf(i);
    separator = comma;
  }
}

void writeColumn(PieceWriter& file, const DayPoints& points, const char* name,
                 const std::vector<float>& column, int places) {
  if (column.empty()) return;
  file << ",\n\"" << name << "\":[";
  writePlaced(file, points, ",", [&](std::size_t i) { return decimals(column[i], places); });
  file << "]";
}

}  // namespace

bool writeGeoJson(const DayRecord& record, const PieceSink& sink) {
  const DayPoints& points = *record.points;
  PieceWriter file(sink);
  file << "{\"type\":\"FeatureCollection\",\"features\":[";
  const char* separator = "\n";
  for (const DayStop& stop : points.stops) {
    if (!points.isPlaced(stop.index)) continue;
    file << separator << "{\"type\":\"Feature\",\"geometry\":{\"type\":\"Point\",\"coordinates\":"
         << jsonPlace(points.coordinates[stop.index])
         << "},\"properties\":{\"address\":" << jsonQuoted(addressOf(points, stop.index))
         << ",\"time\":" << jsonQuoted(stop.time) << ",\"duration\":" << jsonQuoted(stop.duration) << "}}";
    separator = ",\n";
  }
  if (points.size() - points.unplaced.size() >= 2) {
    file << separator << "{\"type\":\"Feature\",\"geometry\":{\"type\":\"LineString\",\"coordinates\":[\n";
    writePlaced(file, points, ",\n", [&](std::size_t i) { return jsonPlace(points.coordinates[i]); });
    file << "]},\n\"properties\":{\"vehicle\":" << jsonQuoted(record.vehicle.name)
         << ",\"registration\":" << jsonQuoted(record.vehicle.registration)
         << ",\"day\":" << jsonQuoted(record.day);
    writeColumn(file, points, "secondsOfDay", points.seconds, 0);
    writeColumn(file, points, "kilometres", points.kilometres, 3);
    file << "}}";
  }
  file << "\n]}\n";
  return file.finish();
}

}  // namespace fleetor
