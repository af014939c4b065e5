#pragma once

#include <httplib.h>

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "demo/map/map_style.h"
#include "demo/map/names.h"
#include "demo/service/messages.h"

namespace fleetor::demo {

// One picture that can be asked for.
struct TilePicture {
  MapStyle style = MapStyle::standard;
  int scale = 1;
  TileAddress address;

  friend auto operator<=>(const TilePicture&,
                          const TilePicture&) = default;  // NOLINT(modernize-use-nullptr): not its zero
};

// The map of the town as tiles: "/tiles/{standard|dark|satellite}/{zoom}/{x}/{y}.png?scale={1|2}". The atlas
// is made when the first tile is requested; tiles are drawn in the requesting threads and cached. From any
// thread.
class Tiles {
 public:
  static constexpr int firstZoom = 3;
  static constexpr int lastZoom = 19;

  // The town must outlive this.
  Tiles(const Town& town, std::uint64_t seed) : town_(town), seed_(seed) {}

  ServiceReply answer(const httplib::Request& request);

 private:
  struct Map {
    explicit Map(const Town& town, std::uint64_t seed) : atlas(town, seed), names(atlas) {}
    Atlas atlas;
    NameBoard names;
  };
  const Map& map();
  std::shared_ptr<const std::string> fileOf(const TilePicture& picture);
  std::string drawn(const TilePicture& picture);

  const Town& town_;
  std::uint64_t seed_;
  std::once_flag drawnUp_;
  std::optional<Map> map_;

  std::mutex mutex_;
  std::map<TilePicture, std::shared_ptr<const std::string>> kept_;
  std::size_t keptBytes_ = 0;
};

}  // namespace fleetor::demo
