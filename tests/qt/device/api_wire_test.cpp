#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "qt/device/http_transport.h"
#include "qt/device/queues.h"
#include "qt/device/transient_key_store.h"
#include "raw_server.h"
#include "run_until.h"
#include "service/api.h"
#include "service/envelopes.h"
#include "support/fake_device.h"
#include "support/memory_stores.h"

namespace fleetor {
namespace {

// The request layer on the real queues and the real transport, against a socket that shows every byte.
class ApiWire : public testing::Test {
 protected:
  ApiWire() {
    API::install({queues, *transport, keyStore, settings, reachability, indicator, log, device,
                  [this](const std::string& text, double, bool) { toasts.push_back(text); }, [] {}});
    API::setAPIBaseURLWithString(server.url(""));
    reachability.reachable = true;
    device.identifier = "0A1B2C3D-0000-4000-8000-00000000000F";
  }
  void TearDown() override {
    API::shutDown();
    transport.reset();
  }

  auto ended() {
    return [this](auto response, ResponseKind kind, long status, const auto&) {
      outcomes.push_back("kind " + std::to_string(static_cast<int>(kind)) + ", " + std::to_string(status) +
                         (response ? ", a record" : ""));
    };
  }

  std::string outcomeOf(const std::function<void()>& call) {
    outcomes.clear();
    call();
    runUntil([this] { return !outcomes.empty(); });
    return outcomes.at(0);
  }

  // The last request without the lines that belong to the transport.
  std::string wire() {
    std::string bytes = server.requests().back();
    for (const char* own : {"\r\nHost: ", "\r\nConnection: ", "\r\nUser-Agent: ", "\r\nAccept-Encoding: ",
                            "\r\nAccept-Language: "}) {
      const auto from = bytes.find(own);
      if (from == std::string::npos) return std::string("without ") + own;
      bytes.erase(from, bytes.find("\r\n", from + 2) - from);
    }
    return bytes;
  }

