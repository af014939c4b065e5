#pragma once

#include <future>

#include "http/http_transport.h"
#include "support/raw_server.h"
#include "support/testing.h"

namespace fleetor {

inline HttpRequest requestOf(const char* method, std::string url, std::optional<std::string> body = {}) {
  return {std::move(url), method, {}, std::move(body)};
}

inline HttpRequest get(std::string url) {
  return requestOf("GET", std::move(url));
}

inline std::future<HttpReply> start(HttpTransport& transport, HttpRequest request) {
  auto promise = std::make_shared<std::promise<HttpReply>>();
  auto future = promise->get_future();
  transport.send(std::move(request), [promise](HttpReply reply) { promise->set_value(std::move(reply)); });
  return future;
}

inline std::vector<std::future<HttpReply>> startMany(HttpTransport& transport, int count,
                                                     const std::string& url) {
  std::vector<std::future<HttpReply>> replies;
  replies.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i)
    replies.push_back(start(transport, get(url)));
  return replies;
}

inline HttpReply finish(std::future<HttpReply> future) {
  if (future.wait_for(std::chrono::seconds(20)) == std::future_status::ready) return future.get();
  ADD_FAILURE() << "no answer";
  return {};
}

inline HttpReply fetch(HttpTransport& transport, HttpRequest request) {
  return finish(start(transport, std::move(request)));
}

inline HttpRequest post(std::string url, std::string body) {
  HttpRequest request = requestOf("POST", std::move(url), body);
  request.headers = {{"Content-type", "application/x-www-form-urlencoded; charset=utf-8"},
                     {"Authorization", "Bearer secret"},
                     {"Content-Length", std::to_string(body.size())}};
  return request;
}

inline std::string answer(const std::string& body, const std::string& status = "200 OK",
                          const std::string& more = "") {
  return "HTTP/1.1 " + status + "\r\nContent-Type: text/json; charset=utf-8\r\n" + more +
         "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

inline const std::string chunked = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";

/// A service that answers in an odd way, and what the transport makes of its answer.
struct OddAnswer {
  const char* name;
  std::function<void(RawServer::Peer&)> serve;
  int status;
  long error;
};

inline void expectReply(HttpTransport& transport, const OddAnswer& odd, std::size_t requests = 1,
                        double timeoutSeconds = 30) {
  RawServer server(odd.serve);
  HttpRequest request = get(server.url("/x"));
  request.timeoutSeconds = timeoutSeconds;
  const HttpReply reply = fetch(transport, request);
  EXPECT_EQ(reply.status, odd.status) << odd.name;
  EXPECT_EQ(reply.error, odd.error) << odd.name << ": " << reply.errorDescription;
  EXPECT_EQ(reply.errorDescription.empty(), odd.error == 0) << odd.name;
  EXPECT_TRUE(odd.error == 0 || reply.body.empty()) << odd.name;
  EXPECT_EQ(server.requests().size(), requests) << odd.name;
}

}  // namespace fleetor
