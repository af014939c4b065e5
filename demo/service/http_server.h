#pragma once

#include <httplib.h>

#include <condition_variable>
#include <mutex>

#include "demo/service/service.h"

namespace fleetor::demo {

// The service on a TCP port of 127.0.0.1, with a thread for each connection, so that a request that is never
// answered delays no other. The service must outlive it.
class HttpServer {
 public:
  explicit HttpServer(Service& service);

  // 0 picks a free port. The port, or 0 when it is not available.
  int bind(int port);
  // Serves until stop(); blocks. Call after bind().
  void run();
  // From any thread while run() is in progress or about to begin. Requests that wait for their answer get
  // none.
  void stop();

 private:
  void serve(const httplib::Request& request, httplib::Response& response);
  void wait(std::chrono::milliseconds time);

  Service& service_;
  httplib::Server server_;
  std::mutex mutex_;
  std::condition_variable stopped_;
  bool stopping_ = false;
};

}  // namespace fleetor::demo
