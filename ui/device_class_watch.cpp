#include "ui/device_class_watch.h"

#include <utility>

#include "ui/containers/window.h"
#include "ui/device_class.h"

namespace fleetor {

DeviceClassWatch::DeviceClassWatch(Environment& environment, std::optional<double> border, Change change)
    : environment_(environment),
      border_(border),
      change_(std::move(change)),
      side_(deviceClassAt(environment.window->size(), border.value_or(0))),
      background_(environment.notificationCenter, [this] { changeSoon(); }),
      windowChanged_(environment.window->changed.connect([this] {
        followRoot();
        followSize();
        changeSoon();
      })),
      keyboardChanged_(environment.window->keyboard().changed.connect([this] { changeSoon(); })) {
  followRoot();
}

void DeviceClassWatch::choose(Idiom idiom) {
  border_.reset();
  crossing_.reset();
  wanted_ = idiom;
  changeSoon();
}

// The root reports what is presented over it.
void DeviceClassWatch::followRoot() {
  const auto& root = environment_.window->rootViewController();
  if (root.get() == root_) return;
  root_ = root.get();
  rootChanged_ = root ? root->changed.connect([this] { changeSoon(); }) : Connection();
}

void DeviceClassWatch::followSize() {
  if (!border_) return;
  const Idiom now = deviceClassAt(environment_.window->size(), *border_);
  if (now == side_ || now == Idiom::unspecified) return crossing_.reset();
  if (crossing_) return;
  crossing_ = std::make_shared<bool>();
  environment_.queues.mainAfter(patience, [this, now, crossing = std::weak_ptr(crossing_)] {
    if (crossing.expired()) return;
    crossing_.reset();
    side_ = now;
    wanted_ = now;
    changeSoon();
  });
}

// Whoever reports a change may be in the midst of it.
void DeviceClassWatch::changeSoon() {
  if (!wanted_ || wanted_ == environment_.device.userInterfaceIdiom() || looking_) return;
  looking_ = std::make_shared<bool>();
  environment_.queues.main([this, looking = std::weak_ptr(looking_)] {
    if (looking.expired()) return;
    looking_.reset();
    if (!isFree() || wanted_ == environment_.device.userInterfaceIdiom()) return;
    change_(*wanted_);
    environment_.window->changed.emit();
  });
}

bool DeviceClassWatch::isFree() const {
  const Window& window = *environment_.window;
  const auto& root = window.rootViewController();
  return !background_.inBackground() && root && !root->presentedViewController() && window.alerts().empty() &&
         !window.datePicker() && !window.actionSheet() && !environment_.window->keyboard().visible();
}

}  // namespace fleetor
