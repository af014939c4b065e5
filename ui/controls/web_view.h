#pragma once

#include <string>

#include "ui/component.h"

namespace fleetor {

class WebView;

enum class NavigationType { linkClicked, other };

class WebViewDelegate {
 public:
  virtual ~WebViewDelegate() = default;

  /// Whether the view loads that URL itself.
  virtual bool webViewShouldStartLoadWithRequest(WebView& webView, const std::string& url,
                                                 NavigationType type) = 0;
};

/// Shows one document of the program's own resources.
class WebView : public Component {
 public:
  /// URL of the document shown; empty: blank.
  const std::string& url() const { return url_; }

  /// Goes to the URL unless the delegate refuses.
  void loadRequest(const std::string& url) { navigate(url, NavigationType::other); }

  /// The user taps a link of the document.
  void tapLink(const std::string& url) { navigate(url, NavigationType::linkClicked); }

  /// Weak: must outlive the view or be reset.
  void setDelegate(WebViewDelegate* delegate) { delegate_ = delegate; }

 private:
  void navigate(const std::string& url, NavigationType type) {
    if (!delegate_ || delegate_->webViewShouldStartLoadWithRequest(*this, url, type)) assign(url_, url);
  }

  std::string url_;
  WebViewDelegate* delegate_ = nullptr;
};

}  // namespace fleetor
