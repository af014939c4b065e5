#pragma once

#include <any>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ui/geometry.h"

namespace fleetor {

/// Posted by the keyboard; the object is a KeyboardInfo.
inline constexpr const char* UIKeyboardWillShowNotification = "UIKeyboardWillShowNotification";
inline constexpr const char* UIKeyboardWillHideNotification = "UIKeyboardWillHideNotification";

/// Posted by the application, without an object.
inline constexpr const char* UIApplicationDidEnterBackgroundNotification =
    "UIApplicationDidEnterBackgroundNotification";
inline constexpr const char* UIApplicationWillEnterForegroundNotification =
    "UIApplicationWillEnterForegroundNotification";

/// Posted when a screen of the storyboard has appeared; the object is its identifier, a std::string.
inline constexpr const char* ScreenDidAppearNotification = "ScreenDidAppearNotification";

struct KeyboardInfo {
  Rect frameEnd;        ///< final frame of the keyboard, in the window's points
  double duration = 0;  ///< seconds that it takes to get there
};

struct Notification {
  const std::string& name;
  const std::any& object;
};

/// Delivers notifications to their observers, in the order of registration. Main thread only.
/// An observer that is removed during a post is not called any more, one that is added is first called by the
/// next post. Owners are identified by address and must remove themselves before they are destroyed.
class NotificationCenter {
 public:
  using Handler = std::function<void(const Notification&)>;

  /// Calls the handler for every post of that name. An owner that registers twice is called twice.
  void addObserver(const void* owner, const std::string& name, Handler handler);

  /// Removes all registrations of the owner.
  void removeObserver(const void* owner);

  void postNotificationName(const std::string& name, const std::any& object = {});

 private:
  struct Observer {
    const void* owner = nullptr;  ///< null once removed
    std::string name;
    Handler handler;
  };

  std::vector<std::shared_ptr<Observer>> observers_;
};

}  // namespace fleetor
