#include "board/fleet_poll.h"

#include <utility>

#include "service/api.h"
#include "service/envelopes.h"

namespace fleetor {

namespace {

/// With any of these, the failure of one vehicle is shown on its card and not by a message over the screen.
const ErrorCodes& shownOnTheCard() {
  static const ErrorCodes codes = [] {
    ErrorCodes all;
    for (long status = 400; status < 600; ++status)
      all.push_back(status);
    return all;
  }();
  return codes;
}

}  // namespace

FleetPoll::FleetPoll(Environment& environment, std::shared_ptr<LastReadings> readings)
    : environment_(environment), readings_(std::move(readings)) {}

void FleetPoll::watch(const void* board, const std::vector<std::int64_t>& ids) {
  if (!rounds_ || session_.hasEnded()) {
    session_ = {};
    failed_.clear();
    rounds_.emplace(environment_.queues, environment_.clock, [this](std::int64_t id) { ask(id); });
  }
  board_ = board;
  rounds_->setVehicles(ids, [this](std::int64_t id) {
    const auto* const entry = readings_->of(id);
    return entry ? entry->arrived + LiveRounds::every : Seconds{};
  });
  rounds_->setRunning(true);
}

void FleetPoll::leave(const void* board) {
  if (board_ != board) return;
  board_ = nullptr;
  rounds_->setRunning(false);
}

void FleetPoll::ask(std::int64_t vehicleId) {
  API::getWithPath(
      "/live", {{"vehid", vehicleId}}, modelClass<LiveResponse>, shownOnTheCard(),
      [self = shared_from_this(), session = Session(), vehicleId](auto response, auto kind, long, auto&) {
        if (session.hasEnded()) return;
        const bool received = kind == ResponseKindSuccess && response->live->vehicle().vehicleId == vehicleId;
        if (received) {
          self->failed_.erase(vehicleId);
          self->readings_->keep(std::shared_ptr<const Live>(response, &*response->live));
        } else {
          self->failed_.insert(vehicleId);
          self->failed.emit(vehicleId);
        }
        using Outcome = LiveRounds::Outcome;
        self->rounds_->ended(received                         ? Outcome::received
                             : kind == ResponseKindConnection ? Outcome::unreachable
                                                              : Outcome::failed);
      });
}

}  // namespace fleetor
