#include "demo/town/drive.h"

#include <algorithm>
#include <cmath>

#include "demo/town/random.h"

namespace fleetor::demo {
namespace {

// Degrees.
double bendBetween(const StreetEdge& a, bool aForward, const StreetEdge& b, bool bForward) {
  const Point in = a.line.at(aForward ? a.line.length() : 0).direction;
  const Point out = b.line.at(bForward ? 0 : b.line.length()).direction;
  return std::abs(
      std::remainder(headingOf(out * (bForward ? 1 : -1)) - headingOf(in * (aForward ? 1 : -1)), 360));
}

double bendSpeed(double degrees) {
  if (degrees < 25) return 100;
  return degrees < 60 ? 30 / 3.6 : 17 / 3.6;
}

}  // namespace

Drive::Drive(const Town& town, std::vector<RouteStep> route, const VehicleKind& kind, std::uint64_t seed)
    : town_(&town), route_(std::move(route)) {
  stepStarts_.push_back(0);
  for (const RouteStep& step : route_)
    stepStarts_.push_back(stepStarts_.back() + town_->streets().edges()[step.edge].line.length());
  planSpeeds(kind, seed);
  seconds_ = static_cast<std::int64_t>(std::ceil(clock_));
  pieces_.push_back({clock_, metres(), 0, 0});
}

void Drive::planSpeeds(const VehicleKind& kind, std::uint64_t seed) {
  const StreetNetwork& streets = town_->streets();
  const std::size_t count = route_.size();
  Random random(seed);

  std::vector<double> cruise(count);
  for (std::size_t i = 0; i < count; ++i) {
    const double limit = speedLimit(streets.kindOf(streets.edges()[route_[i].edge]));
    cruise[i] = std::min(kind.topSpeed, limit * random.between(0.82, 1.04));
  }

  // The speed at which each crossing is passed, and how long it is waited at.
  std::vector<double> passing(count + 1, 0);
  std::vector<double> waits(count + 1, 0);
  for (std::size_t i = 1; i < count; ++i) {
    const StreetEdge& in = streets.edges()[route_[i - 1].edge];
    const StreetEdge& out = streets.edges()[route_[i].edge];
    const double bend = bendBetween(in, route_[i - 1].forward, out, route_[i].forward);
    passing[i] = std::min({cruise[i - 1], cruise[i], bendSpeed(bend)});
    const std::uint32_t junction = route_[i].forward ? out.from : out.to;
    RoadClass busiest = RoadClass::residential;
    for (const std::uint32_t edge : streets.junctions()[junction].edges)
      busiest = std::max(busiest, streets.kindOf(streets.edges()[edge]));
    const bool crossing = streets.junctions()[junction].edges.size() > 2;
    const double luck = random.unit();
    const double wait = random.between(4, 38);
    if (!crossing) continue;
    if (busiest == RoadClass::main && luck < 0.28) waits[i] = wait;
    if (busiest == RoadClass::collector && luck < 0.12) waits[i] = wait / 3;
    if (waits[i] > 0) passing[i] = 0;
  }
  for (std::size_t i = count; i-- > 0;) {
    const double length = stepStarts_[i + 1] - stepStarts_[i];
    passing[i] = std::min(passing[i], std::sqrt(passing[i + 1] * passing[i + 1] + 2 * kind.braking * length));
  }
  for (std::size_t i = 0; i < count; ++i) {
    const double length = stepStarts_[i + 1] - stepStarts_[i];
    const double reachable = std::sqrt(passing[i] * passing[i] + 2 * kind.acceleration * length);
    passing[i + 1] = std::min(passing[i + 1], reachable);
    driveStep(length, cruise[i], passing[i + 1], kind);
    if (waits[i + 1] > 0) {
      pieces_.push_back({clock_, driven_, 0, 0});
      clock_ += waits[i + 1];
    }
  }
}

void Drive::drivePiece(double length, double acceleration) {
  if (length <= 1e-9) return;
  pieces_.push_back({clock_, driven_, speed_, acceleration});
  const double end = std::sqrt(std::max(0.0, speed_ * speed_ + 2 * acceleration * length));
  clock_ += 2 * length / (speed_ + end);
  driven_ += length;
  speed_ = end;
}

void Drive::driveStep(double length, double cruise, double endSpeed, const VehicleKind& kind) {
  const double a = kind.acceleration;
  const double b = kind.braking;
  // Where the two ramps would meet if there were no speed limit.
  const double peak =
      std::sqrt((2 * a * b * length + b * speed_ * speed_ + a * endSpeed * endSpeed) / (a + b));
  const double top = std::max({std::min(cruise, peak), speed_, endSpeed});
  const double ramp = std::min(length, (top * top - speed_ * speed_) / (2 * a));
  const double brake = std::min(length - ramp, (top * top - endSpeed * endSpeed) / (2 * b));
  drivePiece(ramp, a);
  drivePiece(length - ramp - brake, 0);
  drivePiece(brake, -b);
  speed_ = endSpeed;
}

Motion Drive::at(double second) const {
  second = std::clamp(second, 0.0, static_cast<double>(seconds_));
  const auto next = std::upper_bound(pieces_.begin() + 1, pieces_.end(), second,
                                     [](double when, const Piece& piece) { return when < piece.second; });
  const Piece& piece = *(next - 1);
  const double since = second - piece.second;
  Motion motion;
  motion.speed = std::max(0.0, piece.speed + piece.acceleration * since);
  motion.metres = piece.metres + piece.speed * since + piece.acceleration * since * since / 2;
  motion.metres = std::clamp(motion.metres, 0.0, metres());

  const auto after = std::upper_bound(stepStarts_.begin() + 1, stepStarts_.end() - 1, motion.metres);
  const auto index = static_cast<std::size_t>(after - stepStarts_.begin()) - 1;
  const RouteStep step = route_[index];
  const StreetEdge& edge = town_->streets().edges()[step.edge];
  const double along = motion.metres - stepStarts_[index];
  motion.edge = step.edge;
  motion.alongEdge = std::clamp(step.forward ? along : edge.line.length() - along, 0.0, edge.line.length());
  const Station here = edge.line.at(motion.alongEdge);
  motion.at = here.at;
  motion.heading = headingOf(step.forward ? here.direction : here.direction * -1);
  return motion;
}

}  // namespace fleetor::demo
