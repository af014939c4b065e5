#include "ui/map/map_view.h"

#include "support/testing.h"

namespace fleetor::test {
namespace {

class Place final : public MapAnnotation {
 public:
  Place(std::string name, Coordinate at) : name_(std::move(name)), at_(at) {}
  Coordinate coordinate() const override { return at_; }
  std::string title() const override { return name_; }
  std::string subtitle() const override { return name_.empty() ? "" : "here"; }
  std::string subject() const override { return name_ == "van" ? name_ : ""; }

 private:
  std::string name_;
  Coordinate at_;
};

std::shared_ptr<MapAnnotation> place(const std::string& name, Coordinate at = {50, 20}) {
  return std::make_shared<Place>(name, at);
}

class Map : public testing::Test, public MapViewDelegate {
 protected:
  Map() {
    map.setDelegate(this);
    map.moveCamera([](MapCamera& camera) { camera.setViewport(390, 780); });
    connections.push_back(map.changed.connect([this] { told += 'c'; }));
    connections.push_back(map.cameraChanged.connect([this] { told += 'v'; }));
    connections.push_back(map.annotationsChanged.connect([this] { told += 'a'; }));
    connections.push_back(map.overlaysChanged.connect([this] { told += 'o'; }));
  }

  std::shared_ptr<MapAnnotationView> mapViewViewForAnnotation(
      MapView& asker, const std::shared_ptr<MapAnnotation>& annotation) override {
    diary += "view(" + annotation->title() + ") ";
    if (annotation->title().empty()) return nullptr;
    auto view = asker.dequeueReusableAnnotationViewWithIdentifier("Place");
    if (!view) view = std::make_shared<MapAnnotationView>("Place");
    view->setAnnotation(annotation);
    view->setCanShowCallout(true);
    return view;
  }
  void mapViewDidAddAnnotationViews(MapView&, const MapAnnotationViews& views) override {
    diary += "added";
    for (const auto& view : views)
      diary += "(" + view->annotation()->title() + ")";
    diary += " ";
  }
  std::shared_ptr<MapPolylineRenderer> mapViewRendererForOverlay(
      MapView&, const std::shared_ptr<MapPolyline>& overlay) override {
    diary += "renderer ";
    return std::make_shared<MapPolylineRenderer>(overlay);
  }
  std::string take(std::string& notes) { return std::exchange(notes, {}); }

