#include "vehicle/day_views.h"

#include <utility>
#include <vector>

#include "platform/filled_text.h"
#include "platform/number_text.h"

namespace fleetor {

namespace {

std::string wordOf(DayStage::Kind kind, const Localizer& localized) {
  switch (kind) {
    case DayStage::Kind::parking:
      return localized("parked");
    case DayStage::Kind::driving:
      return localized("driving");
    case DayStage::Kind::unknown:
      break;
  }
  return localized("nothing known");
}

TimeRibbon::Weight weightOf(DayStage::Kind kind) {
  using enum TimeRibbon::Weight;
  return kind == DayStage::Kind::driving ? strong : kind == DayStage::Kind::parking ? light : blank;
}

}  // namespace

void showTimeline(TimeRibbon& ribbon, DayTimeline day, Color color, Localizer localized, PlaceOf placeOf) {
  std::vector<TimeRibbon::Stretch> stretches;
  stretches.reserve(day.stretches.size());
  for (const DayStretch& each : day.stretches)
    stretches.push_back({each.begin, each.end, weightOf(each.kind)});
  const auto mark = day.isEmpty() ? std::nullopt : std::optional(day.knownUntil);
  ribbon.show(std::move(stretches), color, mark,
              [day = std::move(day), localized = std::move(localized),
               placeOf = std::move(placeOf)](std::size_t index) {
                const DayStretch& stretch = day.stretches.at(index);
                const std::string place = stretch.kind == DayStage::Kind::unknown ? "" : placeOf(stretch);
                const std::string times =
                    filled(filled(localized("{from} to {to}"), "{from}", clockText(stretch.begin)), "{to}",
                           clockText(stretch.end));
                return times + ", " + wordOf(stretch.kind, localized) + (place.empty() ? "" : ", " + place);
              });
}

std::vector<FactStrip::Fact> factsOf(const DayTotals& totals, const Device& device) {
  const auto localized = [&device](const std::string& key) { return device.localizedString(key); };
  std::vector<FactStrip::Fact> facts;
  const auto add = [&facts](std::string caption, const auto& value, auto text) {
    if (value) facts.push_back({std::move(caption), text(*value)});
  };
  const auto distance = [&device](double kilometres) {
    return inLanguage(device.language(), decimals(kilometres, 1)) + " km";
  };
  const auto hours = [&localized](std::chrono::seconds time) {
    return filled(localized("{} h"), "{}", hoursText(std::chrono::round<std::chrono::minutes>(time).count()));
  };
  const auto number = [](int value) { return std::to_string(value); };
  const auto clock = [](std::chrono::seconds time) { return clockText(static_cast<double>(time.count())); };
  add(localized("Distance"), totals.kilometres, distance);
  add(localized("Trips"), totals.trips, number);
  add(localized("Stops"), totals.stops, number);
  add(localized("Driving time"), totals.driving, hours);
  add(localized("Standing time"), totals.standing, hours);
  add(localized("First start"), totals.firstStart, clock);
  add(localized("Last arrival"), totals.lastArrival, clock);
  return facts;
}

}  // namespace fleetor
