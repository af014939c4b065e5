#include "shell/searched_fleet.h"

namespace fleetor {

SearchedFleet::State SearchedFleet::state() const {
  if (total_ && *total_ <= static_cast<std::int64_t>(held())) return State::complete;
  if (failed_) return State::failed;
  return stopped_ ? State::stopped : State::fetching;
}

void SearchedFleet::add(const VehiclesResponse& from, std::size_t first) {
  if (!from.vehicles) return;
  for (std::size_t i = first; i < from.vehicles->size(); ++i)
    search_.add((*from.vehicles)[i]);
}

void SearchedFleet::follow(const VehiclesResponse& list, bool failed) {
  const std::size_t listed = list.vehicles ? list.vehicles->size() : 0;
  const bool ahead = held() > listed;
  if (!ahead) {
    add(list, held());
    failed_ = failed;  // the total of a list that has failed is what it holds
    if (!failed && (listed > 0 || list.total != 1)) total_ = list.total;
  }
  changed.emit();
  fetchNext();
}

void SearchedFleet::setShown(bool shown) {
  shown_ = shown;
  fetchNext();
}

void SearchedFleet::stop() {
  stopped_ = true;
  changed.emit();
}

void SearchedFleet::resume() {
  stopped_ = false;
  failed_ = false;
  changed.emit();
  fetchNext();
}

void SearchedFleet::fetchNext() {
  if (!shown_ || inFlight_ || state() != State::fetching) return;
  inFlight_ = true;
  const auto self = shared_from_this();
  inFlight_ = fetch_(held(), [self](const VehiclesResponse* page) { self->take(page); });
}

void SearchedFleet::take(const VehiclesResponse* page) {
  inFlight_ = false;
  const std::size_t before = held();
  if (page) {
    add(*page, 0);
    total_ = page->total;
  }
  failed_ = held() == before;
  changed.emit();
  fetchNext();
}

}  // namespace fleetor
