#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "model/json_model.h"
#include "service/api_http_client.h"
#include "service/keychain_item_wrapper.h"
#include "service/model_class.h"
#include "service/service_device.h"
#include "service/session.h"

namespace fleetor {

/// A screen's completion: the envelope or nothing, how the request ended, the HTTP status or 0, and the
/// failure or nothing. Called exactly once, on the main thread, after any standard message has been shown.
template <class R>
using APICompletion = std::function<void(std::shared_ptr<R> response, ResponseKind kind, long status,
                                         const std::optional<APIFailure>& error)>;

/// HTTP statuses that the caller handles itself: no standard message is shown for them. 401 and 403 are never
/// left to the caller.
using ErrorCodes = std::vector<long>;

/// A record as a JSON body.
class RequestBody {
 public:
  template <std::derived_from<APIModel> Record>
  RequestBody(const Record& record) : text_(JSONModel::toJSONString(record)) {}
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

/// Requests to the service, and the signed-in session. Main thread only, unless stated otherwise at an
/// operation.
///
///     API::getWithPath("/live", {{"vehid", id}}, modelClass<LiveResponse>, {},
///                      [self](auto response, auto kind, auto status, auto& error) { ... });
///
/// The path of every request: called on the main thread, built on the global queue, sent on the network
/// thread, judged, decoded and mapped on the global queue, completed on the main thread. What the completion
/// captures lives until then and is released there. With an empty completion nothing is mapped and no message
/// is shown.
class API {
  template <class R>
  using Completion = std::type_identity_t<APICompletion<R>>;

 public:
  /// Resets the class-level state and binds it to this device. Once, before anything else of this class.
  static void install(ServiceDevice device);

  /// From here on no request is sent any more. The device may then be destroyed: the transport first, then
  /// the queues, then the rest. Completions that are still due are dropped with the queues.
  static void shutDown() { APIHTTPClient::shutDown(); }

  static void setAPIBaseURLWithString(const std::string& url);  ///< no trailing slash

  /// Installs the stored token, the activity indicator and the reachability monitor. Once, at start-up.
  static void configureRequest();

  /// Sends the token with every later request. No token, or one that is not a valid header value, changes
  /// nothing: an installed token cannot be removed.
  static void requestAuthForToken(const std::optional<std::string>& token);

  static KeychainItemWrapper keychain();  ///< a fresh wrapper over the stored credential

  /// Begins a session: stores the token, sends it with every later request and shows the main screen. A token
  /// that is not a valid header value counts as invalid data: a message reports it and nothing else changes.
  static void loginUserWithToken(std::string_view token);

  /// Ends the session: reports it to the service, forgets the widget's vehicle and the stored token, and
  /// shows the sign-in screen, without waiting for the service. Requests keep carrying the old token until
  /// the next sign-in.
  static void logoutUser();
  static bool isLogged();  ///< reads the key store each time

  /// Removes the stored token, and before it what is kept for its user.
  static void forgetStored();

  static void displayError(const std::string& text);

  template <class R>
  static void getWithPath(const std::string& path, ModelClass<R> modelClass, ErrorCodes errorCodes,
                          Completion<R> completion) {
    restWithPath(path, "GET", {}, {}, std::move(completion), modelClass, std::move(errorCodes));
  }

  template <class R>
  static void getWithPath(const std::string& path, const Params& params, ModelClass<R> modelClass,
                          ErrorCodes errorCodes, Completion<R> completion) {
    getWithPath(path, params, modelClass, std::move(errorCodes), nullptr, std::move(completion));
  }

  /// The same, and meanwhile reports in `progress` how much of the answer has come.
  template <class R>
  static void getWithPath(const std::string& path, const Params& params, ModelClass<R> modelClass,
                          ErrorCodes errorCodes, const std::shared_ptr<TransferProgress>& progress,
                          Completion<R> completion) {
    restWithPath(path, "GET", params, {}, std::move(completion), modelClass, std::move(errorCodes), progress);
  }

  template <class R>
  static void getWithPath(const std::string& path, std::int64_t resourceId, const Params& params,
                          ModelClass<R> modelClass, ErrorCodes errorCodes, Completion<R> completion) {
    getWithPath(path, std::to_string(resourceId), params, modelClass, std::move(errorCodes),
                std::move(completion));
  }

