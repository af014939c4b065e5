#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace fleetor {

/// How much of the body of an answer has arrived, in bytes as they are sent, before any unpacking. Written on
/// the network thread, read on any.
struct TransferProgress {
  std::atomic<std::int64_t> received = 0;
  std::atomic<std::int64_t> total = 0;  ///< 0: the service does not state it
};

/// One request, complete: the transport adds nothing that the service could notice beyond "Host",
/// "Accept-Encoding" and, where the request has none, "User-Agent".
struct HttpRequest {
  std::string
      url;  ///< absolute, already escaped, without a user name; sent as it is, a trailing "?" included
  std::string method;  ///< "GET", "POST", "PUT" or "DELETE"
  std::vector<std::pair<std::string, std::string>>
      headers;                      ///< spelled as they go on the wire, one line each, no name twice
  std::optional<std::string> body;  ///< nothing sends no body at all
  double timeoutSeconds = 30;       ///< longest time without any progress, connecting included; 0 sets none
  bool reloadIgnoringLocalCacheData = true;
  std::shared_ptr<TransferProgress> progress = {};  ///< null: nobody wants to know
};

/// The error codes of the URL-loading system that the client distinguishes.
namespace url_error {
inline constexpr long cancelled = -999;
inline constexpr long badUrl = -1000;
inline constexpr long timedOut = -1001;
inline constexpr long cannotFindHost = -1003;
inline constexpr long cannotConnectToHost = -1004;
inline constexpr long networkConnectionLost = -1005;
inline constexpr long tooManyRedirects = -1007;
inline constexpr long notConnectedToInternet = -1009;
inline constexpr long badServerResponse = -1011;
inline constexpr long cannotDecodeContentData = -1016;
inline constexpr long cannotParseResponse = -1017;
inline constexpr long dataLengthExceedsMaximum = -1103;
inline constexpr long secureConnectionFailed = -1200;
}  // namespace url_error

/// What came back. A transfer that broke after its headers arrived has both a status and an error.
struct HttpReply {
  int status = 0;                ///< 0 when no answer arrived
  std::string contentType;       ///< value of the answer's "Content-Type", parameters included; may be empty
  std::string body;              ///< after removal of any transfer or content encoding; empty beside an error
  long error = 0;                ///< 0, or one of url_error
  std::string errorDescription;  ///< for the log: why, down to what is wrong with a certificate
};

/// Sends requests. `send` may be called from any thread and returns at once; transfers run on a separate
/// network thread. `done` is called exactly once for each request, on the network thread, so
/// it must be quick; it is not called any more once the transport's destructor has returned. Redirects are
/// followed, but neither the header "Authorization" nor a body ever reaches another origin (scheme, host and
/// port). Nothing is cached or kept in cookies. A request is sent once; only a GET or DELETE, which do no
/// harm twice, may go out again when a connection that was kept open closes before any byte of an answer.
///
/// Whatever a service sends, a request ends: size, unpacked size, head, slowness and time as a whole have
/// bounds, which the implementation states, and no answer keeps another request waiting.
class Transport {
 public:
  using Done = std::function<void(HttpReply)>;

  virtual ~Transport() = default;
  virtual void send(HttpRequest request, Done done) = 0;
};

}  // namespace fleetor
