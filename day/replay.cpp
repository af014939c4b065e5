#include "day/replay.h"

#include <algorithm>
#include <cmath>

namespace fleetor {

double Replay::start() const {
  const auto& pauses = path_->pauses();
  const bool stands = !pauses.empty() && pauses.front().begin <= path_->begin() && !pauses.front().isGap;
  return stands && pauses.front().end < path_->end() ? pauses.front().end : path_->begin();
}

void Replay::play() {
  if (moment_ >= path_->end()) moment_ = start();
  playing_ = true;
}

void Replay::moveTo(double moment) {
  if (std::isfinite(moment)) moment_ = std::clamp(moment, path_->begin(), path_->end());
}

void Replay::step(int points) {
  pause();
  moment_ = path_->momentOfPoint(moment_, points);
}

bool Replay::advance(double seconds) {
  if (!playing_ || !(seconds > 0)) return playing_;
  const auto& pauses = path_->pauses();
  auto pause = std::ranges::upper_bound(pauses, moment_, {}, &DayPause::end);
  while (seconds > 0 && moment_ < path_->end()) {
    const bool inPause = pause != pauses.end() && pause->begin <= moment_;
    const double until = inPause ? pause->end : pause != pauses.end() ? pause->begin : path_->end();
    const double rate = inPause ? std::max<double>(rate_, (pause->end - pause->begin) / pauseSeconds) : rate_;
    if (moment_ + seconds * rate < until) {
      moment_ += seconds * rate;
      break;
    }
    seconds -= (until - moment_) / rate;
    moment_ = until;
    if (inPause) ++pause;
  }
  playing_ = moment_ < path_->end();
  return playing_;
}

}  // namespace fleetor
