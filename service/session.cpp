#include "service/session.h"

#include "service/api.h"

// The state of the session is the stored token, the header made of it and the number of the session. All of
// it changes here.
namespace fleetor {

namespace {
constexpr const char* keychainIdentifier = "Fleetor_Keychain";
constexpr const char* keychainAccessGroup = "FLEETOR.org.fleetor.client";
}  // namespace

KeychainItemWrapper API::keychain() {
  auto wrapper =
      KeychainItemWrapper::initWithIdentifier(device().keyStore, keychainIdentifier, keychainAccessGroup);
  wrapper.setObject(sec::accessibleAlwaysThisDeviceOnly, sec::accessible);
  return wrapper;
}

void API::requestAuthForToken(const std::optional<std::string>& token) {
  if (!token || !isHeaderValue(*token)) return;
  APIHTTPClient::requestHeaders().setObject("Bearer " + *token, "Authorization");
}

bool API::isLogged() {
  return !keychain().objectForKey(sec::valueData).value_or("").empty();
}

// The store comes first: the main screen is chosen by what it holds.
void API::loginUserWithToken(std::string_view token) {
  if (!isHeaderValue(token)) return showMessageForKind(ResponseKindInvalidData, 0, {});
  Session::startNext();
  if (keychain().objectForKey(sec::valueData) != token) device().forgetKept();
  keychain().setObject(std::string(token), sec::valueData);
  requestAuthForToken(std::string(token));
  device().showMainOrLogin();
}

// The request belongs to the session that begins here, so that a failure is still shown.
void API::logoutUser() {
  Session::startNext();
  const std::string uid = device().device.identifierForVendor();
  postWithPath("/logout", {{"uid", uid}}, noModelClass, {400}, [](auto&&...) {});
  device().sharedSettings.removeObject("WidgetVehicle");
  device().sharedSettings.synchronize();
  forgetStored();
  requestAuthForToken(std::nullopt);
  device().showMainOrLogin();
}

// An interruption in between leaves a user who is signed in and for whom nothing is kept.
void API::forgetStored() {
  device().forgetKept();
  keychain().resetKeychainItem();
}

}  // namespace fleetor
