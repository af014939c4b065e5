#include "demo/service/http_server.h"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>
#include <thread>

#include "demo/service/answers.h"
#include "demo/service/connection.h"

namespace fleetor::demo {
namespace {

constexpr std::size_t kMostConnections = 512;
constexpr std::size_t kLongestBody = 1 << 20;
constexpr int kKeepAliveSeconds = 30;

// The connection that this thread serves.
thread_local Connection* servedConnection = nullptr;
// Whether the service has seen this thread's present request.
thread_local bool alreadyServed = false;

class ThreadPerConnection : public httplib::TaskQueue {
 public:
  void enqueue(std::function<void()> task) override {
    std::unique_lock lock(mutex_);
    free_.wait(lock, [this] { return running_ < kMostConnections; });
    ++running_;
    std::thread([this, task = std::move(task)] {
      task();
      const std::lock_guard ending(mutex_);
      --running_;
      free_.notify_all();
    }).detach();
  }

  // Returns when the last thread has let go of this queue.
  void shutdown() override {
    std::unique_lock lock(mutex_);
    free_.wait(lock, [this] { return running_ == 0; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable free_;
  std::size_t running_ = 0;
};

}  // namespace

class HttpServer::Implementation : public httplib::Server {
 public:
  explicit Implementation(Service& service) : service_(service) {
    new_task_queue = [] { return new ThreadPerConnection; };
    set_tcp_nodelay(true);
    set_payload_max_length(kLongestBody);
    // What the library tells its clients; the loop below keeps to it.
    set_keep_alive_timeout(kKeepAliveSeconds);
    set_keep_alive_max_count(1000000);
    const auto handler = [this](const httplib::Request& request, httplib::Response& response) {
      serve(request, response);
    };
    for (const char* path :
         {"/token", "/logout", "/vehicles", "/live", "/map", "/route", "/info", "/user", "/tiles/.*",
          "/control/faults", "/control/requests", "/control/dense", "/control/service"})
      Get(path, handler).Post(path, handler).Put(path, handler).Patch(path, handler).Delete(path, handler);
    // Everything else, and what the library itself refuses, gets an envelope too.
    set_error_handler(
        httplib::Server::Handler([this](const httplib::Request& request, httplib::Response& response) {
          if (alreadyServed) return;
          if (response.status == 404)
            serve(request, response);
          else
            response.set_content(errorAnswer(response.status, "The request cannot be understood"),
                                 "application/json");
        }));
    // Only the address: a port that is shared would hide that another service has it.
    set_socket_options([](socket_t socket) {
      const int yes = 1;
      ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });
  }

  void run() { listen_after_bind(); }

  void stopAll() {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
    for (const int socket : sockets_)
      ::shutdown(socket, SHUT_RDWR);
    stopped_.notify_all();
    // Ends the accepting loop, be it in progress or yet to begin.
    if (const socket_t listener = svr_sock_; listener != INVALID_SOCKET) ::shutdown(listener, SHUT_RDWR);
  }

 private:
  bool process_and_close_socket(socket_t socket) override {
    if (admit(socket)) {
      Connection connection(socket);
      servedConnection = &connection;
      bool open = true;
      while (open && connection.waitForRequest(kKeepAliveSeconds * 1000)) {
        alreadyServed = false;
        bool closed = false;
        open = process_request(connection, false, closed, nullptr) && !closed;
      }
      servedConnection = nullptr;
      const std::lock_guard lock(mutex_);
      sockets_.erase(socket);
    }
    ::shutdown(socket, SHUT_RDWR);
    ::close(socket);
    return true;
  }

  bool admit(socket_t socket) {
    const std::lock_guard lock(mutex_);
    if (!stopping_) sockets_.insert(socket);
    return !stopping_;
  }

  void serve(const httplib::Request& request, httplib::Response& response) {
    alreadyServed = true;
    const std::size_t mark = request.target.find('?');
    ServiceRequest asked{request.method,
                         request.path,
                         mark == std::string::npos ? std::string() : request.target.substr(mark + 1),
                         {},
                         request.body};
    // The library adds what it knows of the peer to the headers that were sent.
    for (const auto& [name, value] : request.headers)
      if (name != "REMOTE_ADDR" && name != "REMOTE_PORT" && name != "LOCAL_ADDR" && name != "LOCAL_PORT")
        asked.headers.emplace_back(name, value);

    ServiceReply reply = service_.answer(asked);
    const auto delay = std::chrono::milliseconds(reply.delayMilliseconds);
    if (reply.delayMilliseconds > 0) waitInterruptibly(std::chrono::steady_clock::now() + delay);
    if (reply.delivery == Delivery::never) {
      waitInterruptibly(std::chrono::steady_clock::time_point::max());
      ::shutdown(servedConnection->socket(), SHUT_RDWR);
    }
    response.status = reply.status;
    for (const auto& [name, value] : reply.headers)
      response.set_header(name, value);
    if (reply.delivery == Delivery::cutShort) {
      const std::size_t length = std::max<std::size_t>(1, reply.body.size());
      const std::string part = reply.body.substr(0, reply.deliverBytes);
      response.set_content_provider(length, reply.contentType,
                                    [part](std::size_t, std::size_t, httplib::DataSink& sink) {
                                      if (!part.empty()) sink.write(part.data(), part.size());
                                      return false;
                                    });
      return;
    }
    response.body = std::move(reply.body);
    response.set_header("Content-Type", reply.contentType);
  }

  // Until the deadline, the end of the server, or until nobody waits for the answer any more.
  void waitInterruptibly(std::chrono::steady_clock::time_point deadline) {
    constexpr auto kLook = std::chrono::milliseconds(100);
    std::unique_lock lock(mutex_);
    for (auto now = std::chrono::steady_clock::now(); now < deadline;
         now = std::chrono::steady_clock::now()) {
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - now);
      if (stopped_.wait_for(lock, std::min<std::chrono::milliseconds>(kLook, left),
                            [this] { return stopping_; }))
        return;
      if (servedConnection->peerGone()) return;
    }
  }

  Service& service_;
  std::mutex mutex_;
  std::condition_variable stopped_;
  bool stopping_ = false;
  std::set<int> sockets_;
};

HttpServer::HttpServer(Service& service) : implementation_(std::make_unique<Implementation>(service)) {}

HttpServer::~HttpServer() = default;

int HttpServer::bind(int port) {
  if (port == 0) return std::max(0, implementation_->bind_to_any_port("127.0.0.1"));
  return implementation_->bind_to_port("127.0.0.1", port) ? port : 0;
}

void HttpServer::run() {
  implementation_->run();
}

void HttpServer::stop() {
  implementation_->stopAll();
}

}  // namespace fleetor::demo
