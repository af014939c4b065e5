#include "ui/application.h"

#include "ui/notification_center.h"
#include "ui/storyboard.h"

namespace fleetor {

Application::Application(Environment& environment, Storyboard& storyboard, ApplicationDelegate& delegate)
    : environment_(environment), storyboard_(storyboard), delegate_(delegate), window_(environment) {
  environment_.application = this;
}

Application::~Application() {
  environment_.application = nullptr;
}

void Application::launch() {
  delegate_.applicationDidFinishLaunchingWithOptions();
  if (!window_.rootViewController())
    window_.setRootViewController(storyboard_.instantiateInitialViewController());
}

bool Application::receiveURL(const std::string& url, const std::string& sourceApplication) {
  return delegate_.applicationOpenURLSourceApplicationAnnotation(url, sourceApplication);
}

void Application::openURL(const std::string& url) {
  environment_.device.openURL(url);
}

void Application::didEnterBackground() {
  environment_.notificationCenter.postNotificationName(UIApplicationDidEnterBackgroundNotification);
}

void Application::willEnterForeground() {
  environment_.notificationCenter.postNotificationName(UIApplicationWillEnterForegroundNotification);
}

}  // namespace fleetor
