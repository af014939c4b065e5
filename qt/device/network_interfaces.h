#pragma once

namespace fleetor {

/// Whether this machine is connected to anything but itself. Any thread; takes a fraction of a millisecond.
bool hasNetworkInterface();

}  // namespace fleetor
