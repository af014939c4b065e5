#pragma once

// What every map in the comparison is asked to do: the same track, the same pan, the same figures. Standard
// C++ only, so that programs of different toolkits share it.

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace fleetor::pan {

/// Degrees.
struct Place {
  double latitude = 0;
  double longitude = 0;
};

/// The window in points, as of a phone.
inline constexpr int width = 390;
inline constexpr int height = 780;
inline constexpr double lineWidth = 2;
inline constexpr Place middle{54.72, 2.35};  ///< of the demo's town
inline constexpr std::array<int, 3> sizes{1000, 10000, 100000};
inline constexpr int longest = 100000;
inline constexpr int warmUpFrames = 30;
inline constexpr int frames = 180;

/// A zoom level of tiles of 256 points.
struct Sight {
  const char* name;
  double zoom;
};
/// The whole track in view, and a street of it.
inline constexpr std::array<Sight, 2> sights{Sight{"whole", 12.5}, Sight{"street", 17}};

inline constexpr double pi = 3.14159265358979323846;
inline constexpr double metresPerDegree = 111195;

inline Place placeAt(double metresEast, double metresNorth) {
  return {middle.latitude + metresNorth / metresPerDegree,
          middle.longitude + metresEast / (metresPerDegree * std::cos(middle.latitude * pi / 180))};
}

/// A vehicle's day on a grid of streets, 5 by 10 km in blocks of 100 m, a point every 8 m with the scatter of
/// a receiver; a shorter track takes evenly spaced points of the same drive.
inline std::vector<Place> track(int points) {
  std::uint64_t state = 20260504;
  const auto random = [&state] {
    state = state * 6364136223846793005U + 1442695040888963407U;
    return static_cast<double>(state >> 33) / static_cast<double>(1U << 31);
  };
  std::vector<Place> all;
  all.reserve(longest);
  double east = 0;
  double north = 0;
  int direction = 0;
  double untilCrossing = 100;
  while (all.size() < longest) {
    constexpr double step = 8;
    constexpr int dx[] = {1, 0, -1, 0};
    constexpr int dy[] = {0, 1, 0, -1};
    east += dx[direction] * step;
    north += dy[direction] * step;
    untilCrossing -= step;
    if (untilCrossing < step / 2) {
      untilCrossing = 100;
      direction = (direction + (random() < 0.5 ? 0 : random() < 0.5 ? 1 : 3)) % 4;
      if (std::fabs(east + dx[direction] * 100) > 2500) direction = east > 0 ? 2 : 0;
      if (std::fabs(north + dy[direction] * 100) > 5000) direction = north > 0 ? 3 : 1;
    }
    all.push_back(placeAt(east + 3 * (random() - 0.5), north + 3 * (random() - 0.5)));
  }
  std::vector<Place> chosen;
  chosen.reserve(static_cast<std::size_t>(points));
  const std::size_t stride = longest / static_cast<std::size_t>(points);
  for (std::size_t i = 0; i < all.size(); i += stride)
    chosen.push_back(all[i]);
  return chosen;
}

/// The map's centre in a frame: once round a circle of 100 points' radius, 3.5 points a frame.
inline Place centre(const Sight& sight, int frame) {
  const double metresPerPoint = 156543.034 * std::cos(middle.latitude * pi / 180) / std::pow(2, sight.zoom);
  const double angle = 2 * pi * frame / frames;
  return placeAt(100 * metresPerPoint * std::cos(angle), 100 * metresPerPoint * std::sin(angle));
}

inline double now() {
  using Milliseconds = std::chrono::duration<double, std::milli>;
  return Milliseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// One line of figures for whoever collects them: name, size, sight, median and 95th percentile in
/// milliseconds.
inline void report(const char* name, int points, const char* sight, std::vector<double> times) {
  if (times.empty()) return;
  std::sort(times.begin(), times.end());
  std::printf("%s\t%d\t%s\t%.3f\t%.3f\n", name, points, sight, times[times.size() / 2],
              times[times.size() * 95 / 100]);
  std::fflush(stdout);
}

}  // namespace fleetor::pan
