#pragma once

#include <gtest/gtest.h>
#include <httplib.h>

#include <string>
#include <thread>

#include "demo/service/http_server.h"

namespace fleetor::demo {

struct Answer {
  int status = 0;  // 0: no answer
  std::string body;
  httplib::Headers headers;
  Json json;  // discarded when the body is not valid JSON

  std::string header(const std::string& name) const {
    const auto found = headers.find(name);
    return found == headers.end() ? "" : found->second;
  }
};

// The real server on a free port, with a clock that stands still, and a client for it.
class RunningService {
 public:
  RunningService()
      : service_({7, 45, {}, [] { return *parseInstant("2026-03-11 14:25:37"); }}), server_(service_) {
    port = server_.bind(0);
    thread_ = std::thread([this] { server_.run(); });
  }
  ~RunningService() {
    server_.stop();
    thread_.join();
  }

  Answer get(const std::string& path, const httplib::Headers& headers) {
    return send([&](httplib::Client& client) { return client.Get(path, headers); });
  }
  Answer get(const std::string& path) { return get(path, bearer(token)); }
  Answer post(const std::string& path, const std::string& body, const std::string& withToken = {},
              const char* type = "application/x-www-form-urlencoded; charset=utf-8") {
    return send([&](httplib::Client& client) { return client.Post(path, bearer(withToken), body, type); });
  }
  Answer signInAnswer(const std::string& user, const std::string& password) {
    return post("/token?grant_type=password", "password=" + password + "&uid=A-1&username=" + user);
  }
  std::string signIn(const std::string& user = "demo") {
    const Answer answer = signInAnswer(user, user);
    EXPECT_EQ(answer.status, 200) << answer.body;
    return token = answer.json["token"]["access_token"].get<std::string>();
  }
  static httplib::Headers bearer(const std::string& text) {
    return text.empty() ? httplib::Headers{} : httplib::Headers{{"Authorization", "Bearer " + text}};
  }

  std::string token;
  int port = 0;

 private:
  template <class Send>
  Answer send(Send request) {
    httplib::Client client("127.0.0.1", port);
    // Long enough for the first tile under a sanitizer on a busy machine.
    client.set_read_timeout(std::chrono::minutes(5));
    const httplib::Result result = request(client);
    if (!result) return {};
    return {result->status, result->body, result->headers, Json::parse(result->body, nullptr, false)};
  }

  Service service_;
  HttpServer server_;
  std::thread thread_;
};

// Every failure has the status in its envelope too, and a description of the reason.
inline void expectFailure(const Answer& answer, int status, const std::string& mention) {
  EXPECT_EQ(answer.status, status) << answer.body;
  ASSERT_TRUE(answer.json.is_object()) << answer.body;
  EXPECT_EQ(answer.json["total"], 0);
  EXPECT_EQ(answer.json["error"]["code"], status);
  EXPECT_NE(answer.json["error"]["description"].get<std::string>().find(mention), std::string::npos)
      << answer.body;
}

}  // namespace fleetor::demo
