#pragma once

#include <memory>
#include <string>

#include "demo/service/service.h"

namespace fleetor::demo {

// The service on a TCP port of 127.0.0.1, a thread a connection, so that a request that is never answered
// holds up nobody. The service must outlive it.
class HttpServer {
 public:
  explicit HttpServer(Service& service);
  ~HttpServer();

  // 0 picks a free port. The port, or 0 when it cannot be had.
  int bind(int port);
  // Serves until stop(); blocks. Call after bind().
  void run();
  // From any thread, also before run(). Open connections are closed at once, also those that wait for an
  // answer.
  void stop();

 private:
  class Implementation;
  std::unique_ptr<Implementation> implementation_;
};

}  // namespace fleetor::demo
