#include "vehicle/day_replay.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/number_text.h"

namespace fleetor {

namespace {

constexpr double textInterval = 0.1;  // seconds
constexpr double sightInset = 0.2;    // of the map, at each edge
constexpr int firstRate = 60;

std::string replayDistance(const DayPath& path, double kilometres, const Device& device) {
  return (path.hasSentDistance() ? "" : "≈ ") + inLanguage(device.language(), decimals(kilometres, 1)) +
         " km";
}

}  // namespace

DayReplay::DayReplay(MapView& map, const Device& device) : map_(map), device_(device), rate_(firstRate) {}

void DayReplay::setDay(std::shared_ptr<const DayPoints> day, std::shared_ptr<MapPolyline> line,
                       std::string image) {
  const bool reopens = reopens_ || state().open;
  setOpen(false);
  reopens_ = reopens && !day;
  const bool matches = day && line && line->coordinates().size() == day->coordinates.size();
  day_ = matches && DayPath::canFollow(*day) ? std::move(day) : nullptr;
  traveller_ = {day_ ? std::move(line) : nullptr, {}, 0, 0, std::move(image)};
  State now;
  now.available = day_ != nullptr;
  show(std::move(now));
  setOpen(reopens);
}

void DayReplay::setOpen(bool open) {
  if (!open) reopens_ = false;
  if (open == state().open || (open && !day_)) return;
  State now;
  now.available = true;
  now.open = open;
  now.rate = rate_;
  if (open) {
    replay_.emplace(std::make_shared<const DayPath>(day_));
    replay_->setRate(rate_);
    seen_ = map_.camera().position();
    cameraMoves_ = map_.cameraChanged.connect([this] { cameraMoved(); });
  } else {
    isPlaced_ = false;
    cameraMoves_.disconnect();
    replay_.reset();
    map_.setTraveller(std::nullopt);
  }
  show(std::move(now));
  if (open) present(true);
}

void DayReplay::pause() {
  if (!replay_ || !replay_->isPlaying()) return;
  replay_->pause();
  present(true);
}

void DayReplay::togglePlaying() {
  if (!replay_) return;
  if (replay_->isPlaying())
    replay_->pause();
  else
    replay_->play();
  present(true);
}

void DayReplay::nextRate() {
  const auto& rates = Replay::rates;
  const auto next = std::ranges::upper_bound(rates, rate_);
  rate_ = next == rates.end() ? rates.front() : *next;
  if (replay_) replay_->setRate(rate_);
  State now = state();
  now.rate = rate_;
  show(std::move(now));
}

void DayReplay::step(int points) {
  if (!replay_) return;
  replay_->step(points);
  present(true);
}

void DayReplay::moveTo(double moment) {
  if (!replay_) return;
  replay_->moveTo(moment);
  present(true);
}

void DayReplay::follow() {
  if (!replay_) return;
  State now = state();
  now.following = true;
  show(std::move(now));
  returns_ = true;
  map_.setCenterCoordinate(unproject(traveller_.place), true);
}

void DayReplay::advance(double seconds) {
  if (!replay_ || !replay_->isPlaying()) return;
  sinceTexts_ += seconds;
  const bool goesOn = replay_->advance(seconds);
  present(!goesOn || sinceTexts_ >= textInterval);
}

std::optional<Coordinate> DayReplay::place() const {
  return isPlaced_ ? std::optional(unproject(traveller_.place)) : std::nullopt;
}

void DayReplay::present(bool withTexts) {
  const DayPlace place = replay_->path().at(replay_->moment());
  traveller_.place = place.place;
  traveller_.course = place.course;
  traveller_.passed = place.passed;
  isPlaced_ = place.isPlaced;
  map_.setTraveller(traveller_);
  if (state().following) keepInSight(place.place);
  setMoment(replay_->moment());
  if (withTexts) presentTexts(place);
}

void DayReplay::presentTexts(const DayPlace& place) {
  sinceTexts_ = 0;
  const DayPath& path = replay_->path();
  State now = state();
  now.playing = replay_->isPlaying();
  now.time = clockText(replay_->moment(), ClockDigits::seconds);
  now.distance = replayDistance(path, place.kilometres, device_);
  now.speed =
      place.averageSpeed ? std::to_string(static_cast<int>(std::lround(*place.averageSpeed))) + " km/h" : "";
  now.address = place.address ? path.points().addressTexts[*place.address] : "";
  now.gap = place.pause && place.pause->isGap;
  now.note = "";
  if (place.pause)
    now.note = device_.localizedString(now.gap ? "No positions were sent" : "Standing") + ", " +
               clockText(place.pause->begin) + " – " + clockText(place.pause->end);
  show(std::move(now));
}

void DayReplay::keepInSight(WorldPoint place) {
  const MapCamera& camera = map_.camera();
  if (!camera.hasViewport() || camera.moving()) return;
  const auto [x, y] = camera.screenPoint(place);
  const double left = camera.width() * sightInset;
  const double top = camera.height() * sightInset;
  const bool isOut = x < 0 || y < 0 || x > camera.width() || y > camera.height();
  double east = isOut ? x - camera.width() / 2 : x - std::clamp(x, left, camera.width() - left);
  double south = isOut ? y - camera.height() / 2 : y - std::clamp(y, top, camera.height() - top);
  if (east == 0 && south == 0) return;
  const WorldPoint centre = camera.centre();
  movesMap_ = true;
  map_.setCenterCoordinate(unproject({centre.x + east / camera.scale(), centre.y + south / camera.scale()}),
                           false);
  movesMap_ = false;
}

// A zoom leaves the following on, and so does another size of the map.
void DayReplay::cameraMoved() {
  const MapCamera& camera = map_.camera();
  const CameraPosition before = std::exchange(seen_, camera.position());
  const bool returning = std::exchange(returns_, returns_ && camera.moving());
  if (movesMap_ || returning || before.centre == seen_.centre || before.zoom != seen_.zoom) return;
  State now = state();
  now.following = false;
  show(std::move(now));
}

}  // namespace fleetor
