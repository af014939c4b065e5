#pragma once

#include <array>
#include <memory>
#include <utility>

#include "day/day_path.h"

namespace fleetor {

/// A moment that runs through a day: many times as fast as it was, and through each pause within a second. It
/// has no clock: the caller calls advance() once per frame while it plays. One thread; allocates nothing.
class Replay {
 public:
  static constexpr std::array<int, 4> rates{30, 60, 120, 300};  ///< times as fast as it was
  static constexpr double pauseSeconds = 1;  ///< that a pause lasts, unless it is shorter at the rate anyway

  /// Starts where the vehicle first moved. The path may not be null.
  explicit Replay(std::shared_ptr<const DayPath> path) : path_(std::move(path)), moment_(start()) {}

  const DayPath& path() const { return *path_; }
  double moment() const { return moment_; }  ///< seconds since midnight
  bool isPlaying() const { return playing_; }
  int rate() const { return rate_; }
  void setRate(int rate) { rate_ = rate; }  ///< one of `rates`

  /// From the end it starts anew.
  void play();
  void pause() { playing_ = false; }
  /// Within the day. It goes on playing.
  void moveTo(double moment);
  /// Pauses, at the next point or, below 0, the one before.
  void step(int points);
  /// So many seconds of the viewer's time have passed. False: it does not play, or no longer.
  bool advance(double seconds);

 private:
  double start() const;

  std::shared_ptr<const DayPath> path_;
  double moment_;
  int rate_ = 60;
  bool playing_ = false;
};

}  // namespace fleetor
