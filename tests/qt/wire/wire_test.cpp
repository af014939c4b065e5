// The request layer on the device's own queues and transport, against a socket that shows every byte.

#include <gmock/gmock.h>

#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <sstream>

#include "../device/raw_server.h"
#include "qt/device/http_transport.h"
#include "qt/device/queues.h"
#include "service/api.h"
#include "service/envelopes.h"
#include "support/fake_device.h"
#include "support/memory_stores.h"

namespace fleetor::test {
namespace {

using testing::Contains;
using testing::ElementsAre;

// A request without what every client of HTTP adds of its own; the headers sorted, for their order means
// nothing.
std::string essence(const std::string& bytes) {
  const auto head = bytes.find("\r\n\r\n");
  std::istringstream lines(bytes.substr(0, head));
  std::string first, line;
  std::getline(lines, first);
  std::vector<std::string> headers;
  while (std::getline(lines, line)) {
    if (line.ends_with('\r')) line.pop_back();
    const std::string name = line.substr(0, line.find(':'));
    for (const char* added : {"Host", "Connection", "Accept-Encoding", "Accept-Language", "User-Agent"})
      if (name == added) line.clear();
    if (!line.empty()) headers.push_back(line);
  }
  std::sort(headers.begin(), headers.end());
  std::string text = first.substr(0, first.find('\r'));
  for (const auto& each : headers)
    text += "\n" + each;
  return text + "\n\n" + bytes.substr(head + 4);
}

std::string answered(const std::string& status, const std::string& type, const std::string& body) {
  return "HTTP/1.1 " + status + "\r\nContent-Type: " + type +
         "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

class WireTest : public testing::Test {
 protected:
  WireTest() {
    API::install({queues, transport, keyStore, settings, reachability, indicator, log, device,
                  [this](const std::string& text, double, bool) { events.push_back(text); }, [] {}});
    API::configureRequest();
  }
  void TearDown() override { API::shutDown(); }

  template <class Send>
  void finish(Send send) {
    QEventLoop loop;
    QTimer::singleShot(20000, &loop, [&loop] { loop.exit(1); });
    send([this, &loop](auto, ResponseKind kind, long status, const std::optional<APIFailure>&) {
      events.push_back(std::to_string(static_cast<int>(kind)) + " " + std::to_string(status));
      loop.exit(0);
    });
    EXPECT_EQ(loop.exec(), 0) << "no completion";
  }

  MemoryKeyStore keyStore;
  MemorySettings settings;
  FakeReachability reachability;
  FakeIndicator indicator;
  RecordingLog log;
  FakeDevice device;
  QtQueues queues;
  HttpTransport transport;
  std::vector<std::string> events;
};

TEST_F(WireTest, EveryRequestOfTheClientReachesTheSocketToTheLetter) {
  RawServer server([](RawServer::Peer& peer) {
    while (!peer.read().empty())
      peer.write(answered("200 OK", "application/json", "{}"));
  });
  API::setAPIBaseURLWithString(server.url(""));
  const auto sent = [&](auto send) {
    finish(send);
    return essence(server.requests().back());
  };
  const std::string form = "\nContent-type: application/x-www-form-urlencoded; charset=utf-8\n\n";
  const Params day{{"vehid", 7}, {"date", "2026-03-10"}};

  API::requestAuthForToken("t0k/en+=");
  const std::string bearer = " HTTP/1.1\nAuthorization: Bearer t0k/en+=";
  EXPECT_EQ(sent([&](auto done) {
              API::postWithPath("/token?grant_type=password",
                                {{"username", "jän [k]"}, {"password", "a&b=c/d %~+"}, {"uid", "6F1C"}},
                                modelClass<TokenResponse>, {400}, done);
            }),
            "POST /token?grant_type=password" + bearer + "\nContent-Length: 69" + form +
                "password=a%26b%3Dc%2Fd%20%25~%2B&uid=6F1C&username=j%C3%A4n%20%5Bk%5D");
  EXPECT_EQ(
      sent([&](auto done) {
        API::getWithPath("/vehicles", {{"offset", 0}, {"limit", 20}}, modelClass<VehiclesResponse>, {}, done);
      }),
      "GET /vehicles?limit=20&offset=0" + bearer + "\n\n");
  EXPECT_EQ(sent([&](auto done) {
              API::getWithPath("/live", {{"vehid", 7}}, modelClass<LiveResponse>, {}, done);
            }),
            "GET /live?vehid=7" + bearer + "\n\n");
  EXPECT_EQ(sent([&](auto done) { API::getWithPath("/map", day, modelClass<MapResponse>, {}, done); }),
            "GET /map?date=2026-03-10&vehid=7" + bearer + "\n\n");
  EXPECT_EQ(sent([&](auto done) { API::getWithPath("/route", day, modelClass<RouteResponse>, {}, done); }),
            "GET /route?date=2026-03-10&vehid=7" + bearer + "\n\n");
  EXPECT_EQ(sent([&](auto done) {
              API::getWithPath("/info", {{"vehid", 7}}, modelClass<InfoResponse>, {}, done);
            }),
            "GET /info?vehid=7" + bearer + "\n\n");
  EXPECT_EQ(sent([&](auto done) { API::getWithPath("/user", Params(), modelClass<UserResponse>, {}, done); }),
            "GET /user?" + bearer + "\n\n");
  EXPECT_EQ(sent([&](auto done) {
              API::postWithPath("/logout", {{"uid", "6F1C"}}, noModelClass, {400}, done);
            }),
            "POST /logout" + bearer + "\nContent-Length: 8" + form + "uid=6F1C");

  EXPECT_EQ(
      sent([&](auto done) { API::postWithPath("/empty", Params(), noModelClass, {}, done); }),
      "POST /empty" + bearer + "\nContent-Length: 0\nContent-type: jsonmodel/automatic; charset=utf-8\n\n");
  EXPECT_EQ(sent([&](auto done) { API::deleteWithPath("/place", 3, noModelClass, {}, done); }),
            "DELETE /place/3" + bearer + "\n\n");
  EXPECT_EQ(sent([&](auto done) { API::putWithPath("/place", "a", Location(), noModelClass, {}, done); }),
            "PUT /place/a" + bearer +
                "\nContent-Length: 23\nContent-type: application/json; "
                "charset=utf-8\n\n{\"lat\":null,\"lon\":null}");
}

TEST_F(WireTest, EveryAnswerEndsAsItShould) {
  const std::string valid = R"({"total":0,"error":{"code":200,"description":"OK"},"vehicles":[]})";
  const std::string data = "The data returned by the server is incorrect, please try again";
  const std::string unexpected = "An unexpected error occurred, please try again";
  const std::string connection =
      "The call ended with an error, please check the status of your Internet connection";
  struct Case {
    std::string answer;  ///< the connection is closed behind it
    std::vector<std::string> events;
  };
  const std::vector<Case> cases{
      {answered("200 OK", "application/json", valid), {"0 200"}},
      {"HTTP/1.1 201 Created\r\nContent-Type: text/json\r\nTransfer-Encoding: chunked\r\n\r\n41\r\n" + valid +
           "\r\n0\r\n\r\n",
       {"0 201"}},
      {answered("200 OK", "application/json", ""), {data, "1 200"}},
      {answered("200 OK", "application/json", " "), {data, "1 200"}},
      {"HTTP/1.1 204 No Content\r\n\r\n", {data, "1 204"}},
      {answered("200 OK", "text/html", "<p>"), {unexpected, "2 200"}},
      {answered("200 OK", "application/json", "{"), {unexpected, "2 200"}},
      {answered("404 Not Found", "application/json", valid), {unexpected, "2 404"}},
      {answered("500 Oops", "text/html", "<p>"), {unexpected, "2 500"}},
      {answered("401 Unauthorized", "application/json", "{}"), {"2 401"}},
      {answered("304 Not Modified", "application/json", ""), {unexpected, "2 304"}},
      {answered("200 OK", "application/json", valid).substr(0, 100), {unexpected, "2 200"}},
      {"", {unexpected, "6 0"}},
      {"SSH-2.0-hello\r\n", {unexpected, "6 0"}},
  };
  for (const Case& each : cases) {
    RawServer server([&](RawServer::Peer& peer) {
      peer.read();
      peer.write(each.answer);
    });
    API::setAPIBaseURLWithString(server.url(""));
    events.clear();
    finish([](auto done) { API::getWithPath("/vehicles", modelClass<VehiclesResponse>, {}, done); });
    EXPECT_EQ(events, each.events) << each.answer;
  }
}

TEST_F(WireTest, AServiceThatNeverAnswersTimesOut) {
  RawServer server([](RawServer::Peer& peer) {
    peer.read();
    peer.hold();
  });
  API::setAPIBaseURLWithString(server.url(""));
  APIHTTPClient::setTimeoutInSeconds(1);
  finish([](auto done) { API::getWithPath("/vehicles", modelClass<VehiclesResponse>, {}, done); });
  EXPECT_THAT(events,
              ElementsAre("The call ended with an error, please check the status of your Internet connection",
                          "3 0"));
  EXPECT_THAT(log.lines(), Contains("Kind = TIMEOUT"));
}

TEST_F(WireTest, ReadsTextsInTheCharacterSetOfTheAnswer) {
  RawServer server([](RawServer::Peer& peer) {
    peer.read();
    peer.write(answered("200 OK", "application/json; charset=ISO-8859-2",
                        "{\"total\":1,\"error\":{\"code\":500,\"description\":\"B\xB3\xB1"
                        "d\"}}"));
  });
  API::setAPIBaseURLWithString(server.url(""));
  std::string message;
  finish([&](auto done) {
    API::getWithPath(
        "/vehicles", modelClass<VehiclesResponse>, {},
        [&, done](auto response, ResponseKind kind, long status, const std::optional<APIFailure>& error) {
          if (error) message = error->localizedDescription;
          done(response, kind, status, error);
        });
  });
  EXPECT_EQ(message, "Błąd");
}

}  // namespace
}  // namespace fleetor::test
