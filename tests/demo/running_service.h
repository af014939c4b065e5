#pragma once

#include <gtest/gtest.h>
#include <httplib.h>

#include <atomic>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>

#include "demo/service/http_server.h"
#include "demo/service/service.h"
#include "demo/town/civil_time.h"

namespace fleetor::demo {

using Json = nlohmann::json;

struct Answer {
  int status = 0;  // 0: no answer
  std::string contentType;
  std::string body;
  // Discarded when the body is no JSON.
  Json json;
};

// The real server on a free port with a clock that the test sets, and a client of its own beside it.
class RunningService {
 public:
  explicit RunningService(int vehicles = 45, std::string stateFile = {})
      : service_({7, vehicles, false, std::move(stateFile), [this] { return now.load(); }}),
        server_(service_) {
    port_ = server_.bind(0);
    thread_ = std::thread([this] { server_.run(); });
  }
  ~RunningService() {
    server_.stop();
    thread_.join();
  }

  Answer get(const std::string& path, const std::string& withToken) {
    return send([&](httplib::Client& client) { return client.Get(path, bearer(withToken)); });
  }
  Answer get(const std::string& path) { return get(path, token); }
  Answer post(const std::string& path, const std::string& body, const std::string& withToken = {},
              const char* type = "application/x-www-form-urlencoded; charset=utf-8") {
    return send([&](httplib::Client& client) { return client.Post(path, bearer(withToken), body, type); });
  }
  Answer remove(const std::string& path) {
    return send([&](httplib::Client& client) { return client.Delete(path); });
  }
  Answer signInAnswer(const std::string& user, const std::string& password) {
    return post("/token?grant_type=password", "password=" + password + "&uid=A-1&username=" + user);
  }
  std::string signIn(const std::string& user) {
    const Answer answer = signInAnswer(user, user);
    EXPECT_EQ(answer.status, 200) << answer.body;
    return token = answer.json["token"]["access_token"].get<std::string>();
  }
  Answer addFault(const std::string& fault) {
    return post("/control/faults", Json(fault).dump(), {}, "application/json");
  }

  std::atomic<Instant> now{*parseInstant("2026-03-11 14:25:37")};
  std::string token;

  // Its patience ends a hang: drawing the first tile under a sanitizer takes many seconds on a busy machine.
  httplib::Client client() const {
    httplib::Client client("127.0.0.1", port_);
    client.set_read_timeout(std::chrono::minutes(5));
    return client;
  }

  int port() const { return port_; }
  Service& service() { return service_; }
  HttpServer& server() { return server_; }

 private:
  static httplib::Headers bearer(const std::string& text) {
    return text.empty() ? httplib::Headers{} : httplib::Headers{{"Authorization", "Bearer " + text}};
  }

  template <class Send>
  Answer send(Send request) {
    httplib::Client sender = client();
    const httplib::Result result = request(sender);
    if (!result) return {};
    return {result->status, result->get_header_value("Content-Type"), result->body,
            Json::parse(result->body, nullptr, false)};
  }

  Service service_;
  HttpServer server_;
  int port_ = 0;
  std::thread thread_;
};

// Every answer that is not a success says so twice: in the status and in an envelope that says why.
inline void expectFailure(const Answer& answer, int status, const std::string& mention) {
  EXPECT_EQ(answer.status, status) << answer.body;
  ASSERT_TRUE(answer.json.is_object()) << answer.body;
  EXPECT_EQ(answer.json["total"], 0);
  EXPECT_EQ(answer.json["error"]["code"], status);
  EXPECT_NE(answer.json["error"]["description"].get<std::string>().find(mention), std::string::npos)
      << answer.body;
}

}  // namespace fleetor::demo
