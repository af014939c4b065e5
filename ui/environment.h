#pragma once

#include "platform/clock.h"
#include "platform/device.h"
#include "platform/queues.h"

namespace fleetor {

class Appearance;
class Application;
class Documents;
class NotificationCenter;
class Window;

/// What every screen and component may use. Outlives all of them. The application object sets `window` and
/// `application` in its constructor and resets them in its destructor.
struct Environment {
  Queues& queues;
  Device& device;
  Clock& clock;
  NotificationCenter& notificationCenter;
  Appearance& appearance;
  Window* window = nullptr;
  Application* application = nullptr;
  Documents* documents = nullptr;  ///< null: nothing can be saved
};

}  // namespace fleetor
