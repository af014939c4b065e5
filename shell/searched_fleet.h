#pragma once

#include "fleet/vehicle_search.h"
#include "service/envelopes.h"
#include "ui/signal.h"

namespace fleetor {

/// The vehicles that the search goes through: those that the list holds. Lives as long as the list. Main
/// thread only.
class SearchedFleet {
 public:
  explicit SearchedFleet(const std::string& language) : search_(language) {}

  const VehicleSearch& search() const { return search_; }

  /// Takes over what the list holds by now.
  void follow(const VehiclesResponse& list);
  Signal<> changed;

 private:
  VehicleSearch search_;
};

}  // namespace fleetor
