#include "map/camera.h"

#include "support/testing.h"

namespace fleetor::test {

constexpr double frame = 1.0 / 60;
constexpr Coordinate munich{48.137, 11.575};
constexpr Coordinate suva{-18.14, 178.44};
constexpr Coordinate apia{-13.83, -171.77};

class MapCameraTest : public testing::Test {
 protected:
  MapCameraTest() {
    camera.setViewport(390, 780);
    camera.moveTo({project(munich), 14}, false);
  }

  /// Draws frames until nothing moves any more; returns their number.
  int run(const std::function<void()>& afterFrame = [] {}) {
    int frames = 0;
    for (bool more = true; more && frames < 1000; ++frames) {
      more = camera.advance(frame);
      afterFrame();
    }
    return frames;
  }

  void expectAt(ScreenPoint actual, ScreenPoint expected, double tolerance = 1e-3) {
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
  }

  WorldPoint placeAt(ScreenPoint point) const {
    const WorldRect seen = camera.visibleRect();
    return {seen.left + point.x / camera.scale(), seen.top + point.y / camera.scale()};
  }

  MapCamera camera;
};

TEST_F(MapCameraTest, FindsPlacesOnTheScreenAlsoAcrossTheAntimeridian) {
  camera.moveTo({project({0, 179.9}), 8}, false);
  const double pointsPerDegree = camera.scale() / 360;
  expectAt(camera.screenPoint(project({0, -179.9})), {195 + 0.2 * pointsPerDegree, 390});
  EXPECT_GT(camera.visibleRect().right, 1);

  camera.panBy(-pointsPerDegree, 0);
  EXPECT_NEAR(unproject(camera.centre()).longitude, -179.1, 1e-9);
  expectAt(camera.screenPoint(project({0, 179.9})), {195 - pointsPerDegree, 390});
}

TEST_F(MapCameraTest, NeverShowsWhatIsBeyondTheWorld) {
  for (const auto& [width, height] : {std::pair{390, 780}, std::pair{1024, 768}, std::pair{5000, 40}}) {
    camera.setViewport(width, height);
    camera.zoomBy(1e-9, {10, 10});
    camera.panBy(31, 1e6);
    const WorldRect seen = camera.visibleRect();
    EXPECT_TRUE(seen.top >= -1e-12 && seen.bottom <= 1 + 1e-12 && seen.width() <= 1 + 1e-12) << width;
  }
  camera.zoomBy(1e9, {10, 10});
  EXPECT_EQ(camera.zoom(), 20);
}

TEST_F(MapCameraTest, MeasuresARegionWhenItsViewportIsKnown) {
  MapCamera early;
  early.setRegion(munich, 2000, 2000, true);
  EXPECT_EQ(early.position(), (CameraPosition{project(munich), 0}));
  EXPECT_FALSE(early.moving());
  const auto metresAcross = [&] { return early.visibleRect().width() * metresPerWorldUnit(munich.latitude); };

  early.setViewport(390, 780);
  EXPECT_NEAR(metresAcross(), 2000, 1);
  early.setViewport(780, 390);
  EXPECT_NEAR(metresAcross(), 4000, 1) << "the height is the narrow side now";
  early.setCentre(project({48.2, 11.6}), false);
  EXPECT_NEAR(metresAcross(), 4000, 10) << "only the centre moves";

  early.setRegion(munich, 2000, 2000, true);
  early.setViewport(780, 390);
  EXPECT_TRUE(early.moving()) << "nothing changed";
  early.zoomBy(2, {10, 10});
  const double zoomed = early.zoom();
  early.setViewport(390, 780);
  EXPECT_EQ(early.zoom(), zoomed) << "the zoom of a gesture stays";
}

TEST_F(MapCameraTest, FitsEveryPlaceInside) {
  const std::vector<std::vector<Coordinate>> sets{{munich, {48.4, 11.2}, {47.9, 11.9}},
                                                  {suva, apia},
                                                  {{60, 5}, {70, 6}, {-40, 7}},
                                                  {munich},
                                                  {{std::nan(""), 3}, {0, 0}}};
  for (const auto& places : sets) {
    camera.fit(places, 40, false);
    for (const Coordinate& place : places) {
      const auto [x, y] = camera.screenPoint(project(place));
      EXPECT_TRUE(x > 39.9 && x < 350.1 && y > 39.9 && y < 740.1) << x << ", " << y;
    }
  }
  camera.fit(std::vector{suva, apia}, 40, false);
  EXPECT_LT(camera.visibleRect().width(), 0.05) << "the short way";
  camera.fit(std::vector{munich}, 0, false);
  EXPECT_NEAR(camera.visibleRect().width() * metresPerWorldUnit(munich.latitude), 300, 1);
  const CameraPosition before = camera.position();
  camera.fit({}, 40, false);
  EXPECT_EQ(camera.position(), before);
}

TEST_F(MapCameraTest, KeepsThePlaceUnderTheFingers) {
  const ScreenPoint finger{71, 640};
  const WorldPoint place = placeAt(finger);
  camera.zoomBy(1.7, finger);
  expectAt(camera.screenPoint(place), finger);

  camera.zoomSmoothlyBy(1, finger);
  camera.advance(frame);
  camera.zoomSmoothlyBy(1, finger);
  run([&] { expectAt(camera.screenPoint(place), finger); });
  EXPECT_NEAR(camera.zoom(), 14 + std::log2(1.7) + 2, 1e-9) << "two notches of the wheel add up";
}

TEST_F(MapCameraTest, GlidesOnWhenThrown) {
  const WorldPoint place = camera.centre();
  camera.fling(900, -1200);
  std::vector<double> steps;
  double gone = 0;
  const int frames = run([&] {
    const auto [x, y] = camera.screenPoint(place);
    const double now = std::hypot(x - 195, y - 390);
    steps.push_back(now - gone);
    gone = now;
    EXPECT_NEAR((y - 390) / (x - 195), -4.0 / 3, 1e-3);
  });
  EXPECT_NEAR(steps.front(), 1500 * frame, 1) << "it starts at the finger's speed";
  EXPECT_TRUE(std::ranges::is_sorted(steps, std::greater<>()));
  EXPECT_LT(steps.back(), 0.2) << "it comes to rest without a jerk";
  EXPECT_TRUE(frames > 60 && frames < 200) << frames;

  const CameraPosition smooth = camera.position();
  camera.moveTo({place, 14}, false);
  camera.fling(900, -1200);
  for (int i = 0; i < frames / 8; ++i)
    camera.advance(8 * frame);  // a device that drops frames
  expectAt(camera.screenPoint(smooth.centre), {195, 390}, 1);

  camera.stop();
  camera.fling(10, 10);
  EXPECT_FALSE(camera.moving()) << "too slow for a throw";
  camera.fling(1e9, 0);
  camera.advance(frame);
  EXPECT_LT(std::abs(camera.screenPoint(smooth.centre).x - 195), 200) << "still to be followed by eye";
  camera.panBy(1, 0);
  EXPECT_FALSE(camera.advance(frame)) << "a finger holds it";
}

TEST_F(MapCameraTest, MovesStraightToANearbyPlace) {
  const WorldPoint next = placeAt({345, 390});
  camera.setCentre(next, true);
  EXPECT_EQ(camera.destination().centre, next);
  double left = 150;
  const int frames = run([&] {
    EXPECT_EQ(camera.zoom(), 14);
    const double now = camera.screenPoint(next).x - 195;
    EXPECT_LT(now, left);
    left = now;
  });
  EXPECT_EQ(camera.centre(), next);
  EXPECT_LE(frames, 20);
  camera.moveTo({next, 15}, true);
  camera.panBy(1, 0);
  EXPECT_FALSE(camera.moving()) << "a finger takes over";
}

TEST_F(MapCameraTest, FliesToAFarPlaceTheShortWay) {
  camera.moveTo({project(suva), 15}, false);
  camera.moveTo({project(apia), 13}, true);
  double lowest = 20;
  CameraPosition before = camera.position();
  const int frames = run([&] {
    const CameraPosition now = camera.position();
    lowest = std::min(lowest, now.zoom);
    const double dx = std::remainder(now.centre.x - before.centre.x, 1);
    const double moved =
        std::hypot(dx, now.centre.y - before.centre.y) * pointsPerWorldUnit(std::min(now.zoom, before.zoom));
    EXPECT_TRUE(moved < 150 && std::abs(now.zoom - before.zoom) < 0.5) << "the eye can follow every frame";
    EXPECT_GE(dx, -1e-12) << "eastwards over the antimeridian";
    before = now;
  });
  EXPECT_NEAR(camera.centre().x, project(apia).x, 1e-12);
  EXPECT_EQ(camera.zoom(), 13);
  EXPECT_LE(frames, 91);
  EXPECT_TRUE(lowest > 5 && lowest < 9) << "rises until both are in view, no higher: " << lowest;
}

TEST_F(MapCameraTest, IgnoresNumbersThatAreNotFinite) {
  const CameraPosition before = camera.position();
  for (const double odd : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
    camera.panBy(odd, 0);
    camera.fling(0, odd);
    camera.zoomBy(2, {odd, 0});
    camera.zoomSmoothlyBy(odd, {0, 0});
    camera.moveTo({{odd, 0}, 4}, false);
    camera.setCentre({0, odd}, true);
    camera.setRegion(munich, odd, 1, false);
    camera.advance(odd);
  }
  camera.zoomBy(-2, {0, 0});
  camera.advance(-frame);
  EXPECT_EQ(camera.position(), before);
  EXPECT_FALSE(camera.moving());
  camera.setViewport(std::nan(""), 780);
  EXPECT_FALSE(camera.hasViewport());
}

}  // namespace fleetor::test
