#include "map/camera.h"

#include <algorithm>
#include <cmath>

namespace fleetor {

namespace {

constexpr double minimumZoom = 1;
constexpr double maximumZoom = 20;
constexpr double glideSeconds = 0.4;   // a glide has lost 63 % of its speed after that long
constexpr double slowestThrow = 50;    // points a second
constexpr double fastestThrow = 8000;  // beyond it nothing can be followed by eye
constexpr double restingSpeed = 5;     // a tenth of a point a frame: nobody sees it stop
constexpr double zoomGlideSeconds = 0.1;
constexpr double restingZoom = 0.001;      // half a point at the edge of a tablet
constexpr double leastMetresFitted = 300;  // one marker alone is seen among its streets

/// How much a flight prefers rising to travelling low; 1.42 is what the users of a study preferred (see
/// along()).
constexpr double flightCurvature = 1.42;

bool isFinite(ScreenPoint point) {
  return std::isfinite(point.x) && std::isfinite(point.y);
}
bool isFinite(WorldPoint point) {
  return std::isfinite(point.x) && std::isfinite(point.y);
}

/// From -0.5 to 0.5: the short way round the world.
double shortWay(double dx) {
  return dx - std::round(dx);
}

/// To the nearer half turn if that is narrower.
WorldRect boundsOf(std::span<const Coordinate> coordinates) {
  const WorldPoint first = project(coordinates.front());
  WorldRect plain{first.x, first.y, first.x, first.y};
  double left = 2;
  double right = 0;
  for (const Coordinate& coordinate : coordinates) {
    const auto [x, y] = project(coordinate);
    plain = {std::min(plain.left, x), std::min(plain.top, y), std::max(plain.right, x),
             std::max(plain.bottom, y)};
    const double eastOfMiddle = x < 0.5 ? x + 1 : x;
    left = std::min(left, eastOfMiddle);
    right = std::max(right, eastOfMiddle);
  }
  return right - left < plain.width() ? WorldRect{left, plain.top, right, plain.bottom} : plain;
}

}  // namespace

void MapCamera::setViewport(double width, double height) {
  const bool usable = std::isfinite(width) && std::isfinite(height) && width > 0 && height > 0;
  if (width == width_ && height == height_) return;  // an animation goes on
  width_ = usable ? width : 0;
  height_ = usable ? height : 0;
  if (region_ && usable)
    show(destination().centre, *region_, false);
  else
    position_ = limited(position_);
}

CameraPosition MapCamera::destination() const {
  if (journey_) return limited(journey_->to);
  return {position_.centre, zoomGlide_ ? zoomGlide_->target : position_.zoom};
}

WorldRect MapCamera::visibleRect() const {
  const double halfWidth = width_ / 2 / scale();
  const double halfHeight = height_ / 2 / scale();
  const auto [x, y] = position_.centre;
  return {x - halfWidth, y - halfHeight, x + halfWidth, y + halfHeight};
}

ScreenPoint MapCamera::screenPoint(WorldPoint point) const {
  return {width_ / 2 + shortWay(point.x - position_.centre.x) * scale(),
          height_ / 2 + (point.y - position_.centre.y) * scale()};
}

bool MapCamera::beginGesture() {
  journey_.reset();
  if (!hasViewport()) return false;
  region_.reset();
  return true;
}

void MapCamera::panBy(double dx, double dy) {
  if (!std::isfinite(dx) || !std::isfinite(dy) || !beginGesture()) return;
  stop();
  const auto [x, y] = position_.centre;
  position_ = limited({{x - dx / scale(), y - dy / scale()}, position_.zoom});
}

void MapCamera::fling(double velocityX, double velocityY) {
  const double speed = std::hypot(velocityX, velocityY);
  if (!std::isfinite(speed) || !beginGesture()) return;
  glide_.reset();
  if (speed >= slowestThrow) {
    const double factor = std::min(1.0, fastestThrow / speed);
    glide_ = Glide{velocityX * factor, velocityY * factor};
  }
}

void MapCamera::zoomBy(double factor, ScreenPoint around) {
  if (std::isfinite(factor) && factor > 0 && isFinite(around) && beginGesture()) {
    stop();
    zoomTo(position_.zoom + std::log2(factor), around);
  }
}

void MapCamera::zoomSmoothlyBy(double levels, ScreenPoint around) {
  const double from = destination().zoom;
  if (std::isfinite(levels) && isFinite(around) && beginGesture())
    zoomGlide_ = ZoomGlide{limited({position_.centre, from + levels}).zoom, around};
}

void MapCamera::stop() {
  glide_.reset();
  zoomGlide_.reset();
  journey_.reset();
}

void MapCamera::moveTo(const CameraPosition& target, bool animated) {
  if (isFinite(target.centre) && std::isfinite(target.zoom)) {
    region_.reset();
    travel(target, animated);
  }
}

void MapCamera::setCentre(WorldPoint centre, bool animated) {
  if (isFinite(centre)) travel({centre, destination().zoom}, animated);
}

void MapCamera::setRegion(Coordinate centre, double latitudinalMetres, double longitudinalMetres,
                          bool animated) {
  if (std::isfinite(latitudinalMetres) && std::isfinite(longitudinalMetres)) {
    const double metres = metresPerWorldUnit(centre.latitude);
    show(project(centre), {longitudinalMetres / metres, latitudinalMetres / metres, 0}, animated);
  }
}

void MapCamera::fit(std::span<const Coordinate> coordinates, double padding, bool animated) {
  if (coordinates.empty() || !std::isfinite(padding)) return;
  const WorldRect bounds = boundsOf(coordinates);
  const WorldPoint middle{(bounds.left + bounds.right) / 2, (bounds.top + bounds.bottom) / 2};
  const double least = leastMetresFitted / metresPerWorldUnit(unproject(middle).latitude);
  show(middle, {std::max(least, bounds.width()), std::max(least, bounds.height()), padding}, animated);
}

bool MapCamera::advance(double seconds) {
  if (!std::isfinite(seconds) || seconds <= 0) return moving();
  if (glide_) {
    // The exact integral of a speed that falls off exponentially: no frame rate changes where it ends.
    const double decay = std::exp(-seconds / glideSeconds);
    const double travelled = glideSeconds * (1 - decay) / scale();
    const auto [x, y] = position_.centre;
    position_ =
        limited({{x - glide_->velocityX * travelled, y - glide_->velocityY * travelled}, position_.zoom});
    glide_ = Glide{glide_->velocityX * decay, glide_->velocityY * decay};
    if (std::hypot(glide_->velocityX, glide_->velocityY) < restingSpeed) glide_.reset();
  }
  if (zoomGlide_) {
    const auto [target, around] = *zoomGlide_;
    const double left = (target - position_.zoom) * std::exp(-seconds / zoomGlideSeconds);
    const bool arrived = std::abs(left) < restingZoom;
    zoomTo(arrived ? target : target - left, around);
    if (arrived) zoomGlide_.reset();
  }
  if (journey_) {
    journey_->elapsed += seconds;
    position_ = limited(along(*journey_));
    if (journey_->elapsed >= journey_->duration) journey_.reset();
  }
  return moving();
}

CameraPosition MapCamera::limited(CameraPosition position) const {
  double& x = position.centre.x;
  x -= std::floor(x);
  if (x >= 1) x = 0;  // -1e-20 rounds to 1
  if (hasViewport()) {
    const double worldFills = std::log2(std::max(width_, height_) / pointsPerWorldUnit(0));
    const double minimum = std::max(minimumZoom, worldFills);
    position.zoom = std::clamp(position.zoom, minimum, std::max(minimum, maximumZoom));
    const double halfHeight = std::min(0.5, height_ / 2 / pointsPerWorldUnit(position.zoom));
    position.centre.y = std::clamp(position.centre.y, halfHeight, 1 - halfHeight);
  }
  return position;
}

double MapCamera::zoomToShow(const Region& region) const {
  const double width = std::max(width_ - 2 * region.padding, width_ / 2);
  const double height = std::max(height_ - 2 * region.padding, height_ / 2);
  // No more than limited() can bring back into range, for a region without any extent.
  const double extent = std::max({region.width / width, region.height / height, 1e-12});
  return -std::log2(extent * pointsPerWorldUnit(0));
}

void MapCamera::zoomTo(double zoom, ScreenPoint around) {
  const double before = scale();
  const double after = pointsPerWorldUnit(limited({position_.centre, zoom}).zoom);
  const double shift = 1 / before - 1 / after;
  const auto [x, y] = position_.centre;
  position_ = limited({{x + (around.x - width_ / 2) * shift, y + (around.y - height_ / 2) * shift}, zoom});
}

void MapCamera::show(WorldPoint centre, const Region& region, bool animated) {
  region_ = region;
  travel({centre, hasViewport() ? zoomToShow(region) : position_.zoom}, animated);
}

void MapCamera::travel(const CameraPosition& target, bool animated) {
  stop();
  const CameraPosition from = position_;
  CameraPosition to = limited(target);
  if (!animated || !hasViewport() || to == from) {
    position_ = to;
    return;
  }
  to.centre.x = from.centre.x + shortWay(to.centre.x - from.centre.x);
  Journey journey{from, to, 0, 0, 0, 0};

  const double distance = std::hypot(to.centre.x - from.centre.x, to.centre.y - from.centre.y);
  const double size = std::max(width_, height_);
  const double fromView = size / pointsPerWorldUnit(from.zoom);
  const double toView = size / pointsPerWorldUnit(to.zoom);
  if (distance <= std::max(fromView, toView)) {
    journey.duration = std::min(1.0, shortJourney + 0.06 * std::abs(to.zoom - from.zoom));
  } else {
    const double curvature = flightCurvature * flightCurvature;
    const double wider = toView * toView - fromView * fromView;
    const double climb = curvature * curvature * distance * distance;
    journey.start = -std::asinh((wider + climb) / (2 * fromView * curvature * distance));
    const double end = -std::asinh((wider - climb) / (2 * toView * curvature * distance));
    journey.length = (end - journey.start) / flightCurvature;
    journey.duration = std::min(1.5, 0.4 + 0.1 * journey.length);
  }
  journey_ = journey;
}

/// J. J. van Wijk and W. A. A. Nuij, "Smooth and efficient zooming and panning", IEEE InfoVis 2003: the path
/// on which what is seen moves evenly.
CameraPosition MapCamera::along(const Journey& journey) const {
  const auto& [from, to, duration, elapsed, length, start] = journey;
  const double time = elapsed / duration;
  if (time >= 1) return to;
  // A short way starts at once: steps that follow each other quickly, as of a key held down, flow together.
  const double change = std::abs(to.zoom - from.zoom);
  const bool isShort = length == 0 && change < 2;
  const double eased = isShort ? easedOut(time) : 1 - std::pow(1 - time * time, 2);
  double zoom = from.zoom + (to.zoom - from.zoom) * eased;
  double done = eased;  // of the way from centre to centre
  if (length > 0) {
    const double angle = start + flightCurvature * length * eased;
    const double end = start + flightCurvature * length;
    zoom = from.zoom + std::log2(std::cosh(angle) / std::cosh(start));
    done = (std::tanh(angle) - std::tanh(start)) / (std::tanh(end) - std::tanh(start));
  } else if (change > 1e-6) {
    // About the one point that keeps its place on the screen: no swerving.
    done = (std::exp2(-from.zoom) - std::exp2(-zoom)) / (std::exp2(-from.zoom) - std::exp2(-to.zoom));
  }
  return {{from.centre.x + (to.centre.x - from.centre.x) * done,
           from.centre.y + (to.centre.y - from.centre.y) * done},
          zoom};
}

}  // namespace fleetor
