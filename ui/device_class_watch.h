#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/device.h"
#include "platform/queues.h"
#include "ui/background_watch.h"
#include "ui/component.h"
#include "ui/environment.h"

namespace fleetor {

class ViewController;

/// Changes the device's class when the window has been resized across the border between the two for more
/// than half a second, or when another class is asked for. The change waits while the user types, answers or
/// chooses: while a text field has the focus, something is presented, or an alert, a sheet or the date picker
/// is open. It also waits while the program is in the background. Main thread only.
class DeviceClassWatch {
 public:
  using Change = std::function<void(Idiom)>;

  static constexpr Seconds patience{0.5};

  /// The window outlives the watch. `border`: its width in points, see `deviceClassBorder`; none: the width
  /// changes nothing. `change` lets the device have that class and makes the screens anew; the
  /// window reports a change after it.
  DeviceClassWatch(Environment& environment, std::optional<double> border, Change change);
  DeviceClassWatch(const DeviceClassWatch&) = delete;
  DeviceClassWatch& operator=(const DeviceClassWatch&) = delete;

  /// The user wants that class, whatever the width is from now on.
  void choose(Idiom idiom);

 private:
  void followRoot();
  void followSize();
  void changeSoon();
  bool isFree() const;

  Environment& environment_;
  std::optional<double> border_;
  Change change_;
  Idiom side_;  ///< of the border
  std::optional<Idiom> wanted_;
  BackgroundWatch background_;
  const ViewController* root_ = nullptr;
  Connection windowChanged_;
  Connection rootChanged_;
  Connection keyboardChanged_;
  std::shared_ptr<bool> crossing_;  ///< while the window is on the other side, but not for long
  std::shared_ptr<bool> looking_;   ///< while `change` may be called in the next turn of the main queue
};

}  // namespace fleetor
