#pragma once

#include <memory>
#include <string>

#include "shell/base/base_view_controller.h"
#include "ui/controls/web_view.h"

namespace fleetor {

class TermsViewController;

class TermsViewControllerDelegate {
 public:
  virtual ~TermsViewControllerDelegate() = default;
  virtual void termsViewControllerDidAgree(TermsViewController& controller) = 0;
};

/// The terms of service and a button to agree to them; there is no other way out.
class TermsViewController final : public BaseViewController, public WebViewDelegate {
 public:
  explicit TermsViewController(Environment& environment);

  WebView& tosWebView() { return tosWebView_; }
  Button& agreeButton() { return agreeButton_; }
  void setDelegate(std::weak_ptr<TermsViewControllerDelegate> delegate) { delegate_ = std::move(delegate); }

  void viewDidLoad() override;
  void agreePressed(Component& sender);

  /// A tapped link opens in the system's browser, everything else in place.
  bool webViewShouldStartLoadWithRequest(WebView& webView, const std::string& url,
                                         NavigationType type) override;

 private:
  std::weak_ptr<TermsViewControllerDelegate> delegate_;
  WebView tosWebView_;
  Button agreeButton_;
};

}  // namespace fleetor
