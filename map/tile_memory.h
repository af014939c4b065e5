#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <memory>

#include "map/tile_loader.h"

namespace fleetor {

/// The images of recently shown tiles, shared by all maps. Beyond the limit the least recently used one is
/// dropped. Main thread only.
class TileMemory {
 public:
  struct Entry {
    TileKey key;
    std::shared_ptr<const TileImage> image;
    bool stale = false;  ///< an old image, shown until there is a fresh one
  };

  explicit TileMemory(std::size_t limitInBytes) : limit_(limitInBytes) {}

  /// The entry of that tile, which becomes the most recently used one; null if it is missing. Valid until the
  /// next put().
  const Entry* find(const TileKey& key);

  void put(Entry entry);

  /// Drops the images that nobody else holds: those that are not on a map now.
  void dropUnused();

 private:
  std::size_t limit_;
  std::size_t size_ = 0;
  std::list<Entry> entries_;  // the most recently used one first
  std::map<TileKey, std::list<Entry>::iterator> places_;
};

}  // namespace fleetor
