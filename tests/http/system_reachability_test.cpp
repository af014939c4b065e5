#include "http/system_reachability.h"

#include <arpa/inet.h>
#include <dlfcn.h>
#include <ifaddrs.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>

#include "interfaces.h"
#include "support/testing.h"

namespace {

struct Entry {
  ifaddrs entry{};
  sockaddr_storage address{};
};
std::vector<Entry> entries;

}  // namespace

// In place of the C library's.
extern "C" int getifaddrs(ifaddrs** all) {
  using fleetor::interfaces;
  entries.assign(interfaces.size(), {});
  for (std::size_t i = 0; i < entries.size(); i++) {
    auto& [entry, address] = entries[i];
    const std::string& text = interfaces[i].address;
    entry.ifa_flags = interfaces[i].flags;
    if (i + 1 < entries.size()) entry.ifa_next = &entries[i + 1].entry;
    if (text.empty()) continue;
    entry.ifa_addr = reinterpret_cast<sockaddr*>(&address);
    address.ss_family = text.find(':') == std::string::npos ? AF_INET : AF_INET6;
    if (address.ss_family == AF_INET)
      ::inet_pton(AF_INET, text.c_str(), &reinterpret_cast<sockaddr_in&>(address).sin_addr);
    else
      ::inet_pton(AF_INET6, text.c_str(), &reinterpret_cast<sockaddr_in6&>(address).sin6_addr);
  }
  *all = entries.empty() ? nullptr : &entries[0].entry;
  return 0;
}
extern "C" void freeifaddrs(ifaddrs*) {}

// In front of the C library's: datagrams go where the test says, the rest as ever.
extern "C" __attribute__((visibility("default"))) int connect(int socket, const sockaddr* to,
                                                              socklen_t size) {
  int type = 0;
  socklen_t length = sizeof type;
  if (::getsockopt(socket, SOL_SOCKET, SO_TYPE, &type, &length) == 0 && type == SOCK_DGRAM) {
    const bool found = to->sa_family == AF_INET ? fleetor::hasFourthRoute
                                                : to->sa_family == AF_INET6 && fleetor::hasSixthRoute;
    errno = ENETUNREACH;
    return found ? 0 : -1;
  }
  static const auto real = reinterpret_cast<decltype(&::connect)>(dlsym(RTLD_NEXT, "connect"));
  return real(socket, to, size);
}

namespace fleetor {
namespace {

TEST(SystemReachability, IsWhatInterfacesAndRoutesAreAtTheMomentOfTheQuestion) {
  const Interface loopback{"127.0.0.1", IFF_UP | IFF_RUNNING | IFF_LOOPBACK};
  interfaces = {loopback, {"10.0.0.7"}};
  SystemReachability reachability;
  EXPECT_FALSE(reachability.isReachable()) << "not started";
  reachability.startMonitoring();
  const std::pair<std::vector<Interface>, bool> cases[] = {
      {{loopback, {"10.0.0.7"}}, true},
      {{loopback}, false},
      {{}, false},
      {{loopback, {"2001:db8::7"}}, true},
      {{{"fe80::1"}, {"169.254.3.4"}, {""}}, false},
      {{{"10.0.0.7", IFF_UP}}, false},
      {{{"10.0.0.7", IFF_RUNNING}}, false},
      {{{"fe80::1"}, {"10.0.0.7"}}, true},
  };
  for (const auto& [state, isReachable] : cases) {
    interfaces = state;
    EXPECT_EQ(reachability.isReachable(), isReachable) << (state.empty() ? "none" : state.back().address);
  }
  hasFourthRoute = false;
  EXPECT_FALSE(reachability.isReachable()) << "an interface that leads nowhere, as a bridge of containers";
  hasSixthRoute = true;
  EXPECT_TRUE(reachability.isReachable());
  hasSixthRoute = false;
  hasFourthRoute = true;
}

}  // namespace
}  // namespace fleetor
