#pragma once

#include <cstdint>
#include <vector>

#include "demo/town/fleet.h"
#include "demo/town/town.h"

namespace fleetor::demo {

// What a vehicle does at one moment.
struct Motion {
  Point at;
  double speed = 0;    // m/s
  double heading = 0;  // degrees
  double metres = 0;   // since the drive began
  std::uint32_t edge = 0;
  double alongEdge = 0;  // metres from the edge's `from` junction
};

// One drive from place to place: speeding up, slowing down for bends, waiting at crossings. All of it is
// worked out at construction, and every moment can then be asked.
class Drive {
 public:
  Drive(const Town& town, std::vector<RouteStep> route, const VehicleKind& kind, std::uint64_t seed);

  // Whole seconds, so that drives begin and end on the clock's tick.
  std::int64_t seconds() const { return seconds_; }
  double metres() const { return stepStarts_.back(); }
  // `second` since the drive began, held to [0, seconds()].
  Motion at(double second) const;

 private:
  // A stretch of even acceleration.
  struct Piece {
    double second;
    double metres;
    double speed;
    double acceleration;
  };

  void planSpeeds(const VehicleKind& kind, std::uint64_t seed);
  void drivePiece(double length, double acceleration);
  void driveStep(double length, double cruise, double endSpeed, const VehicleKind& kind);

  const Town* town_;
  std::vector<RouteStep> route_;
  std::vector<double> stepStarts_;  // metres; one more than the steps
  std::vector<Piece> pieces_;
  double clock_ = 0;
  double speed_ = 0;
  double driven_ = 0;
  std::int64_t seconds_ = 0;
};

}  // namespace fleetor::demo
