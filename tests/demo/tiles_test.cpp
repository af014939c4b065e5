#include <cmath>
#include <cstring>
#include <numbers>

#include "demo/map/map_painter.h"
#include "demo/map/names.h"
#include "demo/map/png.h"
#include "running_service.h"

namespace fleetor::demo {
namespace {

using Pixels = std::vector<std::uint32_t>;

Pixels pixelsOf(cairo_surface_t* surface) {
  cairo_surface_flush(surface);
  const int width = cairo_image_surface_get_width(surface);
  Pixels pixels;
  for (int y = 0; y < cairo_image_surface_get_height(surface); ++y) {
    const unsigned char* row =
        cairo_image_surface_get_data(surface) + std::ptrdiff_t{y} * cairo_image_surface_get_stride(surface);
    for (int x = 0; x < width; ++x) {
      std::uint32_t pixel = 0;
      std::memcpy(&pixel, row + std::ptrdiff_t{x} * 4, 4);
      pixels.push_back(pixel & 0xffffff);
    }
  }
  return pixels;
}

int difference(std::uint32_t a, std::uint32_t b) {
  int sum = 0;
  for (const int shift : {0, 8, 16})
    sum += std::abs(static_cast<int>((a >> shift) & 0xff) - static_cast<int>((b >> shift) & 0xff));
  return sum;
}

TileAddress tileOver(Point onSheet, int zoom) {
  const TileAddress origin{zoom, 0, 0};
  return {zoom, static_cast<int>((onSheet.x - origin.topLeft().x) / origin.metres()),
          static_cast<int>((origin.topLeft().y - onSheet.y) / origin.metres())};
}

// Drawn up once: it takes a moment.
class DemoTiles : public testing::Test {
 protected:
  struct Map {
    Town town{7};
    Atlas atlas{town, 7};
    NameBoard names{atlas};
  };
  static Map& map() {
    static Map map;
    return map;
  }

