#pragma once

#include <memory>
#include <optional>
#include <string>

#include "ui/controls/chart.h"
#include "ui/controls/controls.h"
#include "ui/environment.h"
#include "vehicle/watch/vehicle_watch.h"

namespace fleetor {

/// The chart of one reading as this client has seen it, over how long ago that was, by the device's
/// stopwatch. The marked moment is the latest until the user chooses another one. It holds points only while
/// it is open. Main thread only.
class ReadingChart {
 public:
  explicit ReadingChart(Environment& environment);

  /// Gives the page the outlets "readingChart", "readingChartLabel" and "closeChartButton".
  void addOutletsTo(Outlets& page);

  bool isOpen() const { return watch_ != nullptr; }
  /// Opens the chart of that reading in place of another one; closes it when it is open already.
  void toggle(Reading reading, std::string title, std::shared_ptr<const VehicleWatch> watch);
  void update();  ///< there may be a new value, or time has passed

 private:
  void close();
  std::string agoText(double second) const;

  Environment& environment_;
  std::shared_ptr<const VehicleWatch> watch_;  ///< while it is open
  Reading reading_{};
  double end_ = 0;                ///< by the stopwatch: second 0 of the chart
  std::optional<double> chosen_;  ///< by the stopwatch
  Chart chart_;
  Label noteLabel_;     ///< why there is no curve; empty: there is one
  Button closeButton_;  ///< enabled while the chart is open
};

}  // namespace fleetor
