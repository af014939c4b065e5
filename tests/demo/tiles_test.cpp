#include <cmath>
#include <cstring>
#include <numbers>

#include "demo/map/map_painter.h"
#include "demo/map/names.h"
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

TileAddress tileOver(Point at, int zoom) {
  const TileAddress origin{zoom, 0, 0};
  return {zoom, static_cast<int>((at.x - origin.box().left) / origin.metres()),
          static_cast<int>((origin.box().top - at.y) / origin.metres())};
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

  static Canvas drawn(const TileAddress& tile, MapStyle style, int scale = 1) {
    Canvas canvas(tile, scale);
    paintMap(canvas, map().atlas, paletteOf(style));
    map().names.paint(canvas, style);
    return canvas;
  }
};

TEST_F(DemoTiles, JoinWithoutASeam) {
  constexpr std::size_t tileSide = Canvas::tilePixels;
  for (const MapStyle style : {MapStyle::standard, MapStyle::dark, MapStyle::satellite})
    for (const int zoom : {5, 9, 12, 15, 17}) {
      double across = 0;  // what changes from one tile to the next
      double inside = 0;  // what changes from pixel to pixel on both sides of that border
      for (const int step : {0, 2, 5}) {
        TileAddress tile = tileOver({0, 0}, zoom);
        tile.x += step;
        tile.y += step / 2;
        const Pixels here = pixelsOf(drawn(tile, style).surface());
        const Pixels east = pixelsOf(drawn({zoom, tile.x + 1, tile.y}, style).surface());
        const Pixels south = pixelsOf(drawn({zoom, tile.x, tile.y + 1}, style).surface());
        for (std::size_t i = 0; i < tileSide; ++i) {
          const std::size_t row = i * tileSide;
          across += difference(here[row + tileSide - 1], east[row]);
          inside += difference(here[row + tileSide - 2], here[row + tileSide - 1]) / 2.0 +
                    difference(east[row], east[row + 1]) / 2.0;
          const std::size_t last = (tileSide - 1) * tileSide + i;
          across += difference(here[last], south[i]);
          inside += difference(here[last - tileSide], here[last]) / 2.0 +
                    difference(south[i], south[i + tileSide]) / 2.0;
        }
      }
      EXPECT_LE(across, 1.25 * inside + 2000) << "style " << static_cast<int>(style) << " zoom " << zoom;
    }
}

TEST_F(DemoTiles, ShowTheTownThatTheFleetDrivesThrough) {
  const Town& town = map().town;
  const Palette& palette = paletteOf(MapStyle::standard);
  const auto colourAt = [&](Point at) {
    Canvas canvas(tileOver(at, 19), 1);
    paintMap(canvas, map().atlas, palette);
    const Point pixel = canvas.pixel(at);
    return pixelsOf(
        canvas.surface())[static_cast<std::size_t>(pixel.y) * 256 + static_cast<std::size_t>(pixel.x)];
  };
  for (std::size_t i = 0; i < town.streets().edges().size(); i += 97) {
    const StreetEdge& edge = town.streets().edges()[i];
    EXPECT_EQ(colourAt(edge.line.at(edge.line.length() / 2).at),
              palette.roads[static_cast<std::size_t>(town.streets().kindOf(edge))].surface)
        << town.streets().streets()[edge.street].name;
  }
  EXPECT_EQ(colourAt(lerp(town.river()[58], town.river()[59], 0.3)), palette.sea);
}

TEST_F(DemoTiles, ArriveAsPicturesThatACacheCanKeep) {
  RunningService service;  // its seed is the atlas's
  const TileAddress tile = tileOver({300, 300}, 16);
  const std::string place = "/16/" + std::to_string(tile.x) + "/" + std::to_string(tile.y) + ".png";
  for (const auto& [name, style] : {std::pair("standard", MapStyle::standard),
                                    {"dark", MapStyle::dark},
                                    {"satellite", MapStyle::satellite}}) {
    const std::string path = std::string("/tiles/") + name + place;
    const Answer answer = service.get(path);
    EXPECT_EQ(answer.body, drawn(tile, style).png()) << name;
    EXPECT_EQ(answer.header("Content-Type"), "image/png");
    EXPECT_EQ(answer.header("Cache-Control"), "public, max-age=600");
    const Answer again = service.get(path, {{"If-None-Match", answer.header("ETag")}});
    EXPECT_EQ(again.status, 304);
    EXPECT_EQ(again.body, "");
    EXPECT_EQ(again.header("ETag"), answer.header("ETag"));
    EXPECT_EQ(service.get(path, {{"If-None-Match", "\"else\""}}).body, answer.body);

    std::string rest = service.get(path + "?scale=2").body;
    cairo_surface_t* picture = cairo_image_surface_create_from_png_stream(
        [](void* source, unsigned char* data, unsigned length) {
          auto& left = *static_cast<std::string*>(source);
          if (left.size() < length) return CAIRO_STATUS_READ_ERROR;
          std::memcpy(data, left.data(), length);
          left.erase(0, length);
          return CAIRO_STATUS_SUCCESS;
        },
        &rest);
    EXPECT_EQ(pixelsOf(picture), pixelsOf(drawn(tile, style, 2).surface())) << name;
    cairo_surface_destroy(picture);
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
