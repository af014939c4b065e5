#include "map/marker_choice.h"

#include <algorithm>
#include <cmath>

namespace fleetor {

namespace {

constexpr int finestGrid = 256;  // squares along the window's longer side: a few points each on a phone

/// Keeps the last of each square. The squares are powers of two of the world, so that those of the next size
/// are made up of these.
void thin(std::vector<std::size_t>& chosen, std::span<const WorldPoint> places, const WorldRect& window,
          double square) {
  const double middle = (window.left + window.right) / 2;
  const double firstColumn = std::floor(window.left / square);
  const double firstRow = std::floor(window.top / square);
  const auto columns = static_cast<std::size_t>(std::floor(window.right / square) - firstColumn) + 1;
  const auto rows = static_cast<std::size_t>(std::floor(window.bottom / square) - firstRow) + 1;
  std::vector<bool> taken(columns * rows);
  std::vector<std::size_t> kept;
  std::ranges::reverse(chosen);
  for (const std::size_t index : chosen) {
    const auto [x, y] = places[index];
    const double near = x - std::round(x - middle);
    const auto column = static_cast<std::size_t>(std::floor(near / square) - firstColumn);
    const auto row = static_cast<std::size_t>(std::floor(y / square) - firstRow);
    const std::size_t cell = row * columns + column;
    if (taken[cell]) continue;
    taken[cell] = true;
    kept.push_back(index);
  }
  std::ranges::reverse(kept);
  chosen = std::move(kept);
}

}  // namespace

std::vector<std::size_t> chooseMarkers(std::span<const WorldPoint> places, const WorldRect& window,
                                       std::size_t most) {
  const double middle = (window.left + window.right) / 2;
  std::vector<std::size_t> chosen;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const auto [x, y] = places[i];
    const double near = x - std::round(x - middle);
    if (near >= window.left && near <= window.right && y >= window.top && y <= window.bottom)
      chosen.push_back(i);
  }
  const double side = std::max(window.width(), window.height());
  if (chosen.size() > most && side > 0)
    for (double square = std::exp2(std::ceil(std::log2(side / finestGrid)));
         chosen.size() > most && square <= 4; square *= 2)
      thin(chosen, places, window, square);
  if (chosen.size() > most) chosen.erase(chosen.begin(), chosen.end() - static_cast<std::ptrdiff_t>(most));
  return chosen;
}

}  // namespace fleetor
