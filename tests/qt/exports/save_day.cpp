// save_day MAP ROUTE NAME FOLDER: two answers of the service become a day's file in every format, and its
// first point a QR code, in that folder, for the programs of others to read.

#include <QGuiApplication>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "exports/drivers_log.h"
#include "exports/formats.h"
#include "exports/position.h"
#include "exports/qr_code.h"
#include "model/json.h"
#include "qt/page_printer.h"
#include "service/envelopes.h"
#include "service/model_class.h"

namespace fleetor {
namespace {

template <class R>
std::shared_ptr<R> answerIn(const char* path) {
  std::ifstream file(path);
  std::string text(std::istreambuf_iterator<char>(file), {});
  return std::static_pointer_cast<R>(mapEnvelope<R>(*decodeJSON(std::move(text))).envelope);
}

template <class Write>
void save(const std::string& path, Write write) {
  std::ofstream file(path);
  if (!write([&](std::string_view piece) { return static_cast<bool>(file << piece); }) || !file.flush()) {
    std::fprintf(stderr, "save_day: %s could not be written\n", path.c_str());
    std::exit(1);
  }
}

int run(char** arguments) {
  DayRecord day;
  day.vehicle.name = arguments[3];
  day.vehicle.registration = "KR 1";
  day.day = "2026-11-20";
  day.colour = 0x1e90ff;
  day.points =
      std::make_shared<const DayPoints>(DayPoints::fromAnswer(*answerIn<MapResponse>(arguments[1]), day.day));
  day.trips = *answerIn<RouteResponse>(arguments[2])->route;
  const auto words = ExportWords::of([](const std::string& key) { return key; });
  const std::string folder = arguments[4] + std::string("/day");
  save(folder + ".gpx", [&](const PieceSink& sink) { return writeGpx(day, sink); });
  save(folder + ".kml", [&](const PieceSink& sink) { return writeKml(day, sink); });
  save(folder + ".geojson", [&](const PieceSink& sink) { return writeGeoJson(day, sink); });
  save(folder + ".csv", [&](const PieceSink& sink) { return writeCsv(day, words, sink); });
  save(folder + ".pdf", [&](const PieceSink& sink) { return sink(pdfOf(driversLog(day, words))); });
  save(folder + ".pbm", [&](const PieceSink& sink) {
    const QrCode code = qrCodeOf(geoURL(day.points->coordinates.front()));
    std::string picture = "P1 " + std::to_string(code.side * 4) + ' ' + std::to_string(code.side * 4) + '\n';
    for (int y = 0; y < code.side * 4; ++y)
      for (int x = 0; x < code.side * 4; ++x)
        picture += code.isDark(x / 4, y / 4) ? "1 " : "0 ";
    return sink(picture);
  });
  return 0;
}

}  // namespace
}  // namespace fleetor

int main(int argc, char** argv) {
  QGuiApplication application(argc, argv);
  return argc == 5 ? fleetor::run(argv) : 2;
}
