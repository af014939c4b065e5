#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "service/request_parameters.h"
#include "service/response_kind.h"
#include "service/response_serializer.h"
#include "service/service_device.h"

namespace fleetor {

using Headers = std::map<std::string, std::string>;

/// Whether the text is a valid header value: a control character would end the header and could begin
/// another.
bool isHeaderValue(std::string_view text);

/// The headers that every request carries: a live dictionary, written on the main thread while requests are
/// built on the global queue. Each operation is atomic; a request takes one snapshot when it is built.
class RequestHeaders {
 public:
  void setObject(const std::string& value, const std::string& name);
  std::optional<std::string> objectForKey(const std::string& name) const;
  Headers snapshot() const;

 private:
  mutable std::mutex mutex_;
  Headers entries_;
};

enum class RequestCachePolicy : unsigned long {
  useProtocolCachePolicy = 0,
  reloadIgnoringLocalCacheData = 1,
};

/// A request body as bytes.
struct Data {
  std::string bytes;
};

/// Called exactly once, on a thread of the global queue.
using APIHTTPCompletion =
    std::function<void(ResponseObject object, ResponseKind kind, const std::optional<HTTPResponse>& response,
                       const std::optional<APIFailure>& error)>;

/// Turns a URL, a verb and parameters or a body into one HTTP request, sends it and reports the raw outcome.
/// Class-level state only; every operation may be called from any thread once `install` has returned.
class APIHTTPClient {
 public:
  static constexpr const char* automaticContentType = "jsonmodel/automatic";

  /// Resets the class-level state and binds it to this device: no headers, automatic content type, 30
  /// seconds, no cache. Once, on the main thread, before the first request.
  static void install(const ServiceDevice& device);

  /// From here on no request is sent any more, not even one that is being built, and the transport may be
  /// destroyed.
  static void shutDown();

  static RequestHeaders& requestHeaders();
  static void setRequestContentType(const std::string& type);
  static void setTimeoutInSeconds(std::int32_t seconds);
  static void setCachingPolicy(RequestCachePolicy policy);
  static void setDefaultTextEncoding(unsigned long encoding);  ///< changes nothing: all text is UTF-8
  static void setControlsNetworkIndicator(bool controls);

  /// The content type for a body: JSON when it is enclosed in braces or brackets, otherwise a form. An empty
  /// body gets the automatic marker itself.
  static std::string contentTypeForRequestString(const std::string& body);
  static std::string urlEncode(const ParamValue& value) { return fleetor::urlEncode(value); }

  static void JSONFromURLWithString(const std::string& url, const std::string& method,
                                    const std::optional<Params>& params,
                                    const std::optional<std::string>& bodyString, bool jsonResponse,
                                    APIHTTPCompletion completion) {
    JSONFromURLWithString(url, method, params, bodyString, {}, jsonResponse, std::move(completion));
  }
  static void JSONFromURLWithString(const std::string& url, const std::string& method,
                                    const std::optional<Params>& params,
                                    const std::optional<std::string>& bodyString, const Headers& headers,
                                    bool jsonResponse, APIHTTPCompletion completion) {
    JSONFromURLWithString(url, method, params, bodyString ? std::optional(Data{*bodyString}) : std::nullopt,
                          headers, jsonResponse, std::move(completion));
  }

  /// Returns at once. The request is built and sent on the global queue, its answer judged and decoded there.
  /// A given body wins over the parameters; parameters are the query of a "GET" and the form body of any
  /// other verb. Whoever hands over `progress` may watch how much of the answer has come.
  static void JSONFromURLWithString(const std::string& url, const std::string& method,
                                    const std::optional<Params>& params, const std::optional<Data>& bodyData,
                                    const Headers& headers, bool jsonResponse, APIHTTPCompletion completion,
                                    const std::shared_ptr<TransferProgress>& progress = {});

  /// Classifies a failed operation, logs it and reports it to the completion.
  static void handleError(const APIFailure& error, HTTPRequestOperation operation,
                          const APIHTTPCompletion& completion);
};

}  // namespace fleetor
