#include <future>

#include "fetching.h"
#include "packing.h"

namespace fleetor {
namespace {

using namespace std::chrono_literals;

const std::string endless = "HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n";

// Answers "/quick" as it should. To anything else it sends the first bytes, then the others again and again,
// this far apart, until the client is gone.
std::function<void(RawServer::Peer&)> repeating(const std::string& first, const std::string& then,
                                                std::chrono::milliseconds pause = 0ms) {
  return [=](RawServer::Peer& peer) {
    while (peer.read().starts_with("GET /quick"))
      peer.write(answer("{}"));
    peer.write(first);
    peer.trickle(then, pause);
  };
}

TEST(HostileAnswers, ThatTrickleKeepNoRequestWaiting) {
  RawServer server(repeating(endless, "x", 20ms));
  HttpTransport transport;
  const auto trickles = startMany(transport, 40, server.url("/slow"));
  EXPECT_EQ(fetch(transport, get(server.url("/quick"))).body, "{}");
  for (const auto& each : trickles)
    EXPECT_EQ(each.wait_for(0s), std::future_status::timeout);
}

TEST(HostileAnswers, ThatAreTooSlowTimeOut) {
  const HttpTransport::Limits slow{.slowBytes = 100, .slow = 300ms}, steady{.slowBytes = 1, .slow = 10s};
  HttpTransport::Limits shortWhole = steady;
  shortWhole.whole = 300ms;
  const std::string interim = "HTTP/1.1 100 Continue\r\n\r\n";
  const auto adequate = [](RawServer::Peer& peer) {
    peer.read();
    peer.write("HTTP/1.1 200 OK\r\nContent-Length: 12000\r\n\r\n");
    peer.trickle(std::string(100, 'x'), 10ms, 120);
  };
  const long late = url_error::timedOut;
  const std::tuple<OddAnswer, HttpTransport::Limits, double> cases[] = {
      {{"silence", stalling(""), 0, late}, {}, 0.3},
      {{"silence in the body", stalling(endless + "x"), 200, late}, {}, 0.3},
      {{"chunk without an end", repeating(chunked + "5;", "x", 20ms), 200, late}, {}, 0.3},
      {{"trickling head", repeating("HTTP/1.1 200 OK\r\n", "A:\r\n", 20ms), 0, late}, slow, 9},
      {{"trickling interim answers", repeating("", interim, 200ms), 0, late}, slow, 9},
      {{"trickling body", repeating(endless + std::string(200, 'x'), "x", 20ms), 200, late}, slow, 9},
      {{"steady without an end", repeating(endless, "x", 20ms), 200, late}, shortWhole, 9},
      {{"trickle that is quick enough", adequate, 200, 0}, {.slowBytes = 100, .slow = 1s}, 9},
  };
  for (const auto& [odd, limits, timeoutSeconds] : cases) {
    HttpTransport transport(limits);
    expectReply(transport, odd, 1, timeoutSeconds);
  }
}

TEST(HostileAnswers, ThatFloodEndAtTheirBound) {
  const std::vector<OddAnswer> answers{
      {"longest", once(answer(std::string(1000, 'x'))), 200, 0},
      {"announced", stalling("HTTP/1.1 200 OK\r\nContent-Length: 1001\r\n\r\n"), 200,
       url_error::dataLengthExceedsMaximum},
      {"announced beyond 64 bits",
       stalling("HTTP/1.1 200 OK\r\nContent-Length: 99999999999999999999\r\n\r\n"), 200,
       url_error::dataLengthExceedsMaximum},
      {"announced where there is none", once("HTTP/1.1 304 OK\r\nContent-Length: 1001\r\n\r\n"), 304, 0},
      {"unannounced", repeating("HTTP/1.1 200 OK\r\n\r\n", "xxxxxxxx"), 200,
       url_error::dataLengthExceedsMaximum},
      {"packed",
       once(answer(packed(std::string(1001, 'x'), gzipFormat), "200 OK", "Content-Encoding: gzip\r\n")), 200,
       url_error::dataLengthExceedsMaximum},
      {"header lines", repeating("HTTP/1.1 200 OK\r\n", "A: b\r\n"), 0, url_error::cannotParseResponse},
      {"interim answers", repeating("", "HTTP/1.1 100 Continue\r\n\r\n"), 0, url_error::cannotParseResponse},
  };
  HttpTransport transport({.bodyBytes = 1000, .headBytes = 1000});
  for (const OddAnswer& each : answers)
    expectReply(transport, each);
}

TEST(HostileAnswers, ThatContinueALineOfTheRedirectBeforeThemAreRefused) {
  RawServer server([](RawServer::Peer& peer) {
    for (std::string request; !(request = peer.read()).empty();)
      peer.write(request.starts_with("GET / ") ? answer("", "302 Found", "Location: /there\r\n")
                                               : "HTTP/1.1 200 OK\r\n a: b\r\nContent-Length: 2\r\n\r\n{}");
  });
  HttpTransport transport;
  EXPECT_NE(fetch(transport, get(server.url("/"))).error, 0);
}

TEST(HostileAnswers, ThatAreHardToUnpackLeaveTimeForOthers) {
  // Four blocks, each a table of codes to build and nothing to write: two megabytes take nearly half a
  // second.
  const std::string blocks(
      "\x04\xc0\x81\x00\x00\x00\x00\x00\x90\xff\x6b\x10\x00\x07\x02\x00\x00\x00\x00\x40\xfe\xaf\x41"
      "\x00\x1c\x08\x00\x00\x00\x00\x00\xf9\xbf\x06\x01\x70\x20\x00\x00\x00\x00\x00\xe4\xff\x1a",
      45);
  std::string hard = "HTTP/1.1 200 OK\r\nContent-Encoding: deflate\r\n\r\n";
  while (hard.size() < 2'000'000)
    hard += blocks;
  RawServer server([&hard](RawServer::Peer& peer) {
    while (peer.read().starts_with("GET /quick"))
      peer.write(answer("{}"));
    peer.write(hard);
  });
  HttpTransport transport;
  auto hards = startMany(transport, 4, server.url("/hard"));
  for (int i = 0; i < 5; i++)
    EXPECT_EQ(fetch(transport, get(server.url("/quick"))).body, "{}");
  for (auto& each : hards)
    EXPECT_EQ(each.wait_for(0s), std::future_status::timeout);
  for (auto& each : hards)
    EXPECT_EQ(finish(std::move(each)).error, url_error::cannotDecodeContentData) << "they have no end";
}

}  // namespace
}  // namespace fleetor
