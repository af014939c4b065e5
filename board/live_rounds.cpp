#include "board/live_rounds.h"

#include <algorithm>
#include <utility>

namespace fleetor {

namespace {

constexpr Seconds longestPause{300};
constexpr Seconds longestOutage{60};
constexpr int mostDoublings = 10;

}  // namespace

LiveRounds::LiveRounds(Queues& queues, const Clock& clock, Ask ask)
    : clock_(clock), ask_(std::move(ask)), wakeUp_(queues, clock, [this] { next(); }) {}

Seconds LiveRounds::pause(int doublings, Seconds longest) {
  return std::min(every * (1 << std::min(doublings, mostDoublings)), longest);
}

void LiveRounds::setVehicles(const std::vector<std::int64_t>& ids, const DueOf& dueOf) {
  std::vector<Place> places;
  places.reserve(ids.size());
  for (const std::int64_t id : ids) {
    const auto known = std::ranges::find(places_, id, &Place::id);
    places.push_back(known != places_.end() ? *known : Place{id, dueOf ? dueOf(id) : Seconds{}});
  }
  places_ = std::move(places);
  next();
}

void LiveRounds::setRunning(bool running) {
  if (std::exchange(running_, running) == running) return;
  wakeUp_.cancel();
  unreachable_ = 0;
  reachableFrom_ = {};
  next();
}

void LiveRounds::ended(Outcome outcome) {
  const Seconds now = clock_.uptime();
  const auto place = std::ranges::find(places_, asked_.value(), &Place::id);
  asked_.reset();
  if (place != places_.end()) {
    place->failures = outcome == Outcome::received ? 0 : place->failures + 1;
    place->due = now + pause(place->failures, longestPause);
  }
  if (outcome == Outcome::unreachable)
    reachableFrom_ = now + pause(unreachable_++, longestOutage);
  else
    unreachable_ = 0;
  next();
}

void LiveRounds::next() {
  if (!running_ || asked_ || places_.empty()) return;
  const auto place = std::ranges::min_element(places_, {}, &Place::due);
  const Seconds now = clock_.uptime();
  const Seconds due = std::max({place->due, nextRequest_, reachableFrom_});
  if (due > now) return wakeUp_.after(due - now);
  asked_ = place->id;
  nextRequest_ = now + apart;
  ask_(place->id);
}

}  // namespace fleetor
