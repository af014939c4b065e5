#pragma once

#include <functional>

#include "ui/notification_center.h"

namespace fleetor {

/// Whether the program is in the background, from its start in the foreground on. Main thread only.
class BackgroundWatch {
 public:
  /// Calls `changed` at each change. The centre outlives this object.
  BackgroundWatch(NotificationCenter& center, std::function<void()> changed);
  ~BackgroundWatch();
  BackgroundWatch(const BackgroundWatch&) = delete;
  BackgroundWatch& operator=(const BackgroundWatch&) = delete;

  bool inBackground() const { return inBackground_; }

 private:
  NotificationCenter& center_;
  std::function<void()> changed_;
  bool inBackground_ = false;
};

}  // namespace fleetor
