#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

#include "platform/transport.h"

namespace fleetor {

/// The transport on libcurl. It runs on a separate network thread and speaks HTTP/1.1. Every request that
/// finds no idle connection opens one, so that no request waits because others are slow. It keeps no cookies
/// and no cache, reads no .netrc, and takes its proxy from the environment, except for addresses of this
/// machine.
///
/// Sending again: a POST or PUT goes out once, on a new connection. A GET or DELETE on a connection
/// that was kept open goes out again when that connection closes before the first byte of an answer.
///
/// Redirects: 301 and 302 turn a POST into a GET, 303 turns everything into a GET, 307 and 308 keep verb and
/// body. An answer that leads from https to http, or to no usable URL, is handed back as it is.
/// "Authorization" is dropped at the first hop to another origin and does not come back. A body never leaves
/// its origin: a redirect that would take it along fails with badServerResponse.
///
/// The destructor ends every unanswered request with url_error::cancelled (its `done` runs on the network
/// thread before the destructor returns) and waits for the network thread, but for no peer. It must not run
/// on the network thread.
class HttpTransport final : public Transport {
 public:
  struct Limits {
    /// Of a body, as it arrives and unpacked. A longer one, announced or real, fails with
    /// dataLengthExceedsMaximum.
    std::size_t bodyBytes = std::size_t{64} << 20;
    /// Unpacked bytes for each byte that arrived; the first unpacked MiB is exempt. More fails with
    /// dataLengthExceedsMaximum.
    std::size_t unpackingRatio = 200;
    /// Of all header lines of a request, those of interim answers and redirects included. More fails with
    /// cannotParseResponse.
    std::size_t headBytes = std::size_t{256} << 10;
    int redirects = 16;  ///< one more fails with tooManyRedirects

    /// An answer that brings less than `slowBytes` in `slow`, from its first line on, fails with timedOut,
    /// and so does a request that takes longer than `whole`, all of its redirects included.
    std::size_t slowBytes = 1024;
    std::chrono::milliseconds slow{30'000};
    std::chrono::milliseconds whole{300'000};
  };

  HttpTransport() : HttpTransport(Limits{}) {}

  /// `trustedCertificates` is a PEM file, in place of the system's store.
  explicit HttpTransport(Limits limits, std::string trustedCertificates = {});
  ~HttpTransport() override;

  HttpTransport(const HttpTransport&) = delete;
  HttpTransport& operator=(const HttpTransport&) = delete;

  void send(HttpRequest request, Done done) override;

 private:
  class Network;
  std::unique_ptr<Network> network_;
};

}  // namespace fleetor
