#pragma once

#include <memory>
#include <string_view>
#include <utility>

#include "model/vehicle_records.h"
#include "shell/base/base_view_controller.h"
#include "vehicle/watch/vehicle_watch.h"

namespace fleetor {

class DayChoice;

/// One page of the vehicle pager. The pager sets its vehicle and the choice of a day before it installs the
/// page, and calls tabSelected(). A page never polls.
class DetailPageViewController : public BaseViewController {
 public:
  using BaseViewController::BaseViewController;

  const Vehicle& vehicle() const { return vehicle_; }
  void setVehicle(Vehicle vehicle) { vehicle_ = std::move(vehicle); }

  /// The day chosen in the pager, for the pages that show one.
  virtual void setDayChoice(const std::shared_ptr<DayChoice>& /*days*/) {}

  /// What has been seen of the vehicle; null for a page without a pager.
  const std::shared_ptr<const VehicleWatch>& watch() const { return watch_; }
  void setWatch(std::shared_ptr<const VehicleWatch> watch) { watch_ = std::move(watch); }

  bool wasSelected() const { return wasSelected_; }

  void viewDidLoad() override;

  /// The page is shown for the first time since it was loaded or cleared: a page starts its first load here.
  virtual void firstSelected() {}
  void tabSelected();
  void clearTabSelected() { wasSelected_ = false; }

  /// Takes the place of a page of another pager over the same vehicle. Called once, after loading.
  virtual void continueFrom(const DetailPageViewController& /*before*/) {}

  // The pager has received this record of the vehicle, and the position in it. Called before the
  // notification, whether or not the page is visible.
  virtual void receivedRecord(const std::shared_ptr<const Live>& /*live*/) {}
  virtual void receivedPosition(Coordinate /*position*/) {}

  /// Why the page's tab is to have a mark, in the user's language; empty: it is to have none.
  Signal<std::string> marked;

  /// "RGB", "RRGGBB" or "RRGGBBAA" with or without "#"; without alpha, opaque. A text of any other length is
  /// read as one number in the last form's places, and the number ends at the first character that is not a
  /// hexadecimal digit.
  static Color colorFromHexString(std::string_view text);

 private:
  Vehicle vehicle_;
  std::shared_ptr<const VehicleWatch> watch_;
  bool wasSelected_ = false;
};

}  // namespace fleetor
