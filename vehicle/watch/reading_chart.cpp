#include "vehicle/watch/reading_chart.h"

#include <cmath>
#include <utility>
#include <vector>

#include "platform/filled_text.h"
#include "platform/number_text.h"
#include "vehicle/watch/reading_age.h"

namespace fleetor {

ReadingChart::ReadingChart(Environment& environment) : environment_(environment) {
  chart_.setLanguage(environment.device.language());
  chart_.setTimeText([this](double second) { return agoText(second); });
  chart_.setOnChosen([this](double second) {
    chosen_.reset();
    if (second < chart_.points().back().second) chosen_ = end_ + second;
    chart_.setMoment(second);
  });
  closeButton_.setAccessibleName(environment.device.localizedString("Close"));
  closeButton_.setAction([this](Component&) { close(); });
  closeButton_.setEnabled(false);
}

void ReadingChart::addOutletsTo(Outlets& page) {
  page.outlet("readingChart", chart_);
  page.outlet("readingChartLabel", noteLabel_);
  page.outlet("closeChartButton", closeButton_);
}

void ReadingChart::toggle(Reading reading, std::string title, std::shared_ptr<const VehicleWatch> watch) {
  if (isOpen() && reading == reading_) return close();
  reading_ = reading;
  watch_ = std::move(watch);
  chosen_.reset();
  chart_.setTitle(std::move(title), watch_->series(reading).unit());
  update();
  closeButton_.setEnabled(true);
}

void ReadingChart::update() {
  if (!isOpen()) return;
  const ReadingSeries& series = watch_->series(reading_);
  const auto& seen = series.points();
  const double now = environment_.clock.uptime().count();
  end_ = !seen.empty() && now - seen.back().seconds < freshFor.count() ? seen.back().seconds : now;
  std::vector<Chart::Point> points;
  if (seen.size() > 1) {
    points.reserve(seen.size());
    for (const auto& [seconds, value] : seen)
      points.push_back({seconds - end_, value});
  }
  const char* const note = seen.empty() ? "No number has been received yet" : "One value so far";
  noteLabel_.setText(points.empty() ? environment_.device.localizedString(note) : "");
  if (chart_.unit() != series.unit()) chart_.setTitle(chart_.title(), series.unit());
  if (chosen_ && (points.empty() || *chosen_ - end_ < points.front().second)) chosen_.reset();
  chart_.setPoints(std::move(points));
  chart_.setMoment(chart_.points().empty() ? std::nullopt
                   : chosen_               ? std::optional(*chosen_ - end_)
                                           : chart_.points().back().second);
}

void ReadingChart::close() {
  watch_.reset();
  chart_.setPoints({});
  chart_.setMoment({});
  closeButton_.setEnabled(false);
}

/// "now", "45 s", "12 min", "1:05 h".
std::string ReadingChart::agoText(double second) const {
  const auto words = [this](const char* key, const std::string& number) {
    return filled(environment_.device.localizedString(key), "{}", number);
  };
  const long seconds = std::lround(-second);
  const long minutes = seconds / 60;
  if (seconds <= 0) return environment_.device.localizedString("now");
  if (minutes == 0) return words("{} s", std::to_string(seconds));
  if (minutes < 60) return words("{} min", std::to_string(minutes));
  return words("{} h", hoursText(minutes));
}

}  // namespace fleetor
