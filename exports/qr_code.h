#pragma once

#include <string>
#include <vector>

namespace fleetor {

/// A QR code with its quiet border of four cells, row by row from the top left.
struct QrCode {
  int side = 0;  ///< cells; 0: the text is too long for a code
  std::vector<bool> dark;

  bool isDark(int x, int y) const { return dark[indexOf(x, y)]; }
  std::size_t indexOf(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(side) + static_cast<std::size_t>(x);
  }
};

/// With error correction of level M, which survives 15 % of damage. Any thread.
QrCode qrCodeOf(const std::string& text);

}  // namespace fleetor
