#pragma once

#include "platform/clock.h"

namespace fleetor {

/// The machine's clock and its local time zone. Any thread.
class SystemClock final : public Clock {
 public:
  Date now() const override;
  std::chrono::duration<double> uptime() const override;
  std::string day(Date moment) const override;
  std::string timeOfDay(Date moment) const override;
};

}  // namespace fleetor
