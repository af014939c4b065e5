#pragma once

#include <string>

#include "platform/device.h"

namespace fleetor {

/// The "file:" URL of a resource of the program, with the path as it is, not escaped; empty without such a
/// resource.
inline std::string fileURLForResource(const Device& device, const std::string& name,
                                      const std::string& type) {
  const std::string path = device.pathForResource(name, type);
  return path.empty() ? path : "file://" + path;
}

}  // namespace fleetor
