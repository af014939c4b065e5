#include "service/api_http_client.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <utility>

#include "platform/ascii.h"
#include "service/network_activity_indicator_manager.h"

namespace fleetor {

namespace {

struct RequestSettings {
  std::string contentType = APIHTTPClient::automaticContentType;
  std::int32_t timeout = 30;
  RequestCachePolicy cachePolicy = RequestCachePolicy::reloadIgnoringLocalCacheData;
};

/// The class-level state. Requests in flight hold on to the one that they were started with.
struct ClientState {
  explicit ClientState(const ServiceDevice& given)
      : device(given),
        indicator(AFNetworkActivityIndicatorManager::install(given.queues, given.networkActivity)) {}

  RequestSettings currentSettings() const {
    const std::lock_guard lock(mutex);
    return settings;
  }
  template <class Change>
  void change(Change apply) {
    const std::lock_guard lock(mutex);
    apply(settings);
  }

  /// Hands the request over unless the layer was shut down, which waits for this.
  bool send(HttpRequest request, const Transport::Done& done) {
    const std::lock_guard lock(sending);
    if (isShutDown) return false;
    device.transport.send(std::move(request), done);
    return true;
  }

  ServiceDevice device;
  std::shared_ptr<AFNetworkActivityIndicatorManager> indicator;
  RequestHeaders headers;
  mutable std::mutex mutex;
  RequestSettings settings;
  std::mutex sending;
  bool isShutDown = false;
};

std::shared_ptr<ClientState> client;

void setHeader(HttpRequest& request, const std::string& name, const std::string& value) {
  if (!isHeaderValue(value)) throw std::invalid_argument("a value cannot stand in the header " + name);
  for (auto& [known, current] : request.headers) {
    if (lowerCase(known) != lowerCase(name)) continue;
    known = name;
    current = value;
    return;
  }
  request.headers.emplace_back(name, value);
}

std::string contentTypeFor(const std::string& body, const std::string& configured) {
  std::string type = configured;
  if (!body.empty() && configured == APIHTTPClient::automaticContentType) {
    const bool enclosed =
        (body.front() == '{' && body.back() == '}') || (body.front() == '[' && body.back() == ']');
    type = enclosed ? "application/json" : "application/x-www-form-urlencoded";
  }
  return type + "; charset=utf-8";
}

bool hasQuery(const std::string& url) {
  return url.substr(0, url.find('#')).find('?') != std::string::npos;
}

HttpRequest buildRequest(const ClientState& state, const std::string& url, const std::string& method,
                         const std::optional<Params>& params, const std::optional<Data>& body,
                         const Headers& headers) {
  const RequestSettings settings = state.currentSettings();
  HttpRequest request;
  request.url = url;
  request.method = method;
  request.timeoutSeconds = settings.timeout;
  request.reloadIgnoringLocalCacheData =
      settings.cachePolicy == RequestCachePolicy::reloadIgnoringLocalCacheData;
  if (body)
    request.body = body->bytes;
  else if (params && method == "GET")
    request.url += (hasQuery(url) ? "&" : "?") + parameterText(*params);
  else if (params)
    request.body = parameterText(*params);

  if (settings.contentType != APIHTTPClient::automaticContentType)
    setHeader(request, "Content-type", settings.contentType);
  else if (request.body)
    setHeader(request, "Content-type", contentTypeFor(*request.body, settings.contentType));
  for (const auto& [name, value] : state.headers.snapshot())
    setHeader(request, name, value);
  for (const auto& [name, value] : headers)
    setHeader(request, name, value);
  if (request.body) setHeader(request, "Content-Length", std::to_string(request.body->size()));
  return request;
}

/// Classifies a failed operation and logs it.
ResponseKind classify(const ClientState& state, const APIFailure& error,
                      const HTTPRequestOperation& operation) {
  Log& log = state.device.log;
  const int status = operation.response ? operation.response->statusCode : 0;
  ResponseKind kind = ResponseKindConnection;
  if (operation.isCancelled) {
    kind = ResponseKindCancelled;
  } else if (status != 0) {
    log.line("Kind = HTTP, " + std::to_string(status));
    kind = ResponseKindHTTP;
  } else if (error.code == url_error::notConnectedToInternet || !state.device.reachability.isReachable()) {
    log.line("Kind = CONNECTION");
  } else if (error.code == url_error::timedOut) {
    log.line("Kind = TIMEOUT");
  } else {
    log.line("Error: " + error.domain + " " + std::to_string(error.code) + " " + error.localizedDescription);
    kind = ResponseKindUnexpected;
  }
  log.line(operation.responseString.value_or("(null)") + ", " + std::to_string(status));
  return kind;
}

void complete(const ClientState& state, HTTPRequestOperation operation, const APIHTTPCompletion& completion) {
  const ResponseKind kind =
      operation.error ? classify(state, *operation.error, operation) : ResponseKindSuccess;
  completion(std::move(operation.responseObject), kind, operation.response, operation.error);
}

HTTPRequestOperation judgeSafely(HttpReply reply, ResponseSerializer serializer) {
  const int status = reply.status;
  try {
    return judge(std::move(reply), serializer);
  } catch (const std::exception& problem) {  // out of memory over a huge answer
    HTTPRequestOperation operation;
    if (status != 0) operation.response = HTTPResponse{status};
    operation.error = APIFailure{failure_domain::url, url_error::cannotDecodeContentData, problem.what()};
    return operation;
  }
}

}  // namespace

bool isHeaderValue(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char each) {
    return (static_cast<unsigned char>(each) < 0x20 && each != '\t') || each == 0x7f;
  });
}

