#include "exports/formats.h"
#include "exports/piece_writer.h"

namespace fleetor {

bool writeCsv(const DayRecord& record, const ExportWords& words, const PieceSink& sink) {
  PieceWriter file(sink);
  file << "\xEF\xBB\xBF";
  const char* separator = "";
  const auto cell = [&](std::string_view text) {
    file << separator << csvCell(text);
    separator = ",";
  };
  const auto endLine = [&] {
    file << "\r\n";
    separator = "";
  };
  const std::string kilometres = words.distance + " (km)";
  for (const std::string* caption :
       {&words.status, &words.start, &words.end, &words.duration, &kilometres, &words.from, &words.to})
    cell(*caption);
  endLine();
  for (const RouteItem& trip : record.trips) {
    for (const Text* text :
         {&trip.status, &trip.timeFrom, &trip.timeTo, &trip.duration, &trip.distance, &trip.from, &trip.to})
      cell(*text);
    endLine();
  }
  return file.finish();
}

}  // namespace fleetor
