#pragma once

#include <httplib.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "demo/map/tiles.h"
#include "demo/service/faults.h"
#include "demo/service/messages.h"
#include "demo/service/tokens.h"
#include "demo/town/movements.h"

namespace fleetor::demo {

struct ServiceOptions {
  std::uint64_t seed = 1;
  int vehicles = 45;
  std::string stateFile;
  std::function<Instant()> now;
  std::string version = {};
};

// The tracking service: what it answers to each request. Safe from any thread; no request makes it throw.
class Service {
 public:
  explicit Service(ServiceOptions options);

  ServiceReply answer(const httplib::Request& request);
  FaultList& faults() { return faults_; }

 private:
  struct Caller {
    const Account* account = nullptr;
    std::string token;
  };

  ServiceReply answerEndpoint(const std::string& endpoint, const httplib::Request& request);
  ServiceReply answerControl(const httplib::Request& request);
  ServiceReply signIn(const httplib::Request& request);
  ServiceReply listVehicles(const httplib::Request& request, const Caller& caller) const;
  ServiceReply vehicleAnswer(const std::string& endpoint, const httplib::Request& request,
                             const Caller& caller) const;
  std::optional<Caller> callerOf(const httplib::Request& request) const;
  void log(const httplib::Request& request, int status);

  ServiceOptions options_;
  Town town_;
  Movements movements_{town_};
  Tiles tiles_{town_, options_.seed};
  std::vector<Account> accounts_;
  Tokens tokens_;
  FaultList faults_;
  std::mutex logMutex_;
  std::deque<Json> requests_;  // the latest
  std::int64_t requestCount_ = 0;
};

}  // namespace fleetor::demo