  std::string answer = "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: 2\r\n\r\n{}";
  RawServer server{[this](RawServer::Peer& peer) {
    while (!peer.read().empty())
      peer.write(answer);
  }};
  QtQueues queues;
  std::optional<HttpTransport> transport{std::in_place};
  TransientKeyStore keyStore;
  test::MemorySettings settings;
  test::FakeReachability reachability;
  test::FakeIndicator indicator;
  test::RecordingLog log;
  test::FakeDevice device;
  std::vector<std::string> toasts;
  std::vector<std::string> outcomes;
};

TEST_F(ApiWire, CarriesEveryEndpointToTheLetter) {
  const std::string form = "\r\nContent-type: application/x-www-form-urlencoded; charset=utf-8";
  const std::string bearer = "\r\nAuthorization: Bearer to.ken";
  const std::string uid = "uid=0A1B2C3D-0000-4000-8000-00000000000F";
  const std::string login = "password=p%26%3D%2F%20%C3%A9%2B%22&" + uid + "&username=anna";
  struct Case {
    std::function<void()> call;
    std::string line;
    std::string headers;
    std::string body;
  };
  const Params uidOnly = {{"uid", device.identifier}};
  std::vector<Case> cases = {
      {[&] {
         API::postWithPath(
             "/token?grant_type=password",
             Params{{"username", "anna"}, {"password", "p&=/ \xC3\xA9+\""}, {"uid", device.identifier}},
             modelClass<TokenResponse>, {400}, ended());
       },
       "POST /token?grant_type=password", form + "\r\nContent-Length: " + std::to_string(login.size()),
       login},
      {[&] { API::postWithPath("/logout", uidOnly, noModelClass, {400}, ended()); }, "POST /logout",
       form + "\r\nContent-Length: " + std::to_string(uid.size()), uid},
      {[&] {
         API::getWithPath("/vehicles", {{"offset", 0}, {"limit", 20}}, modelClass<VehiclesResponse>, {},
                          ended());
       },
       "GET /vehicles?limit=20&offset=0", "", ""},
      {[&] {
         API::getWithPath("/live", {{"vehid", "7/8 x"}}, modelClass<LiveResponse>, {}, ended());
       },
       "GET /live?vehid=7%2F8%20x", "", ""},
      {[&] {
         API::getWithPath("/map", {{"vehid", "7"}, {"date", "2024-02-29"}}, modelClass<MapResponse>, {},
                          ended());
       },
       "GET /map?date=2024-02-29&vehid=7", "", ""},
      {[&] {
         API::getWithPath("/route", {{"vehid", "~*'!()"}, {"date", "[]"}}, modelClass<RouteResponse>, {},
                          ended());
       },
       "GET /route?date=%5B%5D&vehid=~%2A%27%21%28%29", "", ""},
      {[&] {
         API::getWithPath("/info", {{"vehid", "7"}}, modelClass<InfoResponse>, {}, ended());
       },
       "GET /info?vehid=7", "", ""},
      {[&] { API::getWithPath("/user", Params{}, modelClass<UserResponse>, {}, ended()); }, "GET /user?", "",
       ""},
      {[&] {
         API::getWithPath("/a", 5, {{"x", "y"}}, modelClass<UserResponse>, {}, ended());
       },
       "GET /a/5", "", ""},
      {[&] { API::deleteWithPath("/a", -5, noModelClass, {}, ended()); }, "DELETE /a/-5", "", ""},
      {[&] { API::postWithPath("/empty", Params{}, noModelClass, {}, ended()); }, "POST /empty",
       "*\r\nContent-Length: 0", ""},
  };
  {
    Token token;
    token.access_token = Text("a\"b");
    token.token_type = Text("t");
    const std::string json = JSONModel::toJSONString(token);
    cases.push_back({[this, token] { API::putWithPath("/a", "b", token, noModelClass, {}, ended()); },
                     "PUT /a/b",
                     "\r\nContent-type: application/json; charset=utf-8\r\nContent-Length: " +
                         std::to_string(json.size()),
                     json});
  }

  for (const bool isSignedIn : {false, true}) {
    if (isSignedIn) API::requestAuthForToken("to.ken");
    for (const Case& c : cases) {
      outcomeOf(c.call);
      const std::string got = wire();
      const auto head = got.find("\r\n\r\n");
      EXPECT_EQ(got.substr(0, got.find("\r\n")), c.line + " HTTP/1.1");
      EXPECT_EQ(got.substr(head + 4), c.body) << c.line;

      // Header lines in any order, but exactly these.
      const auto linesOf = [](const std::string& text) {
        std::vector<std::string> lines;
        for (std::size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at + 2))
          lines.push_back(text.substr(at + 2, text.find("\r\n", at + 2) - at - 2));
        std::sort(lines.begin(), lines.end());
        return lines;
      };
      std::string headers = c.headers;
      std::vector<std::string> is = linesOf(got.substr(0, head));
      if (headers.starts_with(
              '*')) {  // the type of an empty form is the automatic marker, whatever it is called
        const auto type = std::find_if(is.begin(), is.end(), [](auto& line) {
          return line.starts_with("Content-type: ") && line.ends_with("; charset=utf-8");
        });
        ASSERT_NE(type, is.end()) << c.line;
        is.erase(type);
        headers.erase(0, 1);
      }
      EXPECT_EQ(is, linesOf((isSignedIn ? bearer : "") + headers)) << c.line;
    }
  }
}

TEST_F(ApiWire, JudgesWhatReallyComesBack) {
  const auto live = [this] {
    API::getWithPath("/live", {{"vehid", "1"}}, modelClass<LiveResponse>, {}, ended());
  };
  const auto respond = [](const std::string& status, const std::string& type, const std::string& body) {
    return "HTTP/1.1 " + status + "\r\nContent-Type: " + type +
           "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
  };
  const std::string unexpected = "An unexpected error occurred, please try again";
  const std::string incorrect = "The data returned by the server is incorrect, please try again";
  const std::string connection =
      "The call ended with an error, please check the status of your Internet connection";
  struct Case {
    std::string answer;
    const char* outcome;
    std::vector<std::string> toasts;
  };
  const std::vector<Case> cases = {
      {respond("200 OK", "text/html", "<html>"), "kind 2, 200", {unexpected}},
      {respond("200 OK", "text/html", ""), "kind 1, 200", {incorrect}},
      {respond("200 OK", "text/json; charset=x", " "), "kind 1, 200", {incorrect}},
      {respond("200 OK", "application/json", "{\"a\":"), "kind 2, 200", {unexpected}},
      {respond("404 No", "application/json", "{}"), "kind 2, 404", {unexpected}},
      {respond("401 No", "application/json", "{}"), "kind 2, 401", {}},
      {"HTTP/1.1 302 Found\r\nContent-Length: 0\r\n\r\n", "kind 2, 302", {unexpected}},
  };
  for (const Case& c : cases) {
    answer = c.answer;
    toasts.clear();
    EXPECT_EQ(outcomeOf(live), c.outcome) << c.answer;
    EXPECT_EQ(toasts, c.toasts) << c.answer;
  }
  std::string gone;
  {
    gone = RawServer([](RawServer::Peer&) {}).url("");
  }
  API::setAPIBaseURLWithString(gone);
  reachability.reachable = false;
  toasts.clear();
  EXPECT_EQ(outcomeOf(live), "kind 3, 0");
  EXPECT_EQ(toasts, std::vector{connection});
}

}  // namespace
}  // namespace fleetor
