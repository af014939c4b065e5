#include "http/exchange.h"

#include <sys/socket.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <utility>

#include "http/system_reachability.h"
#include "platform/ascii.h"

namespace fleetor {
namespace {

constexpr double longestTimeout = 24 * 3600;  // seconds

// How long one answer may occupy the network thread before the others continue: a hostile body can be slow
// to unpack.
constexpr std::chrono::milliseconds longestTurn{5};

// A line break in a header would begin another one.
bool isOneLine(const std::pair<std::string, std::string>& header) {
  constexpr std::string_view breaks("\r\n\0", 3);
  return header.first.find_first_of(breaks) == std::string::npos &&
         header.second.find_first_of(breaks) == std::string::npos;
}

bool equalsIgnoringCase(std::string_view left, std::string_view right) {
  return lowerCase(left) == lowerCase(right);
}

// libcurl would unpack such an answer itself, without our bounds. No request asks for one.
bool isPackedForTransfer(std::string_view line) {
  constexpr std::string_view name = "Transfer-Encoding:", blanks = " \t\r\n";
  if (!equalsIgnoringCase(line.substr(0, name.size()), name)) return false;
  line.remove_prefix(std::min(line.size(), line.find_first_not_of(blanks, name.size())));
  return !equalsIgnoringCase(line.substr(0, line.find_last_not_of(blanks) + 1), "chunked");
}

long codeOf(CURLcode result) {
  switch (result) {
    case CURLE_OK:
      return 0;
    case CURLE_URL_MALFORMAT:
      return url_error::badUrl;
    case CURLE_COULDNT_RESOLVE_HOST:
      return hasInternetRoute() ? url_error::cannotFindHost : url_error::notConnectedToInternet;
    case CURLE_COULDNT_CONNECT:
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_PROXY:
      return hasInternetRoute() ? url_error::cannotConnectToHost : url_error::notConnectedToInternet;
    case CURLE_OPERATION_TIMEDOUT:
      return url_error::timedOut;
    case CURLE_FILESIZE_EXCEEDED:
      return url_error::dataLengthExceedsMaximum;
    case CURLE_UNSUPPORTED_PROTOCOL:  // an answer that is not HTTP/1
    case CURLE_WEIRD_SERVER_REPLY:
      return url_error::cannotParseResponse;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_ISSUER_ERROR:
      return url_error::secureConnectionFailed;
    default:
      return url_error::networkConnectionLost;
  }
}

bool isProxySet() {
  return std::getenv("http_proxy") || std::getenv("all_proxy") || std::getenv("ALL_PROXY");
}

// A program that the client starts, a browser for instance, must not hold its connections open.
curl_socket_t openSocket(void*, curlsocktype, curl_sockaddr* address) {
  return ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
}

}  // namespace

Exchange::Exchange(HttpRequest request, Transport::Done done, const HttpTransport::Limits& limits,
                   const std::string& trustedCertificates)
    : request_(std::move(request)),
      done_(std::move(done)),
      limits_(limits),
      trustedCertificates_(trustedCertificates) {}

void Exchange::start() {
  address_ = WebAddress::parse(request_.url);
  if (!address_) return finish(url_error::badUrl, "not an http URL");
  if (!std::all_of(request_.headers.begin(), request_.headers.end(), isOneLine))
    return finish(url_error::badUrl, "a header of more than one line");
  prepareHop();
}

void Exchange::cancel() {
  finish(url_error::cancelled, "cancelled");
}

void Exchange::timeOut() {
  finish(url_error::timedOut, "timed out");
}

void Exchange::prepareHop() {
  // A new handle: after a reset libcurl would append a folded first line to a header that it has freed.
  transfer_.reset(curl_easy_init());
  CURL* const transfer = transfer_.get();
  status_ = 0;
  body_.reset();
  isPaused_ = false;
  windowBegan_.reset();
  sent_ = 0;

  const auto set = [transfer](CURLoption option, auto value) { curl_easy_setopt(transfer, option, value); };
  set(CURLOPT_PRIVATE, this);
  set(CURLOPT_ERRORBUFFER, problem_);
  set(CURLOPT_NOSIGNAL, 1L);
  set(CURLOPT_QUICK_EXIT, 1L);  // does not wait for a pending name look-up
  set(CURLOPT_OPENSOCKETFUNCTION, openSocket);

  set(CURLOPT_URL, address_->text().c_str());
  set(CURLOPT_PATH_AS_IS, 1L);
  set(CURLOPT_PROTOCOLS_STR, "http,https");
  set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
  set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
  if (!trustedCertificates_.empty()) set(CURLOPT_CAINFO, trustedCertificates_.c_str());
  set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
  if (address_->isThisMachine())
    set(CURLOPT_PROXY, "");
  else if (!address_->isSecure() && address_->text().ends_with('?') && isProxySet())
    set(CURLOPT_REQUEST_TARGET, address_->text().c_str());  // otherwise libcurl drops the "?" towards a proxy

  set(CURLOPT_USERAGENT, "Fleetor");
  set(CURLOPT_CUSTOMREQUEST, request_.method.c_str());
  if (!request_.body && (request_.method == "POST" || request_.method == "PUT")) request_.body.emplace();
  if (request_.body) {
    set(CURLOPT_POSTFIELDS, request_.body->data());
    set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request_.body->size()));
    // On a reused connection libcurl may send it a second time.
    set(CURLOPT_FRESH_CONNECT, 1L);
  }
  setHeaders();
  set(CURLOPT_HTTPHEADER, headers_.get());

  set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(limits_.bodyBytes));
  set(CURLOPT_HEADERFUNCTION, takeHeader);
  set(CURLOPT_HEADERDATA, this);
  set(CURLOPT_WRITEFUNCTION, takeBody);
  set(CURLOPT_WRITEDATA, this);
  set(CURLOPT_NOPROGRESS, 0L);
  set(CURLOPT_XFERINFOFUNCTION, watchUpload);
  set(CURLOPT_XFERINFODATA, this);
}

