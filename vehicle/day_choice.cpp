#include "vehicle/day_choice.h"

#include "ui/calendar.h"
#include "ui/controls/action_sheet_date_picker.h"
#include "ui/notification_center.h"
#include "vehicle/notifications.h"

namespace fleetor {

DayChoice::DayChoice(Environment& environment) : environment_(environment), date_(environment.clock.now()) {}

void DayChoice::selectLater(int days) {
  select(std::chrono::sys_days(laterBy(dayOf(day()), std::chrono::days(days))));
}

void DayChoice::selectDay(const std::string& day) {
  select(std::chrono::sys_days(dayOf(day)));
}

// Noon in London is that day in every time zone but those furthest east, where midnight is.
void DayChoice::select(std::chrono::sys_days day) {
  const Date noon = day + std::chrono::hours(12);
  select(dayOf(environment_.clock.day(noon)) == day ? noon : Date(day));
}

void DayChoice::post() {
  environment_.notificationCenter.postNotificationName(kFleetorNotificationDate, day());
}

void DayChoice::showPicker(Component& sender) {
  ActionSheetDatePicker::showPickerWithTitle(
      environment_, environment_.device.localizedString("Choose date"), DatePickerMode::date, date_,
      [self = shared_from_this()](Date chosen) {
        self->select(chosen);
        self->post();
      },
      [] {}, sender);
}

void DayChoice::select(Date date) {
  date_ = date;
  changed.emit();
}

}  // namespace fleetor
