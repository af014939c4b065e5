#pragma once

#include "platform/device.h"
#include "ui/controls/chart.h"
#include "ui/controls/controls.h"
#include "vehicle/day_replay.h"

namespace fleetor {

/// Two curves of the day that is replayed: the distance and the average speed over time. They share the
/// moment of the replay: what is chosen in them moves it. They hold points only while they are shown. Main
/// thread only.
class DayCharts {
 public:
  /// Both outlive it.
  DayCharts(DayReplay& replay, const Device& device);

  Button& button() { return button_; }  ///< shows and hides them; selected while they are shown
  Chart& distance() { return distance_; }
  Chart& speed() { return speed_; }

 private:
  void show(bool shown);

  DayReplay& replay_;
  Button button_;
  Chart distance_;
  Chart speed_;
  Connection moves_;    ///< while they are shown
  Connection changes_;  ///< while they are shown
};

}  // namespace fleetor
