#pragma once

#include <curl/curl.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "http/answer_body.h"
#include "http/http_transport.h"
#include "http/web_address.h"

namespace fleetor {

/// One request of the transport, through all of its redirects, until `done` has been called. It prepares the
/// transfer of each hop and judges how it ended; its owner runs the transfers. Made on any thread, used on
/// the network thread.
class Exchange {
 public:
  using Clock = std::chrono::steady_clock;

  Exchange(HttpRequest request, Transport::Done done, const HttpTransport::Limits& limits,
           const std::string& trustedCertificates);
  Exchange(const Exchange&) = delete;
  Exchange& operator=(const Exchange&) = delete;

  bool isOver() const { return !done_; }
  bool isPaused() const { return isPaused_; }         ///< waits for its next turn
  CURL* transfer() const { return transfer_.get(); }  ///< of the current hop, while the exchange is not over

  void start();                    ///< prepares the first hop, or is over
  void hopEnded(CURLcode result);  ///< prepares the next hop, or is over

  /// Call before each round of transfers: begins a turn, and resumes the transfer if it was paused at the end
  /// of the last one. Anything but CURLE_OK means that the hop has ended that way.
  CURLcode beginTurn();

  Clock::time_point limit() const;  ///< when it times out unless something arrives or leaves before
  void timeOut();                   ///< is over
  void cancel();                    ///< is over

 private:
  struct FreeTransfer {
    void operator()(CURL* transfer) const { curl_easy_cleanup(transfer); }
  };
  struct FreeList {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
  };

  static std::size_t takeHeader(const char* bytes, std::size_t one, std::size_t count, void* self);
  static std::size_t takeBody(const char* bytes, std::size_t one, std::size_t count, void* self);
  static int watchUpload(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t sent);

  void prepareHop();
  void setHeaders();
  bool hasHeader(const char* name) const;
  void dropHeader(const char* name);
  bool headerArrived(std::string_view line);
  bool bodyArrived(std::string_view bytes);
  bool endsTurn();
  void arrived(std::size_t count);
  bool refuse(long error, std::string why);
  int currentStatus() const;
  std::string answerHeader(const char* name) const;
  bool followRedirect();
  void finish(long error, const std::string& description);

  HttpRequest request_;
  Transport::Done done_;
  const HttpTransport::Limits& limits_;
  const std::string& trustedCertificates_;

  std::optional<WebAddress> address_;
  std::unique_ptr<curl_slist, FreeList> headers_;
  std::unique_ptr<CURL, FreeTransfer> transfer_;
  char problem_[CURL_ERROR_SIZE] = {};
  std::size_t headBytes_ = 0;
  int redirects_ = 0;

  // Of the current hop.
  int status_ = 0;                                       // from when the answer's head has arrived whole
  std::optional<AnswerBody> body_;                       // from its first byte on
  std::optional<std::pair<long, std::string>> refusal_;  // why a callback stopped the transfer
  std::optional<Clock::time_point> turnBegan_;
  bool isPaused_ = false;

  const Clock::time_point began_ = Clock::now();
  Clock::time_point moved_ = began_;              // the last time that anything arrived or left
  std::optional<Clock::time_point> windowBegan_;  // with the answer, and with each `slowBytes` of it
  std::size_t windowBytes_ = 0;
  curl_off_t sent_ = 0;
};

}  // namespace fleetor
