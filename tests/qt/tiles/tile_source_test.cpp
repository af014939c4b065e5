#include "qt/map/tile_source.h"

#include <QBuffer>
#include <QColor>
#include <QDirIterator>
#include <QTemporaryDir>
#include <atomic>
#include <random>

#include "qt/map/tile_image.h"
#include "run_until.h"
#include "support/raw_server.h"
#include "support/testing.h"

namespace fleetor {
namespace {

using enum TileLoader::Source;

const std::string fresh = "Cache-Control: max-age=1000\r\n";
const std::string stale = "Expires: Thu, 01 Jan 2020 00:00:00 GMT\r\n";
constexpr TileKey anyTile{MapStyle::standard, 1, {14, 8800, 5400}};

std::string encoded(const QImage& image, const char* format) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format);
  return buffer.data().toStdString();
}

std::string picture(int side = 256, const char* format = "PNG", QColor colour = QColor(10, 200, 30)) {
  QImage image(side, side, colour.alpha() < 255 ? QImage::Format_ARGB32 : QImage::Format_RGB32);
  image.fill(colour);
  return encoded(image, format);
}

// About three bytes a pixel, since it does not compress.
std::string noise(int side) {
  QImage image(side, side, QImage::Format_RGB32);
  std::minstd_rand random(1);
  for (int i = 0; i < side * side; ++i)
    image.setPixel(i % side, i / side, QRgb(random()));
  return encoded(image, "PNG");
}

