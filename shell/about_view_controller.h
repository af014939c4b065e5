#pragma once

#include <string>

#include "shell/sheet_page.h"
#include "ui/controls/web_view.h"

namespace fleetor {

/// Information about this program, as a document in "aboutWebView".
class AboutViewController final : public SheetPage, public WebViewDelegate {
 public:
  explicit AboutViewController(Environment& environment);

  WebView& aboutWebView() { return aboutWebView_; }

  void viewDidLoad() override;

  /// A tapped link opens in the system's browser, everything else in place.
  bool webViewShouldStartLoadWithRequest(WebView& webView, const std::string& url,
                                         NavigationType type) override;

 private:
  WebView aboutWebView_;
};

}  // namespace fleetor
