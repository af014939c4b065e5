#pragma once

#include <functional>
#include <string>

#include "platform/device.h"
#include "platform/settings.h"
#include "qt/device/language.h"

namespace fleetor {

/// This machine as a device of a class that is chosen for it. Main thread only.
class DesktopDevice final : public Device {
 public:
  struct Parts {
    Idiom idiom = Idiom::unspecified;
    std::string resourceRoot = ":/";  ///< folder of the documents, of files or of built-in resources
    std::string language = "en";      ///< as Language names it
    std::function<void(const std::string&)> openURL = {};  ///< hands a URL to the system's program for it
    std::function<bool(const std::string& scheme)> opensScheme = {};  ///< whether there is such a program
    std::function<void(const std::string&)> setClipboard = {};
    Settings* settings = nullptr;  ///< keeps the vendor identifier; outlives the device
  };

  explicit DesktopDevice(Parts parts);

  void setScreen(double width, double height, double scale);  ///< points, points, pixels a point

  void setIdiom(Idiom idiom) { parts_.idiom = idiom; }
  Idiom userInterfaceIdiom() const override { return parts_.idiom; }
  double screenWidth() const override { return width_; }
  double screenHeight() const override { return height_; }
  double screenScale() const override { return scale_; }
  double systemVersion() const override;

  /// Drawn at random on the first call and kept in the settings from then on.
  std::string identifierForVendor() override;
  std::string fingerprintOf(const std::string& text) override;

  std::string language() const override { return language_.code(); }
  std::string localizedString(const std::string& key) const override { return language_.text(key); }

  std::string textOfDay(std::chrono::year_month_day day, const std::string& pattern) const override;

  /// In the device's language, from the folder of its code, or else in English, from the one above.
  std::string pathForResource(const std::string& name, const std::string& type) const override;

  /// Only web, mail and telephone addresses and places; everything else stays closed, since the text may come
  /// from a service.
  void openURL(const std::string& url) override;
  bool canOpenURL(const std::string& url) const override;

  void setClipboard(const std::string& text) override { parts_.setClipboard(text); }

 private:
  Parts parts_;
  Language language_;
  double width_ = 390;
  double height_ = 844;
  double scale_ = 1;
  std::string identifier_;
};

}  // namespace fleetor
