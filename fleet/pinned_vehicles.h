#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/device.h"
#include "platform/settings.h"
#include "ui/signal.h"

namespace fleetor {

/// The vehicles that the user has put first, separately for each account, in the settings of this
/// installation. An account is known by a fingerprint of its user name. A sign-out leaves its pins, for the
/// next sign-in with that name. At most `mostPins` of an account are kept, and `mostAccounts` accounts. Main
/// thread only.
class PinnedVehicles {
 public:
  static constexpr std::size_t mostPins = 200;
  static constexpr std::size_t mostAccounts = 16;

  /// With the account that signed in last. What is handed in outlives this object.
  PinnedVehicles(Settings& settings, Device& device);

  /// Somebody signs in: from now on the pins are those of that account.
  void chooseAccount(const std::string& userName);

  /// Identifiers of vehicles, in the order in which they were pinned.
  const std::vector<std::int64_t>& ids() const { return ids_; }
  bool contains(std::int64_t vehicleId) const;

  /// Of more than `mostPins` the oldest goes.
  void setPinned(std::int64_t vehicleId, bool pinned);

  Signal<> changed;

 private:
  void load();
  void save();

  Settings& settings_;
  Device& device_;
  std::string account_;
  std::vector<std::int64_t> ids_;
};

}  // namespace fleetor
