#pragma once

#include <optional>
#include <string>

#include "ui/component.h"
#include "ui/geometry.h"

namespace fleetor {

/// The appearance of all navigation bars. A colour without a value is drawn as transparent, an empty name as
/// no image.
struct NavigationBarAppearance {
  std::optional<Color> backgroundImageColor;  ///< of the 1 × 1 point image that fills the bar
  std::optional<Color> barTintColor;
  std::optional<Color> tintColor;  ///< of the buttons
  std::optional<Color> titleColor;
  std::string backIndicatorImage;
  std::string backIndicatorTransitionMaskImage;
  std::string shadowImage;  ///< the line under the bar
  bool translucent = true;

  friend bool operator==(const NavigationBarAppearance&, const NavigationBarAppearance&) = default;
};

struct TabBarItemAppearance {
  std::optional<Color> titleColor;
  std::optional<Color> selectedTitleColor;

  friend bool operator==(const TabBarItemAppearance&, const TabBarItemAppearance&) = default;
};

struct ProgressOverlayAppearance {
  std::optional<Color> backgroundColor;
  std::optional<Color> foregroundColor;

  friend bool operator==(const ProgressOverlayAppearance&, const ProgressOverlayAppearance&) = default;
};

/// The appearance that all components of one kind share.
class Appearance : public Component {
 public:
  const NavigationBarAppearance& navigationBar() const { return navigationBar_; }
  void setNavigationBar(NavigationBarAppearance appearance) { assign(navigationBar_, std::move(appearance)); }

  const TabBarItemAppearance& tabBarItem() const { return tabBarItem_; }
  void setTabBarItem(const TabBarItemAppearance& appearance) { assign(tabBarItem_, appearance); }

  const ProgressOverlayAppearance& progressOverlay() const { return progressOverlay_; }
  void setProgressOverlay(const ProgressOverlayAppearance& appearance) {
    assign(progressOverlay_, appearance);
  }

 private:
  NavigationBarAppearance navigationBar_;
  TabBarItemAppearance tabBarItem_;
  ProgressOverlayAppearance progressOverlay_;
};

}  // namespace fleetor
