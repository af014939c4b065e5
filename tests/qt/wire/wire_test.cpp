// The request layer on the device's own queues and transport, against a socket that shows every byte.

#include <gmock/gmock.h>

#include "../device/run_until.h"
#include "http/http_transport.h"
#include "qt/device/queues.h"
#include "support/raw_server.h"
#include "support/request_layer.h"

namespace fleetor::test {
namespace {

using testing::HasSubstr;

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

TEST_F(WireTest, ARequestReachesTheSocketAsTheRequestLayerBuiltIt) {
  RawServer server([](RawServer::Peer& peer) {
    while (!peer.read().empty())
      peer.write(answered("200 OK", "application/json", "{}"));
  });
  API::setAPIBaseURLWithString(server.url(""));
  API::requestAuthForToken("t0k/en+=");
  API::postWithPath("/token?grant_type=password", {{"username", "jän [k]"}, {"password", "a&b=c/d %~+"}},
                    modelClass<TokenResponse>, {400}, completed());
  finish();
  events.clear();
  API::postWithPath("/empty", Params(), noModelClass, {}, completed());
  finish();
  const auto requests = server.requests();
  ASSERT_EQ(requests.size(), 2u);
  EXPECT_THAT(requests[0], testing::StartsWith("POST /token?grant_type=password HTTP/1.1\r\n"));
  EXPECT_THAT(requests[0], HasSubstr("\r\nAuthorization: Bearer t0k/en+=\r\n"));
  EXPECT_THAT(requests[0],
              testing::EndsWith("\r\n\r\npassword=a%26b%3Dc%2Fd%20%25~%2B&username=j%C3%A4n%20%5Bk%5D"));
  EXPECT_THAT(requests[1], HasSubstr("\r\nContent-type: jsonmodel/automatic; charset=utf-8\r\n"));
  EXPECT_THAT(requests[1], HasSubstr("\r\nContent-Length: 0\r\n"));
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
