#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "demo/service/messages.h"

namespace fleetor::demo {

// The nine endpoints' names: "token", "logout", "vehicles", "live", "map", "route", "info", "user", and
// "tiles" for everything below it.
bool isEndpoint(std::string_view name);

// Something that goes wrong on purpose.
struct Fault {
  std::string endpoint;  // or "all"
  std::string kind;
  std::string argument;
  std::int64_t remaining = -1;  // requests that it still strikes; negative: no end
  std::int64_t id = 0;
};

// One line a kind, for --help.
std::string_view faultKindsHelp();

// "ENDPOINT=KIND[:ARG][*COUNT]", for instance "live=delay:500*3". Gives the fault, or says in `problem` what
// is wrong.
std::optional<Fault> parseFault(std::string_view text, std::string& problem);

// Does the fault to a reply. No reply and no argument makes it throw.
void applyFault(const Fault& fault, ServiceReply& reply);

// The faults in force. Safe from any thread.
class FaultBox {
 public:
  std::int64_t add(Fault fault);
  // True when there was such a fault.
  bool remove(std::int64_t id);
  void clear();
  // Counts one request of the endpoint and gives the faults that strike it, oldest first.
  std::vector<Fault> strike(std::string_view endpoint);
  // {"faults": [{id, endpoint, kind, argument, remaining}]}
  std::string text() const;

 private:
  mutable std::mutex mutex_;
  std::vector<Fault> faults_;
  std::int64_t lastId_ = 0;
};

}  // namespace fleetor::demo
