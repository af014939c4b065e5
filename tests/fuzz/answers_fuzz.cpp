// What a service sends, from its first byte to its verdict: heads, redirects, encodings, lengths, character
// sets. The exchange runs over pairs of sockets, without a network; after every redirect the next part of the
// input answers.

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "../http/packing.h"
#include "fuzzing.h"
#include "http/exchange.h"
#include "service/response_serializer.h"

namespace {

using namespace fleetor;

const HttpTransport::Limits limits{.bodyBytes = 2000, .headBytes = 2000, .redirects = 3};
/// Derived from the input, so that no input holds its own.
std::string secret;

/// The services behind all addresses: each connection gets the next answer, and then nothing more.
class Services {
 public:
  explicit Services(std::vector<std::string> answers) : answers_(std::move(answers)) { listener(); }
  ~Services() { std::for_each(ends_.begin(), ends_.end(), ::close); }
  Services(const Services&) = delete;
  Services& operator=(const Services&) = delete;

  CURLcode run(Exchange& exchange) {
    static CURLM* const transfers = curl_multi_init();
    CURL* const transfer = exchange.transfer();
    curl_easy_setopt(transfer, CURLOPT_ABSTRACT_UNIX_SOCKET, name().c_str());
    curl_easy_setopt(transfer, CURLOPT_PROTOCOLS_STR, "http");
    curl_easy_setopt(transfer, CURLOPT_FORBID_REUSE, 1L);
    curl_multi_add_handle(transfers, transfer);
    CURLcode result = CURLE_OK;
    for (int running = 1, rounds = 0; running && result == CURLE_OK; ++rounds) {
      require(rounds < 1000, "an answer that is there is read");
      result = exchange.beginTurn();
      curl_multi_perform(transfers, &running);
      answerWhoHasCome();
      if (running) curl_multi_poll(transfers, nullptr, 0, 10, nullptr);
    }
    int left = 0;
    if (const CURLMsg* const message = curl_multi_info_read(transfers, &left)) result = message->data.result;
    curl_multi_remove_handle(transfers, transfer);
    return result;
  }

  /// What has come over each connection.
  std::vector<std::string> requests() const {
    std::vector<std::string> requests;
    for (const int end : ends_) {
      std::string request(8192, '\0');
      const auto count = ::recv(end, request.data(), request.size(), MSG_DONTWAIT);
      request.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
      requests.push_back(std::move(request));
    }
    return requests;
  }

 private:
  static const std::string& name() {
    static const std::string name = "fleetor-fuzz-" + std::to_string(::getpid());
    return name;
  }

  static int listener() {
    static const int listening = listen();
    return listening;
  }

  static int listen() {
    const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    sockaddr_un address{AF_UNIX, {}};
    const std::size_t length = name().copy(address.sun_path + 1, sizeof address.sun_path - 1);
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + length);
    require(::bind(listener, reinterpret_cast<const sockaddr*>(&address), size) == 0 &&
                ::listen(listener, 9) == 0,
            "a service can be reached");
    return listener;
  }

  void answerWhoHasCome() {
    for (int end = 0; (end = ::accept4(listener(), nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
      const std::string answer = ends_.size() < answers_.size() ? answers_[ends_.size()] : "";
      ::send(end, answer.data(), answer.size(), MSG_NOSIGNAL);
      ::shutdown(end, SHUT_WR);
      ends_.push_back(end);
    }
  }

  std::vector<std::string> answers_;
  std::vector<int> ends_;
};

HttpReply fetch(const std::string& method, Services& services) {
  HttpReply reply;
  int replies = 0;
  const std::optional<std::string> body = method == "POST" ? std::optional(secret) : std::nullopt;
  const std::string noCertificates;
  Exchange exchange(
      HttpRequest{"http://service.test/x", method, {{"Authorization", secret}}, body},
      [&](HttpReply got) {
        reply = std::move(got);
        ++replies;
      },
      limits, noCertificates);
  exchange.start();
  while (!exchange.isOver())
    exchange.hopEnded(services.run(exchange));
  require(replies == 1, "a request is answered once");
  return reply;
}

void unpack(const std::string& text, std::size_t format, std::size_t cut) {
  constexpr std::pair<const char*, int> formats[]{
      {"gzip", gzipFormat}, {"deflate", zlibFormat}, {"deflate", rawFormat}};
  const auto& [encoding, window] = formats[format % std::size(formats)];
  const std::string bytes = packed(text, window);
  const std::string arrived = bytes.substr(0, bytes.size() - cut % bytes.size());
  Services service({std::string("HTTP/1.1 200 OK\r\nContent-Encoding: ") + encoding + "\r\n\r\n" + arrived});
  const HttpReply reply = fetch("GET", service);
  const bool sound = arrived.size() == bytes.size() && text.size() <= limits.bodyBytes;
  require((reply.error == 0) == sound, "a packed answer is taken when it is whole and fits", text);
  require(reply.body == (sound ? text : ""), "what was packed comes out", text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool isReached = [] {
    secret = "secret";
    Services one({"HTTP/1.1 200 OK\r\n\r\nx"});
    return fetch("POST", one).body == "x" && one.requests()[0].find(secret) != std::string::npos;
  }();
  require(isReached, "an answer arrives");

  const std::string_view input(reinterpret_cast<const char*>(data), size);
  secret = "secret" + std::to_string(std::hash<std::string_view>()(input));
  Bytes bytes(data, size);
  const std::string method = bytes.next() % 2 ? "POST" : "GET";
  const std::size_t format = bytes.next(), cut = bytes.next();
  const auto serializer = bytes.next() % 2 ? ResponseSerializer::plain : ResponseSerializer::JSON;
  const std::string text = bytes.rest();
  std::string longer;
  for (std::size_t copies = 1 + format / 8; copies > 0; --copies)
    longer += text;
  unpack(longer, format, cut);

  std::vector<std::string> answers;
  for (std::size_t begin = 0, end = 0; end != std::string::npos; begin = end + 1) {
    end = text.find('\1', begin);
    answers.push_back(text.substr(begin, end - begin));
  }
  Services services(std::move(answers));
  HttpReply reply = fetch(method, services);
  require(reply.error == 0 ? reply.status >= 200 : reply.body.empty(), "a reply is an answer or an error");
  require(reply.body.size() <= limits.bodyBytes, "a body keeps to its bound");
  require(reply.contentType.find_first_of(std::string_view("\r\n\0", 3)) == std::string::npos, "one line");

  bool isAway = false;
  const auto requests = services.requests();
  require(requests.size() <= 4, "redirects have an end");
  for (const std::string& request : requests) {
    if (request.empty()) continue;
    const std::size_t host = request.find("\r\nHost: ");
    require(host != std::string::npos && request.find("\r\nHost: ", host + 1) == std::string::npos,
            "one host", request);
    isAway = isAway || !request.substr(host + 8).starts_with("service.test\r\n");
    require(!isAway || request.find(secret) == std::string::npos, "a secret stays at its origin", request);
  }

  const std::string body = reply.body;
  const HTTPRequestOperation judged = judge(std::move(reply), serializer);
  if (!judged.error) require(judged.response && judged.response->statusCode / 100 == 2, "only 2xx succeeds");
  require(!judged.responseString || isUTF8(*judged.responseString), "text for the log is UTF-8", body);
  if (serializer == ResponseSerializer::plain && !judged.error)
    require(std::get<std::string>(judged.responseObject) == body, "a plain body stays as it came", body);
  return 0;
}
