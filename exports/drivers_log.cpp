#include "exports/drivers_log.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "day/day_timeline.h"
#include "exports/piece_writer.h"
#include "map/mercator.h"
#include "platform/number_text.h"

namespace fleetor {

namespace {

// Millimetres.
constexpr double margin = 15;
constexpr double contentWidth = 180;
constexpr PageBox mapBox{margin, 34, contentWidth, 92};
constexpr double mapPadding = 7;
constexpr PageBox ribbonBox{margin, 131, contentWidth, 6};
constexpr double totalsTop = 145;
constexpr double tableTop = 161;
constexpr double tableBottom = 284;
constexpr double lowestRow = 4.2;
constexpr double highestRow = 7;
constexpr double closest = 0.1;  ///< of two drawn points
constexpr double longestScale = 40;
constexpr double leastExtent = 200;  ///< metres; a day in one place is not enlarged any further

constexpr std::uint32_t ink = 0x1b252d;
constexpr std::uint32_t faint = 0x566571;
constexpr std::uint32_t rule = 0xc9d3d9;
constexpr std::uint32_t ground = 0xeef1ee;
constexpr std::uint32_t standing = 0xdde4e8;

struct MapFrame {
  WorldPoint centre;
  double scale = 0;  ///< millimetres a world unit

  PagePoint place(Coordinate at) const {
    const WorldPoint point = project(at);
    return {mapBox.x + mapBox.width / 2 + (point.x - centre.x) * scale,
            mapBox.y + mapBox.height / 2 + (point.y - centre.y) * scale};
  }
};

MapFrame frameOf(const std::vector<Coordinate>& coordinates) {
  WorldRect bounds{1, 1, 0, 0};
  for (const Coordinate& at : coordinates) {
    const auto [x, y] = project(at);
    bounds = {std::min(bounds.left, x), std::min(bounds.top, y), std::max(bounds.right, x),
              std::max(bounds.bottom, y)};
  }
  const WorldPoint centre{(bounds.left + bounds.right) / 2, (bounds.top + bounds.bottom) / 2};
  const double least = leastExtent / metresPerWorldUnit(unproject(centre).latitude);
  return {centre, std::min((mapBox.width - 2 * mapPadding) / std::max(bounds.width(), least),
                           (mapBox.height - 2 * mapPadding) / std::max(bounds.height(), least))};
}

void addDot(Page& page, PagePoint at, double side, std::uint32_t colour) {
  page.areas.push_back({{at.x - side / 2, at.y - side / 2, side, side}, colour});
}

/// The longest of 1, 2, 5, 10, 20 ... metres that fits.
void addScale(Page& page, double metresPerMillimetre) {
  double metres = 1;
  for (int step = 0; metres * (step % 3 == 1 ? 2.5 : 2) / metresPerMillimetre <= longestScale; ++step)
    metres *= step % 3 == 1 ? 2.5 : 2;
  const double length = metres / metresPerMillimetre;
  const double x = mapBox.x + 5, y = mapBox.y + mapBox.height - 4;
  page.lines.push_back({{{x, y - 1.5}, {x, y}, {x + length, y}, {x + length, y - 1.5}}, 0.3, ink});
  page.texts.push_back({{x, y - 5, length, 4},
                        metres < 1000 ? decimals(metres, 0) + " m" : decimals(metres / 1000, 0) + " km",
                        7,
                        false,
                        PageText::Align::centre});
}

void addMap(Page& page, const DayRecord& record) {
  page.areas.push_back({mapBox, ground});
  const DayPoints& points = *record.points;
  std::vector<Coordinate> coordinates;
  coordinates.reserve(points.size());
  for (std::size_t i = 0; i < points.size(); ++i)
    if (points.isPlaced(i)) coordinates.push_back(points.coordinates[i]);
  if (coordinates.empty()) return;
  const MapFrame frame = frameOf(coordinates);
  PageLine line{{}, 0.6, record.colour};
  for (const Coordinate& at : coordinates) {
    const PagePoint next = frame.place(at);
    if (line.points.empty() ||
        std::hypot(next.x - line.points.back().x, next.y - line.points.back().y) >= closest)
      line.points.push_back(next);
  }
  if (line.points.size() >= 2) page.lines.push_back(std::move(line));
  for (const DayStop& stop : points.stops)
    if (points.isPlaced(stop.index)) addDot(page, frame.place(points.coordinates[stop.index]), 1.8, faint);
  addDot(page, frame.place(coordinates.front()), 2.4, 0x2e7d32);
  addDot(page, frame.place(coordinates.back()), 2.4, 0xb3261e);
  addScale(page, metresPerWorldUnit(unproject(frame.centre).latitude) / frame.scale);
}

/// The 24 hours: driving in the vehicle's colour, standing light, unknown blank.
void addRibbon(Page& page, const DayRecord& record) {
  const DayTimeline timeline = DayTimeline::fromPoints(*record.points);
  if (timeline.isEmpty()) return;
  const auto place = [](double second) {
    return ribbonBox.x + ribbonBox.width * second / DayTimeline::length;
  };
  for (const DayStretch& stretch : timeline.stretches)
    if (stretch.kind != DayStage::Kind::unknown)
      page.areas.push_back(
          {{place(stretch.begin), ribbonBox.y, place(stretch.end) - place(stretch.begin), ribbonBox.height},
           stretch.kind == DayStage::Kind::driving ? record.colour : standing});
  for (int hour = 0; hour <= 24; hour += 2) {
    const double x = place(hour * 3600);
    const double y = ribbonBox.y + ribbonBox.height;
    page.lines.push_back({{{x, y}, {x, y + 1}}, 0.2, faint});
    page.texts.push_back(
        {{x - 5, y + 1, 10, 4}, std::to_string(hour), 7, false, PageText::Align::centre, faint});
  }
  const auto& [x, y, width, height] = ribbonBox;
  page.lines.push_back(
      {{{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}, {x, y}}, 0.2, rule});
}

void addTotals(Page& page, const DayRecord& record) {
  const double width = contentWidth / 7;
  double x = margin;
  for (const auto& [caption, text] : record.totals) {
    page.texts.push_back({{x, totalsTop, width - 2, 5}, caption, 8, false, PageText::Align::start, faint});
    page.texts.push_back({{x, totalsTop + 5, width - 2, 6}, text, 11, true});
    x += width;
  }
}

/// Without the day in front, which stands at the top of the page.
std::string timeOfDay(std::string_view time, std::string_view day) {
  if (time.size() > day.size() && time.starts_with(day) &&
      (time[day.size()] == ' ' || time[day.size()] == 'T'))
    time.remove_prefix(day.size() + 1);
  return std::string(time);
}

void addTrips(Page& page, const DayRecord& record, const ExportWords& words) {
  if (record.trips.empty()) return;
  const double widths[] = {21, 18, 18, 18, 19, 43, 43};
  double y = tableTop;
  const auto addRow = [&](const std::vector<std::string>& cells, double height, bool head) {
    double x = margin;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      page.texts.push_back({{x, y, widths[i] - 1.5, height},
                            cells[i],
                            head ? 8.0 : std::min(9.0, height * 1.7),
                            head,
                            PageText::Align::start,
                            head ? faint : ink});
      x += widths[i];
    }
    y += height;
    page.lines.push_back({{{margin, y}, {margin + contentWidth, y}}, 0.15, rule});
  };
  addRow({words.status, words.start, words.end, words.duration, words.distance, words.from, words.to}, 6,
         true);
  const auto count = record.trips.size();
  const double height = std::clamp((tableBottom - y) / static_cast<double>(count), lowestRow, highestRow);
  const auto fit = static_cast<std::size_t>((tableBottom - y) / height + 0.001);
  for (std::size_t i = 0; i < count; ++i) {
    if (i + 1 == fit && count > fit) return addRow({"+ " + std::to_string(count - i)}, height, false);
    const RouteItem& trip = record.trips[i];
    addRow({trip.status.str(), timeOfDay(trip.timeFrom, record.day), timeOfDay(trip.timeTo, record.day),
            trip.duration.str(), trip.distance.str() + " km", trip.from.str(), trip.to.str()},
           height, false);
  }
}

}  // namespace

Page driversLog(const DayRecord& record, const ExportWords& words) {
  Page page;
  page.title = words.log + ' ' + fileNameOf(record);
  page.texts.push_back({{margin, 13, 110, 9}, words.log, 18, true});
  page.texts.push_back({{margin + 110, 13, 70, 9}, record.day, 14, true, PageText::Align::end});
  page.texts.push_back({{margin, 23, 120, 7}, record.vehicle.name.str(), 12});
  page.texts.push_back(
      {{margin + 120, 23, 60, 7}, record.vehicle.registration.str(), 12, false, PageText::Align::end, faint});
  addMap(page, record);
  addRibbon(page, record);
  addTotals(page, record);
  addTrips(page, record, words);
  return page;
}

}  // namespace fleetor
