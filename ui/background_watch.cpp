#include "ui/background_watch.h"

#include <utility>

namespace fleetor {

BackgroundWatch::BackgroundWatch(NotificationCenter& center, std::function<void()> changed)
    : center_(center), changed_(std::move(changed)) {
  const auto observe = [this](const char* name, bool inBackground) {
    center_.addObserver(this, name, [this, inBackground](const Notification&) {
      inBackground_ = inBackground;
      changed_();
    });
  };
  observe(UIApplicationDidEnterBackgroundNotification, true);
  observe(UIApplicationWillEnterForegroundNotification, false);
}

BackgroundWatch::~BackgroundWatch() {
  center_.removeObserver(this);
}

}  // namespace fleetor
