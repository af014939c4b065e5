#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "model/vehicle_records.h"
#include "platform/clock.h"
#include "platform/coordinate.h"
#include "values/times.h"
#include "vehicle/watch/reading_series.h"

namespace fleetor {

struct DayPoints;

/// The readings that are numbers.
enum class Reading { speed, rpm, powerSupply, temp, fuel };

/// What this client has seen of one vehicle while it watched: its readings, and whether it drives or stands.
/// Only numbers that are wholly understood count. In memory only. Main thread only.
class VehicleWatch {
 public:
  using Uptime = std::chrono::duration<double>;

  struct Motion {
    bool drives = false;
    Uptime since{};             ///< by the stopwatch
    bool seenToBegin = false;   ///< false: it may have begun earlier
    std::string reportedSince;  ///< "14:05" in the service's time where the day's track tells, or empty
  };

  struct Earlier {
    std::shared_ptr<const Live> live;
    Date arrived;
  };

  /// The clock outlives the watch.
  explicit VehicleWatch(const Clock& clock) : clock_(clock) {}

  void received(std::shared_ptr<const Live> live);

  /// The track of a day. If it ends with a stop and the vehicle stands there, it has stood since that stop
  /// began, until it is seen to drive or may have driven unseen. Days before the latest one are ignored.
  void received(const DayPoints& points);

  /// What an earlier run has received last.
  void setEarlier(Earlier earlier) { earlier_ = std::move(earlier); }
  const std::optional<Earlier>& earlier() const { return earlier_; }

  /// The latest record, which arrived at `seen` by the stopwatch; null before the first.
  const std::shared_ptr<const Live>& latest() const { return last_; }
  Uptime seen() const { return seen_; }

  /// When the first record with the time of the latest one arrived, by the stopwatch.
  Uptime reported() const { return reported_; }

  /// None while the vehicle's speed is not known, or was not for a minute.
  const std::optional<Motion>& motion() const { return motion_; }
  const ReadingSeries& series(Reading reading) const { return series_[static_cast<std::size_t>(reading)]; }

 private:
  struct Stop {
    ServiceDay day;  ///< of the track
    ServiceTime since;
    Coordinate place;
  };

  void applyStop();

  const Clock& clock_;
  Uptime seen_{};
  Uptime reported_{};
  std::optional<Earlier> earlier_;
  std::shared_ptr<const Live> last_;  ///< seen at `seen_`
  std::optional<Motion> motion_;
  std::optional<Stop> stop_;  ///< with which the latest day's track ends
  std::array<ReadingSeries, 5> series_;
};

}  // namespace fleetor
