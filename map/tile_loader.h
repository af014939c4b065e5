#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

namespace fleetor {

/// One square of the world: at zoom z the world is 2^z columns by 2^z rows, counted from the north-western
/// corner.
struct TileId {
  int zoom = 0;
  int x = 0;  ///< column, 0 ... 2^zoom - 1, eastwards
  int y = 0;  ///< row, 0 ... 2^zoom - 1, southwards

  friend auto operator<=>(const TileId&, const TileId&) = default;
};

/// A set of tiles, drawn in one style.
enum class MapStyle { standard, dark, satellite };

/// What one image of a tile is known by.
struct TileKey {
  MapStyle style = MapStyle::standard;
  int scale = 1;  ///< 1 for images of 256 pixels a side, 2 for 512
  TileId id;

  friend auto operator<=>(const TileKey&, const TileKey&) = default;
};

/// The image of a tile, known in full only to who loads and draws it. Immutable, and so free for any thread.
class TileImage {
 public:
  virtual ~TileImage() = default;
  virtual std::size_t sizeInBytes() const = 0;
};

/// Where tiles come from. Main thread only.
class TileLoader {
 public:
  enum class Source {
    network,  ///< the server, or what it has said not to ask for again yet
    cache,    ///< only what was kept of earlier answers, however old; quick, and asks nobody
  };

  struct Result {
    std::shared_ptr<const TileImage> image;  ///< null when it could not be had, for any reason
    bool missing = false;                    ///< the server is well and has no such tile
  };

  using Handle = std::uint64_t;
  using Done = std::function<void(Result)>;

  virtual ~TileLoader() = default;

  /// Calls `done` once on the main thread, later (never before load() has returned), unless it is cancelled.
  virtual Handle load(const TileKey& key, Source source, Done done) = 0;

  /// From then on `done` is not called any more. A handle that is done with is no harm.
  virtual void cancel(Handle handle) = 0;

  /// Whether there are tiles of that style; load() is for such alone.
  virtual bool serves(MapStyle style) const = 0;

  /// The zooms at which there are tiles, both ends included.
  virtual int minimumZoom() const = 0;
  virtual int maximumZoom() const = 0;
};

}  // namespace fleetor
