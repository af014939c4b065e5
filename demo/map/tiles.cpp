#include "demo/map/tiles.h"

#include <array>
#include <cstdio>

#include "demo/map/map_painter.h"
#include "demo/map/png.h"
#include "demo/service/answers.h"
#include "demo/town/random.h"

namespace fleetor::demo {
namespace {

constexpr std::size_t kMostKeptBytes = std::size_t{64} << 20;

ServiceReply refused(int status, std::string_view reason) {
  ServiceReply reply;
  reply.status = status;
  reply.body = errorAnswer(status, reason);
  return reply;
}

// What the path and the query ask for, whether or not there is such a tile; nothing when they make no sense.
std::optional<TilePicture> pictureAsked(const ServiceRequest& request, std::string& problem) {
  std::string_view rest = request.path;
  rest.remove_prefix(std::string_view("/tiles/").size());
  std::array<std::string_view, 4> parts;
  for (std::string_view& part : parts) {
    part = rest.substr(0, rest.find('/'));
    rest.remove_prefix(std::min(rest.size(), part.size() + 1));
  }
  constexpr std::string_view kEnding = ".png";
  problem = "A tile is /tiles/STYLE/ZOOM/X/Y.png with whole numbers, and perhaps ?scale=2";
  if (request.path.ends_with('/') || !rest.empty() || !parts[3].ends_with(kEnding)) return std::nullopt;
  parts[3].remove_suffix(kEnding.size());

  TilePicture picture;
  if (parts[0] == "dark")
    picture.look = MapLook::dark;
  else if (parts[0] == "satellite")
    picture.look = MapLook::satellite;
  else if (parts[0] != "standard") {
    problem = "The styles are standard, dark and satellite";
    return std::nullopt;
  }
  const auto zoom = parseNumber(parts[1]);
  const auto x = parseNumber(parts[2]);
  const auto y = parseNumber(parts[3]);
  const Parameters query = parseParameters(request.query);
  const auto scale = query.find("scale");
  if (scale != query.end() && scale->second != "1" && scale->second != "2") {
    problem = "Parameter \"scale\" must be 1 or 2";
    return std::nullopt;
  }
  if (!zoom || !x || !y) return std::nullopt;
  const auto held = [](long long number) { return static_cast<int>(std::clamp(number, -1LL, 1LL << 30)); };
  picture.scale = scale != query.end() && scale->second == "2" ? 2 : 1;
  picture.address = {held(*zoom), held(*x), held(*y)};
  return picture;
}

bool exists(const TileAddress& tile) {
  if (tile.zoom < Tiles::kFirstZoom || tile.zoom > Tiles::kLastZoom) return false;
  const int count = 1 << tile.zoom;
  return tile.x >= 0 && tile.x < count && tile.y >= 0 && tile.y < count;
}

std::string tagOf(const std::string& file) {
  std::uint64_t hash = file.size();
  for (const char c : file)
    hash = mixBits(hash ^ static_cast<unsigned char>(c));
  char text[24];
  std::snprintf(text, sizeof text, "\"%016llx\"", static_cast<unsigned long long>(hash));
  return text;
}

}  // namespace

ServiceReply Tiles::answer(const ServiceRequest& request) {
  if (request.verb != "GET") return refused(405, "Use GET here");
  std::string problem;
  const auto picture = pictureAsked(request, problem);
  if (!picture) return refused(400, problem);
  if (!exists(picture->address)) return refused(404, "There is no such tile");

  const auto file = fileOf(*picture);
  const std::string tag = tagOf(*file);
  ServiceReply reply;
  reply.contentType = "image/png";
  // Another seed makes another town at the same addresses: a tile may be believed for minutes, then it is
  // asked for by its tag.
  reply.headers = {{"Cache-Control", "public, max-age=600"}, {"ETag", tag}};
  const std::string_view known = request.header("If-None-Match");
  if (known == "*" || known.find(tag) != std::string_view::npos)
    reply.status = 304;
  else
    reply.body = *file;
  return reply;
}

const Tiles::Map& Tiles::map() {
  std::call_once(drawnUp_, [this] { map_.emplace(town_, seed_); });
  return *map_;
}

std::shared_ptr<const std::string> Tiles::fileOf(const TilePicture& picture) {
  {
    const std::lock_guard lock(mutex_);
    if (const auto found = places_.find(picture); found != places_.end()) {
      kept_.splice(kept_.begin(), kept_, found->second);
      return kept_.front().file;
    }
  }
  auto file = std::make_shared<const std::string>(drawn(picture));
  const std::lock_guard lock(mutex_);
  // Two threads may have drawn the same tile; one of them is enough.
  if (places_.contains(picture)) return file;
  kept_.push_front({picture, file});
  places_[picture] = kept_.begin();
  keptBytes_ += file->size();
  while (keptBytes_ > kMostKeptBytes) {
    keptBytes_ -= kept_.back().file->size();
    places_.erase(kept_.back().picture);
    kept_.pop_back();
  }
  return file;
}

std::string Tiles::drawn(const TilePicture& picture) {
  const Map& map = this->map();
  Canvas canvas(picture.address, picture.scale);
  if (picture.look == MapLook::satellite)
    paintAerial(canvas, picture.address, map.atlas);
  else
    paintMap(canvas, map.atlas, paletteOf(picture.look));
  map.names.paint(canvas, picture.address, picture.look);
  return pngOf(canvas.surface());
}

}  // namespace fleetor::demo
