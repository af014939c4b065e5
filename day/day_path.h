#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "day/day_points.h"
#include "map/mercator.h"

namespace fleetor {

/// A stretch of a day without movement, or, as a gap, of which nothing is known for more than ten minutes.
struct DayPause {
  float begin = 0;  ///< seconds since midnight
  float end = 0;
  bool isGap = false;
};

/// Where a vehicle was at a moment of a day.
struct DayPlace {
  double passed = 0;      ///< of the day's points: 2.25 is a quarter of the way from the third to the fourth
  WorldPoint place;       ///< straight between the nearest points before and after whose positions are known
  bool isPlaced = false;  ///< the positions of the two points around the moment are known
  double course = 0;      ///< degrees clockwise from north; while it stands, of its last movement
  double kilometres = 0;  ///< since the first point
  std::optional<double> averageSpeed;    ///< km/h between two points; none while it stands and in a gap
  std::optional<std::uint32_t> address;  ///< of the nearer of the two points
  const DayPause* pause = nullptr;       ///< that it is in; belongs to the path
};

/// The way of a vehicle through a day whose times are understood. Immutable; any thread.
class DayPath {
 public:
  /// Whether the times are understood and time passes.
  static bool canFollow(const DayPoints& day) {
    return day.seconds.size() > 1 && day.seconds.front() < day.seconds.back();
  }

  /// Of a day that can be followed. Takes milliseconds for 86,400 points.
  explicit DayPath(std::shared_ptr<const DayPoints> day);

  const DayPoints& points() const { return *day_; }
  double begin() const { return day_->seconds.front(); }  ///< seconds since midnight
  double end() const { return day_->seconds.back(); }

  /// False: the service's distances are not understood, so the line is measured where the vehicle moves.
  bool hasSentDistance() const { return !day_->kilometres.empty(); }
  const std::vector<DayPause>& pauses() const { return pauses_; }  ///< in order, apart from each other

  /// Before the first point its values, after the last one those of the last.
  DayPlace at(double moment) const;
  double kilometresAt(double moment) const;  ///< since the first point
  /// km/h along the line within the day, standing included; none when the middle of that time lies in a gap.
  std::optional<double> averageSpeedBetween(double from, double to) const;

  /// The moment of the point that is so many points later (below 0: earlier), within the day. Points of one
  /// moment count as one.
  double momentOfPoint(double from, int steps) const;

 private:
  struct Step {
    std::size_t from = 0;
    double share = 0;  ///< of the way to the next point
  };

  void findPauses();
  void measure();
  const std::vector<Coordinate>& way() const { return way_.empty() ? day_->coordinates : way_; }
  Step stepAt(double moment) const;
  const DayPause* pauseAt(double moment) const;
  static double valueAt(const std::vector<float>& column, const Step& step);
  std::optional<double> averageSpeedAt(const Step& step) const;
  double courseAt(std::size_t from) const;

  std::shared_ptr<const DayPoints> day_;
  std::vector<Coordinate> way_;  ///< with a place for each point; empty: every position is known
  std::vector<DayPause> pauses_;
  std::vector<float> measured_;  ///< kilometres along the line
};

}  // namespace fleetor