void Exchange::setHeaders() {
  headers_.reset();
  const auto add = [this](const std::string& line) {
    headers_.reset(curl_slist_append(headers_.release(), line.c_str()));
  };
  add("Accept-Encoding: gzip, deflate");
  // A name without a value removes the header that libcurl would add.
  add("Accept:");
  add("Expect:");
  if (request_.body && !hasHeader("Content-Type")) add("Content-Type:");
  for (const auto& [name, value] : request_.headers)
    add(value.empty() ? name + ';' : std::string(name).append(": ").append(value));
}

std::size_t Exchange::takeHeader(const char* bytes, std::size_t, std::size_t count, void* self) {
  return static_cast<Exchange*>(self)->headerArrived({bytes, count}) ? count : 0;
}

std::size_t Exchange::takeBody(const char* bytes, std::size_t, std::size_t count, void* self) {
  auto* const exchange = static_cast<Exchange*>(self);
  if (exchange->endsTurn()) return CURL_WRITEFUNC_PAUSE;
  try {
    return exchange->bodyArrived({bytes, count}) ? count : 0;
  } catch (const std::exception& noMemory) {
    exchange->refuse(url_error::dataLengthExceedsMaximum, noMemory.what());
    return 0;
  }
}

CURLcode Exchange::beginTurn() {
  turnBegan_.reset();
  return std::exchange(isPaused_, false) ? curl_easy_pause(transfer(), CURLPAUSE_CONT) : CURLE_OK;
}

bool Exchange::endsTurn() {
  const auto now = Clock::now();
  if (!turnBegan_) turnBegan_ = now;
  return isPaused_ = now - *turnBegan_ > longestTurn;
}

int Exchange::watchUpload(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t sent) {
  auto* const exchange = static_cast<Exchange*>(self);
  if (std::exchange(exchange->sent_, sent) != sent) exchange->moved_ = Clock::now();
  return 0;
}

bool Exchange::headerArrived(std::string_view line) {
  arrived(line.size());
  headBytes_ += line.size();
  if (headBytes_ > limits_.headBytes) return refuse(url_error::cannotParseResponse, "the head is too long");
  if (isPackedForTransfer(line)) return refuse(url_error::cannotParseResponse, "packed for its transfer");
  if ((line == "\r\n" || line == "\n") && currentStatus() >= 200) status_ = currentStatus();
  return true;
}

bool Exchange::bodyArrived(std::string_view bytes) {
  arrived(bytes.size());
  if (!body_) {
    curl_off_t announced = 0;
    curl_easy_getinfo(transfer_.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &announced);
    body_.emplace(limits_.bodyBytes, limits_.unpackingRatio, answerHeader("Content-Encoding"), announced);
    if (request_.progress) {
      request_.progress->received = 0;
      request_.progress->total = std::max<std::int64_t>(announced, 0);
    }
  }
  if (request_.progress) request_.progress->received += std::ssize(bytes);
  switch (body_->add(bytes)) {
    case AnswerBody::Verdict::good:
      return true;
    case AnswerBody::Verdict::tooLong:
      return refuse(url_error::dataLengthExceedsMaximum, "the answer is too long");
    case AnswerBody::Verdict::broken:
      return refuse(url_error::cannotDecodeContentData, "the answer cannot be unpacked");
  }
  return false;
}

