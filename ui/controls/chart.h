#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "map/camera.h"
#include "platform/number_text.h"
#include "ui/component.h"

namespace fleetor {

/// A mark on an axis, from 0 at its low end to 1 at its high end.
struct ChartTick {
  double share = 0;
  std::string text;

  friend bool operator==(const ChartTick&, const ChartTick&) = default;
};

/// A curve of one reading over time, the time of a day unless setTimeText() has another. It is drawn in as
/// many steps as there is width, however many points it has. Main thread only.
class Chart : public Component {
 public:
  struct Point {
    double second = 0;  ///< of the time axis; not before that of the point before
    double value = 0;   ///< not finite: unknown until the next point

    friend bool operator==(const Point&, const Point&) = default;
  };

  /// What the values are, and their unit, in the user's language.
  const std::string& title() const { return title_; }
  const std::string& unit() const { return unit_; }
  void setTitle(std::string title, std::string unit);  ///< the unit may be empty

  /// The code of the language that numbers are written in; "en" at first.
  void setLanguage(std::string language) { language_ = std::move(language); }

  /// The words for a second of the time axis; "14:05" at first.
  void setTimeText(std::function<std::string(double second)> timeText) { timeText_ = std::move(timeText); }

  const std::vector<Point>& points() const { return points_; }
  /// `valueAt` knows the exact value of any second, where the curve is thinner than what it shows; not
  /// finite: unknown.
  void setPoints(std::vector<Point> points, std::function<double(double second)> valueAt = {});

  /// The moment that is marked.
  const std::optional<double>& moment() const { return moment_; }
  void setMoment(std::optional<double> second);
  /// The moment and its value are followed by `momentChanged`, everything else by `changed`.
  Signal<> momentChanged;

  /// The user points at a moment, as a share of the time axis.
  void choose(double share);
  void setOnChosen(std::function<void(double second)> onChosen) { onChosen_ = std::move(onChosen); }

  double shareOf(double second) const;  ///< of the time axis, 0 to 1
  /// The value there, else of the last point up to there, in words with its unit; empty when unknown.
  std::string valueText(double second) const;

  /// The curve in an area of that size in points, y down, as unbroken strokes; of the values that share a
  /// step of 1 to the right, the first, the least, the greatest and the last are drawn.
  std::vector<std::vector<ScreenPoint>> strokes(double width, double height) const;
  std::vector<ChartTick> timeTicks(int most) const;  ///< on round times, every 15 seconds at least
  std::vector<ChartTick> valueTicks() const;         ///< the lowest and the highest are the axis' ends

  /// The title, from when until when, the least and the greatest value.
  std::string accessibleName() const override;

 private:
  std::string withUnit(double value) const;

  std::string title_;
  std::string unit_;
  std::string language_ = "en";
  std::function<std::string(double)> timeText_ = [](double second) { return clockText(second); };
  std::vector<Point> points_;
  std::function<double(double)> valueAt_;
  double least_ = 0;  ///< of the values
  double most_ = 0;
  double step_ = 1;  ///< between two marks of values
  double low_ = 0;   ///< of the axis
  double high_ = 1;
  std::optional<double> moment_;
  std::function<void(double)> onChosen_;
};

}  // namespace fleetor
