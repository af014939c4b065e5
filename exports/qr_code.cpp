#include "exports/qr_code.h"

#include <qrencode.h>

#include <memory>

namespace fleetor {

QrCode qrCodeOf(const std::string& text) {
  constexpr int border = 4;
  const std::unique_ptr<QRcode, decltype(&QRcode_free)> made(
      QRcode_encodeString8bit(text.c_str(), 0, QR_ECLEVEL_M), QRcode_free);
  if (!made) return {};
  const int side = made->width + 2 * border;
  QrCode code{side, std::vector<bool>(static_cast<std::size_t>(side) * static_cast<std::size_t>(side))};
  for (int y = 0; y < made->width; ++y)
    for (int x = 0; x < made->width; ++x)
      code.dark[code.indexOf(x + border, y + border)] = (made->data[y * made->width + x] & 1) != 0;
  return code;
}

}  // namespace fleetor
