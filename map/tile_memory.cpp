#include "map/tile_memory.h"

#include <utility>

namespace fleetor {

const TileMemory::Entry* TileMemory::find(const TileKey& key) {
  const auto place = places_.find(key);
  if (place == places_.end()) return nullptr;
  entries_.splice(entries_.begin(), entries_, place->second);
  return &entries_.front();
}

void TileMemory::put(Entry entry) {
  if (const auto place = places_.find(entry.key); place != places_.end()) {
    size_ -= place->second->image->sizeInBytes();
    entries_.erase(place->second);
    places_.erase(place);
  }
  size_ += entry.image->sizeInBytes();
  entries_.push_front(std::move(entry));
  places_[entries_.front().key] = entries_.begin();
  while (size_ > limit_) {
    size_ -= entries_.back().image->sizeInBytes();
    places_.erase(entries_.back().key);
    entries_.pop_back();
  }
}

void TileMemory::dropUnused() {
  std::erase_if(entries_, [this](const Entry& entry) {
    const bool isUnused = entry.image.use_count() == 1;
    if (isUnused) {
      size_ -= entry.image->sizeInBytes();
      places_.erase(entry.key);
    }
    return isUnused;
  });
}

}  // namespace fleetor
