#include "shell/resource_url.h"

#include <string_view>

namespace fleetor {

std::string fileURLForResource(const Device& device, const std::string& name, const std::string& type) {
  const std::string path = device.pathForResource(name, type);
  if (path.empty()) return {};
  constexpr std::string_view unescaped = "/-._~:";
  std::string url = "file://";
  for (const char c : path) {
    const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                       unescaped.find(c) != std::string_view::npos;
    if (plain) {
      url += c;
      continue;
    }
    constexpr char digits[] = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    url += {'%', digits[byte >> 4], digits[byte & 15]};
  }
  return url;
}

}  // namespace fleetor
