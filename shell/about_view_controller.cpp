#include "shell/about_view_controller.h"

#include "shell/resource_url.h"

namespace fleetor {

AboutViewController::AboutViewController(Environment& environment) : SheetPage(environment, "About") {
  outlet("aboutWebView", aboutWebView_);
  aboutWebView_.setDelegate(this);
}

void AboutViewController::viewDidLoad() {
  SheetPage::viewDidLoad();
  aboutWebView_.loadRequest(fileURLForResource(environment().device, "about", "html"));
}

bool AboutViewController::webViewShouldStartLoadWithRequest(WebView&, const std::string& url,
                                                            NavigationType type) {
  if (type != NavigationType::linkClicked) return true;
  environment().application->openURL(url);
  return false;
}

}  // namespace fleetor
