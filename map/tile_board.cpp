#include "map/tile_board.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>
#include <utility>

namespace fleetor {
namespace {

constexpr int mostAtOnce = 6;
constexpr double fadeSeconds = 0.2;
constexpr double longestPauseSeconds = 60;
constexpr double missingForSeconds = 600;
constexpr std::size_t mostFailures = 1000;
constexpr double longAgo = -std::numeric_limits<double>::infinity();
constexpr int finerLevels = 2;  // of finer tiles that stand in: up to 16 for one tile

double pauseAfter(int failures) {
  return std::min(longestPauseSeconds, std::exp2(std::min(failures, 10) - 1));
}

TileKey coarser(TileKey key, int levels) {
  key.id = {key.id.zoom - levels, key.id.x >> levels, key.id.y >> levels};
  return key;
}

}  // namespace

TileKey TileBoard::Grid::key(int column, int row) const {
  TileKey key = sample;
  const int count = 1 << key.id.zoom;
  key.id.x = (column % count + count) % count;
  key.id.y = row;
  return key;
}

std::optional<TileBoard::Grid> TileBoard::gridUnder(const TileView& view, int minimumZoom, int maximumZoom) {
  // Far more copies of the world than a map ever scrolls through; also refuses NaN.
  if (!(std::abs(view.centre.x) < 16 && std::abs(view.centre.y) < 16 && std::abs(view.zoom) < 64)) return {};
  if (!(view.width > 0 && view.height > 0)) return {};
  const int zoom = std::clamp(static_cast<int>(std::floor(view.zoom + 0.5)), minimumZoom, maximumZoom);
  const double tileSize = 256 * std::exp2(view.zoom - zoom);  // points
  if (tileSize < 16) return {};  // so far below the smallest zoom that there would be thousands of tiles

  Grid grid;
  grid.sample = {view.style, view.pixelRatio > 1 ? 2 : 1, {zoom, 0, 0}};
  grid.fades = view.fades;
  const int count = 1 << zoom;
  grid.centreX = view.centre.x * count;
  grid.centreY = view.centre.y * count;
  const double columns = view.width / tileSize / 2;
  const double rows = view.height / tileSize / 2;
  grid.left = static_cast<int>(std::floor(grid.centreX - columns));
  grid.right = static_cast<int>(std::ceil(grid.centreX + columns)) - 1;
  grid.top = std::max(0, static_cast<int>(std::floor(grid.centreY - rows)));
  grid.bottom = std::min(count, static_cast<int>(std::ceil(grid.centreY + rows))) - 1;
  return grid;
}

void TileBoard::update(const TileView& view, double now) {
  takeArrivals(now);
  if (std::exchange(style_, view.style) != view.style) state_ = TileState::awaited;
  const auto grid = gridUnder(view, loader_.minimumZoom(), loader_.maximumZoom());
  if (grid && loader_.serves(view.style)) return show(*grid, now);
  suspend();
  if (grid) state_ = TileState::unavailable;
}

void TileBoard::show(const Grid& grid, double now) {
  choose(grid);
  request(now);
  draw(grid, now);
  const auto isHopelessOrAhead = [this](const auto& item) {
    return !item.second.onScreen || isHopeless(item.first, item.second);
  };
  if (!drawn_.empty())
    state_ = TileState::shown;
  else if (std::ranges::all_of(tiles_, isHopelessOrAhead))
    state_ = TileState::unavailable;
  else if (state_ == TileState::shown)
    state_ = TileState::awaited;
}

/// Its server has failed, or has no such tile, and the disk has none.
bool TileBoard::isHopeless(const TileKey& key, const Tile& tile) const {
  if (isMissing(key)) return true;
  const auto server = servers_.find(key.style);
  const bool fails = failures_.contains(key) || (server != servers_.end() && server->second.pauses > 0);
  return fails && (!tile.underWay || tile.fromNetwork);
}

void TileBoard::retry() {
  servers_.clear();
  state_ = TileState::awaited;
  for (auto& [key, failure] : failures_)
    if (!failure.missing) failure.until = longAgo;
  if (wakeAt_ && onChange) onChange();
}

void TileBoard::suspend() {
  for (auto& [key, tile] : tiles_)
    stop(tile);
  tiles_.clear();
  order_.clear();
  drawn_.clear();
  state_ = TileState::awaited;
  fading_ = false;
  wakeAt_.reset();
}

void TileBoard::takeArrivals(double now) {
  std::erase_if(failures_,
                [now](const auto& item) { return item.second.missing && item.second.until <= now; });
  if (failures_.size() > mostFailures) failures_.clear();

  for (Arrival& arrival : std::exchange(arrivals_, {})) {
    const TileKey& key = arrival.key;
    const bool fromNetwork = arrival.source == TileLoader::Source::network;
    auto& image = arrival.result.image;
    if (const auto found = tiles_.find(key); found != tiles_.end()) {
      Tile& tile = found->second;
      tile.underWay.reset();
      --underWay_;
      if (!fromNetwork) tile.cacheTried = true;
      if (image) {
        tile.image = image;
        tile.stale = !fromNetwork;
      }
    }
    if (image) memory_.put({key, image, !fromNetwork});
    if (fromNetwork) {
      if (image || arrival.result.missing)
        takeSuccess(key, arrival.result.missing, now);
      else
        takeFailure(key, now);
    }
  }
}

void TileBoard::takeSuccess(const TileKey& key, bool missing, double now) {
  Server& server = servers_[key.style];
  if (server.pauses > 0)
    for (auto& [other, failure] : failures_)
      if (other.style == key.style && !failure.missing) failure.until = longAgo;
  server = {};
  failures_.erase(key);
  if (missing) failures_[key] = {.missing = true, .until = now + missingForSeconds};
}

void TileBoard::takeFailure(const TileKey& key, double now) {
  Failure& failure = failures_[key];
  failure.until = now + pauseAfter(++failure.count);
  Server& server = servers_[key.style];
  const bool serverFails = server.pauses > 0 || (server.lastFailure && *server.lastFailure != key);
  server.lastFailure = key;
  // Requests that were under way together fail together, and cause one pause.
  if (serverFails && now >= server.pausedUntil) server.pausedUntil = now + pauseAfter(++server.pauses);
}

bool TileBoard::isMissing(const TileKey& key) const {
  const auto failure = failures_.find(key);
  return failure != failures_.end() && failure->second.missing;
}

void TileBoard::choose(const Grid& grid) {
  struct Cell {
    bool ring;
    int failures;  // a tile that fails must not stand in the way of others
    double distance;
    TileKey key;
  };
  std::vector<Cell> cells;
  const int lastRow = (1 << grid.sample.id.zoom) - 1;
  for (int row = std::max(0, grid.top - 1); row <= std::min(lastRow, grid.bottom + 1); ++row) {
    for (int column = grid.left - 1; column <= grid.right + 1; ++column) {
      TileKey key = grid.key(column, row);
      while (isMissing(key) && key.id.zoom > loader_.minimumZoom())
        key = coarser(key, 1);
      const auto failure = failures_.find(key);
      const bool ring = column < grid.left || column > grid.right || row < grid.top || row > grid.bottom;
      cells.push_back({ring, failure == failures_.end() ? 0 : failure->second.count,
                       std::hypot(column + 0.5 - grid.centreX, row + 0.5 - grid.centreY), key});
    }
  }
  std::sort(cells.begin(), cells.end(), [](const Cell& left, const Cell& right) {
    return std::tie(left.ring, left.failures, left.distance, left.key) <
           std::tie(right.ring, right.failures, right.distance, right.key);
  });

  ++round_;
  order_.clear();
  for (const Cell& cell : cells)
    want(cell.key, !cell.ring);
  for (auto item = tiles_.begin(); item != tiles_.end();) {
    if (item->second.round == round_) {
      ++item;
    } else {
      stop(item->second);
      item = tiles_.erase(item);
    }
  }
}

void TileBoard::want(const TileKey& key, bool onScreen) {
  const auto [item, isNew] = tiles_.try_emplace(key);
  Tile& tile = item->second;
  if (tile.round == round_) return;  // visible twice, across the antimeridian
  tile.round = round_;
  tile.onScreen = onScreen;
  order_.push_back(key);
  // Looked up every time, so that the memory keeps what is visible.
  const TileMemory::Entry* const entry = memory_.find(key);
  if (entry && (!tile.image || tile.stale)) {
    tile.image = entry->image;
    tile.stale = entry->stale;
    if (isNew) tile.shownSince = longAgo;
  }
}

// Follows order_: the screen first, then the ring, once nothing on the screen is missing. A server that fails
// gets one request at a time. A tile that must wait is taken from the disk until then.
void TileBoard::request(double now) {
  wakeAt_.reset();
  if (order_.empty()) return;
  const Server& server = servers_[order_.front().style];
  const auto fromNetwork = std::count_if(tiles_.begin(), tiles_.end(), [](const auto& item) {
    return item.second.underWay && item.second.fromNetwork;
  });
  auto allowed = server.pauses > 0 ? 1 - fromNetwork : mostAtOnce;
  bool complete = true;
  for (const TileKey& key : order_) {
    Tile& tile = tiles_[key];
    if (!tile.onScreen && (!complete || server.pauses > 0)) break;
    if ((tile.image && !tile.stale) || isMissing(key)) continue;
    const auto failure = failures_.find(key);
    const double from =
        std::max(server.pausedUntil, failure == failures_.end() ? longAgo : failure->second.until);
    if (tile.onScreen && from <= now) complete = false;
    if (tile.onScreen && from > now) wakeAt_ = std::min(from, wakeAt_.value_or(from));
    if (tile.underWay) continue;
    if (from <= now && allowed > 0 && makeRoomFor(tile)) {
      start(key, tile, TileLoader::Source::network);
      --allowed;
    } else if ((from > now || server.pauses > 0) && tile.onScreen && !tile.image && !tile.cacheTried &&
               makeRoomFor(tile)) {
      start(key, tile, TileLoader::Source::cache);
    }
  }
}

bool TileBoard::makeRoomFor(const Tile& tile) {
  if (underWay_ < mostAtOnce) return true;
  if (!tile.onScreen) return false;
  const auto given = std::find_if(tiles_.begin(), tiles_.end(), [](const auto& item) {
    return item.second.underWay && !item.second.onScreen;
  });
  if (given == tiles_.end()) return false;
  stop(given->second);
  return true;
}

void TileBoard::start(const TileKey& key, Tile& tile, TileLoader::Source source) {
  tile.fromNetwork = source == TileLoader::Source::network;
  ++underWay_;
  tile.underWay = loader_.load(key, source, [this, key, source](TileLoader::Result result) {
    arrivals_.push_back({key, source, std::move(result)});
    if (onChange) onChange();
  });
}

void TileBoard::stop(Tile& tile) {
  if (!tile.underWay) return;
  loader_.cancel(*tile.underWay);
  tile.underWay.reset();
  --underWay_;
}

std::shared_ptr<const TileImage> TileBoard::imageOf(const TileKey& key) {
  if (const auto tile = tiles_.find(key); tile != tiles_.end() && tile->second.image)
    return tile->second.image;
  const TileMemory::Entry* const entry = memory_.find(key);
  return entry ? entry->image : nullptr;
}

void TileBoard::draw(const Grid& grid, double now) {
  drawn_.clear();
  fading_ = false;
  const double size = std::exp2(-grid.sample.id.zoom);
  for (int row = grid.top; row <= grid.bottom; ++row) {
    for (int column = grid.left; column <= grid.right; ++column) {
      const TileKey key = grid.key(column, row);
      const WorldPoint origin{column * size, row * size};
      const auto image = imageOf(key);
      double opacity = image ? 1 : 0;
      if (const auto tile = tiles_.find(key); image && tile != tiles_.end()) {
        auto& since = tile->second.shownSince;
        if (!since) since = grid.fades ? now : longAgo;
        opacity = std::min(1.0, (now - *since) / fadeSeconds);
      }
      if (opacity < 1) {
        drawCoarser(key, origin, size);
        drawFiner(key, origin, size, finerLevels);
      }
      if (!image) continue;
      fading_ = fading_ || opacity < 1;
      drawn_.push_back({.key = key, .image = image, .origin = origin, .size = size, .opacity = opacity});
    }
  }
}

void TileBoard::drawCoarser(const TileKey& key, WorldPoint origin, double size) {
  for (int levels = 1; key.id.zoom - levels >= loader_.minimumZoom(); ++levels) {
    const TileKey whole = coarser(key, levels);
    const auto image = imageOf(whole);
    if (!image) continue;
    const double part = std::exp2(-levels);
    drawn_.push_back({.key = whole,
                      .image = image,
                      .origin = origin,
                      .size = size,
                      .left = (key.id.x - (whole.id.x << levels)) * part,
                      .top = (key.id.y - (whole.id.y << levels)) * part,
                      .part = part});
    return;
  }
}

void TileBoard::drawFiner(const TileKey& key, WorldPoint origin, double size, int levels) {
  if (levels == 0) return;
  const double half = size / 2;
  for (const int y : {0, 1}) {
    for (const int x : {0, 1}) {
      TileKey quarter = key;
      quarter.id = {key.id.zoom + 1, 2 * key.id.x + x, 2 * key.id.y + y};
      const WorldPoint corner{origin.x + x * half, origin.y + y * half};
      if (const auto image = imageOf(quarter))
        drawn_.push_back({.key = quarter, .image = image, .origin = corner, .size = half});
      else
        drawFiner(quarter, corner, half, levels - 1);
    }
  }
}

}  // namespace fleetor
