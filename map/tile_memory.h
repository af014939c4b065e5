#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <memory>

#include "map/tile_loader.h"

namespace fleetor {

/// The images of the tiles shown last, shared by all maps. Beyond the limit the one that was not looked for
/// the longest goes. Main thread only.
class TileMemory {
 public:
  struct Entry {
    TileKey key;
    std::shared_ptr<const TileImage> image;
    bool stale = false;  ///< an old image that is shown only for lack of a fresh one
  };

  explicit TileMemory(std::size_t limitInBytes) : limit_(limitInBytes) {}

  /// The entry of that tile, from now on the one looked for last; null when it is missing. Valid until the
  /// next put().
  const Entry* find(const TileKey& key);

  void put(Entry entry);

 private:
  std::size_t limit_;
  std::size_t size_ = 0;
  std::list<Entry> entries_;  // the one looked for last at the front
  std::map<TileKey, std::list<Entry>::iterator> places_;
};

}  // namespace fleetor
