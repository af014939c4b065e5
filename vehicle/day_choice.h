#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/clock.h"
#include "ui/component.h"
#include "ui/environment.h"
#include "ui/signal.h"

namespace fleetor {

struct OpenedTrip;

/// The day that is chosen in a vehicle's pager, by its date picker or by the day bars of its pages. Main
/// thread only. Shared by the pager and those pages.
class DayChoice : public std::enable_shared_from_this<DayChoice> {
 public:
  explicit DayChoice(Environment& environment);  ///< today
  DayChoice(Environment& environment, Date date) : environment_(environment), date_(date) {}

  Date date() const { return date_; }
  std::string day() const { return environment_.clock.day(date_); }  ///< "yyyy-MM-dd"
  std::string today() const { return environment_.clock.day(environment_.clock.now()); }

  /// Chooses, without a word to the pages, the current moment, a moment of the day so many days later, or one
  /// of that day.
  void selectToday() { select(environment_.clock.now()); }
  void selectLater(int days);
  void selectDay(const std::string& day);

  /// Posts kFleetorNotificationDate: the page in view loads the chosen day.
  void post();

  /// Shows the date picker; the day that the user confirms is chosen and posted.
  void showPicker(Component& sender);

  Signal<> changed;

  // From a card of Trips to its trip on the Map and back, and from a stop on the Map to its card: the day,
  // and the seconds since its midnight.
  Signal<const OpenedTrip&> tripOpened;
  Signal<> tripLeft;
  Signal<const std::string&, float> stopOpened;

 private:
  void select(Date date);
  void select(std::chrono::sys_days day);

  Environment& environment_;
  Date date_;
};

}  // namespace fleetor
