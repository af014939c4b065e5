#include "ui/controls/chart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "platform/number_text.h"

namespace fleetor {

namespace {

constexpr int valueMarks = 4;
constexpr std::array<int, 15> timeSteps{15,   30,   60,    120,   300,   600,   900,  1800,
                                        3600, 7200, 10800, 14400, 21600, 43200, 86400};

/// The smallest of 1, 2, 5, 10, ... times a power of ten that is not less.
double roundStep(double least) {
  const double power = std::pow(10, std::floor(std::log10(least)));
  for (const double factor : {1.0, 2.0, 5.0})
    if (factor * power >= least * (1 - 1e-9)) return factor * power;
  return 10 * power;
}

/// With as many decimals as the step needs.
std::string numberText(double value, double step) {
  return decimals(value, static_cast<int>(std::clamp(std::ceil(-std::log10(step) - 1e-9), 0.0, 6.0)));
}

/// With no more decimals than the value needs, either.
std::string shortText(double value, double step) {
  std::string text = numberText(value, step);
  if (text.find('.') == std::string::npos) return text;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

}  // namespace

void Chart::setTitle(std::string title, std::string unit) {
  title_ = std::move(title);
  unit_ = std::move(unit);
  changed.emit();
}

void Chart::setPoints(std::vector<Point> points, std::function<double(double)> valueAt) {
  points_ = std::move(points);
  valueAt_ = std::move(valueAt);
  least_ = std::numeric_limits<double>::infinity();
  most_ = -least_;
  for (const auto& [second, value] : points_) {
    if (!std::isfinite(value)) continue;
    least_ = std::min(least_, value);
    most_ = std::max(most_, value);
  }
  if (least_ > most_) least_ = most_ = 0;
  // From zero, unless that would make a line of what changes little.
  const double from = least_ >= 0 && least_ < most_ / 2 ? 0 : least_;
  step_ = most_ > from ? roundStep((most_ - from) / valueMarks) : 1;
  low_ = std::floor(from / step_ + 1e-9) * step_;
  high_ = std::max(std::ceil(most_ / step_ - 1e-9) * step_, low_ + step_);
  changed.emit();
  if (moment_) momentChanged.emit();  // it has another value and another place
}

void Chart::setMoment(std::optional<double> second) {
  if (std::exchange(moment_, second) != second) momentChanged.emit();
}

void Chart::choose(double share) {
  if (points_.empty() || !onChosen_ || !std::isfinite(share)) return;
  const double begin = points_.front().second;
  onChosen_(begin + std::clamp(share, 0.0, 1.0) * (points_.back().second - begin));
}

double Chart::shareOf(double second) const {
  if (points_.empty() || points_.back().second <= points_.front().second) return 0;
  const double begin = points_.front().second;
  return std::clamp((second - begin) / (points_.back().second - begin), 0.0, 1.0);
}

std::string Chart::withUnit(double value) const {
  return inLanguage(language_, shortText(value, step_ / 10)) + (unit_.empty() ? "" : " ") + unit_;
}

std::string Chart::valueText(double second) const {
  const auto next = std::ranges::upper_bound(points_, second, {}, &Point::second);
  if (next == points_.begin()) return {};
  const double value = valueAt_ ? valueAt_(second) : (next - 1)->value;
  return std::isfinite(value) ? withUnit(value) : "";
}

std::vector<std::vector<ScreenPoint>> Chart::strokes(double width, double height) const {
  std::vector<std::vector<ScreenPoint>> made;
  bool broken = true;
  const auto yOf = [&](double value) { return height * (high_ - value) / (high_ - low_); };
  const auto add = [&](double x, double y) {
    if (made.back().empty() || made.back().back() != ScreenPoint{x, y}) made.back().push_back({x, y});
  };
  for (std::size_t i = 0; i < points_.size();) {
    if (!std::isfinite(points_[i].value)) {
      broken = true;
      ++i;
      continue;
    }
    if (std::exchange(broken, false)) made.emplace_back();
    const double x = shareOf(points_[i].second) * width;
    const double column = std::floor(x);
    double low = yOf(points_[i].value);
    double high = low;
    add(x, low);
    double last = low;
    double lastX = x;
    for (++i; i < points_.size() && std::isfinite(points_[i].value); ++i) {
      const double nextX = shareOf(points_[i].second) * width;
      if (std::floor(nextX) != column) break;
      lastX = nextX;
      last = yOf(points_[i].value);
      low = std::max(low, last);
      high = std::min(high, last);
    }
    add(lastX, high);
    add(lastX, low);
    add(lastX, last);
  }
  return made;
}

std::vector<ChartTick> Chart::timeTicks(int most) const {
  std::vector<ChartTick> ticks;
  if (points_.empty() || most < 1) return ticks;
  const double begin = points_.front().second;
  const double end = points_.back().second;
  // A text of whole minutes is the same on both sides of a mark between them.
  const auto between = [&](double second) {
    const std::string text = timeText_(second);
    return text == timeText_(std::max(begin, second - 1)) && text == timeText_(std::min(end, second + 1));
  };
  for (const double every : timeSteps) {
    if ((end - begin) / every >= most && every < timeSteps.back()) continue;
    std::vector<double> marks;
    for (double second = std::ceil(begin / every) * every; second <= end; second += every)
      marks.push_back(second);
    if (every < 60 && std::ranges::any_of(marks, between)) continue;
    for (const double second : marks)
      ticks.push_back({shareOf(second), timeText_(second)});
    break;
  }
  return ticks;
}

std::vector<ChartTick> Chart::valueTicks() const {
  std::vector<ChartTick> ticks;
  const int count = static_cast<int>(std::lround((high_ - low_) / step_));
  for (int i = 0; i <= count; ++i)
    ticks.push_back(
        {static_cast<double>(i) / count, inLanguage(language_, numberText(low_ + i * step_, step_))});
  return ticks;
}

std::string Chart::accessibleName() const {
  if (points_.empty()) return title_;
  return title_ + ", " + timeText_(points_.front().second) + " – " + timeText_(points_.back().second) + ", " +
         inLanguage(language_, shortText(least_, step_ / 10)) + " – " + withUnit(most_);
}

}  // namespace fleetor
