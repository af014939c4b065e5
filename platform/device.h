#pragma once

#include <chrono>
#include <string>

namespace fleetor {

enum class Idiom { unspecified, phone, pad };

/// What the client asks about the machine that it runs on, and the few things that it asks the machine to do.
/// Main thread only.
class Device {
 public:
  virtual ~Device() = default;

  virtual Idiom userInterfaceIdiom() const = 0;  ///< unspecified counts as a phone
  virtual double screenWidth() const = 0;        ///< points
  virtual double screenHeight() const = 0;       ///< points
  virtual double screenScale() const = 0;        ///< pixels a point
  virtual double systemVersion() const = 0;  ///< the operating system's version as a number, 8.0 and up today

  /// Identifies this installation: an upper-case UUID text, the same after a restart, that reveals nothing
  /// about the device.
  virtual std::string identifierForVendor() = 0;

  /// A text of 64 hexadecimal digits that stands for another text on this installation only, and from which
  /// that cannot be computed.
  virtual std::string fingerprintOf(const std::string& text) = 0;

  /// The translation of an English text into the language of the device; the text itself without a
  /// translation.
  virtual std::string localizedString(const std::string& key) const = 0;

  virtual std::string language() const = 0;  ///< the code of that language, without a region: "de"

  /// A day in words of the device's language. In the pattern "d" stands for the day of the month, "ddd" for
  /// the short weekday, "MMM" for the short month and "yyyy" for the year.
  virtual std::string textOfDay(std::chrono::year_month_day day, const std::string& pattern) const = 0;

  virtual std::string pathForResource(const std::string& name,
                                      const std::string& type) const = 0;  ///< empty: none
  virtual void openURL(const std::string& url) = 0;  ///< hands the URL to the system's program for it

  /// Whether the system has a program for such URLs ("tel:+48600100200").
  virtual bool canOpenURL(const std::string& url) const = 0;

  virtual void setClipboard(const std::string& text) = 0;

  bool isPad() const { return userInterfaceIdiom() == Idiom::pad; }
};

}  // namespace fleetor
