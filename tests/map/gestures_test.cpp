#include "map/gestures.h"

#include <initializer_list>

#include "support/testing.h"

namespace fleetor::test {

using enum MapGestures::Pointer;

/// Fingers on a map of 400 by 600 points at zoom 10, in virtual time.
class MapGesturesTest : public testing::Test {
 protected:
  MapGesturesTest() {
    camera.setViewport(400, 600);
    camera.moveTo({{0.5, 0.5}, 10}, false);
  }

  void wait(double seconds) {
    now += seconds;
    camera.advance(seconds);
  }

  void touch(std::initializer_list<ScreenPoint> places) {
    std::vector<MapGestures::Finger> fingers;
    for (const ScreenPoint& place : places)
      fingers.push_back({static_cast<int>(fingers.size()), place});
    if (gestures.update(fingers, pointer, now, camera)) ++taps;
  }

  void lift() { touch({}); }

  /// Moves one finger that is down by so many points, evenly, and lets it rest.
  void slide(ScreenPoint from, double dx, double dy, double rest = 0.1) {
    for (int i = 1; i <= 10; ++i) {
      wait(0.01);
      touch({{from.x + dx * i / 10, from.y + dy * i / 10}});
    }
    wait(rest);
  }

  /// Moves two fingers from 50 points beside the middle to `spread` points beside it, at one level a second
  /// or more, and lets them rest.
  void pinch(double spread, double rest = 0.1) {
    for (int i = 0; i <= 10; ++i) {
      const double beside = 50 + (spread - 50) * i / 10;
      touch({{middle.x - beside, middle.y}, {middle.x + beside, middle.y}});
      wait(i < 10 ? 0.01 : rest);
    }
  }

  ScreenPoint shown(WorldPoint place = {0.5, 0.5}) const { return camera.screenPoint(place); }
  double levels() const { return camera.destination().zoom - 10; }

