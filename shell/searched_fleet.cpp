#include "shell/searched_fleet.h"

namespace fleetor {

void SearchedFleet::follow(const VehiclesResponse& list) {
  if (!list.vehicles) return;
  for (std::size_t i = search_.vehicles().size(); i < list.vehicles->size(); ++i)
    search_.add((*list.vehicles)[i]);
  changed.emit();
}

}  // namespace fleetor
