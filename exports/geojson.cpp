#include "exports/formats.h"
#include "exports/piece_writer.h"
#include "platform/number_text.h"

namespace fleetor {

namespace {

std::string jsonPlace(Coordinate at) {
  return '[' + decimals(at.longitude, 6) + ',' + decimals(at.latitude, 6) + ']';
}

void writeColumn(PieceWriter& file, const char* name, const std::vector<float>& column, int places) {
  if (column.empty()) return;
  file << ",\n\"" << name << "\":[";
  for (std::size_t i = 0; i < column.size(); ++i)
    file << (i ? "," : "") << decimals(column[i], places);
  file << "]";
}

}  // namespace

bool writeGeoJson(const DayRecord& record, const PieceSink& sink) {
  const DayPoints& points = *record.points;
  PieceWriter file(sink);
  file << "{\"type\":\"FeatureCollection\",\"features\":[";
  const char* separator = "\n";
  for (const DayStop& stop : points.stops) {
    file << separator << "{\"type\":\"Feature\",\"geometry\":{\"type\":\"Point\",\"coordinates\":"
         << jsonPlace(points.coordinates[stop.index])
         << "},\"properties\":{\"address\":" << jsonQuoted(addressOf(points, stop.index))
         << ",\"time\":" << jsonQuoted(stop.time) << ",\"duration\":" << jsonQuoted(stop.duration) << "}}";
    separator = ",\n";
  }
  if (points.size() >= 2) {
    file << separator << "{\"type\":\"Feature\",\"geometry\":{\"type\":\"LineString\",\"coordinates\":[\n";
    for (std::size_t i = 0; i < points.size(); ++i)
      file << (i ? ",\n" : "") << jsonPlace(points.coordinates[i]);
    file << "]},\n\"properties\":{\"vehicle\":" << jsonQuoted(record.vehicle.name)
         << ",\"registration\":" << jsonQuoted(record.vehicle.registration)
         << ",\"day\":" << jsonQuoted(record.day);
    writeColumn(file, "secondsOfDay", points.seconds, 0);
    writeColumn(file, "kilometres", points.kilometres, 3);
    file << "}}";
  }
  file << "\n]}\n";
  return file.finish();
}

}  // namespace fleetor
