#include "vehicle/detail_page_view_controller.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <string>

namespace fleetor {

void DetailPageViewController::viewDidLoad() {
  BaseViewController::viewDidLoad();
  wasSelected_ = false;
}

void DetailPageViewController::tabSelected() {
  if (!wasSelected_) firstSelected();
  wasSelected_ = true;
}

Color DetailPageViewController::colorFromHexString(std::string_view text) {
  // Lengths are in UTF-16 units. Anything beyond ASCII is not a digit.
  std::string digits;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80 && c != '#') digits += c;
    if (byte >= 0xC0) digits.append(byte >= 0xF0 ? 2 : 1, '?');
  }
  if (digits.size() == 3) digits = {digits[0], digits[0], digits[1], digits[1], digits[2], digits[2]};
  if (digits.size() == 6) digits += "ff";

  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  if (error == std::errc::result_out_of_range) value = std::numeric_limits<std::uint32_t>::max();
  const auto component = [value](unsigned shift) {
    return static_cast<float>(value >> shift & 0xffu) / 255.0f;
  };
  return {component(24), component(16), component(8), component(0)};
}

}  // namespace fleetor