int Exchange::currentStatus() const {
  long status = 0;
  curl_easy_getinfo(transfer_.get(), CURLINFO_RESPONSE_CODE, &status);
  return static_cast<int>(status);
}

void Exchange::arrived(std::size_t count) {
  moved_ = Clock::now();
  windowBytes_ += count;
  if (windowBegan_ && windowBytes_ < limits_.slowBytes) return;
  windowBegan_ = moved_;
  windowBytes_ = 0;
}

Exchange::Clock::time_point Exchange::limit() const {
  auto limit = began_ + limits_.whole;
  if (windowBegan_) limit = std::min(limit, *windowBegan_ + limits_.slow);
  if (request_.timeoutSeconds > 0) {
    const std::chrono::duration<double> idle(std::min(request_.timeoutSeconds, longestTimeout));
    limit = std::min(limit, moved_ + std::chrono::duration_cast<Clock::duration>(idle));
  }
  return limit;
}

bool Exchange::refuse(long error, std::string why) {
  refusal_ = {error, std::move(why)};
  return false;
}

std::string Exchange::answerHeader(const char* name) const {
  curl_header* header = nullptr;
  const auto found = curl_easy_header(transfer_.get(), name, 0, CURLH_HEADER, -1, &header);
  if (found != CURLHE_OK) return {};
  // libcurl keeps the line break of an empty value.
  const std::string_view value = header->value;
  return std::string(value.substr(0, value.find_last_not_of("\r\n") + 1));
}

bool Exchange::hasHeader(const char* name) const {
  return std::any_of(request_.headers.begin(), request_.headers.end(),
                     [name](const auto& header) { return equalsIgnoringCase(header.first, name); });
}

void Exchange::dropHeader(const char* name) {
  std::erase_if(request_.headers,
                [name](const auto& header) { return equalsIgnoringCase(header.first, name); });
}

void Exchange::hopEnded(CURLcode result) {
  if (refusal_) return finish(refusal_->first, refusal_->second);
  if (result == CURLE_FILESIZE_EXCEEDED) status_ = currentStatus();  // ended by a line of the head
  if (result != CURLE_OK) return finish(codeOf(result), *problem_ ? problem_ : curl_easy_strerror(result));
  if (status_ == 0) return finish(url_error::networkConnectionLost, "the answer has no whole head");
  if (body_ && !body_->isWhole())
    return finish(url_error::cannotDecodeContentData, "the packed answer is cut");
  if (!followRedirect()) finish(0, {});
}

bool Exchange::followRedirect() {
  if (status_ != 301 && status_ != 302 && status_ != 303 && status_ != 307 && status_ != 308) return false;
  const std::string location = answerHeader("Location");
  if (location.empty()) return false;
  const auto next = address_->resolved(location);
  if (!next || (address_->isSecure() && !next->isSecure())) return false;
  if (++redirects_ > limits_.redirects) {
    status_ = 0;
    finish(url_error::tooManyRedirects, "too many redirects");
    return true;
  }

  const bool isSameOrigin = address_->isSameOrigin(*next);
  const bool becomesGet = status_ == 303 || (status_ <= 302 && request_.method == "POST");
  if (!isSameOrigin && !becomesGet && request_.body && !request_.body->empty()) {
    status_ = 0;
    finish(url_error::badServerResponse, "redirected to another origin, with a body that stays at its own");
    return true;
  }
  if (!isSameOrigin) dropHeader("Authorization");
  if (becomesGet) {
    request_.method = "GET";
    request_.body.reset();
    dropHeader("Content-Type");
    dropHeader("Content-Length");
  }
  address_ = next;
  prepareHop();
  return true;
}

void Exchange::finish(long error, const std::string& description) {
  HttpReply reply;
  reply.status = status_;
  reply.error = error;
  reply.errorDescription = description;
  if (status_ != 0) reply.contentType = answerHeader("Content-Type");
  if (error == 0 && body_) reply.body = body_->take();
  body_.reset();
  std::exchange(done_, nullptr)(std::move(reply));
}

}  // namespace fleetor