  /// The parameters are dropped: a resource is named by its path alone.
  template <class R>
  static void getWithPath(const std::string& path, const std::string& resource, const Params&,
                          ModelClass<R> modelClass, ErrorCodes errorCodes, Completion<R> completion) {
    restWithPath(path + "/" + resource, "GET", {}, {}, std::move(completion), modelClass,
                 std::move(errorCodes));
  }

  template <class R>
  static void postWithPath(const std::string& path, const Params& params, ModelClass<R> modelClass,
                           ErrorCodes errorCodes, Completion<R> completion) {
    restWithPath(path, "POST", params, {}, std::move(completion), modelClass, std::move(errorCodes));
  }

  template <class R>
  static void postWithPath(const std::string& path, const RequestBody& body, ModelClass<R> modelClass,
                           ErrorCodes errorCodes, Completion<R> completion) {
    restWithPath(path, "POST", {}, body, std::move(completion), modelClass, std::move(errorCodes));
  }

  template <class R>
  static void putWithPath(const std::string& path, std::int64_t resourceId, const RequestBody& body,
                          ModelClass<R> modelClass, ErrorCodes errorCodes, Completion<R> completion) {
    putWithPath(path, std::to_string(resourceId), body, modelClass, std::move(errorCodes),
                std::move(completion));
  }

  template <class R>
  static void putWithPath(const std::string& path, const std::string& resource, const RequestBody& body,
                          ModelClass<R> modelClass, ErrorCodes errorCodes, Completion<R> completion) {
    restWithPath(path + "/" + resource, "PUT", {}, body, std::move(completion), modelClass,
                 std::move(errorCodes));
  }

  template <class R>
  static void deleteWithPath(const std::string& path, std::int64_t resourceId, ModelClass<R> modelClass,
                             ErrorCodes errorCodes, Completion<R> completion) {
    deleteWithPath(path, std::to_string(resourceId), modelClass, std::move(errorCodes),
                   std::move(completion));
  }

  template <class R>
  static void deleteWithPath(const std::string& path, const std::string& resource, ModelClass<R> modelClass,
                             ErrorCodes errorCodes, Completion<R> completion) {
    restWithPath(path + "/" + resource, "DELETE", {}, {}, std::move(completion), modelClass,
                 std::move(errorCodes));
  }

  /// The one sending path; every verb above ends here.
  template <class R>
  static void restWithPath(const std::string& path, const std::string& method,
                           const std::optional<Params>& params, const std::optional<RequestBody>& body,
                           Completion<R> completion, ModelClass<R> modelClass, ErrorCodes errorCodes,
                           const std::shared_ptr<TransferProgress>& progress = {}) {
    PendingCompletion pending;
    if (completion) {
      pending = std::make_shared<Pending>(
          Pending{[completion = std::move(completion)](std::shared_ptr<void> response, ResponseKind kind,
                                                       long status, const std::optional<APIFailure>& error) {
            completion(std::static_pointer_cast<R>(std::move(response)), kind, status, error);
          }});
    }
    const MapEnvelope map = modelClass.map;
    rest(path, method, params, body, std::move(pending), map, std::move(errorCodes), progress);
  }

  using AnyCompletion = APICompletion<void>;

  /// A completion and the session of its request. Emptied on the main thread as soon as it was called, so
  /// that what it captures (a screen, above all) is never destroyed on another thread, whoever else still
  /// holds the pointer.
  struct Pending {
    AnyCompletion call;
    Session session = {};
  };
  using PendingCompletion = std::shared_ptr<Pending>;
  using MapEnvelope = MappedEnvelope (*)(JSONValue);

  /// Maps the answer into the model class (none: nullptr), then on the main thread shows the standard message
  /// of its outcome and calls the completion. A request of a session that has ended shows no message and
  /// signs nobody out. Runs on the global queue.
  static void handleCompletionWithJSON(ResponseObject object, ResponseKind kind,
                                       const std::optional<HTTPResponse>& response,
                                       std::optional<APIFailure> error, PendingCompletion completion,
                                       MapEnvelope map, const ErrorCodes& errorCodes);

 private:
  static ServiceDevice& device();
  static void rest(const std::string& path, const std::string& method, const std::optional<Params>& params,
                   const std::optional<RequestBody>& body, PendingCompletion completion, MapEnvelope map,
                   ErrorCodes errorCodes, const std::shared_ptr<TransferProgress>& progress);
  static void showMessageForKind(ResponseKind kind, long status, const ErrorCodes& errorCodes);
};

}  // namespace fleetor
