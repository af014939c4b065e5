#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "map/mercator.h"
#include "map/tile_loader.h"
#include "map/tile_memory.h"

namespace fleetor {

/// What a map shows at one moment.
struct TileView {
  WorldPoint centre;
  double zoom = 0;        ///< the world is 256 * 2^zoom points wide
  double width = 0;       ///< of the map, points
  double height = 0;      ///< points
  double pixelRatio = 1;  ///< pixels a point; above 1, images for high-DPI displays
  MapStyle style = MapStyle::standard;
  bool fades = true;  ///< new tiles fade in
};

/// An image, or a part of one, at its place in the world.
struct DrawnTile {
  TileKey key;                             ///< whose image it is
  std::shared_ptr<const TileImage> image;  ///< never null
  /// The north-western corner of the place to fill, in the copy of the world that the view shows: x lies
  /// outside 0 ... 1 beyond the antimeridian.
  WorldPoint origin;
  double size = 0;  ///< of the place, both ways, world units
  /// The part of the image that fills it, as fractions of the image's side.
  double left = 0;
  double top = 0;
  double part = 1;     ///< both ways
  double opacity = 1;  ///< 0 ... 1, below 1 while it fades in
};

/// Whether a map has tiles to show.
enum class TileState {
  awaited,      ///< none is there yet
  shown,        ///< at least one, of whatever age
  unavailable,  ///< there are none, or their server fails and the disk has none either
};

/// Decides which tiles a map needs, loads them, and decides what to draw until they are there.
///
/// Tiles are taken at the whole zoom nearest to the view's, so that their images are scaled by at most a
/// factor of 1.42 and not at all at rest on a whole zoom. The nearest to the centre is requested first, at
/// most six at once, and those that leave the screen (and the ring of one tile around it, which is fetched
/// ahead once nothing on the screen is missing) are cancelled. Until a tile has come and faded in, the part
/// of a coarser one or the finer ones beneath it stand in.
///
/// A tile that the server does not have is not requested again for ten minutes; its coarser one takes its
/// place. A tile that fails otherwise waits 1, 2, 4 ... 60 seconds. If two different tiles fail without a
/// success in between, the server fails: all tiles wait, with the same pauses, and after each pause a single
/// one is requested. A waiting tile is shown from the disk, however old.
///
/// Main thread only. Has no clock: time is handed in, in seconds from any origin, never going back.
class TileBoard {
 public:
  /// Both outlive the board.
  TileBoard(TileLoader& loader, TileMemory& memory) : loader_(loader), memory_(memory) {}
  ~TileBoard() { suspend(); }

  TileBoard(const TileBoard&) = delete;
  TileBoard& operator=(const TileBoard&) = delete;

  /// Called when an update() is due though the view has not changed: a tile has come, or may be tried again.
  std::function<void()> onChange;

  /// Call when the view has changed, after onChange, in the next frame while isFading(), and at wakeAt().
  void update(const TileView& view, double now);

  /// What to draw, in that order: from the last update() on, to the next one.
  const std::vector<DrawnTile>& drawn() const { return drawn_; }

  /// As of the last update(). It stays `unavailable` until a tile has come, retry() or suspend().
  TileState state() const { return state_; }

  /// Whether a tile fades in, so that the next frame differs.
  bool isFading() const { return fading_; }

  /// When a failed tile is to be tried again; none when no tile waits for that.
  std::optional<double> wakeAt() const { return wakeAt_; }

  /// The network or the server is known to be back: nothing waits any longer. Takes effect at the next
  /// update.
  void retry();

  /// For a hidden map: cancels all requests and draws nothing until the next update().
  void suspend();

 private:
  // A tile of the screen, the ring around it, or a coarser one in place of a missing one.
  struct Tile {
    std::shared_ptr<const TileImage> image;
    bool stale = false;  // of the image
    std::optional<TileLoader::Handle> underWay;
    bool fromNetwork = false;  // what is under way
    bool cacheTried = false;
    bool onScreen = false;
    std::optional<double> shownSince;
    std::uint64_t round = 0;  // the update that last wanted it
  };

  struct Arrival {
    TileKey key;
    TileLoader::Source source;
    TileLoader::Result result;
  };

  struct Failure {
    int count = 0;
    bool missing = false;
    double until = 0;  // not requested before
  };

  // The state of the server of one style.
  struct Server {
    std::optional<TileKey> lastFailure;  // none since the last success
    int pauses = 0;                      // since the last success; 0: it works
    double pausedUntil = -std::numeric_limits<double>::infinity();
  };

  // The tiles under a view. Columns may lie outside 0 ... count - 1.
  struct Grid {
    TileKey sample;                   // style, scale and zoom of all of them
    bool fades = true;                // those that come
    double centreX = 0, centreY = 0;  // of the view, in tiles
    int left = 0, right = -1;         // first and last column
    int top = 0, bottom = -1;

    TileKey key(int column, int row) const;
  };

  void show(const Grid& grid, double now);
  bool isHopeless(const TileKey& key, const Tile& tile) const;
  static std::optional<Grid> gridUnder(const TileView& view, int minimumZoom, int maximumZoom);

  void takeArrivals(double now);
  void takeSuccess(const TileKey& key, bool missing, double now);
  void takeFailure(const TileKey& key, double now);
  bool isMissing(const TileKey& key) const;
  void choose(const Grid& grid);
  void want(const TileKey& key, bool onScreen);
  void request(double now);
  bool makeRoomFor(const Tile& tile);
  void start(const TileKey& key, Tile& tile, TileLoader::Source source);
  void stop(Tile& tile);
  std::shared_ptr<const TileImage> imageOf(const TileKey& key);
  void draw(const Grid& grid, double now);
  void drawCoarser(const TileKey& key, WorldPoint origin, double size);
  void drawFiner(const TileKey& key, WorldPoint origin, double size, int levels);

  TileLoader& loader_;
  TileMemory& memory_;
  std::map<TileKey, Tile> tiles_;
  std::vector<TileKey> order_;  // of tiles_, in which they are requested
  std::vector<Arrival> arrivals_;
  std::map<TileKey, Failure> failures_;
  std::map<MapStyle, Server> servers_;
  int underWay_ = 0;
  std::uint64_t round_ = 0;
  std::vector<DrawnTile> drawn_;
  TileState state_ = TileState::awaited;
  MapStyle style_ = MapStyle::standard;  // of state_
  bool fading_ = false;
  std::optional<double> wakeAt_;
};

}  // namespace fleetor
