#pragma once

#include <cstdint>
#include <map>
#include <memory>

#include "model/vehicle_records.h"
#include "service/session.h"
#include "ui/environment.h"
#include "ui/signal.h"
#include "vehicle/watch/vehicle_watch.h"

namespace fleetor {

/// The latest record that this session has received of each vehicle, whichever screen asked for it, and apart
/// from these what is known from an earlier run. Another session begins with none. In memory only. Main
/// thread only.
class LastReadings {
 public:
  struct Entry {
    std::shared_ptr<const Live> live;
    Seconds arrived{};  ///< by the stopwatch
  };

  /// A frame costs more than the record that it shows: who shows several vehicles lets so much time pass
  /// between two frames.
  static constexpr Seconds together{2.0};

  /// Hears what the pager posts. The environment outlives this object.
  explicit LastReadings(Environment& environment);
  ~LastReadings();
  LastReadings(const LastReadings&) = delete;
  LastReadings& operator=(const LastReadings&) = delete;

  /// Null while there is none; valid until the next call.
  const Entry* of(std::int64_t vehicleId);
  void keep(std::shared_ptr<const Live> live);

  void addEarlier(VehicleWatch::Earlier reading);
  const VehicleWatch::Earlier* earlierOf(std::int64_t vehicleId);  ///< null: none; valid until the next call

  void forgetOthers();  ///< what another session has left

  Signal<std::int64_t> received;  ///< the vehicle's id

 private:
  Environment& environment_;
  Session session_;
  std::map<std::int64_t, Entry> entries_;
  std::map<std::int64_t, VehicleWatch::Earlier> earlier_;
};

}  // namespace fleetor
