#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "demo/service/messages.h"

namespace fleetor::demo {

// The endpoints' names, separated by commas: "tiles" for everything below /tiles/.
std::string endpointNames();
bool isEndpoint(std::string_view name);

// Something that goes wrong on purpose.
struct Fault {
  std::string endpoint;  // or "all"
  std::string kind;
  std::string argument;
  std::int64_t remaining = -1;  // how many more requests it affects; negative: all
};

// One line for each kind, for --help.
std::string faultKindsHelp();

// "ENDPOINT=KIND[:ARG][*COUNT]", for instance "live=delay:500*3". Nothing when it is not valid; `problem`
// then gives the reason.
std::optional<Fault> parseFault(std::string_view text, std::string& problem);

void applyFault(const Fault& fault, ServiceReply& reply);

// The faults in force. Safe from any thread.
class FaultList {
 public:
  void add(Fault fault);
  void clear();
  // Counts one request of the endpoint and gives the faults that affect it, oldest first.
  std::vector<Fault> take(std::string_view endpoint);
  // [{endpoint, kind, argument, remaining}]
  Json list() const;

 private:
  mutable std::mutex mutex_;
  std::vector<Fault> faults_;
};

}  // namespace fleetor::demo
