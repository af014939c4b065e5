#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/device.h"
#include "platform/log.h"
#include "platform/network.h"
#include "support/translations.h"

namespace fleetor::test {

/// A phone with a screen of 390 × 844 points, unless the test makes it another machine.
class FakeDevice final : public Device {
 public:
  Idiom idiom = Idiom::phone;
  double width = 390;
  double height = 844;
  double scale = 2;
  double version = 9;
  std::string identifier = "6F1C2A54-9D3E-4B7A-8C11-0A5E7D2B9F30";
  std::string languageCode = "en";
  std::map<std::string, std::string> translations;
  std::map<std::string, std::string> resources;  ///< "name.type" to path
  std::vector<std::string> openedURLs;
  std::set<std::string> unknownSchemes;  ///< for which the system has no program
  std::string clipboard;
  mutable std::vector<std::string> untranslated;  ///< what was asked for and has no translation

  Idiom userInterfaceIdiom() const override { return idiom; }
  double screenWidth() const override { return width; }
  double screenHeight() const override { return height; }
  double screenScale() const override { return scale; }
  double systemVersion() const override { return version; }
  std::string identifierForVendor() override { return identifier; }
  std::string language() const override { return languageCode; }
  std::string fingerprintOf(const std::string& text) override { return "print of " + text; }
  std::string localizedString(const std::string& key) const override {
    if (!isTranslated(key)) untranslated.push_back(key);
    const auto found = translations.find(key);
    return found == translations.end() ? key : found->second;
  }
  /// In English: "ddd" first, then "d" and "MMM", then "yyyy", each where the pattern has it.
  std::string textOfDay(std::chrono::year_month_day day, const std::string& pattern) const override {
    static constexpr std::array weekdays{"Sun, ", "Mon, ", "Tue, ", "Wed, ", "Thu, ", "Fri, ", "Sat, "};
    static constexpr std::array months{" Jan", " Feb", " Mar", " Apr", " May", " Jun",
                                       " Jul", " Aug", " Sep", " Oct", " Nov", " Dec"};
    const bool weekday = pattern.starts_with("ddd");
    return (weekday ? weekdays[std::chrono::weekday(day).c_encoding()] : "") +
           std::to_string(unsigned(day.day())) + months[unsigned(day.month()) - 1] +
           (pattern.ends_with("yyyy") ? " " + std::to_string(int(day.year())) : "");
  }
  std::string pathForResource(const std::string& name, const std::string& type) const override {
    const auto found = resources.find(name + "." + type);
    return found == resources.end() ? std::string() : found->second;
  }
  void openURL(const std::string& url) override { openedURLs.push_back(url); }
  bool canOpenURL(const std::string& url) const override {
    return !unknownSchemes.contains(url.substr(0, url.find(':')));
  }
  void setClipboard(const std::string& text) override { clipboard = text; }
};

class FakeReachability final : public ReachabilityMonitor {
 public:
  std::atomic<bool> reachable{true};
  int started = 0;

  void startMonitoring() override { ++started; }
  bool isReachable() const override { return reachable; }
};

class FakeIndicator final : public NetworkActivityIndicator {
 public:
  bool visible = false;
  int changes = 0;  ///< calls, whether they changed anything or not

  void setVisible(bool shown) override {
    visible = shown;
    ++changes;
  }
};

class RecordingLog final : public Log {
 public:
  void line(std::string_view text) override {
    const std::lock_guard lock(mutex_);
    lines_.emplace_back(text);
  }
  std::vector<std::string> lines() const {
    const std::lock_guard lock(mutex_);
    return lines_;
  }
  void forget() {
    const std::lock_guard lock(mutex_);
    lines_.clear();
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

}  // namespace fleetor::test
