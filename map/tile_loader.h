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

/// Identifies one image of a tile.
struct TileKey {
  MapStyle style = MapStyle::standard;
  int scale = 1;  ///< 1 for images of 256 pixels a side, 2 for 512
  TileId id;

  friend auto operator<=>(const TileKey&, const TileKey&) = default;
};

/// The image of a tile; its type is known where it is loaded and drawn. Immutable: for any thread.
class TileImage {
 public:
  virtual ~TileImage() = default;
  virtual std::size_t sizeInBytes() const = 0;
};

/// Where tiles come from. Main thread only.
class TileLoader {
 public:
  enum class Source {
    network,  ///< the server, or its earlier answer while that is fresh
    cache,    ///< only the disk, however old the tile is; quick, without a request
  };

  struct Result {
    std::shared_ptr<const TileImage> image;  ///< null on any failure
    bool missing = false;                    ///< the server answered that it has no such tile
  };

  using Handle = std::uint64_t;
  using Done = std::function<void(Result)>;

  virtual ~TileLoader() = default;

  /// Calls `done` once on the main thread, later (never before load() has returned), unless it is cancelled.
  virtual Handle load(const TileKey& key, Source source, Done done) = 0;

  /// `done` is not called any more. A handle that has ended is ignored.
  virtual void cancel(Handle handle) = 0;

  /// Whether there are tiles of that style. Without them load() must not be called.
  virtual bool serves(MapStyle style) const = 0;

  /// The zooms at which there are tiles, both ends included.
  virtual int minimumZoom() const = 0;
  virtual int maximumZoom() const = 0;
};

}  // namespace fleetor
