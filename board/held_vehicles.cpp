#include "board/held_vehicles.h"

#include <algorithm>

namespace fleetor {

const std::vector<Vehicle>& HeldVehicles::vehicles() {
  forgetOthers();
  return vehicles_;
}

bool HeldVehicles::isComplete() {
  forgetOthers();
  return total_ && *total_ <= static_cast<std::int64_t>(vehicles_.size());
}

void HeldVehicles::take(const VehiclesResponse& page, std::size_t offset) {
  forgetOthers();
  if (!page.vehicles || offset > vehicles_.size()) return;
  const std::size_t end = offset + page.vehicles->size();
  total_ = page.total;
  if (end > vehicles_.size() || *total_ <= static_cast<std::int64_t>(end)) vehicles_.resize(end);
  std::ranges::copy(*page.vehicles, vehicles_.begin() + static_cast<std::ptrdiff_t>(offset));
  changed.emit();
}

void HeldVehicles::forgetOthers() {
  if (!session_.hasEnded()) return;
  vehicles_.clear();
  total_.reset();
  session_ = {};
}

}  // namespace fleetor
