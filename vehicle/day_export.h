#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "exports/day_record.h"
#include "service/envelopes.h"
#include "ui/controls/controls.h"
#include "ui/environment.h"

namespace fleetor {

/// A day of a vehicle that the user may take along as a file, and what the page has of it already.
struct ExportableDay {
  Vehicle vehicle;
  std::string day;                          ///< "yyyy-MM-dd"
  std::shared_ptr<const DayPoints> points;  ///< null: not loaded
  std::optional<RouteResponse> trips;       ///< nothing: not loaded
};

/// "exportButton" of a page that shows a day. A tap shows a sheet of formats. What the chosen one needs and
/// the page lacks is requested from the service; then the file is made on the global queue, and a toast
/// reports where it is or why it is not. Main thread only; part of the page.
class DayExportButton {
 public:
  DayExportButton(Environment& environment, Outlets& page, std::function<ExportableDay()> day);

 private:
  Button button_;
};

}  // namespace fleetor
