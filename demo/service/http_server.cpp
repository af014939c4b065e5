#include "demo/service/http_server.h"

#include <sys/socket.h>
#include <zlib.h>

#include <optional>
#include <string>
#include <thread>

#include "demo/service/answers.h"

namespace fleetor::demo {
namespace {

constexpr std::size_t mostConnections = 512;
constexpr std::size_t longestBody = 1 << 20;
constexpr std::chrono::minutes longestHang{10};

class ThreadPerConnection : public httplib::TaskQueue {
 public:
  void enqueue(std::function<void()> task) override {
    std::unique_lock lock(mutex_);
    free_.wait(lock, [this] { return running_ < mostConnections; });
    ++running_;
    std::thread([this, task = std::move(task)] {
      task();
      const std::lock_guard ending(mutex_);
      --running_;
      free_.notify_all();
    }).detach();
  }

  // Returns when the last thread no longer uses this queue.
  void shutdown() override {
    std::unique_lock lock(mutex_);
    free_.wait(lock, [this] { return running_ == 0; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable free_;
  std::size_t running_ = 0;
};

constexpr std::size_t worthPacking = 1024;  // bytes

bool canBePacked(const httplib::Request& request, const ServiceReply& reply) {
  return reply.body.size() >= worthPacking && reply.contentType.starts_with("application/json") &&
         request.get_header_value("Accept-Encoding").find("gzip") != std::string::npos;
}

// Nothing when there is no memory for it.
std::optional<std::string> gzip(std::string& bytes) {
  constexpr int gzipFormat = 16;
  z_stream stream{};
  if (deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, MAX_WBITS + gzipFormat, MAX_MEM_LEVEL,
                   Z_DEFAULT_STRATEGY) != Z_OK)
    return {};
  std::string packed(deflateBound(&stream, bytes.size()), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(bytes.data());
  stream.avail_in = static_cast<uInt>(bytes.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  deflate(&stream, Z_FINISH);
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  return packed;
}

}  // namespace

HttpServer::HttpServer(Service& service) : service_(service) {
  server_.new_task_queue = [] { return new ThreadPerConnection; };
  server_.set_tcp_nodelay(true);
  server_.set_payload_max_length(longestBody);
  server_.set_keep_alive_max_count(1000000);
  // No path is registered, so that every request that can be parsed comes here with status 404.
  server_.set_error_handler(
      httplib::Server::Handler([this](const httplib::Request& request, httplib::Response& response) {
        if (response.status == 404)
          serve(request, response);
        else
          response.set_content(errorAnswer(response.status, "The request cannot be understood"),
                               "application/json");
      }));
  // Not shared: a port in use is reported.
  server_.set_socket_options([](socket_t socket) {
    const int yes = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  });
}

int HttpServer::bind(int port) {
  if (port == 0) return std::max(0, server_.bind_to_any_port("127.0.0.1"));
  return server_.bind_to_port("127.0.0.1", port) ? port : 0;
}

void HttpServer::run() {
  server_.listen_after_bind();
}

void HttpServer::stop() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  stopped_.notify_all();
  while (!server_.is_running())
    std::this_thread::yield();
  server_.stop();
}

void HttpServer::serve(const httplib::Request& request, httplib::Response& response) {
  ServiceReply reply = service_.answer(request);
  wait(reply.hangs ? longestHang : reply.delay);
  response.status = reply.status;
  for (const auto& [name, value] : reply.headers)
    response.set_header(name, value);
  if (reply.hangs || reply.cutShort) {
    const std::string part = reply.hangs ? "" : reply.body.substr(0, reply.body.size() / 2);
    response.set_content_provider(reply.body.size() + 1, reply.contentType,
                                  [part](std::size_t, std::size_t, httplib::DataSink& sink) {
                                    if (!part.empty()) sink.write(part.data(), part.size());
                                    return false;
                                  });
    return;
  }
  if (canBePacked(request, reply))
    if (auto packed = gzip(reply.body)) {
      reply.body = std::move(*packed);
      response.set_header("Content-Encoding", "gzip");
    }
  response.body = std::move(reply.body);
  response.set_header("Content-Type", reply.contentType);
}

void HttpServer::wait(std::chrono::milliseconds time) {
  std::unique_lock lock(mutex_);
  stopped_.wait_for(lock, time, [this] { return stopping_; });
}

}  // namespace fleetor::demo
