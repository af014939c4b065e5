// The request layer on the device's own queues and transport, against a socket that shows every byte.

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>

#include "../device/run_until.h"
#include "http/http_transport.h"
#include "qt/device/queues.h"
#include "support/raw_server.h"
#include "support/request_layer.h"

namespace fleetor::test {
namespace {

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
    for (const char* added : {"Host", "Accept-Encoding", "User-Agent"})
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

class WireTest : public RequestLayer {
 protected:
  WireTest() { install(queues, transport); }
  void TearDown() override { API::shutDown(); }

  void finish() {
    runUntil([this] { return !events.empty() && events.back().starts_with("completed"); });
  }

  QtQueues queues;
  HttpTransport transport;
};

TEST_F(WireTest, RequestsOfEveryShapeReachTheSocketToTheLetter) {
  RawServer server([](RawServer::Peer& peer) {
    while (!peer.read().empty())
      peer.write(answered("200 OK", "application/json", "{}"));
  });
  API::setAPIBaseURLWithString(server.url(""));
  const auto sent = [&] {
    finish();
    events.clear();
    return essence(server.requests().back());
  };
  API::postWithPath("/token?grant_type=password",
                    {{"username", "jän [k]"}, {"password", "a&b=c/d %~+"}, {"uid", "6F1C"}},
                    modelClass<TokenResponse>, {400}, completed());
  EXPECT_EQ(sent(),
            "POST /token?grant_type=password HTTP/1.1\nContent-Length: 69\n"
            "Content-type: application/x-www-form-urlencoded; charset=utf-8\n\n"
            "password=a%26b%3Dc%2Fd%20%25~%2B&uid=6F1C&username=j%C3%A4n%20%5Bk%5D");

  API::requestAuthForToken("t0k/en+=");
  const std::string bearer = " HTTP/1.1\nAuthorization: Bearer t0k/en+=";
  API::getWithPath("/route", {{"vehid", "~*'!()"}, {"date", "[]"}}, modelClass<RouteResponse>, {},
                   completed());
  EXPECT_EQ(sent(), "GET /route?date=%5B%5D&vehid=~%2A%27%21%28%29" + bearer + "\n\n");
  API::getWithPath("/user", Params(), modelClass<UserResponse>, {}, completed());
  EXPECT_EQ(sent(), "GET /user?" + bearer + "\n\n");
  API::postWithPath("/empty", Params(), noModelClass, {}, completed());
  EXPECT_EQ(sent(), "POST /empty" + bearer +
                        "\nContent-Length: 0\nContent-type: jsonmodel/automatic; charset=utf-8\n\n");
  API::deleteWithPath("/place", -3, noModelClass, {}, completed());
  EXPECT_EQ(sent(), "DELETE /place/-3" + bearer + "\n\n");
  API::putWithPath("/place", "a", Location(), noModelClass, {}, completed());
  EXPECT_EQ(sent(), "PUT /place/a" + bearer +
                        "\nContent-Length: 23\nContent-type: application/json; "
                        "charset=utf-8\n\n{\"lat\":null,\"lon\":null}");
}

TEST_F(WireTest, AnswersEndAsTheyShould) {
  const std::string valid = R"({"total":0,"error":{"code":200,"description":"OK"},"vehicles":[]})";
  const std::string latin = "{\"total\":1,\"error\":{\"code\":500,\"description\":\"B\xB3\xB1\x64\"}}";
  struct Case {
    std::string answer;  ///< the connection is closed behind it
    std::vector<std::string> events;
  };
  const std::vector<Case> cases{
      {answered("200 OK", "application/json", valid), {"completed 0, 200, a record"}},
      {"HTTP/1.1 201 Created\r\nContent-Type: text/json\r\nTransfer-Encoding: chunked\r\n\r\n41\r\n" + valid +
           "\r\n0\r\n\r\n",
       {"completed 0, 201, a record"}},
      {"HTTP/1.1 204 No Content\r\n\r\n", {dataMessage, "completed 1, 204"}},
      {answered("200 OK", "text/html", "<p>"), {unexpectedMessage, "completed 2, 200"}},
      {answered("401 Unauthorized", "application/json", "{}"), {"completed 2, 401"}},
      {answered("200 OK", "application/json", valid).substr(0, 100), {unexpectedMessage, "completed 2, 200"}},
      {"SSH-2.0-hello\r\n", {unexpectedMessage, "completed 6, 0"}},
      {answered("200 OK", "application/json; charset=ISO-8859-2", latin), {dataMessage, "completed 1, 200"}},
  };
  for (const Case& each : cases) {
    RawServer server([&](RawServer::Peer& peer) {
      peer.read();
      peer.write(each.answer);
    });
    API::setAPIBaseURLWithString(server.url(""));
    events.clear();
    API::getWithPath("/vehicles", modelClass<VehiclesResponse>, {}, completed());
    finish();
    EXPECT_EQ(events, each.events) << each.answer;
  }
  ASSERT_TRUE(lastError);
  EXPECT_EQ(lastError->localizedDescription, "Błąd");
}

}  // namespace
}  // namespace fleetor::test
