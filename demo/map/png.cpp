#include "demo/map/png.h"

#include <libdeflate.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

namespace fleetor::demo {
namespace {

constexpr int kLevel = 4;

void putNumber(std::string& file, std::uint32_t number) {
  for (const int shift : {24, 16, 8, 0})
    file += static_cast<char>(number >> shift);
}

void putChunk(std::string& file, std::string_view type, std::string_view data) {
  putNumber(file, static_cast<std::uint32_t>(data.size()));
  const std::size_t begin = file.size();
  file.append(type).append(data);
  putNumber(file, libdeflate_crc32(0, file.data() + begin, file.size() - begin));
}

// How much a filtered row still says: the sum of its bytes, each taken as a signed number.
std::size_t costOf(const std::vector<std::uint8_t>& row) {
  std::size_t cost = 0;
  for (std::size_t i = 1; i < row.size(); ++i)
    cost += row[i] < 128 ? row[i] : 256U - row[i];
  return cost;
}

// The rows one below the other, each with the filter that leaves least of it: none, or the difference to the
// pixel on the left or above.
std::vector<std::uint8_t> filteredRows(cairo_surface_t* picture, std::size_t width, std::size_t height) {
  const unsigned char* data = cairo_image_surface_get_data(picture);
  const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(picture));
  const std::size_t length = 1 + 3 * width;
  std::vector<std::uint8_t> all;
  all.reserve(length * height);
  std::vector<std::uint8_t> above(length, 0);
  std::array<std::vector<std::uint8_t>, 3> rows;
  for (std::size_t filter = 0; filter < rows.size(); ++filter) {
    rows[filter].assign(length, 0);
    rows[filter][0] = static_cast<std::uint8_t>(filter);
  }
  for (std::size_t y = 0; y < height; ++y) {
    const auto* pixels = reinterpret_cast<const std::uint32_t*>(data + y * stride);
    std::vector<std::uint8_t>& plain = rows[0];
    for (std::size_t x = 0; x < width; ++x) {
      plain[1 + 3 * x] = static_cast<std::uint8_t>(pixels[x] >> 16);
      plain[2 + 3 * x] = static_cast<std::uint8_t>(pixels[x] >> 8);
      plain[3 + 3 * x] = static_cast<std::uint8_t>(pixels[x]);
    }
    for (std::size_t i = 1; i < length; ++i) {
      rows[1][i] = static_cast<std::uint8_t>(plain[i] - (i > 3 ? plain[i - 3] : 0));
      rows[2][i] = static_cast<std::uint8_t>(plain[i] - above[i]);
    }
    std::size_t best = 1;
    std::size_t least = costOf(rows[1]);
    if (const std::size_t cost = costOf(rows[2]); cost < least) {
      best = 2;
      least = cost;
    }
    // Plain rows of flat colours pack better than the measure tells.
    if (costOf(plain) <= least) best = 0;
    all.insert(all.end(), rows[best].begin(), rows[best].end());
    std::copy(plain.begin(), plain.end(), above.begin());
  }
  return all;
}

}  // namespace

std::string pngOf(cairo_surface_t* picture) {
  cairo_surface_flush(picture);
  const auto width = static_cast<std::uint32_t>(cairo_image_surface_get_width(picture));
  const auto height = static_cast<std::uint32_t>(cairo_image_surface_get_height(picture));
  const std::vector<std::uint8_t> rows = filteredRows(picture, width, height);

  const std::unique_ptr<libdeflate_compressor, void (*)(libdeflate_compressor*)> compressor(
      libdeflate_alloc_compressor(kLevel), libdeflate_free_compressor);
  std::string packed(libdeflate_zlib_compress_bound(compressor.get(), rows.size()), '\0');
  packed.resize(
      libdeflate_zlib_compress(compressor.get(), rows.data(), rows.size(), packed.data(), packed.size()));

  std::string header;
  putNumber(header, width);
  putNumber(header, height);
  header.append({8, 2, 0, 0, 0});  // bits a channel, red-green-blue, and the only methods there are
  std::string file("\x89PNG\r\n\x1a\n", 8);
  putChunk(file, "IHDR", header);
  putChunk(file, "IDAT", packed);
  putChunk(file, "IEND", {});
  return file;
}

}  // namespace fleetor::demo
