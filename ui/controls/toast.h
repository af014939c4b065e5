#pragma once

#include <string>
#include <utility>

#include "ui/component.h"

namespace fleetor {

/// A short message over everything that closes by itself. The window owns it.
class Toast : public Component {
 public:
  Toast(std::string text, double seconds, bool rounded)
      : text_(std::move(text)), seconds_(seconds), rounded_(rounded) {}

  const std::string& text() const { return text_; }
  double seconds() const { return seconds_; }  ///< how long it stays once it has faded in
  bool rounded() const { return rounded_; }    ///< rounded or square corners
  std::string accessibleName() const override { return text_; }

 private:
  std::string text_;
  double seconds_;
  bool rounded_;
};

}  // namespace fleetor
