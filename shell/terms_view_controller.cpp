#include "shell/terms_view_controller.h"

#include "shell/resource_url.h"

namespace fleetor {

TermsViewController::TermsViewController(Environment& environment) : BaseViewController(environment) {
  setTitle(localized("Terms of service"));
  outlet("tosWebView", tosWebView_);
  outlet("agreeButton", agreeButton_);
  tosWebView_.setDelegate(this);
  agreeButton_.setTitle(localized("I agree"));
  agreeButton_.setAction([this](Component& sender) { agreePressed(sender); });
}

void TermsViewController::viewDidLoad() {
  BaseViewController::viewDidLoad();
  tosWebView_.loadRequest(fileURLForResource(environment().device, "tos", "html"));
}

void TermsViewController::agreePressed(Component&) {
  if (const auto delegate = delegate_.lock()) delegate->termsViewControllerDidAgree(*this);
}

bool TermsViewController::webViewShouldStartLoadWithRequest(WebView&, const std::string& url,
                                                            NavigationType type) {
  if (type != NavigationType::linkClicked) return true;
  environment().application->openURL(url);
  return false;
}

}  // namespace fleetor
