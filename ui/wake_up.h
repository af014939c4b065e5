#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/clock.h"
#include "platform/queues.h"

namespace fleetor {

/// One call after a while, for who waits for several moments: of these the earliest counts, so the call may
/// come before the latest one that was asked for. Main thread only. Nothing is called once this object is
/// destroyed.
class WakeUp {
 public:
  /// What is handed in outlives this object, as far as it is called. Calls are at least `apart` from each
  /// other.
  WakeUp(Queues& queues, const Clock& clock, std::function<void()> wake, Seconds apart = {});
  WakeUp(const WakeUp&) = delete;
  WakeUp& operator=(const WakeUp&) = delete;

  void after(Seconds delay);
  void cancel() { at_.reset(); }

 private:
  Queues& queues_;
  const Clock& clock_;
  std::function<void()> wake_;
  Seconds apart_;
  std::optional<Seconds> at_;
  std::optional<Seconds> last_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace fleetor
