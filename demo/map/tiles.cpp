#include "demo/map/tiles.h"

#include <algorithm>
#include <cstdio>

#include "demo/map/map_painter.h"
#include "demo/service/answers.h"
#include "demo/town/random.h"

namespace fleetor::demo {
namespace {

constexpr std::size_t mostKeptBytes = std::size_t{64} << 20;

ServiceReply refused(int status, std::string_view reason) {
  return {status, errorAnswer(status, reason)};
}

// What the path and the query ask for, whether or not there is such a tile; nothing when they are not valid.
std::optional<TilePicture> requestedPicture(const httplib::Request& request) {
  TilePicture picture;
  char name[10];
  int end = 0;
  TileAddress& tile = picture.address;
  if (std::sscanf(request.path.c_str(), "/tiles/%9[a-z]/%9d/%9d/%9d.png%n", name, &tile.zoom, &tile.x,
                  &tile.y, &end) != 4 ||
      static_cast<std::size_t>(end) != request.path.size())
    return std::nullopt;
  const std::string_view styles[] = {"standard", "dark", "satellite"};
  const auto found = std::ranges::find(styles, std::string_view(name));
  if (found == std::end(styles)) return std::nullopt;
  picture.style = static_cast<MapStyle>(found - styles);
  const std::string scale = request.get_param_value("scale");
  picture.scale = scale == "2" ? 2 : 1;
  if (!scale.empty() && scale != "1" && scale != "2") return std::nullopt;
  return picture;
}

}  // namespace

ServiceReply Tiles::answer(const httplib::Request& request) {
  if (request.method != "GET") return refused(405, "Use GET here");
  const auto picture = requestedPicture(request);
  if (!picture)
    return refused(400,
                   "A tile is /tiles/STYLE/ZOOM/X/Y.png, with STYLE one of standard, dark and satellite, and "
                   "optionally ?scale=2");
  const auto& [zoom, x, y] = picture->address;
  if (zoom < firstZoom || zoom > lastZoom || std::min(x, y) < 0 || std::max(x, y) >= 1 << zoom)
    return refused(404, "There is no such tile");

  const auto file = fileOf(*picture);
  const std::string tag = '"' + hexText(hashOfText(0, *file)) + '"';
  // Another seed makes another town at the same addresses: after some minutes a cache must ask again.
  ServiceReply reply{200, *file, "image/png", {{"Cache-Control", "public, max-age=600"}, {"ETag", tag}}};
  const std::string known = request.get_header_value("If-None-Match");
  if (known == "*" || known.find(tag) != std::string::npos) {
    reply.status = 304;
    reply.body.clear();
  }
  return reply;
}

const Tiles::Map& Tiles::map() {
  std::call_once(drawnUp_, [this] { map_.emplace(town_, seed_); });
  return *map_;
}

std::shared_ptr<const std::string> Tiles::fileOf(const TilePicture& picture) {
  {
    const std::lock_guard lock(mutex_);
    if (const auto found = kept_.find(picture); found != kept_.end()) return found->second;
  }
  auto file = std::make_shared<const std::string>(drawn(picture));
  const std::lock_guard lock(mutex_);
  if (keptBytes_ > mostKeptBytes) {
    kept_.clear();
    keptBytes_ = 0;
  }
  // Two threads may have drawn the same tile.
  if (kept_.emplace(picture, file).second) keptBytes_ += file->size();
  return file;
}

std::string Tiles::drawn(const TilePicture& picture) {
  const Map& map = this->map();
  Canvas canvas(picture.address, picture.scale);
  paintMap(canvas, map.atlas, paletteOf(picture.style));
  map.names.paint(canvas, picture.style);
  return canvas.png();
}

}  // namespace fleetor::demo
