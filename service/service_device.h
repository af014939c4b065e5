#pragma once

#include <functional>
#include <string>

#include "platform/device.h"
#include "platform/key_store.h"
#include "platform/log.h"
#include "platform/network.h"
#include "platform/queues.h"
#include "platform/settings.h"
#include "platform/transport.h"

namespace fleetor {

/// What the request layer asks of the device and of the screens above it, handed in once with API::install().
/// All of it lives until API::shutDown(), and everything but the transport until the queues are gone.
struct ServiceDevice {
  Queues& queues;
  Transport& transport;
  KeyStore& keyStore;
  Settings& sharedSettings;  ///< the app-group settings that the widget reads
  ReachabilityMonitor& reachability;
  NetworkActivityIndicator& networkActivity;
  Log& log;
  Device& device;

  /// Shows a short message over whatever is on the screen. Called on the main thread.
  std::function<void(const std::string& text, double seconds, bool rounded)> showToast;

  /// Rebuilds the top level of screens from API::isLogged(). Called on the main thread.
  std::function<void()> showMainOrLogin;

  /// Removes what else is kept on this device for the user who is signed in. Called on the main thread.
  std::function<void()> forgetKept = [] {};
};

}  // namespace fleetor
