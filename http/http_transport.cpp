#include "http/http_transport.h"

#include <curl/curl.h>

#include <algorithm>
#include <csignal>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "http/exchange.h"

namespace fleetor {
namespace {

constexpr long idleConnections = 5;  // libcurl repeats a request on up to so many stale ones
constexpr std::chrono::hours longestWait{1};

}  // namespace

/// The network thread with all that runs on it.
class HttpTransport::Network {
 public:
  Network(Limits limits, std::string trustedCertificates)
      : limits_(limits), trustedCertificates_(std::move(trustedCertificates)) {
    [[maybe_unused]] static const CURLcode library = curl_global_init(CURL_GLOBAL_DEFAULT);
    transfers_ = curl_multi_init();
    curl_multi_setopt(transfers_, CURLMOPT_MAXCONNECTS, idleConnections);
    thread_ = std::thread([this] { run(); });
  }

  ~Network() {
    {
      const std::lock_guard lock(mutex_);
      isStopping_ = true;
    }
    curl_multi_wakeup(transfers_);
    thread_.join();
    curl_multi_cleanup(transfers_);
  }

  Network(const Network&) = delete;
  Network& operator=(const Network&) = delete;

  void send(HttpRequest request, Done done) {
    auto exchange =
        std::make_unique<Exchange>(std::move(request), std::move(done), limits_, trustedCertificates_);
    {
      const std::lock_guard lock(mutex_);
      arrivals_.push_back(std::move(exchange));
    }
    curl_multi_wakeup(transfers_);
  }

 private:
  using Exchanges = std::vector<std::unique_ptr<Exchange>>;

  void run() {
    // A closed connection is an error of the transfer and must not end the program.
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);

    while (takeArrivals()) {
      for (const auto& exchange : exchanges_)
        if (const CURLcode result = exchange->beginTurn(); result != CURLE_OK) endHop(*exchange, result);
      int running = 0;
      curl_multi_perform(transfers_, &running);
      endHops();
      const int wait = endLate();
      std::erase_if(exchanges_, [](const auto& exchange) { return exchange->isOver(); });
      curl_multi_poll(transfers_, nullptr, 0, wait, nullptr);
    }
    for (const auto& exchange : exchanges_) {
      curl_multi_remove_handle(transfers_, exchange->transfer());
      exchange->cancel();
    }
    exchanges_.clear();
  }

  /// Starts the requests that have been handed over since; false when the transport is being destroyed.
  bool takeArrivals() {
    Exchanges arrived;
    bool isStopping = false;
    {
      const std::lock_guard lock(mutex_);
      arrived.swap(arrivals_);
      isStopping = isStopping_;
    }
    for (auto& exchange : arrived) {
      if (isStopping) {
        exchange->cancel();
      } else {
        exchange->start();
        if (exchange->isOver()) continue;
        curl_multi_add_handle(transfers_, exchange->transfer());
        exchanges_.push_back(std::move(exchange));
      }
    }
    return !isStopping;
  }

  void endHops() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(transfers_, &left)) {
      Exchange* exchange = nullptr;
      curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &exchange);
      endHop(*exchange, message->data.result);
    }
  }

  void endHop(Exchange& exchange, CURLcode result) {
    curl_multi_remove_handle(transfers_, exchange.transfer());
    exchange.hopEnded(result);
    if (!exchange.isOver()) curl_multi_add_handle(transfers_, exchange.transfer());
  }

  /// Ends the exchanges that have reached their time limit; returns the milliseconds until there is something
  /// to do again.
  int endLate() {
    const auto now = Exchange::Clock::now();
    auto next = now + longestWait;
    for (const auto& exchange : exchanges_) {
      if (exchange->isOver()) continue;
      if (exchange->limit() > now) {
        next = exchange->isPaused() ? now : std::min(next, exchange->limit());
        continue;
      }
      curl_multi_remove_handle(transfers_, exchange->transfer());
      exchange->timeOut();
    }
    return static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(next - now).count());
  }

  const Limits limits_;
  const std::string trustedCertificates_;
  CURLM* transfers_ = nullptr;
  Exchanges exchanges_;  // under way; network thread only

  std::mutex mutex_;
  Exchanges arrivals_;       // guarded by the mutex
  bool isStopping_ = false;  // guarded by the mutex

  std::thread thread_;
};

HttpTransport::HttpTransport(Limits limits, std::string trustedCertificates)
    : network_(std::make_unique<Network>(limits, std::move(trustedCertificates))) {}

HttpTransport::~HttpTransport() = default;

void HttpTransport::send(HttpRequest request, Done done) {
  network_->send(std::move(request), std::move(done));
}

}  // namespace fleetor