  static constexpr ScreenPoint middle{200, 300};
  MapCamera camera;
  MapGestures gestures;
  MapGestures::Pointer pointer = finger;
  double now = 5;
  int taps = 0;
};

TEST_F(MapGesturesTest, RecognisesTapsByTheirTimePlaceAndNumberOfFingers) {
  struct Tap {
    double pause = 0;
    double hold = 0.1;
    std::size_t fingers = 1;
    double beside = 0;  // points from the middle
    double stray = 0;
  };
  struct Case {
    const char* name;
    std::vector<Tap> script;
    double levels;
    int taps;
    MapGestures::Pointer pointer = finger;
  };
  const Case cases[] = {
      {"one", {{}}, 0, 1},
      {"long", {{.hold = 0.4}}, 0, 0},
      {"double", {{}, {.pause = 0.2}}, 1, 1},
      {"slow double", {{}, {.pause = 0.6}}, 0, 2},
      {"close", {{}, {.pause = 0.1, .beside = 39}}, 1, 1},
      {"apart", {{}, {.pause = 0.1, .beside = 41}}, 0, 2},
      {"two doubles", {{}, {.pause = 0.1}, {.pause = 0.1}, {.pause = 0.1}}, 2, 2},
      {"double after a long one", {{}, {.pause = 0.1, .hold = 0.4}, {.pause = 0.1}}, 0, 2},
      {"two fingers", {{.fingers = 2}}, -1, 0},
      {"three fingers", {{.fingers = 3}}, 0, 0},
      {"finger strays a little", {{.stray = 7}}, 0, 1},
      {"finger drags", {{.stray = 9}}, 0, 0},
      {"mouse strays a little", {{.stray = 3}}, 0, 1, mouse},
      {"mouse drags", {{.stray = 5}}, 0, 0, mouse},
  };
  for (const Case& c : cases) {
    camera.moveTo({{0.5, 0.5}, 10}, false);
    wait(5);
    taps = 0;
    pointer = c.pointer;
    for (const auto& [pause, hold, fingers, beside, stray] : c.script) {
      wait(pause);
      const ScreenPoint at{middle.x + beside, middle.y};
      touch({at});
      if (fingers > 1) touch({at, {at.x + 60, at.y}});
      if (fingers > 2) touch({at, {at.x + 60, at.y}, {at.x + 60, at.y}});
      if (stray > 0) touch({{at.x, at.y + stray}});
      wait(hold);
      lift();
    }
    EXPECT_EQ(taps, c.taps) << c.name;
    EXPECT_NEAR(levels(), c.levels, 1e-9) << c.name;
  }
  wait(5);
  taps = 0;
  for (int i = 0; i < 2; ++i) {
    touch({middle});
    lift();
    gestures.forgetTap();
  }
  EXPECT_EQ(taps, 2) << "a forgotten tap is not the first one of two";
}

TEST_F(MapGesturesTest, DragsThrowsAndHoldsTheMap) {
  touch({middle});
  slide(middle, 10, 0, 0);
  slide({210, 300}, -100, 50);
  EXPECT_TRUE(gestures.movesMap());
  EXPECT_NEAR(shown().x, 101, 1e-6) << "the first nine points decide that it is a drag";
  EXPECT_NEAR(shown().y, 350, 1e-6);
  lift();
  EXPECT_FALSE(camera.moving() || gestures.movesMap()) << "a finger that rested throws nothing";

  touch({middle});
  slide(middle, 0, -50, 0);
  slide({200, 250}, 0, 100, 0);
  lift();
  EXPECT_TRUE(camera.moving());
  const double thrown = shown().y;
  wait(0.01);
  EXPECT_NEAR(shown().y - thrown, 10, 0.5) << "at the latest speed of the finger";
  touch({middle});
  EXPECT_FALSE(camera.moving());
  lift();
  EXPECT_EQ(taps, 0) << "it stopped the map and is no tap";
}

TEST_F(MapGesturesTest, PinchesAboutThePlaceBetweenTheFingers) {
  pinch(200);
  EXPECT_NEAR(levels(), 2, 0.4) << "less what tells a pinch from a tap";
  EXPECT_NEAR(shown().x, middle.x, 1e-6);
  const double pinched = camera.zoom();
  touch({{400, 300}});
  EXPECT_FALSE(camera.moving()) << "fingers that rested";
  slide({400, 300}, 0, 100);
  EXPECT_NEAR(shown().y, 400 - 10, 1) << "the finger left on the map drags on";
  EXPECT_EQ(camera.zoom(), pinched);
  lift();
  pinch(20, 0);
  lift();
  EXPECT_LT(levels(), camera.zoom() - 10 - 0.5) << "a quick one glides on";
  EXPECT_EQ(taps, 0);
}

TEST_F(MapGesturesTest, LeavesASidewaysDragFromAnEdgeToThePages) {
  gestures.setEdges({48, 24});
  struct Case {
    double x, dx, dy;
    bool holds;
  };
  for (const auto& [x, dx, dy, holds] : {Case{47, 100, 0, false},
                                         {49, 100, 0, true},
                                         {375, -100, 0, true},
                                         {377, -100, 0, false},
                                         {47, 40, 30, false},
                                         {47, 30, 40, true},
                                         {377, 0, 7, false}}) {
    const WorldPoint before = camera.centre();
    touch({{x, 300}});
    slide({x, 300}, dx, dy);
    EXPECT_EQ(gestures.holdsFingers(), holds) << x << " " << dx << " " << dy;
    EXPECT_EQ(camera.centre() != before, holds);
    gestures.cancel();
  }
  touch({{47, 300}});
  touch({{47, 300}, {200, 300}});
  EXPECT_TRUE(gestures.holdsFingers()) << "two fingers are always the map's";
  gestures.cancel();
  lift();
  EXPECT_FALSE(gestures.holdsFingers());
  EXPECT_EQ(levels(), 0) << "no tap once another item has the fingers";
}

TEST_F(MapGesturesTest, FollowsTheWheelTheTouchpadAndTheArrows) {
  zoomByWheel(camera, 2, middle);
  zoomByTouchpad(camera, -50, middle);
  EXPECT_NEAR(levels(), 0.5, 1e-9);
  wait(5);
  const WorldPoint before = camera.centre();
  moveBySteps(camera, 1, 0);
  wait(0.05);
  moveBySteps(camera, 1, -1);
  wait(5);
  EXPECT_NEAR(shown(before).x, 200 - 2 * 96, 1e-3) << "steps add up";
  EXPECT_NEAR(shown(before).y, 300 + 96, 1e-3);
}

}  // namespace fleetor::test
