#include "http/system_reachability.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

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

bool hasInterface() {
  ifaddrs* all = nullptr;
  if (getifaddrs(&all) != 0) return false;
  bool found = false;
  for (const ifaddrs* each = all; each && !found; each = each->ifa_next)
    found = connects(*each);
  freeifaddrs(all);
  return found;
}

// Connecting a datagram socket sends nothing: it only looks for the route.
template <class Address>
bool hasRoute(const Address& address) {
  const auto& to = reinterpret_cast<const sockaddr&>(address);
  const int datagrams = ::socket(to.sa_family, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (datagrams < 0) return false;
  const bool found = ::connect(datagrams, &to, sizeof address) == 0;
  ::close(datagrams);
  return found;
}

// To addresses that are reserved for documentation: only a default route leads there.
bool hasDefaultRoute() {
  sockaddr_in four{};
  four.sin_family = AF_INET;
  four.sin_port = htons(9);
  four.sin_addr.s_addr = htonl(0xC0000201);  // 192.0.2.1
  sockaddr_in6 six{};
  six.sin6_family = AF_INET6;
  six.sin6_port = htons(9);
  ::inet_pton(AF_INET6, "2001:db8::1", &six.sin6_addr);
  return hasRoute(four) || hasRoute(six);
}

}  // namespace

bool hasInternetRoute() {
  return hasInterface() && hasDefaultRoute();
}

}  // namespace fleetor