  static Pixels drawn(const TileAddress& tile, MapLook look) {
    Canvas canvas(tile, 1);
    if (look == MapLook::satellite)
      paintAerial(canvas, tile, map().atlas);
    else
      paintMap(canvas, map().atlas, paletteOf(look));
    map().names.paint(canvas, tile, look);
    return pixelsOf(canvas.surface());
  }
};

TEST_F(DemoTiles, JoinWithoutASeam) {
  constexpr std::size_t kSide = Canvas::kTilePixels;
  for (const MapLook look : {MapLook::standard, MapLook::dark, MapLook::satellite})
    for (const int zoom : {5, 9, 12, 15, 17}) {
      double across = 0;  // what changes from one tile to the next
      double inside = 0;  // what changes from pixel to pixel on both sides of that border
      for (const Point at : {Point{0, 0}, Point{2100, -1900}, Point{6800, 3000}}) {
        const TileAddress tile = tileOver(at, zoom);
        const Pixels here = drawn(tile, look);
        const Pixels east = drawn({zoom, tile.x + 1, tile.y}, look);
        const Pixels south = drawn({zoom, tile.x, tile.y + 1}, look);
        for (std::size_t i = 0; i < kSide; ++i) {
          const std::size_t row = i * kSide;
          across += difference(here[row + kSide - 1], east[row]);
          inside += difference(here[row + kSide - 2], here[row + kSide - 1]) / 2.0 +
                    difference(east[row], east[row + 1]) / 2.0;
          const std::size_t last = (kSide - 1) * kSide + i;
          across += difference(here[last], south[i]);
          inside +=
              difference(here[last - kSide], here[last]) / 2.0 + difference(south[i], south[i + kSide]) / 2.0;
        }
      }
      EXPECT_LE(across, 1.25 * inside + 2000) << "look " << static_cast<int>(look) << " zoom " << zoom;
    }
}

// What a neighbour knows of the names must not show on a tile unless the tile knows of it too.
TEST_F(DemoTiles, CutNoNameAtTheirBorders) {
  const auto inkOf = [](const TileAddress& shown, const TileAddress& known) {
    Canvas canvas(shown, 1);
    canvas.paint(0x808080);
    map().names.paint(canvas, known, MapLook::standard);
    return pixelsOf(canvas.surface());
  };
  for (const int zoom : {7, 13, 15, 18}) {
    const TileAddress middle = tileOver({0, 0}, zoom);
    int shared = 0;
    for (int dy = -3; dy <= 3; ++dy)
      for (int dx = -3; dx <= 3; ++dx) {
        const TileAddress tile{zoom, middle.x + dx, middle.y + dy};
        const Pixels own = inkOf(tile, tile);
        for (const auto& [x, y] : {std::pair(-1, 0), {1, 0}, {0, -1}, {0, 1}}) {
          const Pixels neighbours = inkOf(tile, {zoom, tile.x + x, tile.y + y});
          for (std::size_t i = 0; i < own.size(); ++i) {
            if (difference(neighbours[i], 0x808080) < 9) continue;
            ++shared;
            ASSERT_NE(own[i], 0x808080U) << zoom << "/" << tile.x << "/" << tile.y;
          }
        }
      }
    EXPECT_GT(shared, 0) << "no name crossed a border at zoom " << zoom;
  }
}

TEST_F(DemoTiles, WriteNoNameOverAnother) {
  for (const int zoom : {4, 12, 14, 16, 17}) {
    const auto& placed = map().names.placedAt(zoom);
    ASSERT_GT(placed.size(), 8u);
    const auto middleOf = [&](const NameBoard::PlacedName& name, const NameBoard::PlacedLetter& letter) {
      const double half = name.size * metresPerPixel(zoom) / 2;
      const Point along{std::cos(letter.angle), std::sin(letter.angle)};
      return letter.at + along * (half * letter.letter->advance) + leftOf(along) * (half * 0.7);
    };
    for (std::size_t i = 0; i < placed.size(); ++i)
      for (std::size_t j = 0; j < i; ++j) {
        if (!placed[i].box.meets(placed[j].box)) continue;
        for (const auto& a : placed[i].letters)
          for (const auto& b : placed[j].letters)
            ASSERT_GT(distanceBetween(middleOf(placed[i], a), middleOf(placed[j], b)),
                      0.7 * placed[i].size * metresPerPixel(zoom))
                << placed[i].name->text << " and " << placed[j].name->text << " at zoom " << zoom;
      }
  }
}

TEST_F(DemoTiles, ShowTheTownThatTheFleetDrivesThrough) {
  const Town& town = map().town;
  const Palette& palette = paletteOf(MapLook::standard);
  const auto colourAt = [&](Point at) {
    const TileAddress tile = tileOver(at, 19);
    Canvas canvas(tile, 1);
    paintMap(canvas, map().atlas, palette);
    const Point pixel = canvas.pixel(at);
    return pixelsOf(
        canvas.surface())[static_cast<std::size_t>(pixel.y) * 256 + static_cast<std::size_t>(pixel.x)];
  };
  for (std::size_t i = 0; i < town.streets().edges().size(); i += 97) {
    const StreetEdge& edge = town.streets().edges()[i];
    const RoadClass kinds[] = {RoadClass::ring, RoadClass::main, RoadClass::collector,
                               RoadClass::residential};
    const RoadClass kind = kinds[static_cast<int>(town.streets().kindOf(edge))];
    EXPECT_EQ(colourAt(onSheet(town.streets().spotAt(edge, edge.length() / 2).at)),
              palette.roads[static_cast<std::size_t>(kind)].surface)
        << town.streets().streets()[edge.street].name;
  }
  EXPECT_EQ(colourAt(onSheet(lerp(town.river()[58], town.river()[59], 0.3))), palette.sea);

  // No house stands in the way, and each has the number that the town's addresses give it.
  for (const StreetEdge& edge : town.streets().edges())
    for (int step = 0; 5 + 20 * step < edge.length(); ++step) {
      const double metres = 5 + 20 * step;
      const Point at = onSheet(town.streets().spotAt(edge, metres).at);
      for (const std::uint32_t id : map().atlas.buildingsIn({at.x, at.y, at.x, at.y}))
        ASSERT_FALSE(contains(map().atlas.buildings()[id].outline, at))
            << town.streets().address(edge, metres);
    }
  int houses = 0;
  for (const Name& name : map().atlas.names()) {
    if (name.kind != NameKind::house || ++houses % 200 != 0) continue;
    bool found = false;
    for (const StreetEdge& edge : town.streets().edges())
      for (double metres = 0; metres < edge.length() && !found; metres += 4) {
        const std::string address = town.streets().address(edge, metres);
        found = distanceBetween(onSheet(town.streets().spotAt(edge, metres).at), name.at) < 42 &&
                address.ends_with(" " + name.text);
      }
    EXPECT_TRUE(found) << "nobody lives at number " << name.text << " there";
  }
  EXPECT_GT(houses, 5000);
}

TEST_F(DemoTiles, ArriveAsPicturesThatACacheCanKeep) {
  RunningService service;  // its seed is the atlas's
  const TileAddress tile = tileOver({300, 300}, 16);
  const std::string place = "/16/" + std::to_string(tile.x) + "/" + std::to_string(tile.y) + ".png";
  for (const auto& [style, look] :
       {std::pair("standard", MapLook::standard), {"dark", MapLook::dark}, {"satellite", MapLook::satellite}})
    for (const int scale : {1, 2}) {
      const std::string path = std::string("/tiles/") + style + place + (scale == 2 ? "?scale=2" : "");
      const Answer answer = service.get(path);
      ASSERT_EQ(answer.status, 200) << answer.body;
      EXPECT_EQ(answer.header("Content-Type"), "image/png");
      EXPECT_EQ(answer.header("Cache-Control"), "public, max-age=600");
      std::string rest = answer.body;
      cairo_surface_t* picture = cairo_image_surface_create_from_png_stream(
          [](void* source, unsigned char* data, unsigned length) {
            auto& left = *static_cast<std::string*>(source);
            if (left.size() < length) return CAIRO_STATUS_READ_ERROR;
            std::memcpy(data, left.data(), length);
            left.erase(0, length);
            return CAIRO_STATUS_SUCCESS;
          },
          &rest);
      EXPECT_EQ(cairo_image_surface_get_width(picture), 256 * scale);
      if (scale == 1) {
        EXPECT_EQ(pixelsOf(picture), drawn(tile, look)) << style;
      }
      cairo_surface_destroy(picture);

      const std::string tag = answer.header("ETag");
      const Answer again = service.get(path, {{"If-None-Match", tag}});
      EXPECT_EQ(again.status, 304);
      EXPECT_EQ(again.body, "");
      EXPECT_EQ(again.header("ETag"), tag);
      EXPECT_EQ(service.get(path, {{"If-None-Match", "\"else\""}}).body, answer.body);
    }
}

TEST_F(DemoTiles, AreRefusedWithAReason) {
  RunningService service;
  const struct {
    const char* path;
    int status;
  } cases[] = {{"standard/3/7/7.png", 200},  {"standard/3/8/0.png", 404},
               {"standard/3/0/-1.png", 404}, {"standard/2/0/0.png", 404},
               {"standard/20/0/0.png", 404}, {"standard/19/99999999999/0.png", 400},
               {"standard/x/0/0.png", 400},  {"standard/3/0/0.jpg", 400},
               {"standard/3/0/0.png/", 400}, {"standard/3/0/0.png?scale=3", 400},
               {"sepia/3/0/0.png", 400},     {"", 400}};
  for (const auto& [path, status] : cases) {
    const Answer answer = service.get(std::string("/tiles/") + path);
    EXPECT_EQ(answer.status, status) << path;
    if (status != 200) expectFailure(answer, status, "tile");
  }
  service.addFault("tiles=500");
  EXPECT_EQ(service.get("/tiles/standard/3/7/7.png").header("Cache-Control"), "")
      << "a failure must not be kept";
}

}  // namespace
}  // namespace fleetor::demo
