#pragma once

#include <string>

#include "platform/device.h"

namespace fleetor {

/// Name of the launch image that fits the device's screen.
std::string launchImageName(const Device& device);

}  // namespace fleetor
