#pragma once

#include <optional>
#include <string>

namespace fleetor {

/// An absolute http or https URL: where a request goes. Immutable; any thread.
class WebAddress {
 public:
  /// Nothing when the text is not such a URL, has no host, or holds a user name or password. Characters that
  /// are not allowed in a URL are escaped, nothing else is changed.
  static std::optional<WebAddress> parse(const std::string& text);

  /// What a relative or absolute reference found at this address leads to.
  std::optional<WebAddress> resolved(const std::string& reference) const;

  const std::string& text() const { return text_; }
  bool isSecure() const { return scheme_ == "https"; }
  bool isSameOrigin(const WebAddress& other) const {
    return scheme_ == other.scheme_ && host_ == other.host_ && port_ == other.port_;
  }
  bool isThisMachine() const;  ///< "localhost" or a loopback address

 private:
  std::string text_;
  std::string scheme_;
  std::string host_;  // lower case
  std::string port_;
};

}  // namespace fleetor