std::string answer(const std::string& body, const std::string& headers = "",
                   const std::string& status = "200 OK") {
  return "HTTP/1.1 " + status + "\r\nContent-Type: image/png\r\n" + headers +
         "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

struct TileSourceTest : testing::Test {
  QTemporaryDir folder;

  TileAddresses at(const std::string& pattern) const {
    TileAddresses tiles;
    tiles.standard = pattern;
    tiles.userAgent = "Fleetor/test";
    return tiles;
  }
  TileAddresses at(const RawServer& server) const { return at(server.url("/{z}/{x}/{y}?scale={scale}")); }

  static TileLoader::Result get(TileSource& source, TileLoader::Source from = network,
                                const TileKey& key = anyTile) {
    std::optional<TileLoader::Result> got;
    source.load(key, from, [&got](TileLoader::Result result) { got = std::move(result); });
    EXPECT_FALSE(got);  // never inline
    runUntil([&got] { return got.has_value(); });
    return got.value_or(TileLoader::Result{});
  }

  static const QImage& imageOf(const TileLoader::Result& result) {
    return static_cast<const QtTileImage&>(*result.image).image();
  }
};

TEST_F(TileSourceTest, FillsInTheAddressesAndSendsNothingAboutThePerson) {
  RawServer server(
      always(answer("no", "Set-Cookie: a=b\r\nWWW-Authenticate: Basic realm=\"x\"\r\n", "401 No")));
  auto withSecret = server.url("/{z}/{x}/{y}{r}.png?scale={scale}");
  withSecret.replace(0, 7, "http://user:secret@");
  TileAddresses tiles = at(withSecret);
  const TileSource plain(tiles, folder.path());
  EXPECT_TRUE(plain.serves(MapStyle::dark) && !plain.serves(MapStyle::satellite));
  tiles.satellite = server.url("/sat/{z}/{x}/{y}");
  TileSource source(tiles, folder.path());
  for (const TileKey& key :
       {anyTile, TileKey{MapStyle::dark, 2, {3, 0, 7}}, TileKey{MapStyle::satellite, 1, {5, 1, 2}}})
    EXPECT_FALSE(get(source, network, key).image);
  const auto requests = server.requests();
  ASSERT_THAT(requests, SizeIs(3));
  EXPECT_THAT(requests[0], StartsWith("GET /14/8800/5400.png?scale=1 HTTP/1.1\r\n"));
  EXPECT_THAT(requests[1], StartsWith("GET /3/0/7@2x.png?scale=2 HTTP/1.1\r\n"));
  EXPECT_THAT(requests[2], StartsWith("GET /sat/5/1/2 HTTP/1.1\r\n"));
  EXPECT_THAT(requests, Each(AllOf(HasSubstr("User-Agent: Fleetor/test\r\n"), Not(HasSubstr("Cookie")),
                                   Not(HasSubstr("Authorization")), Not(HasSubstr("Referer")))));
}

TEST_F(TileSourceTest, RequestsNoFreshTileOfTheDiskAndRevalidatesAStaleOne) {
  std::string control = fresh;
  RawServer server([&](RawServer::Peer& peer) {
    for (std::string request; !(request = peer.read()).empty();) {
      const std::string headers = "ETag: \"v1\"\r\n" + control;
      if (request.find("If-None-Match: \"v1\"") != std::string::npos)
        peer.write("HTTP/1.1 304 Not Modified\r\n" + headers + "\r\n");
      else
        peer.write(answer(picture(), headers));
    }
  });
  const auto start = [&] { return std::make_unique<TileSource>(at(server), folder.path()); };
  auto source = start();
  EXPECT_FALSE(get(*source, cache).image);
  EXPECT_TRUE(get(*source).image);
  source = start();  // the next start of the program finds it too
  EXPECT_TRUE(get(*source).image);
  EXPECT_THAT(server.requests(), SizeIs(1));

  control = stale;
  const TileKey other{MapStyle::standard, 2, {4, 1, 1}};
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(imageOf(get(*source, network, other)).pixelColor(5, 5), QColor(10, 200, 30));
  ASSERT_THAT(server.requests(), SizeIs(4));
  EXPECT_THAT(server.requests()[1], Not(HasSubstr("If-None-Match")));
  EXPECT_THAT(server.requests()[3], HasSubstr("If-None-Match: \"v1\"\r\n"));
  control = fresh;
  get(*source, network, other);  // "not modified" makes it fresh again
  get(*source, network, other);
  EXPECT_THAT(server.requests(), SizeIs(5));

  control = "Cache-Control: no-store\r\n";
  const TileKey third{MapStyle::standard, 1, {4, 1, 2}};
  get(*source, network, third);
  EXPECT_FALSE(get(*source, cache, third).image);
}

TEST_F(TileSourceTest, ShowsAnOldTileWhileTheServerCannotBeReached) {
  std::optional<TileSource> source;
  {
    RawServer server(always(answer(picture(), stale)));
    source.emplace(at(server), folder.path());
    EXPECT_TRUE(get(*source).image);
  }
  const auto result = get(*source);
  EXPECT_FALSE(result.image || result.missing);
  EXPECT_TRUE(get(*source, cache).image);
}

TEST_F(TileSourceTest, RefusesWhatIsNotATile) {
  enum Outcome { shown, missing, failed };
  struct Case {
    const char* name;
    std::string bytes;
    Outcome outcome;
  };
  const std::string png = picture();
  const std::string jpeg = picture(256, "JPG");
  const std::string svg = "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>";
  const std::string large = noise(128);
  const std::string cut = "HTTP/1.1 200 OK\r\n" + fresh + "Connection: close\r\n\r\n";
  RawServer elsewhere(always(answer(png)));
  const Case cases[] = {
      {"a tile", answer(png), shown},
      {"JPEG", answer(jpeg), shown},
      {"largest", answer(picture(1024)), shown},
      {"too large", answer(picture(1025), fresh), failed},
      {"too long", answer(large, fresh), failed},
      {"too long, unannounced", cut + large, failed},
      {"a page", answer("<html>Please sign in</html>", fresh), failed},
      {"a picture of another kind", answer(svg, fresh), failed},
      {"nothing", answer("", fresh), failed},
      {"cut", cut + png.substr(0, png.size() / 2), failed},
      {"cut JPEG", answer(jpeg, fresh + "Connection: close\r\n").substr(0, jpeg.size() * 3 / 4), failed},
      {"no such tile", answer("no", "", "404 Not Found"), missing},
      {"empty", "HTTP/1.1 204 No Content\r\n\r\n", missing},
      {"failed", answer(png, fresh, "500 Oops"), failed},
      {"led elsewhere", answer("", "Location: " + elsewhere.url("/") + "\r\n", "302 Found"), failed},
      {"led around", answer("", "Location: /again\r\n", "302 Found"), failed},
      {"closed", "", failed},
  };
  for (const Case& c : cases) {
    const QTemporaryDir own;  // ports, and so addresses, come back
    std::atomic<bool> sound = false;
    RawServer server([&](RawServer::Peer& peer) {
      while (!peer.read().empty()) {
        peer.write(sound ? answer(png) : c.bytes);
        if (!sound && (c.bytes.empty() || c.bytes.find("Connection: close") != std::string::npos)) return;
      }
    });
    TileSource source(at(server), own.path(), {.bodyBytes = 20'000, .timeoutInMs = 3000});
    const auto result = get(source);
    EXPECT_EQ(result.image != nullptr, c.outcome == shown) << c.name;
    EXPECT_EQ(result.missing, c.outcome == missing) << c.name;
    // What failed is not kept: the next request succeeds.
    sound = true;
    if (c.outcome == failed) {
      EXPECT_TRUE(get(source).image) << c.name;
    }
  }
  EXPECT_THAT(elsewhere.requests(), SizeIs(0));
}

TEST_F(TileSourceTest, FollowsARedirectWithinItsOrigin) {
  RawServer server([](RawServer::Peer& peer) {
    for (std::string request; !(request = peer.read()).empty();)
      peer.write(request.starts_with("GET /there") ? answer(picture())
                                                   : answer("", "Location: /there\r\n", "302 Found"));
  });
  TileSource source(at(server), folder.path());
  EXPECT_TRUE(get(source).image);
}

TEST_F(TileSourceTest, HandsOverImagesReadyForATexture) {
  const QColor half(200, 100, 40, 128);
  RawServer clear(always(answer(picture(256, "PNG", half))));
  RawServer opaque(always(answer(picture(512))));
  TileSource first(at(clear), folder.path()), second(at(opaque), folder.path());
  const auto seeThrough = get(first), solid = get(second);
  EXPECT_EQ(imageOf(seeThrough).format(), QImage::Format_RGBA8888_Premultiplied);
  EXPECT_NEAR(imageOf(seeThrough).constBits()[0], 100, 1);
  EXPECT_EQ(imageOf(solid).format(), QImage::Format_RGBX8888);
  EXPECT_EQ(solid.image->sizeInBytes(), 512u * 512 * 4);
}

TEST_F(TileSourceTest, CancelsOnTheWireWithoutAnAnswer) {
  std::atomic<int> begun = 0, gone = 0;
  RawServer server([&](RawServer::Peer& peer) {
    peer.read();
    ++begun;
    peer.hold();
    ++gone;
  });
  int answered = 0;
  {
    TileSource source(at(server), folder.path());
    const auto ask = [&](int x) {
      return source.load({MapStyle::standard, 1, {9, x, 0}}, network, [&](auto) { ++answered; });
    };
    const auto first = ask(1);
    ask(2);
    runUntil([&] { return begun == 2; });
    source.cancel(first);
    source.cancel(first);
    runUntil([&] { return gone == 1; });
    source.cancel(ask(3));  // before it has begun
  }
  runUntil([&] { return gone == begun; });
  EXPECT_EQ(answered, 0);
}

TEST_F(TileSourceTest, GivesUpOnAServerThatStaysSilent) {
  RawServer server(stalling(""));
  TileSource source(at(server), folder.path(), {.timeoutInMs = 150});
  const auto result = get(source);
  EXPECT_FALSE(result.image || result.missing);
}

TEST_F(TileSourceTest, KeepsWithinItsLimitOnTheDisk) {
  const std::string bytes = answer(noise(64), fresh);
  RawServer server(always(bytes));
  constexpr qint64 limit = 60'000;
  TileSource source(at(server), folder.path(), {.diskBytes = limit});
  const auto total = [this] {
    qint64 sum = 0;
    for (QDirIterator files(folder.path(), QDir::Files, QDirIterator::Subdirectories); files.hasNext();
         files.next())
      sum += files.fileInfo().size();
    return sum;
  };
  qint64 most = 0;
  for (int x = 0; x < 30; ++x) {
    EXPECT_TRUE(get(source, network, {MapStyle::standard, 1, {9, x, 0}}).image);
    most = std::max(most, total());
  }
  ASSERT_GT(static_cast<qint64>(30 * bytes.size()), 3 * limit);
  EXPECT_GT(most, limit / 2);
  EXPECT_LE(most, limit + static_cast<qint64>(2 * bytes.size()));
}

}  // namespace
}  // namespace fleetor
