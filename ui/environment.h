#pragma once

#include "platform/clock.h"
#include "platform/device.h"
#include "platform/queues.h"

namespace fleetor {

class Appearance;
class Application;
class NotificationCenter;
class Window;

/// What every screen and component may reach. Made by whoever puts the program together, outlives all of
/// them. `window` and `application` are entered by the application object when it is made, and emptied when
/// it goes.
struct Environment {
  Queues& queues;
  Device& device;
  Clock& clock;
  NotificationCenter& notificationCenter;
  Appearance& appearance;
  Window* window = nullptr;
  Application* application = nullptr;
};

}  // namespace fleetor