void RequestHeaders::setObject(const std::string& value, const std::string& name) {
  const std::lock_guard lock(mutex_);
  entries_[name] = value;
}

std::optional<std::string> RequestHeaders::objectForKey(const std::string& name) const {
  const std::lock_guard lock(mutex_);
  const auto found = entries_.find(name);
  return found == entries_.end() ? std::nullopt : std::optional(found->second);
}

Headers RequestHeaders::snapshot() const {
  const std::lock_guard lock(mutex_);
  return entries_;
}

void APIHTTPClient::install(const ServiceDevice& device) {
  client = std::make_shared<ClientState>(device);
}

void APIHTTPClient::shutDown() {
  const std::lock_guard lock(client->sending);
  client->isShutDown = true;
}

RequestHeaders& APIHTTPClient::requestHeaders() {
  return client->headers;
}

void APIHTTPClient::setRequestContentType(const std::string& type) {
  client->change([&](RequestSettings& settings) { settings.contentType = type; });
}

void APIHTTPClient::setTimeoutInSeconds(std::int32_t seconds) {
  client->change([&](RequestSettings& settings) { settings.timeout = seconds; });
}

void APIHTTPClient::setCachingPolicy(RequestCachePolicy policy) {
  client->change([&](RequestSettings& settings) { settings.cachePolicy = policy; });
}

void APIHTTPClient::setDefaultTextEncoding(unsigned long) {}

void APIHTTPClient::setControlsNetworkIndicator(bool controls) {
  client->indicator->setEnabled(controls);
}

std::string APIHTTPClient::contentTypeForRequestString(const std::string& body) {
  return contentTypeFor(body, client->currentSettings().contentType);
}

void APIHTTPClient::JSONFromURLWithString(const std::string& url, const std::string& method,
                                          const std::optional<Params>& params,
                                          const std::optional<Data>& bodyData, const Headers& headers,
                                          bool jsonResponse, APIHTTPCompletion completion,
                                          const std::shared_ptr<TransferProgress>& progress) {
  const auto serializer = jsonResponse ? ResponseSerializer::JSON : ResponseSerializer::plain;
  auto shared = std::make_shared<const APIHTTPCompletion>(std::move(completion));

  // Global queue: judge and decode the answer. Network thread: only pass it on.
  auto ended = [state = client, serializer, shared](HttpReply reply) {
    auto held = std::make_shared<HttpReply>(std::move(reply));
    state->device.queues.global([state, held, serializer, shared] {
      complete(*state, judgeSafely(std::move(*held), serializer), *shared);
      state->indicator->operationEnded();
    });
  };

  client->device.queues.global([=, state = client]() mutable {
    state->indicator->operationStarted();
    try {
      HttpRequest request = buildRequest(*state, url, method, params, bodyData, headers);
      request.progress = progress;
      if (state->send(std::move(request), ended)) return;
      // The completion will not be called, and what it captures may only be released on the main thread.
      state->device.queues.main([shared = std::move(shared), ended = std::move(ended)] {});
    } catch (const std::exception&) {
      (*shared)({}, ResponseKindUnexpected, std::nullopt, std::nullopt);
    }
    state->indicator->operationEnded();
  });
}

void APIHTTPClient::handleError(const APIFailure& error, HTTPRequestOperation operation,
                                const APIHTTPCompletion& completion) {
  operation.error = error;
  complete(*client, std::move(operation), completion);
}

}  // namespace fleetor
