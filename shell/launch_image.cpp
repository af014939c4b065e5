#include "shell/launch_image.h"

#include <algorithm>

namespace fleetor {

std::string launchImageName(const Device& device) {
  if (device.isPad()) return device.screenScale() >= 2.0 ? "2048x1536.png" : "1024x768.png";
  const double longSide = std::max(device.screenWidth(), device.screenHeight());
  if (longSide < 568) return "640x960.png";
  if (longSide == 568) return "640x1136.png";
  if (longSide == 667) return "750x1334.png";
  return "1242x2208.png";
}

}  // namespace fleetor
