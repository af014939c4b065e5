#include "demo/town/geometry.h"

#include <algorithm>
#include <utility>

namespace fleetor::demo {
namespace {

constexpr double degree = std::numbers::pi / 180;

// Of the globe, shrunk so that a metre of the plane is a metre at the town.
double radius() {
  static const double shrunk = 6371008.8 * std::cos(townCentre.latitude * degree);
  return shrunk;
}

double northing(double latitude) {
  return radius() * std::asinh(std::tan(latitude * degree));
}

}  // namespace

GeoPosition geoPosition(Point point) {
  return {std::atan(std::sinh((point.y + northing(townCentre.latitude)) / radius())) / degree,
          townCentre.longitude + point.x / radius() / degree};
}

Point townPoint(GeoPosition position) {
  return {(position.longitude - townCentre.longitude) * degree * radius(),
          northing(position.latitude) - northing(townCentre.latitude)};
}

Walk::Walk(Shape line) : line_(std::move(line)), along_{0} {
  for (std::size_t i = 1; i < line_.size(); ++i)
    along_.push_back(along_.back() + distanceBetween(line_[i - 1], line_[i]));
}

Station Walk::at(double metres) const {
  metres = std::clamp(metres, 0.0, length());
  const auto next = std::upper_bound(along_.begin() + 1, along_.end() - 1, metres);
  const auto i = static_cast<std::size_t>(next - along_.begin());
  const double span = along_[i] - along_[i - 1];
  const Point step = line_[i] - line_[i - 1];
  return {line_[i - 1] + step * (span > 0 ? (metres - along_[i - 1]) / span : 0), unitOf(step)};
}

Shape Walk::between(double from, double to) const {
  Shape stretch{at(from).at};
  for (std::size_t i = 0; i < line_.size(); ++i)
    if (along_[i] > from && along_[i] < to) stretch.push_back(line_[i]);
  stretch.push_back(at(to).at);
  return stretch;
}

}  // namespace fleetor::demo
