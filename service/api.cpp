#include "service/api.h"

#include <algorithm>

namespace fleetor {

namespace {

constexpr double errorToastSeconds = 3.0;

struct ServiceState {
  ServiceDevice device;
  std::string baseURLString;
};

std::shared_ptr<ServiceState> service;

}  // namespace

void API::install(ServiceDevice device) {
  APIHTTPClient::install(device);
  service = std::make_shared<ServiceState>(ServiceState{std::move(device), {}});
  Session::startNext();
}

void API::setAPIBaseURLWithString(const std::string& url) {
  service->baseURLString = url;
}

void API::configureRequest() {
  if (isLogged()) requestAuthForToken(keychain().objectForKey(sec::valueData));
  APIHTTPClient::setControlsNetworkIndicator(true);
  service->device.reachability.startMonitoring();
}

ServiceDevice& API::device() {
  return service->device;
}

void API::displayError(const std::string& text) {
  service->device.showToast(text, errorToastSeconds, true);
}

void API::rest(const std::string& path, const std::string& method, const std::optional<Params>& params,
               const std::optional<RequestBody>& body, PendingCompletion completion, MapEnvelope map,
               ErrorCodes errorCodes, const std::shared_ptr<TransferProgress>& progress) {
  const std::string url = service->baseURLString + path;
  service->device.log.line("REQUEST: " + url);
  service->device.log.line("REQUEST: " + parametersForLog(params));
  APIHTTPClient::JSONFromURLWithString(
      url, method, params, body ? std::optional(Data{body->text()}) : std::nullopt, {}, map != nullptr,
      [completion = std::move(completion), map, errorCodes = std::move(errorCodes)](
          ResponseObject object, ResponseKind kind, const std::optional<HTTPResponse>& response,
          const std::optional<APIFailure>& error) {
        handleCompletionWithJSON(std::move(object), kind, response, error, completion, map, errorCodes);
      },
      progress);
}

void API::handleCompletionWithJSON(ResponseObject object, ResponseKind kind,
                                   const std::optional<HTTPResponse>& response,
                                   std::optional<APIFailure> error, PendingCompletion completion,
                                   MapEnvelope map, const ErrorCodes& errorCodes) {
  if (!completion) return;
  std::shared_ptr<void> result;
  if (kind == ResponseKindSuccess && map) {
    try {
      auto* json = std::get_if<JSONValue>(&object);
      MappedEnvelope mapped = map(json ? std::move(*json) : JSONValue());
      if (mapped.error) kind = ResponseKindInvalidData;
      result = std::move(mapped.envelope);
      error = std::move(mapped.error);
    } catch (const std::exception&) {  // out of memory over a huge answer
      kind = ResponseKindUnexpected;
    }
  }
  const long status = response ? response->statusCode : 0;
  service->device.queues.main([=, completion = std::move(completion), result = std::move(result),
                               error = std::move(error)]() mutable {
    if (!completion->session.hasEnded()) showMessageForKind(kind, status, errorCodes);
    completion->call(std::move(result), kind, status, error);
    completion->call = nullptr;
  });
}

void API::showMessageForKind(ResponseKind kind, long status, const ErrorCodes& errorCodes) {
  const auto show = [](const char* message) {
    displayError(service->device.device.localizedString(message));
  };
  const bool unauthorised = status == 401 || status == 403;
  switch (kind) {
    case ResponseKindInvalidData:
      return show("The data returned by the server is incorrect, please try again");
    case ResponseKindHTTP:
      if (unauthorised) {
        if (!isLogged()) return;
        logoutUser();
        return show("Your session has expired, you will be logged out");
      }
      if (std::find(errorCodes.begin(), errorCodes.end(), status) != errorCodes.end()) return;
      return show("An unexpected error occurred, please try again");
    case ResponseKindConnection:
      return show("The call ended with an error, please check the status of your Internet connection");
    case ResponseKindUnexpected:
      return show("An unexpected error occurred, please try again");
    case ResponseKindSuccess:
    case ResponseKindCancelled:
      return;
  }
}

}  // namespace fleetor
