#pragma once

#include <cstddef>
#include <memory>

#include "platform/transport.h"

namespace fleetor {

/// The transport on Qt's network access manager. It lives on a network thread of its own, speaks HTTP/1.1,
/// keeps no cookies and no cache, and asks the system for a proxy, except for addresses of this machine.
///
/// Redirects: 301 and 302 turn a POST into a GET, 303 turns everything into a GET, 307 and 308 keep verb and
/// body. An answer that leads from https to http, or to no usable URL, is handed back as it is.
/// "Authorization" is dropped at the first hop to another origin and does not come back. A body never leaves
/// its origin: a redirect that would take it along fails with badServerResponse.
///
/// The destructor ends every unanswered request with url_error::cancelled (its `done` runs on the network
/// thread before the destructor returns) and waits for the network thread. It must not run on the network
/// thread.
class HttpTransport final : public Transport {
 public:
  struct Limits {
    std::size_t bodyBytes = std::size_t{256} << 20;  ///< a longer body fails with dataLengthExceedsMaximum
    int redirects = 16;                              ///< one more fails with tooManyRedirects
  };

  HttpTransport();
  explicit HttpTransport(Limits limits);
  ~HttpTransport() override;

  HttpTransport(const HttpTransport&) = delete;
  HttpTransport& operator=(const HttpTransport&) = delete;

  void send(HttpRequest request, Done done) override;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace fleetor