  MapView map;
  std::string diary;
  std::string told;
  std::vector<Connection> connections;
};

TEST_F(Map, AsksItsDelegateOnceAndKeepsWhatItGave) {
  const auto a = place("a");
  const auto b = place("b");
  const auto nameless = place("");
  const auto line = MapPolyline::polylineWithCoordinates({{50, 20}, {50, 21}});
  map.addAnnotations({a, nameless, a});
  EXPECT_EQ(take(diary), "view(a) view() added(a)() ");
  EXPECT_EQ(map.viewForAnnotation(*nameless)->image(), "");
  map.setDelegate(nullptr);
  map.addAnnotation(b);
  map.addOverlay(line);
  EXPECT_THAT(map.annotations(), ElementsAre(a, nameless, b));
  EXPECT_TRUE(map.viewForAnnotation(*a));
  EXPECT_FALSE(map.viewForAnnotation(*b) || map.rendererForOverlay(*line));
  EXPECT_EQ(take(told), "aao");

  map.setDelegate(this);
  map.setDelegate(this);
  EXPECT_EQ(take(diary), "view(b) added(b) renderer ");
  EXPECT_EQ(take(told), "ao");
  EXPECT_EQ(map.rendererForOverlay(*line)->polyline(), line);
  map.addOverlay(line);
  map.removeOverlay(nullptr);
  map.removeOverlay(line);
  map.removeOverlay(line);
  EXPECT_EQ(take(told), "o");
  EXPECT_FALSE(map.rendererForOverlay(*line));
}

TEST_F(Map, PassesMarkerCalloutAndFocusOnToWhatReplacesAnAnnotation) {
  const auto a = place("a"), van = place("van"), moved = place("van", {51, 20}), b = place("b");
  map.addAnnotations({van, a});
  map.selectAnnotation(van);
  map.focusAnnotation(van);
  map.setGlidingSubject("van");
  const auto marker = map.viewForAnnotation(*van);
  map.replaceAnnotation(van, moved);
  EXPECT_EQ(map.annotations(), (MapAnnotations{moved, a}));
  EXPECT_EQ(map.viewForAnnotation(*moved), marker);
  EXPECT_EQ(marker->annotation(), moved);
  EXPECT_EQ(map.selectedAnnotation(), moved);
  EXPECT_EQ(map.currentAnnotation(), moved);
  EXPECT_EQ(map.placeOf(*moved), project({50, 20})) << "it sets off from where it was";
  map.replaceAnnotation(a, b);
  EXPECT_TRUE(map.isGliding());
  EXPECT_EQ(map.selectedAnnotation(), moved);
}

TEST_F(Map, CentresOnAFocusedMarkerUnlessItShowsWellWithinTheEdges) {
  map.setRegion({0, 20}, 1000, 1000, false);
  const WorldRect seen = map.camera().visibleRect();
  for (const auto& [pointsFromEdge, expected] : {std::pair{73, "c"}, std::pair{71, "cv"}}) {
    const WorldPoint at{seen.right - pointsFromEdge / map.camera().scale(), 0.5};
    map.addAnnotation(place("p", unproject(at)));
    told.clear();
    map.focusAnnotation(map.annotations().back());
    EXPECT_EQ(take(told), expected);
    EXPECT_EQ(map.currentAnnotation(), map.annotations().back());
  }
}

TEST_F(Map, UsesMarkersAgainAndOpensOneCalloutAtATime) {
  auto a = place("a");
  const auto b = place("b");
  map.addAnnotations({a, b});
  const auto viewOfA = map.viewForAnnotation(*a);
  EXPECT_EQ(viewOfA->accessibleName(), "a, here");
  viewOfA->setZPosition(1000);
  map.viewForAnnotation(*b)->setEnabled(false);
  map.focusAnnotation(a);
  told.clear();
  map.selectAnnotation(a);
  map.selectAnnotation(b);
  map.selectAnnotation(place("elsewhere"));
  EXPECT_EQ(map.selectedAnnotation(), a);
  map.removeAnnotations({a, place("elsewhere")});
  EXPECT_FALSE(map.selectedAnnotation());
  EXPECT_EQ(map.currentAnnotation(), b);
  EXPECT_EQ(take(told), "cca");
  EXPECT_THAT(map.annotations(), ElementsAre(b));
  const std::weak_ptr<MapAnnotation> gone = std::exchange(a, nullptr);
  EXPECT_TRUE(gone.expired());

  const auto c = place("c");
  map.addAnnotation(c);
  EXPECT_EQ(map.viewForAnnotation(*c), viewOfA);
  EXPECT_EQ(viewOfA->zPosition(), 0);
  map.removeAnnotations(map.annotations());
  EXPECT_TRUE(map.annotations().empty());
}

TEST_F(Map, AsksOfACrowdOnlyForTheMarkersThatSomebodyDraws) {
  MapAnnotations crowd;
  for (std::size_t i = 0; i <= MapView::crowd; ++i)
    crowd.push_back(place(std::to_string(i)));
  map.addAnnotations(crowd);
  map.setDelegate(nullptr);
  map.setDelegate(this);
  EXPECT_EQ(take(diary), "");
  EXPECT_FALSE(map.viewForAnnotation(*crowd[7]));
  map.needViews({crowd[7], crowd[3]});
  map.needViews({crowd[7]});
  EXPECT_EQ(take(diary), "view(7) view(3) added(7)(3) ");
  EXPECT_EQ(map.viewForAnnotation(*crowd[7])->accessibleName(), "7, here");
  map.removeAnnotations(crowd);
  EXPECT_TRUE(map.annotations().empty());
}

TEST_F(Map, ShowsARegionACentreAndAllMarkersWithinItsEdges) {
  map.setRegion({50, 20}, 2000, 2000, false);
  const auto metresAcross = [this] { return 390 / map.camera().scale() * metresPerWorldUnit(50); };
  EXPECT_NEAR(metresAcross(), 2000, 1);
  map.setCenterCoordinate({50.01, 20.01}, true);
  EXPECT_NEAR(map.centerCoordinate().latitude, 50, 1e-9);
  map.moveCamera([](MapCamera& camera) { camera.advance(10); });
  EXPECT_NEAR(map.centerCoordinate().latitude, 50.01, 1e-9);
  EXPECT_NEAR(metresAcross(), 2000, 2);

  map.addAnnotations({place("a", {50, 20}), place("b", {50.5, 22}), place("c", {49.1, 21})});
  told.clear();
  map.showAnnotations(map.annotations(), false);
  EXPECT_EQ(take(told), "v");
  map.addOverlay(MapPolyline::polylineWithCoordinates({{50, 20}, {48, 24}}));
  map.showAll(false);
  const ScreenPoint corner = map.camera().screenPoint(project({48, 24}));
  EXPECT_NEAR(std::min(390 - corner.x, 780 - corner.y), MapView::fitPadding, 0.01);
  const ScreenPoint top = map.camera().screenPoint(project({50.5, 22}));
  EXPECT_GE(top.y, MapView::fitPadding - 0.01);
}

TEST_F(Map, AMarkerGlidesToThePlaceOfTheOneThatReplacesIt) {
  const auto shown = [this] { return unproject(map.placeOf(*map.annotations().at(0))).longitude; };
  for (const char* subject : {"van", "bus"}) {
    map.setGlidingSubject(subject);
    map.replaceAnnotations({place("van", {50, 20})});
    map.advance(1);
    map.replaceAnnotations({place("van", {50, 21})});
    const bool glides = subject == std::string("van");
    EXPECT_EQ(map.isGliding(), glides);
    EXPECT_NEAR(shown(), glides ? 20 : 21, 1e-6);
    map.advance(MapCamera::shortJourney / 2);
    EXPECT_TRUE(glides ? shown() > 20.2 && shown() < 20.99 : shown() > 20.99);
    map.advance(MapCamera::shortJourney);
    EXPECT_FALSE(map.isGliding());
    EXPECT_NEAR(shown(), 21, 1e-6);
  }
}

}  // namespace
}  // namespace fleetor::test
