#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "demo/map/tiles.h"
#include "demo/service/faults.h"
#include "demo/service/messages.h"
#include "demo/service/request_log.h"
#include "demo/service/tokens.h"
#include "demo/town/movements.h"

namespace fleetor::demo {

struct ServiceOptions {
  std::uint64_t seed = 1;
  int vehicles = 45;
  bool dense = false;
  std::string stateFile;
  std::function<Instant()> now;
  std::string version = {};
};

// The tracking service: what it answers to each request. Safe from any thread; no request makes it throw.
class Service {
 public:
  explicit Service(ServiceOptions options);

  ServiceReply answer(const ServiceRequest& request);
  FaultBox& faults() { return faults_; }
  const Movements& movements() const { return movements_; }
  const std::vector<Account>& accounts() const { return accounts_; }

 private:
  struct Caller {
    const Account* account = nullptr;
    std::string_view token;
  };

  ServiceReply answerEndpoint(std::string_view endpoint, const ServiceRequest& request);
  ServiceReply answerControl(const ServiceRequest& request);
  ServiceReply signIn(const ServiceRequest& request);
  ServiceReply signOut(const ServiceRequest& request, const Caller& caller);
  ServiceReply listVehicles(const ServiceRequest& request, const Caller& caller);
  ServiceReply vehicleAnswer(std::string_view endpoint, const ServiceRequest& request, const Caller& caller);
  std::optional<Caller> callerOf(const ServiceRequest& request) const;

  ServiceOptions options_;
  Town town_;
  Movements movements_{town_};
  Tiles tiles_{town_, options_.seed};
  std::vector<Account> accounts_;
  Tokens tokens_;
  FaultBox faults_;
  RequestLog log_;
  std::atomic<bool> dense_;
};

}  // namespace fleetor::demo
