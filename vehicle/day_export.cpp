#include "vehicle/day_export.h"

#include <cmath>
#include <utility>

#include "day/day_totals.h"
#include "exports/drivers_log.h"
#include "exports/formats.h"
#include "platform/filled_text.h"
#include "service/api.h"
#include "ui/containers/window.h"
#include "vehicle/day_views.h"
#include "vehicle/detail_page_view_controller.h"

namespace fleetor {

namespace {

constexpr double toastSeconds = 5;

struct Format {
  const char* title;   ///< English, not localised yet
  const char* detail;  ///< the same
  const char* ending;
  bool needsPoints;
  bool needsTrips;
  bool (*write)(const DayRecord& record, const ExportWords& words, const Documents& documents,
                const PieceSink& sink);
};

constexpr Format formats[] = {
    {"PDF", "Driver's log, one page", ".pdf", true, true,
     [](const DayRecord& record, const ExportWords& words, const Documents& documents,
        const PieceSink& sink) { return sink(documents.pdfOf(driversLog(record, words))); }},
    {"CSV", "Trips, for a spreadsheet", ".csv", false, true,
     [](const DayRecord& record, const ExportWords& words, const Documents&, const PieceSink& sink) {
       return writeCsv(record, words, sink);
     }},
    {"GPX", "Track, for navigation", ".gpx", true, false,
     [](const DayRecord& record, const ExportWords&, const Documents&, const PieceSink& sink) {
       return writeGpx(record, sink);
     }},
    {"KML", "Track, for a globe", ".kml", true, false,
     [](const DayRecord& record, const ExportWords&, const Documents&, const PieceSink& sink) {
       return writeKml(record, sink);
     }},
    {"GeoJSON", "Track, for map tools", ".geojson", true, false,
     [](const DayRecord& record, const ExportWords&, const Documents&, const PieceSink& sink) {
       return writeGeoJson(record, sink);
     }},
};

void report(Environment& environment, SaveOutcome outcome, const std::string& place) {
  if (outcome == SaveOutcome::cancelled || !environment.window) return;
  const auto words = [&] {
    const Device& device = environment.device;
    switch (outcome) {
      case SaveOutcome::saved:
        return device.localizedString("Saved as {place}");
      case SaveOutcome::diskFull:
        return device.localizedString("Not saved: the disk is full");
      case SaveOutcome::forbidden:
        return device.localizedString("Not saved: the folder cannot be written to");
      case SaveOutcome::cancelled:
      case SaveOutcome::failed:
        break;
    }
    return device.localizedString("The file could not be saved");
  };
  environment.window->showToast(filled(words(), "{place}", place), toastSeconds, false);
}

std::uint32_t rgbOf(const Color& color) {
  const auto byte = [](double share) { return static_cast<std::uint32_t>(std::lround(share * 255)); };
  return byte(color.red) << 16 | byte(color.green) << 8 | byte(color.blue);
}

/// One file on its way: what is missing comes first, one request after the other. A request in flight keeps
/// it alive.
class Export : public std::enable_shared_from_this<Export> {
 public:
  Export(Environment& environment, ExportableDay day, const Format& format)
      : environment_(environment), day_(std::move(day)), format_(format) {}

  void proceed() {
    if (format_.needsPoints && !day_.points) return loadPoints();
    if (format_.needsTrips && !day_.trips) return loadTrips();
    save();
  }

 private:
  Params params() const { return {{"vehid", day_.vehicle.vehicleId}, {"date", day_.day}}; }

  void loadPoints() {
    API::getWithPath(
        "/map", params(), modelClass<MapResponse>, {},
        [self = shared_from_this()](auto response, auto kind, long, auto&) {
          if (kind != ResponseKindSuccess) return;  // the request layer has shown why
          auto& queues = self->environment_.queues;
          queues.global([self, &queues, response = std::move(response)] {
            auto points = std::make_shared<const DayPoints>(DayPoints::fromAnswer(*response, self->day_.day));
            queues.main([self, points = std::move(points)] {
              self->day_.points = points;
              self->proceed();
            });
          });
        });
  }

  void loadTrips() {
    API::getWithPath("/route", params(), modelClass<RouteResponse>, {},
                     [self = shared_from_this()](auto response, auto kind, long, auto&) {
                       if (kind != ResponseKindSuccess) return;
                       self->day_.trips = std::move(*response);
                       self->proceed();
                     });
  }

  void save() {
    const bool hasPoints = format_.needsPoints && day_.points->size() > 0;
    const bool hasTrips = format_.needsTrips && !day_.trips->route->empty();
    if (!hasPoints && !hasTrips)
      return environment_.window->showToast(
          environment_.device.localizedString("There is nothing on this day"), toastSeconds, false);
    DayRecord record{
        day_.vehicle, rgbOf(DetailPageViewController::colorFromHexString(day_.vehicle.mapLineColor)),
        day_.day,     day_.points,
        {},           {}};
    const Localizer localized = [&device = environment_.device](const std::string& key) {
      return device.localizedString(key);
    };
    if (day_.trips) {
      for (auto& [caption, value] :
           factsOf(DayTotals::fromAnswer(*day_.trips, day_.day), environment_.device))
        record.totals.emplace_back(std::move(caption), std::move(value));
      record.trips = std::move(*day_.trips->route);
    }
    const std::string name = fileNameOf(record) + format_.ending;
    const auto words = ExportWords::of(localized);
    environment_.documents->save(
        {name, [&format = format_, &documents = *environment_.documents, record = std::move(record),
                words](const PieceSink& sink) { return format.write(record, words, documents, sink); }},
        [&environment = environment_](SaveOutcome outcome, const std::string& place) {
          report(environment, outcome, place);
        });
  }

  Environment& environment_;
  ExportableDay day_;
  const Format& format_;
};

void showFormats(Environment& environment, const ExportableDay& day) {
  const Device& device = environment.device;
  ActionSheet::Content content{device.localizedString("Save the day"),
                               day.vehicle.name.str() + ", " + day.day};
  for (const Format& format : formats)
    content.entries.push_back(
        {format.title, device.localizedString(format.detail), "RowFile",
         [&environment, day, &format] { std::make_shared<Export>(environment, day, format)->proceed(); }});
  ActionSheet::show(environment, std::move(content));
}

}  // namespace

DayExportButton::DayExportButton(Environment& environment, Outlets& page,
                                 std::function<ExportableDay()> day) {
  page.outlet("exportButton", button_);
  button_.setImage("RowShare");
  button_.setAccessibleName(environment.device.localizedString("Save the day"));
  button_.setEnabled(environment.documents != nullptr);
  button_.setAction([&environment, day = std::move(day)](Component&) { showFormats(environment, day()); });
}

}  // namespace fleetor
