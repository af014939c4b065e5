#include "qt/device/http_transport.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <future>
#include <string>
#include <utility>
#include <vector>

#include "raw_server.h"

namespace fleetor {
namespace {

using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using namespace std::chrono_literals;

std::future<HttpReply> start(HttpTransport& transport, HttpRequest request) {
  auto promise = std::make_shared<std::promise<HttpReply>>();
  auto future = promise->get_future();
  transport.send(std::move(request), [promise](HttpReply reply) { promise->set_value(std::move(reply)); });
  return future;
}

HttpReply fetch(HttpTransport& transport, HttpRequest request) {
  auto future = start(transport, std::move(request));
  if (future.wait_for(20s) == std::future_status::ready) return future.get();
  ADD_FAILURE() << "no answer";
  return {};
}

HttpRequest get(std::string url) {
  HttpRequest request;
  request.url = std::move(url);
  request.method = "GET";
  return request;
}

HttpRequest post(std::string url, std::string body) {
  HttpRequest request = get(std::move(url));
  request.method = "POST";
  request.headers = {{"Content-type", "application/x-www-form-urlencoded; charset=utf-8"},
                     {"Authorization", "Bearer secret"},
                     {"Content-Length", std::to_string(body.size())}};
  request.body = std::move(body);
  return request;
}

std::string answer(const std::string& body, const std::string& status = "200 OK",
                   const std::string& more = "") {
  return "HTTP/1.1 " + status + "\r\nContent-Type: text/json; charset=utf-8\r\n" + more +
         "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

// Answers every request on every connection with the same bytes.
std::function<void(RawServer::Peer&)> always(std::string bytes) {
  return [bytes = std::move(bytes)](RawServer::Peer& peer) {
    while (!peer.read().empty())
      peer.write(bytes);
  };
}

// Reads one request, answers it with these bytes and hangs up.
std::function<void(RawServer::Peer&)> once(std::string bytes) {
  return [bytes = std::move(bytes)](RawServer::Peer& peer) {
    peer.read();
    peer.write(bytes);
  };
}

// Reads one request, answers it with these bytes and waits until the client hangs up.
std::function<void(RawServer::Peer&)> stalling(std::string bytes) {
  return [bytes = std::move(bytes)](RawServer::Peer& peer) {
    peer.read();
    peer.write(bytes);
    peer.hold();
  };
}

// The header lines of a request in order, and what stands before and after them.
struct Wire {
  std::string line;
  std::vector<std::string> headers;
  std::string body;

  explicit Wire(const std::string& bytes) {
    const auto head = bytes.find("\r\n\r\n");
    body = bytes.substr(head + 4);
    std::size_t from = bytes.find("\r\n");
    line = bytes.substr(0, from);
    while (from < head) {
      const auto to = bytes.find("\r\n", from + 2);
      headers.push_back(bytes.substr(from + 2, to - from - 2));
      from = to;
    }
  }
};

TEST(HttpTransport, PutsARequestOnTheWireToTheLetter) {
  RawServer server(always(answer("[]")));
  HttpTransport transport;
  const HttpReply reply =
      fetch(transport, post(server.url("/token?grant_type=password"), "password=a%26b&uid=X"));
  EXPECT_EQ(reply.status, 200);
  EXPECT_EQ(reply.error, 0);
  EXPECT_EQ(reply.body, "[]");
  EXPECT_EQ(reply.contentType, "text/json; charset=utf-8");

  const Wire wire(server.requests().at(0));
  EXPECT_EQ(wire.line, "POST /token?grant_type=password HTTP/1.1");
  EXPECT_EQ(wire.body, "password=a%26b&uid=X");
  EXPECT_THAT(wire.headers, testing::UnorderedElementsAre(
                                "Host: " + server.url("").substr(7),
                                "Content-type: application/x-www-form-urlencoded; charset=utf-8",
                                "Authorization: Bearer secret", "Content-Length: 20", "User-Agent: Fleetor",
                                "Connection: Keep-Alive", StartsWith("Accept-Encoding: "),
                                StartsWith("Accept-Language: ")));
}

TEST(HttpTransport, SendsBodiesOfEveryKindAndNoneWhereThereIsNone) {
  RawServer server(always(answer("{}")));
  HttpTransport transport;
  const std::pair<const char*, std::optional<std::string>> cases[] = {
      {"GET", std::nullopt},
      {"DELETE", std::nullopt},
      {"POST", ""},
      {"POST", std::nullopt},
      {"PUT", std::string("{\"a\":\"\0\xC3\xA9\"}", 11)},
      {"POST", std::string(3'000'000, 'x')}};
  for (const auto& [method, body] : cases) {
    HttpRequest request = get(server.url("/x"));
    request.method = method;
    request.body = body;
    EXPECT_EQ(fetch(transport, request).status, 200);
    const Wire wire(server.requests().back());
    EXPECT_EQ(wire.line, std::string(method) + " /x HTTP/1.1");
    EXPECT_TRUE(wire.body == body.value_or("")) << method;
    const std::string length = "Content-Length: " + std::to_string(wire.body.size());
    const bool hasLength = request.method[0] == 'P';
    EXPECT_EQ(std::ranges::count(wire.headers, length), hasLength) << method;
    EXPECT_THAT(wire.headers, testing::Each(Not(StartsWith(hasLength ? "Content-Type" : "Content-"))))
        << method;
  }
}

TEST(HttpTransport, KeepsTheSpellingOfAUrl) {
  RawServer server(always(answer("{}")));
  HttpTransport transport;
  const std::pair<const char*, const char*> cases[] = {
      {"/user?", "/user?"},
      {"/a?b=%21%2A%27%28%29%3B%3A%40%26%3D%2B%24%2C%2F%3F%25%23%5B%5D", nullptr},
      {"/a?b=%20%22%3C%3E%5C%5E%60%7B%7C%7D", nullptr},
      {"/a?b=%C3%A9%E2%82%AC%F0%9F%9A%97&c=", nullptr},
      {"/a?b=!*'();:@&=+$,/?[]~-._", nullptr},
      {"/a//b/c;d=1?x", nullptr},
      {"", "/"},
      // What no URL may hold arrives escaped.
      {"/a b?k y=\"<>", "/a%20b?k%20y=%22%3C%3E"},
      {"/\xC3\xA9?\xC3\xA9", "/%C3%A9?%C3%A9"},
      // An escape that stands for an unreserved character arrives as that character.
      {"/a?b=%7E%41", "/a?b=~A"},
  };
  for (const auto& [given, expected] : cases) {
    EXPECT_EQ(fetch(transport, get(server.url(given))).status, 200) << given;
    EXPECT_EQ(Wire(server.requests().back()).line,
              std::string("GET ") + (expected ? expected : given) + " HTTP/1.1");
  }
  for (const char* url : {"", "/vehicles", "ftp://127.0.0.1/x", "http://", "http://a b/", "nonsense"})
    EXPECT_EQ(fetch(transport, get(url)).error, url_error::badUrl) << url;
}

TEST(HttpTransport, GivesTheAnswerOfAnErrorStatusWithItsBodyAndNoError) {
  HttpTransport transport;
  for (const char* status : {"204 No Content", "304 Not Modified", "400 Bad", "401 Unauthorized", "407 Proxy",
                             "500 E", "599 X", "302 Found"}) {
    const bool bodiless = std::string(status).starts_with("204") || std::string(status).starts_with("304");
    RawServer server(
        always(answer(bodiless ? "" : "{\"e\":1}", status, "WWW-Authenticate: Basic realm=\"x\"\r\n")));
    const HttpReply reply = fetch(transport, post(server.url("/x"), "a=b"));
    EXPECT_EQ(reply.status, std::atoi(status));
    EXPECT_EQ(reply.error, 0) << status << " " << reply.errorDescription;
    EXPECT_EQ(reply.body, bodiless ? "" : "{\"e\":1}") << status;
    EXPECT_EQ(server.requests().size(), 1u) << status;
  }
}

TEST(HttpTransport, NamesEveryWayInWhichATransferBreaks) {
  HttpTransport transport({.bodyBytes = 1000, .redirects = 3});
  struct Case {
    const char* name;
    std::function<void(RawServer::Peer&)> serve;
    int status;
    long error;
  };
  const std::vector<Case> cases = {
      {"closed before the answer", once(""), 0, url_error::networkConnectionLost},
      {"closed inside the head", once("HTTP/1.1 200 OK\r\nContent-Le"), 0, url_error::networkConnectionLost},
      {"closed inside the body", once("HTTP/1.1 200 OK\r\nContent-Length: 20\r\n\r\n{\"a\":"), 200,
       url_error::networkConnectionLost},
      {"closed inside a chunk", once("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n20\r\n{\"a\":"),
       200, url_error::networkConnectionLost},
      {"not HTTP", once("hello, this is another protocol\r\n\r\n"), 0, url_error::networkConnectionLost},
      {"too long", once(answer(std::string(1001, 'x'))), 200, url_error::dataLengthExceedsMaximum},
      {"too long, unannounced", once("HTTP/1.1 200 OK\r\n\r\n" + std::string(1001, 'x')), 200,
       url_error::dataLengthExceedsMaximum},
      {"redirected for ever", always(answer("", "302 Found", "Location: /again\r\n")), 0,
       url_error::tooManyRedirects},
      {"packed, which makes it longer",
       once(answer(
           std::string(
               "\037\213\010\000\000\000\000\000\002\003\253\256\005\000\103\277\246\243\002\000\000\000",
               22),
           "200 OK", "Content-Encoding: gzip\r\n")),
       200, 0},
      {"packed, and broken", once(answer("not packed at all", "200 OK", "Content-Encoding: gzip\r\n")), 200,
       url_error::cannotDecodeContentData},
      {"body up to the close", once("HTTP/1.1 200 OK\r\n\r\n{}"), 200, 0},
      {"longest body", once(answer(std::string(1000, 'x'))), 200, 0},
  };
  for (const Case& c : cases) {
    RawServer server(c.serve);
    const HttpReply reply = fetch(transport, post(server.url("/x"), "a=b"));
    EXPECT_EQ(reply.status, c.status) << c.name;
    EXPECT_EQ(reply.error, c.error) << c.name << ": " << reply.errorDescription;
    EXPECT_EQ(reply.errorDescription.empty(), c.error == 0) << c.name;
  }
  std::string closed;
  { closed = RawServer(always("")).url("/"); }
  EXPECT_EQ(fetch(transport, get(closed)).error, url_error::cannotConnectToHost);
  EXPECT_THAT(fetch(transport, get("http://nowhere.invalid/")).error,
              AnyOf(url_error::cannotFindHost, url_error::notConnectedToInternet));
}

TEST(HttpTransport, NeverTakesACutAnswerForWhole) {
  RawServer server(once("HTTP/1.1 200 OK\r\nContent-Length: 300000\r\n\r\n{}"));
  HttpTransport transport;
  // What the manager makes of it hangs on how fast the end follows the beginning.
  for (int i = 0; i < 50; i++)
    ASSERT_EQ(fetch(transport, get(server.url("/x"))).error, url_error::networkConnectionLost) << i;
}

TEST(HttpTransport, NeverSendsAnythingButGetAndDeleteTwice) {
  HttpTransport transport;
  // The service closes a connection that was kept open just when the next request arrives on it.
  RawServer server([](RawServer::Peer& peer) {
    peer.read();
    peer.write(answer("{}"));
    peer.read();
  });
  for (const char* method : {"POST", "PUT"})
    for (const auto& body : {std::optional<std::string>("a=b"), {""}, {}}) {
      EXPECT_EQ(fetch(transport, get(server.url("/warm"))).status, 200);
      const auto before = server.requests().size();
      HttpRequest request = get(server.url("/x"));
      request.method = method;
      request.body = body;
      EXPECT_EQ(fetch(transport, request).error, url_error::networkConnectionLost) << method;
      EXPECT_EQ(server.requests().size(), before + 1) << method << " " << body.value_or("without a body");
    }
}

TEST(HttpTransport, TimesOutWhenNothingMovesAndNotWhileSomethingDoes) {
  HttpTransport transport;
  RawServer silent(stalling(""));
  RawServer halting(stalling("HTTP/1.1 200 OK\r\nContent-Length: 20\r\n\r\n{"));
  RawServer slow([](RawServer::Peer& peer) {
    peer.read();
    peer.write("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\n");
    for (int i = 0; i < 5; i++) {
      std::this_thread::sleep_for(400ms);
      peer.write("x");
    }
  });
  const auto began = std::chrono::steady_clock::now();
  auto silentRequest = post(silent.url("/"), "a=b");
  auto haltingRequest = get(halting.url("/"));
  auto slowRequest = get(slow.url("/"));
  silentRequest.timeoutSeconds = haltingRequest.timeoutSeconds = slowRequest.timeoutSeconds = 1.5;
  auto first = start(transport, silentRequest), second = start(transport, haltingRequest),
       third = start(transport, slowRequest);
  EXPECT_EQ(first.get().error, url_error::timedOut);
  EXPECT_GE(std::chrono::steady_clock::now() - began, 1400ms);
  const HttpReply stalled = second.get();
  EXPECT_EQ(stalled.error, url_error::timedOut);
  EXPECT_EQ(stalled.status, 200);
  const HttpReply moved = third.get();
  EXPECT_EQ(moved.error, 0) << moved.errorDescription;
  EXPECT_EQ(moved.body, "xxxxx");
}

TEST(HttpTransport, FollowsRedirectsButKeepsTheTokenAtItsOrigin) {
  RawServer other(always(answer("[2]")));
  std::string target;
  std::string status;
  RawServer server([&](RawServer::Peer& peer) {
    for (std::string request; !(request = peer.read()).empty();) {
      if (request.find("/from") == std::string::npos)
        peer.write(answer("[1]"));
      else
        peer.write(answer("moved", status, "Location: " + target + "\r\n"));
    }
  });
  HttpTransport transport;
  const auto go = [&](std::string code, std::string to) {
    status = std::move(code) + " Moved";
    target = std::move(to);
    return fetch(transport, post(server.url("/from"), "a=b"));
  };

  // At home: the token stays; the verb as the status asks.
  for (const std::string code : {"301", "302", "303", "307", "308"}) {
    EXPECT_EQ(go(code, "/to?x").body, "[1]") << code;
    const Wire wire(server.requests().back());
    const bool repeats = code >= "307";
    EXPECT_EQ(wire.line, repeats ? "POST /to?x HTTP/1.1" : "GET /to?x HTTP/1.1") << code;
    EXPECT_EQ(wire.body, repeats ? "a=b" : "") << code;
    EXPECT_THAT(wire.headers, testing::Contains("Authorization: Bearer secret")) << code;
    EXPECT_EQ(std::ranges::count_if(wire.headers, [](auto& line) { return line.starts_with("Content-"); }),
              repeats ? 2 : 0)
        << code;
  }

  // Abroad: the token does not go along, nor does it come back by way of a second redirect.
  for (const char* code : {"301", "302", "303"}) {
    EXPECT_EQ(go(code, other.url("/to")).body, "[2]");
    EXPECT_THAT(other.requests().back(), Not(HasSubstr("secret"))) << code;
  }
  const auto arrived = other.requests().size();
  for (const char* code : {"307", "308"}) {
    EXPECT_EQ(go(code, other.url("/to")).error, url_error::badServerResponse) << code;
    EXPECT_EQ(other.requests().size(), arrived) << "the body went abroad";
  }
  HttpRequest bodiless = get(server.url("/from"));
  bodiless.headers = {{"Authorization", "Bearer secret"}};
  EXPECT_EQ(fetch(transport, bodiless).body, "[2]");
  EXPECT_THAT(other.requests().back(), Not(HasSubstr("secret")));
  RawServer back(once(answer("", "302 Found", "Location: " + server.url("/home") + "\r\n")));
  EXPECT_EQ(go("302", back.url("/")).body, "[1]");
  EXPECT_THAT(server.requests().back(), testing::AllOf(StartsWith("GET /home "), Not(HasSubstr("secret"))));

  // Nowhere: the answer itself.
  for (const char* nowhere : {"ftp://127.0.0.1/", "http://", "mailto:a@b"}) {
    const HttpReply reply = go("302", nowhere);
    EXPECT_EQ(reply.status, 302) << nowhere;
    EXPECT_EQ(reply.body, "moved") << nowhere;
  }
}

TEST(HttpTransport, ReceivesALongBodyWhole) {
  std::string body;
  for (int i = 0; body.size() < 20'000'000; i++)
    body += std::to_string(i) + ",";
  RawServer server(always(answer(body)));
  HttpTransport transport;
  EXPECT_TRUE(fetch(transport, get(server.url("/map"))).body == body);
}

TEST(HttpTransport, KeepsNoCookiesAndReusesTheConnection) {
  std::atomic<int> connections = 0;
  RawServer server([&](RawServer::Peer& peer) {
    connections++;
    while (!peer.read().empty())
      peer.write(answer("{}", "200 OK", "Set-Cookie: a=b\r\nCache-Control: max-age=99\r\n"));
  });
  HttpTransport transport;
  for (int i = 0; i < 3; i++)
    EXPECT_EQ(fetch(transport, get(server.url("/x"))).status, 200);
  EXPECT_EQ(server.requests().size(), 3u);
  EXPECT_THAT(server.requests(), testing::Each(Not(HasSubstr("Cookie"))));
  EXPECT_EQ(connections, 1);
}

TEST(HttpTransport, CancelsWhatIsUnansweredWhenItIsDestroyed) {
  RawServer server(stalling(""));
  std::vector<std::future<HttpReply>> replies;
  const auto began = std::chrono::steady_clock::now();
  {
    HttpTransport transport;
    for (int i = 0; i < 10; i++)
      replies.push_back(start(transport, get(server.url("/x"))));
  }
  EXPECT_LT(std::chrono::steady_clock::now() - began, 15s) << "it waits for no answer";
  for (auto& reply : replies) {
    ASSERT_EQ(reply.wait_for(0s), std::future_status::ready);
    EXPECT_EQ(reply.get().error, url_error::cancelled);
  }
}

}  // namespace
}  // namespace fleetor
