#pragma once

#include <net/if.h>

#include <string>
#include <vector>

namespace fleetor {

struct Interface {
  std::string address;  ///< empty: it has none
  unsigned flags = IFF_UP | IFF_RUNNING;
};

/// The interfaces of the machine, as the tests of this program set them.
inline std::vector<Interface> interfaces;

/// Whether it has a default route, for each version of the protocol.
inline bool hasFourthRoute = true;
inline bool hasSixthRoute = false;

}  // namespace fleetor
