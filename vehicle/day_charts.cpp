#include "vehicle/day_charts.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace fleetor {

namespace {

constexpr double mostChartPoints = 600;  // more than a phone has points across
constexpr double leastChartStep = 60;    // seconds: over less, a speed would show every red light
constexpr double unknown = std::numeric_limits<double>::quiet_NaN();

}  // namespace

DayCharts::DayCharts(DayReplay& replay, const Device& device) : replay_(replay) {
  button_.setImage("BtnCharts");
  button_.setAccessibleName(device.localizedString("Charts of the day"));
  button_.setAction([this](Component&) { show(!button_.selected()); });
  distance_.setTitle(device.localizedString("Distance"), "km");
  speed_.setTitle(device.localizedString("Average speed"), "km/h");
  for (Chart* chart : {&distance_, &speed_}) {
    chart->setLanguage(device.language());
    chart->setOnChosen([this](double second) { replay_.moveTo(second); });
  }
}

void DayCharts::show(bool shown) {
  const DayPath* const path = shown ? replay_.path() : nullptr;
  const auto mark = [this] {
    distance_.setMoment(replay_.moment());
    speed_.setMoment(replay_.moment());
  };
  std::vector<Chart::Point> distances;
  std::vector<Chart::Point> speeds;
  if (path) {
    const double step = std::max(leastChartStep, (path->end() - path->begin()) / mostChartPoints);
    for (double second = path->begin();; second += step) {
      const double here = std::min(second, path->end());
      distances.push_back({here, path->kilometresAt(here)});
      speeds.push_back({here, path->averageSpeedBetween(here - step / 2, here + step / 2).value_or(unknown)});
      if (here >= path->end()) break;
    }
    moves_ = replay_.moved.connect(mark);
    changes_ = replay_.changed.connect([this] {
      if (!replay_.state().open) show(false);
    });
  } else {
    moves_.disconnect();
    changes_.disconnect();
  }
  // At the moment itself the same values as on the replay's card.
  const auto valueAt = [this](auto read) {
    return [this, read](double second) { return replay_.path() ? read(*replay_.path(), second) : unknown; };
  };
  distance_.setPoints(std::move(distances),
                      valueAt([](const DayPath& way, double second) { return way.kilometresAt(second); }));
  speed_.setPoints(std::move(speeds), valueAt([](const DayPath& way, double second) {
                     return way.at(second).averageSpeed.value_or(unknown);
                   }));
  button_.setSelected(path != nullptr);
  if (path) mark();
}

}  // namespace fleetor
