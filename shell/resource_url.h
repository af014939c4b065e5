#pragma once

#include <string>

#include "platform/device.h"

namespace fleetor {

/// The "file:" URL of a resource of the program; empty when there is none of that name.
std::string fileURLForResource(const Device& device, const std::string& name, const std::string& type);

}  // namespace fleetor
