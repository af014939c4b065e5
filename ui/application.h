#pragma once

#include <string>

#include "ui/environment.h"
#include "ui/window.h"

namespace fleetor {

class Storyboard;

class ApplicationDelegate {
 public:
  virtual ~ApplicationDelegate() = default;
  virtual bool applicationDidFinishLaunchingWithOptions() = 0;

  /// Somebody outside asks the program to open a URL; false: not one for us.
  virtual bool applicationOpenURLSourceApplicationAnnotation(const std::string& url,
                                                             const std::string& sourceApplication) = 0;

  /// Rebuilds the window's root screen from the state of the session.
  virtual void showMainOrLogin() = 0;
};

/// The program as the system sees it. Enters itself and its window into the environment while it lives. Main
/// thread only.
class Application {
 public:
  /// The delegate is weak and must outlive the application; so must the storyboard.
  Application(Environment& environment, Storyboard& storyboard, ApplicationDelegate& delegate);
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  Window& window() { return window_; }
  Storyboard& storyboard() { return storyboard_; }
  ApplicationDelegate& delegate() { return delegate_; }

  /// Tells the delegate that the program has started, then puts the storyboard's initial screen into the
  /// window, unless the delegate has put one there itself.
  void launch();

  /// A URL came from outside.
  bool receiveURL(const std::string& url, const std::string& sourceApplication = {});

  /// Hands a URL to the system's own browser.
  void openURL(const std::string& url);

  // The program leaves and comes back to the user's sight.
  void didEnterBackground();
  void willEnterForeground();

 private:
  Environment& environment_;
  Storyboard& storyboard_;
  ApplicationDelegate& delegate_;
  Window window_;
};

}  // namespace fleetor
