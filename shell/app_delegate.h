#pragma once

#include <memory>
#include <string>

#include "platform/settings.h"
#include "ui/application.h"
#include "ui/environment.h"

namespace fleetor {

class MainViewController;
class VehiclesTableViewController;

/// Sets the client up when it starts, builds its top level from the state of the session, and answers the
/// widget. Main thread only; outlives the application object. API::install() comes before the launch.
class AppDelegate final : public ApplicationDelegate {
 public:
  /// `serviceURL` is the base of every request, without a trailing slash.
  AppDelegate(Environment& environment, Settings& standardSettings, std::string serviceURL)
      : environment_(environment), standardSettings_(standardSettings), serviceURL_(std::move(serviceURL)) {}

  /// The widget has requested the chooser and it was not shown yet.
  bool showChooser() const { return showChooser_; }

  bool applicationDidFinishLaunchingWithOptions() override;
  bool applicationOpenURLSourceApplicationAnnotation(const std::string& url,
                                                     const std::string& sourceApplication) override;

  /// Replaces the whole root screen; the screens before it are released.
  void showMainOrLogin() override;

  /// The device is of another class now: replaces the container of a signed-in user by one for that class,
  /// and leads back to the vehicle, page and day, to the page that the menu has opened, or to the
  /// fleet, which is opened anew.
  void changeOver();

 private:
  struct TopLevel {
    std::shared_ptr<MainViewController> container;
    std::shared_ptr<VehiclesTableViewController> list;
  };
  TopLevel makeTopLevel();
  void setAppearance();

  Environment& environment_;
  Settings& standardSettings_;
  std::string serviceURL_;
  bool showChooser_ = false;
};

}  // namespace fleetor
