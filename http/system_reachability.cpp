#include "http/system_reachability.h"

#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>

namespace fleetor {
namespace {

// Addresses that a machine assigns to itself when it gets none from the network.
bool isLinkLocal(const sockaddr& address) {
  if (address.sa_family == AF_INET6)
    return IN6_IS_ADDR_LINKLOCAL(&reinterpret_cast<const sockaddr_in6&>(address).sin6_addr);
  return ntohl(reinterpret_cast<const sockaddr_in&>(address).sin_addr.s_addr) >> 16 == 0xA9FE;
}

bool connects(const ifaddrs& interface) {
  constexpr unsigned up = IFF_UP | IFF_RUNNING;
  if ((interface.ifa_flags & (up | IFF_LOOPBACK)) != up || !interface.ifa_addr) return false;
  const int family = interface.ifa_addr->sa_family;
  return (family == AF_INET || family == AF_INET6) && !isLinkLocal(*interface.ifa_addr);
}

}  // namespace

bool hasNetworkInterface() {
  ifaddrs* all = nullptr;
  if (getifaddrs(&all) != 0) return false;
  bool found = false;
  for (const ifaddrs* each = all; each && !found; each = each->ifa_next)
    found = connects(*each);
  freeifaddrs(all);
  return found;
}

}  // namespace fleetor
