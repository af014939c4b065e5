#include "map/tile_board.h"

#include "support/testing.h"

namespace fleetor {
namespace {

struct FakeImage : TileImage {
  std::size_t sizeInBytes() const override { return 1000; }
};

const TileLoader::Result someImage{std::make_shared<FakeImage>(), false};
const TileLoader::Result noSuchTile{nullptr, true};
const TileLoader::Result failure{};

// Records the requests; the test answers them.
struct FakeLoader : TileLoader {
  struct Request {
    Handle handle = 0;
    TileKey key;
    Source source = Source::network;
    Done done;
  };
  std::vector<Request> open;
  std::vector<TileKey> asked;  // of the server, ever
  Handle last = 0;

  Handle load(const TileKey& key, Source source, Done done) override {
    open.push_back({++last, key, source, std::move(done)});
    if (source == Source::network) asked.push_back(key);
    return last;
  }
  void cancel(Handle handle) override {
    std::erase_if(open, [handle](const Request& request) { return request.handle == handle; });
  }
  bool serves(MapStyle style) const override { return style != MapStyle::dark; }
  int minimumZoom() const override { return 3; }
  int maximumZoom() const override { return 19; }

  void answerAll(const Result& result, std::optional<Source> only = {}) {
    for (Request& request : std::exchange(open, {}))
      if (only && request.source != *only)
        open.push_back(std::move(request));
      else
        request.done(result);
  }
  int underWay(Source source) const {
    return static_cast<int>(std::count_if(open.begin(), open.end(),
                                          [source](auto& request) { return request.source == source; }));
  }
};

constexpr WorldPoint downtown{0.53, 0.34};

struct TileBoardTest : testing::Test {
  FakeLoader loader;
  TileMemory memory{1'000'000};
  TileBoard board{loader, memory};
  double now = 100;

  static TileView view(double zoom, WorldPoint centre = downtown) {
    return {.centre = centre, .zoom = zoom, .width = 600, .height = 500};
  }

  void show(const TileView& what) { board.update(what, now); }

  // Until nothing more is requested, and all has faded in.
  void loadAll(const TileView& what) {
    for (show(what); !loader.open.empty(); show(what))
      loader.answerAll(someImage);
    now += 1;
    show(what);
  }

