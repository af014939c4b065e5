#pragma once

#include <string>

#include "ui/containers/window.h"
#include "ui/environment.h"

namespace fleetor {

class Storyboard;

class ApplicationDelegate {
 public:
  virtual ~ApplicationDelegate() = default;
  virtual bool applicationDidFinishLaunchingWithOptions() = 0;

  /// Another program asks to open a URL. False: the URL is not supported.
  virtual bool applicationOpenURLSourceApplicationAnnotation(const std::string& url,
                                                             const std::string& sourceApplication) = 0;

  /// Rebuilds the window's root screen from the state of the session.
  virtual void showMainOrLogin() = 0;
};

/// The program as the system sees it. Registers itself and its window in the environment while it exists.
/// Main thread only.
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

  /// Notifies the delegate, then shows the storyboard's initial screen, unless the delegate has shown one.
  void launch();

  /// Another program asks to open a URL. False: the delegate does not support it.
  bool receiveURL(const std::string& url, const std::string& sourceApplication = {});

  /// Hands a URL to the system's own browser.
  void openURL(const std::string& url);

  // The program leaves the screen and returns to it.
  void didEnterBackground();
  void willEnterForeground();

 private:
  Environment& environment_;
  Storyboard& storyboard_;
  ApplicationDelegate& delegate_;
  Window window_;
};

}  // namespace fleetor
