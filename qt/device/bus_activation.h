#pragma once

#include <functional>
#include <memory>
#include <string>

namespace fleetor {

/// Lets the desktop start the client, and address the running one, over the session bus. Main thread only,
/// inside an application. Nothing here waits for an answer of the bus; without a bus nothing happens, and so
/// where another program has the client's name.
class BusActivation {
 public:
  struct Requests {
    std::function<void(const std::string& url)> open;    ///< with an empty URL: to come forward
    std::function<void(const std::string& name)> start;  ///< an action of the menu entry
  };

  /// The requests that wait already are handed over from the main loop.
  explicit BusActivation(Requests requests);
  ~BusActivation();

  BusActivation(const BusActivation&) = delete;
  BusActivation& operator=(const BusActivation&) = delete;

 private:
  class Wire;

  std::unique_ptr<Wire> wire_;
};

}  // namespace fleetor
