#pragma once

#include <functional>
#include <memory>
#include <optional>

namespace fleetor {

/// The appearance that the desktop asks of its programs.
struct DesktopPreferences {
  std::optional<bool> dark;  ///< nothing: it has no preference, or has not answered
  double textScale = 1;      ///< by how much text is to be larger than at its normal size; above 0
  bool animations = true;    ///< false: what moves or fades does so at once
  bool contrast = false;     ///< more than usual

  bool operator==(const DesktopPreferences&) const = default;
};

/// What the desktop's settings portal reports of the appearance, and every change of it: a dark style,
/// more contrast, GNOME's scaling of text, and whether it has animations. Qt asks it for none of these before
/// 6.5.
///
/// Main thread only, inside an application. Nothing here waits for the portal: the questions leave with the
/// constructor, answers and changes come through the main loop, and a question is given up after ten seconds.
/// What it does wait for is the session bus to let it in, once, about a millisecond; Qt would wait for
/// the same connection a little later, when it makes the window accessible. Without a bus, a portal or an
/// answer nothing is reported.
class SettingsPortal {
 public:
  SettingsPortal();
  ~SettingsPortal();  ///< nothing is reported from here on

  SettingsPortal(const SettingsPortal&) = delete;
  SettingsPortal& operator=(const SettingsPortal&) = delete;

  /// Calls `changed` at once when the appearance differs from the default, and at each later change. Call it
  /// once.
  void listen(std::function<void(const DesktopPreferences& preferences)> changed);

 private:
  class Wire;

  std::unique_ptr<Wire> wire_;
};

}  // namespace fleetor
