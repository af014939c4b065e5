#pragma once

#include <any>
#include <optional>
#include <string>
#include <utility>

namespace fleetor {

/// The day that a page shows, "yyyy-MM-dd"; none while the program is in the background.
class ChosenDay {
 public:
  const std::optional<std::string>& date() const { return date_; }
  void setDate(std::string day) { date_ = std::move(day); }

  /// Takes over the object of kFleetorNotificationDate. False: it is not a day.
  bool receive(const std::any& object) {
    const auto* day = std::any_cast<std::string>(&object);
    if (day) date_ = *day;
    return day != nullptr;
  }

  // To the background and back. Both may be called more than once in a row.
  void putAside() {
    if (date_) tempDate_ = std::exchange(date_, std::nullopt);
  }
  void putBack() {
    if (!date_) date_ = tempDate_;
  }

 private:
  std::optional<std::string> date_;
  std::optional<std::string> tempDate_;
};

}  // namespace fleetor
