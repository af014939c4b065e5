// One "/live" round trip on loopback: through the request layer on the device's own queues, over the
// transport alone, and with bare HTTP libraries on the main thread. They take turns in one run, so that
// whatever else the machine does hits all of them.

#include <curl/curl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "figures.h"
#include "http/http_transport.h"
#include "qt/device/queues.h"
#include "service/api.h"
#include "service/envelopes.h"
#include "support/fake_device.h"
#include "support/memory_stores.h"

namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr const char* answer =
    R"({"total":1,"error":{"code":200,"description":"OK"},"live":{"datetime":"2026-03-10 08:15:30",)"
    R"("vehicles":{"vehicleId":7,"name":"Van 7","registration":"KR 1234A","mapLineColor":"#3366cc","icon":"van"},)"
    R"("active":"1","speed":"53","powerSupply":"13.8","powerSupplyType":"V","sig":"5","direction":"270","fuel":"41",)"
    R"("fuelType":"l","rpm":"1850","odometer":"120345","led":{"z1":"0","z3":"0","z4":"1","z6":"0","z8":"0","z14":"0",)"
    R"("z23":"0","z28":"1","z33":"0"},"street":"Harbour Street 12","temp":"21.5",)"
    R"("location":{"lat":"50.0614","lon":"19.9366"}}})";

[[noreturn]] void fail(const char* why) {
  std::fprintf(stderr, "fleetor_bench_live: %s\n", why);
  std::exit(1);
}

// The fastest service there can be, so that what is measured is the client: every request on a connection
// gets the same bytes back, without a look at what it asks for. Serves until the program ends.
class Service {
 public:
  Service() : listener_(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener_, generic, size) != 0 || listen(listener_, 8) != 0 ||
        getsockname(listener_, generic, &size) != 0)
      fail("no free port on loopback");
    port_ = ntohs(address.sin_port);
    std::thread([this] { acceptAll(); }).detach();
  }
  std::string url() const { return "http://127.0.0.1:" + std::to_string(port_); }

 private:
  void acceptAll() const {
    while (true) {
      const int connection = accept(listener_, nullptr, nullptr);
      if (connection >= 0) std::thread(serve, connection).detach();
    }
  }

  static void serve(int connection) {
    const int on = 1;
    setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    const std::string reply = "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: " +
                              std::to_string(std::string(answer).size()) + "\r\n\r\n" + answer;
    std::string received;
    char piece[4096];
    while (true) {
      const ssize_t count = recv(connection, piece, sizeof piece, 0);
      if (count <= 0) break;
      received.append(piece, static_cast<std::size_t>(count));
      if (!received.ends_with("\r\n\r\n")) continue;
      received.clear();
      if (send(connection, reply.data(), reply.size(), MSG_NOSIGNAL) < 0) break;
    }
    close(connection);
  }

  int listener_;
  int port_ = 0;
};

double quantile(std::vector<double> values, double part) {
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(part * static_cast<double>(values.size() - 1))];
}

}  // namespace

int main(int argc, char** argv) {
  using namespace fleetor;
  QCoreApplication application(argc, argv);
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 3000;
  if (rounds < 1) fail("usage: fleetor_bench_live [rounds]");
  constexpr int warmUp = 200;

  static Service service;
  test::MemoryKeyStore keyStore;
  test::MemorySettings settings;
  test::FakeReachability reachability;
  test::FakeIndicator indicator;
  test::RecordingLog log;
  test::FakeDevice device;
  QtQueues queues;
  HttpTransport transport;
  API::install({queues, transport, keyStore, settings, reachability, indicator, log, device,
                [](const std::string& text, double, bool) { fail(text.c_str()); }, [] {}});
  API::setAPIBaseURLWithString(service.url());
  API::requestAuthForToken("0123456789abcdef");
  API::configureRequest();

  const std::string url = service.url() + "/live?vehid=7";
  const auto throughAPI = [] {
    QEventLoop loop;
    API::getWithPath("/live", {{"vehid", 7}}, modelClass<LiveResponse>, {},
                     [&loop](auto response, ResponseKind, long, const std::optional<APIFailure>&) {
                       if (!response || response->live->speed != "53") fail("a wrong answer");
                       loop.quit();
                     });
    loop.exec();
  };

  const auto overTransport = [&transport, &url] {
    std::promise<std::string> body;
    HttpRequest request;
    request.url = url;
    request.method = "GET";
    request.headers = {{"Authorization", "Bearer 0123456789abcdef"}};
    transport.send(std::move(request), [&body](HttpReply reply) { body.set_value(std::move(reply.body)); });
    if (body.get_future().get() != answer) fail("a wrong answer");
  };

  CURL* const transfer = curl_easy_init();
  curl_easy_setopt(transfer, CURLOPT_URL, url.c_str());
  curl_easy_setopt(transfer, CURLOPT_PROXY, "");
  curl_slist* const headers = curl_slist_append(nullptr, "Authorization: Bearer 0123456789abcdef");
  curl_easy_setopt(transfer, CURLOPT_HTTPHEADER, headers);
  const auto append = [](const char* bytes, std::size_t, std::size_t count, void* body) {
    static_cast<std::string*>(body)->append(bytes, count);
    return count;
  };
  curl_easy_setopt(transfer, CURLOPT_WRITEFUNCTION, +append);
  const auto bareCurl = [transfer] {
    std::string body;
    curl_easy_setopt(transfer, CURLOPT_WRITEDATA, &body);
    if (curl_easy_perform(transfer) != CURLE_OK || body != answer) fail("a wrong answer");
  };

  QNetworkAccessManager manager;
  manager.setProxy(QNetworkProxy::NoProxy);
  QNetworkRequest request(QUrl(QString::fromStdString(url)));
  request.setRawHeader("Authorization", "Bearer 0123456789abcdef");
  request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  const auto bareManager = [&manager, &request] {
    QEventLoop loop;
    QNetworkReply* reply = manager.get(request);
    QObject::connect(reply, &QNetworkReply::finished, &loop, [&loop, reply] {
      if (reply->readAll() != answer) fail("a wrong answer");
      reply->deleteLater();
      loop.quit();
    });
    loop.exec();
  };

  struct Way {
    const char* name;
    std::function<void()> roundTrip;
    std::vector<double> took;
  };
  std::vector<Way> ways{{"bare libcurl", bareCurl, {}},
                        {"bare QNetworkAccessManager", bareManager, {}},
                        {"over the transport", overTransport, {}},
                        {"through API", throughAPI, {}}};
  for (int i = 0; i < warmUp + rounds; ++i)
    for (Way& way : ways) {
      const auto begin = std::chrono::steady_clock::now();
      way.roundTrip();
      const Milliseconds took = std::chrono::steady_clock::now() - begin;
      if (i >= warmUp) way.took.push_back(took.count());
    }
  API::shutDown();
  curl_easy_cleanup(transfer);
  curl_slist_free_all(headers);

  std::printf("One /live round trip on loopback, %d rounds in turn, milliseconds\n", rounds);
  std::printf("%-28s %8s %8s\n", "", "median", "p95");
  for (const Way& way : ways) {
    const double median = quantile(way.took, 0.5), high = quantile(way.took, 0.95);
    std::printf("%-28s %8.3f %8.3f\n", way.name, median, high);
    bench::record("live", way.name, "median, ms", median);
    bench::record("live", way.name, "p95, ms", high);
  }
}
