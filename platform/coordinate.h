#pragma once

namespace fleetor {

/// A geographic point in decimal degrees.
struct Coordinate {
  double latitude = 0;
  double longitude = 0;

  friend bool operator==(const Coordinate&, const Coordinate&) = default;
};

}  // namespace fleetor
