#pragma once

#include <chrono>
#include <string>

namespace fleetor {

using Date = std::chrono::system_clock::time_point;

/// Wall-clock time, the calendar of the device's time zone, and a stopwatch. Any thread.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual Date now() const = 0;

  /// Time since some moment in the past; the time that the device sleeps is part of it. Nobody can set it.
  virtual std::chrono::duration<double> uptime() const = 0;

  /// "yyyy-MM-dd" of that moment in the device's time zone.
  virtual std::string day(Date moment) const = 0;

  /// "HH:mm" of that moment in the device's time zone.
  virtual std::string timeOfDay(Date moment) const = 0;
};

}  // namespace fleetor