  // The share of the view that something opaque covers, 0 ... 1; also checks that every image lies where its
  // tile is in the world.
  double covered(const TileView& what) const {
    const double perPoint = 1 / pointsPerWorldUnit(what.zoom);
    int inside = 0;
    constexpr int steps = 23;
    for (int i = 0; i < steps * steps; ++i) {
      const int column = i % steps;
      const int row = i / steps;
      const double x = what.centre.x + ((column + 0.5) / steps - 0.5) * what.width * perPoint;
      const double y = what.centre.y + ((row + 0.5) / steps - 0.5) * what.height * perPoint;
      bool opaque = false;
      for (const DrawnTile& tile : board.drawn()) {
        const double right = (x - tile.origin.x) / tile.size;
        const double down = (y - tile.origin.y) / tile.size;
        if (right < 0 || right >= 1 || down < 0 || down >= 1) continue;
        opaque = opaque || tile.opacity == 1;
        const double count = std::exp2(tile.key.id.zoom);
        const double offX = x * count - tile.key.id.x - tile.left - right * tile.part;
        EXPECT_NEAR(std::remainder(offX, count), 0, 1e-6);  // in any copy of the world
        EXPECT_NEAR(y * count - tile.key.id.y, tile.top + down * tile.part, 1e-6);
      }
      inside += opaque;
    }
    return static_cast<double>(inside) / (steps * steps);
  }
};

TEST_F(TileBoardTest, RequestsTheNearestFirstAndTheRingLast) {
  const TileView what = view(15);
  show(what);
  EXPECT_THAT(loader.open, SizeIs(6));
  while (!loader.open.empty()) {
    loader.open.front().done(someImage);
    loader.open.erase(loader.open.begin());
    show(what);
    EXPECT_LE(loader.open.size(), 6u);
  }
  const auto screen = board.drawn().size();
  const double count = std::exp2(15);
  double farthest = 0;
  for (std::size_t i = 0; i < loader.asked.size(); ++i) {
    const TileId id = loader.asked[i].id;
    const double distance = std::hypot(id.x + 0.5 - downtown.x * count, id.y + 0.5 - downtown.y * count);
    EXPECT_GE(distance, i == screen ? 0 : farthest) << i;  // the ring starts anew
    farthest = distance;
  }
  EXPECT_EQ(screen, 12u);
  EXPECT_THAT(loader.asked, SizeIs(30));
  now += 1;
  show(what);
  EXPECT_EQ(covered(what), 1);
}

TEST_F(TileBoardTest, CancelsWhatLeavesTheScreenAndPrefersTheScreenToTheRing) {
  show(view(15));
  const auto before = loader.open;
  show(view(15, {0.2, 0.2}));
  EXPECT_THAT(loader.open, SizeIs(6));
  for (const auto& request : loader.open)
    EXPECT_GT(request.handle, before.back().handle);

  // The screen is there and the ring is on its way when the map moves on by two tiles.
  while (loader.asked.size() < 6 + 9 + 6 || loader.open.size() < 6) {
    ASSERT_FALSE(loader.open.empty());
    auto first = loader.open.front();
    loader.open.erase(loader.open.begin());
    first.done(someImage);
    show(view(15, {0.2, 0.2}));
  }
  const WorldPoint next{0.2 + 2 / std::exp2(15), 0.2};
  show(view(15, next));
  const double left = std::floor((next.x - 300 / pointsPerWorldUnit(15)) * std::exp2(15));
  for (const auto& request : loader.open)
    EXPECT_GE(request.key.id.x, left);

  board.suspend();
  EXPECT_THAT(loader.open, IsEmpty());
  EXPECT_THAT(board.drawn(), IsEmpty());
}

TEST_F(TileBoardTest, TakesTheZoomThatNeedsTheLeastScalingAndTheScaleOfTheDisplay) {
  const std::pair<double, int> zooms[] = {{3.49, 3}, {3.5, 4}, {14.51, 15}, {19.4, 19}, {22, 19}, {1, 3}};
  for (const auto& [zoom, expected] : zooms) {
    show(view(zoom));
    EXPECT_EQ(loader.open.at(0).key.id.zoom, expected) << zoom;
  }
  const std::pair<double, int> ratios[] = {{0.8, 1}, {1, 1}, {1.25, 2}, {3, 2}};
  for (const auto& [ratio, expected] : ratios) {
    TileView what = view(12);
    what.pixelRatio = ratio;
    what.style = MapStyle::satellite;
    show(what);
    EXPECT_EQ(loader.open.at(0).key.scale, expected) << ratio;
    EXPECT_EQ(loader.open.at(0).key.style, MapStyle::satellite);
  }
  for (const TileView& nonsense :
       {view(NAN), view(12, {NAN, 0.5}), view(12, {0.5, INFINITY}), view(12, {1e9, 0.5}), view(-30),
        TileView{.centre = downtown, .zoom = 12}}) {
    show(nonsense);
    EXPECT_THAT(loader.open, IsEmpty());
  }
}

TEST_F(TileBoardTest, WrapsAroundTheAntimeridianAndEndsAtThePoles) {
  for (const WorldPoint centre : {WorldPoint{0, 0.5}, WorldPoint{1, 0.5}, WorldPoint{0.9999, 0.3}}) {
    loadAll(view(5, centre));
    EXPECT_EQ(covered(view(5, centre)), 1) << centre.x;
  }
  TileView pole = view(5, {0.5, 0});
  loadAll(pole);
  EXPECT_NEAR(covered(pole), 0.5, 0.05);
  TileView whole = view(1);  // the world is 512 points wide, the view 600: its edges show a second copy
  whole.centre.y = 0.5;
  loadAll(whole);
  EXPECT_EQ(covered(whole), 1);
  for (const TileKey& key : loader.asked) {
    const int count = 1 << key.id.zoom;
    EXPECT_TRUE(key.id.x >= 0 && key.id.x < count && key.id.y >= 0 && key.id.y < count);
  }
  EXPECT_EQ(std::set<TileKey>(loader.asked.begin(), loader.asked.end()).size(), loader.asked.size());
}

TEST_F(TileBoardTest, NeverShowsAHoleInAMapThatWasThere) {
  loadAll(view(14));
  for (const double zoom : {14.4, 14.6, 15.0, 16.0, 18.0, 15.0, 13.8}) {
    show(view(zoom));
    EXPECT_EQ(covered(view(zoom)), 1) << zoom;
  }
  // Zoomed out, what was there stays in the middle.
  show(view(12.6));
  EXPECT_GT(covered(view(12.6)), 0.1);
  loader.answerAll(someImage);
  const double middle = covered(view(12.6));

  // A tile fades in above what stood in for it.
  show(view(12.6));
  now += 0.1;
  show(view(12.6));
  EXPECT_TRUE(board.isFading());
  EXPECT_TRUE(
      std::ranges::any_of(board.drawn(), [](auto& tile) { return std::abs(tile.opacity - 0.5) < 1e-6; }));
  EXPECT_EQ(covered(view(12.6)), middle);
  loadAll(view(12.6));
  EXPECT_FALSE(board.isFading());
  for (const DrawnTile& tile : board.drawn())
    EXPECT_TRUE(tile.key.id.zoom == 13 && tile.opacity == 1 && tile.part == 1);

  // Every map shows at once what the memory holds.
  TileBoard other(loader, memory);
  loader.asked.clear();
  other.update(view(12.6), now);
  EXPECT_EQ(other.drawn().size(), board.drawn().size());
  EXPECT_FALSE(other.isFading());
  EXPECT_THAT(loader.asked, IsEmpty());
}

TEST_F(TileBoardTest, RequestsTheCoarserTileOfAMissingOneAndNotAgainForTenMinutes) {
  const TileView what = view(17);
  show(what);
  while (!loader.open.empty()) {
    for (auto& request : std::exchange(loader.open, {}))
      request.done(request.key.id.zoom > 15 ? noSuchTile : someImage);
    show(what);
  }
  now += 1;
  show(what);
  EXPECT_EQ(covered(what), 1);
  EXPECT_EQ(std::set<TileKey>(loader.asked.begin(), loader.asked.end()).size(), loader.asked.size());
  EXPECT_EQ(board.wakeAt(), std::nullopt);
  const auto asked = loader.asked.size();
  now += 590;
  show(what);
  EXPECT_EQ(loader.asked.size(), asked);
  now += 20;
  show(what);
  EXPECT_GT(loader.asked.size(), asked);
}

TEST_F(TileBoardTest, AFailingTileWaitsLongerEachTimeAndDelaysNoOther) {
  const TileView what = view(15);
  std::vector<double> tries;
  std::optional<TileKey> broken;
  for (show(what); tries.size() < 9; show(what)) {
    for (auto& request : std::exchange(loader.open, {})) {
      const bool fromNetwork = request.source == TileLoader::Source::network;
      if (!broken) broken = request.key;
      if (fromNetwork && request.key == *broken) tries.push_back(now);
      request.done(fromNetwork && request.key != *broken ? someImage : failure);
    }
    show(what);
    if (loader.open.empty()) now = board.wakeAt().value_or(now + 1000);
  }
  std::vector<double> pauses;
  for (std::size_t i = 1; i < tries.size(); ++i)
    pauses.push_back(tries[i] - tries[i - 1]);
  EXPECT_THAT(pauses, ElementsAre(1, 2, 4, 8, 16, 32, 60, 60));
  EXPECT_GT(covered(what), 0.7);
}

TEST_F(TileBoardTest, TriesAFailingServerWithOneTileAtATimeAndShowsTilesOfTheDisk) {
  using enum TileLoader::Source;
  const TileView what = view(15);
  int changes = 0;
  board.onChange = [&changes] { ++changes; };
  show(what);
  loader.answerAll(failure, network);
  std::vector<double> pauses;
  for (int i = 0; i < 8; ++i) {
    show(what);
    EXPECT_EQ(loader.underWay(network), 0);
    while (loader.underWay(cache) > 0) {
      loader.answerAll(someImage, cache);
      show(what);
    }
    ASSERT_TRUE(board.wakeAt());
    pauses.push_back(*board.wakeAt() - now);
    now = *board.wakeAt();
    show(what);
    EXPECT_EQ(loader.underWay(network), 1);
    loader.answerAll(failure, network);
  }
  EXPECT_THAT(pauses, ElementsAre(1, 2, 4, 8, 16, 32, 60, 60));
  EXPECT_EQ(covered(what), 1) << "old tiles";
  EXPECT_EQ(std::set<TileKey>(loader.asked.begin(), loader.asked.end()).size(), 12u)
      << "in turn, without the ring";

  // retry() tries at once, and the first answer ends the pause.
  show(what);
  changes = 0;
  board.retry();
  EXPECT_EQ(changes, 1);
  show(what);
  EXPECT_EQ(loader.underWay(network), 6);
  loader.answerAll(someImage);
  show(what);
  EXPECT_EQ(loader.underWay(network), 6) << "the old tiles are replaced too";
  EXPECT_EQ(board.wakeAt(), std::nullopt);
}

TEST_F(TileBoardTest, KnowsWhenTilesShowAndWhenNoneAreAvailable) {
  using enum TileLoader::Source;
  TileView none = view(15);
  none.style = MapStyle::dark;
  show(none);
  EXPECT_THAT(loader.open, IsEmpty());
  EXPECT_EQ(board.state(), TileState::unavailable);
  const TileView what = view(15);
  show(what);
  loader.answerAll(failure, network);
  show(what);
  EXPECT_EQ(board.state(), TileState::awaited) << "there may be some on the disk";
  while (loader.underWay(cache) > 0) {
    loader.answerAll(failure, cache);
    show(what);
  }
  EXPECT_EQ(board.state(), TileState::unavailable);
  now = *board.wakeAt();
  show(view(15, {downtown.x + 0.01, downtown.y}));
  EXPECT_GT(loader.open.size(), 0u);
  EXPECT_EQ(board.state(), TileState::unavailable) << "further tries are no news";
  board.retry();
  show(what);
  EXPECT_EQ(board.state(), TileState::awaited);
  loadAll(what);
  EXPECT_EQ(board.state(), TileState::shown);

  const TileView ocean = view(15, {0.1, 0.6});
  for (show(ocean); !loader.open.empty(); show(ocean))
    loader.answerAll(noSuchTile);
  EXPECT_EQ(board.state(), TileState::unavailable);
}

TEST(TileMemory, ForgetsTheLeastRecentlyUsedAndWhatNobodyShows) {
  TileMemory memory(3000);
  const auto key = [](int x) { return TileKey{MapStyle::dark, 1, {5, x, 0}}; };
  for (const int x : {1, 2, 3})
    memory.put({key(x), someImage.image});
  memory.find(key(1));
  memory.put({key(3), someImage.image, true});  // replaced, not added
  memory.put({key(4), someImage.image});
  EXPECT_EQ(memory.find(key(2)), nullptr);
  EXPECT_NE(memory.find(key(1)), nullptr);
  ASSERT_NE(memory.find(key(3)), nullptr);
  EXPECT_TRUE(memory.find(key(3))->stale);

  const auto onMap = std::make_shared<FakeImage>();
  memory.put({key(4), onMap});
  memory.put({key(1), std::make_shared<FakeImage>()});
  memory.dropUnused();
  EXPECT_EQ(memory.find(key(1)), nullptr);
  for (const int x : {5, 6})
    memory.put({key(x), someImage.image});
  EXPECT_NE(memory.find(key(4)), nullptr) << "there is room for three again";
}

}  // namespace
}  // namespace fleetor
