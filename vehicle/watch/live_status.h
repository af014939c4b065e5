#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "model/vehicle_records.h"
#include "ui/background_watch.h"
#include "ui/controls/controls.h"
#include "ui/environment.h"
#include "ui/wake_up.h"
#include "vehicle/watch/reading_age.h"
#include "vehicle/watch/vehicle_watch.h"

namespace fleetor {

/// What a page shows beside the latest record: how old it is, for how long the vehicle has reported nothing
/// new, its speed and course, whether it drives or stands, and since when. Numbers that are not wholly
/// understood are left out. Ages are counted from the arrival, by the device's stopwatch; the service's times
/// are only compared with each other. Before the first record it shows what is known from an earlier run, and
/// of when that is. Main thread only.
///
/// One timer at most, and only while the page is visible, the program in the foreground, and there is a
/// record. A text changes every 5 seconds in the first minute and every minute from then on.
class LiveStatus {
 public:
  using Freshness = fleetor::Freshness;

  explicit LiveStatus(Environment& environment);

  /// Gives the page the outlets "ageLabel", "ageImageView", "noReportLabel", "speedLabel", "speedUnitLabel",
  /// "courseImageView", "motionLabel" and "motionSinceLabel".
  void addOutletsTo(Outlets& page);
  void setWatch(std::shared_ptr<const VehicleWatch> watch) { watch_ = std::move(watch); }  ///< may be null
  void setVisible(bool visible);  ///< whether the page is
  void received(const Live& live) { received(live, now()); }
  void received(const Live& live, Seconds arrived);  ///< by the stopwatch
  void clear();                                      ///< there is no record any more

  /// Late after 30 seconds, old after 5 minutes.
  Freshness freshness() const { return freshness_; }

  /// "Offline · as of 14:03 · 52km/h · Long Street 5" before the first record, if that is known.
  std::string earlierText(bool withSpeed = true) const;

  Label& ageLabel() { return ageLabel_; }              ///< "now", "20 s", "2 min"; empty without a record
  ImageView& ageImageView() { return ageImageView_; }  ///< its mark in the colour of the freshness
  Label& noReportLabel() {
    return noReportLabel_;
  }  ///< "no new report for 12 min", "Offline · as of 14:03", or empty

  /// The passing of time, or the page's return, has changed something.
  Signal<> aged;

 private:
  Seconds now() const { return environment_.clock.uptime(); }
  std::string localized(const char* key) const { return environment_.device.localizedString(key); }
  std::string withTime(const char* key, const std::string& time) const;
  Seconds showMotion(Seconds age);  ///< and when its words change next
  bool isShown() const { return visible_ && !background_.inBackground() && arrived_; }
  void showMovement(const Live& live);
  const VehicleWatch::Earlier* earlier() const;  ///< null: it is not to be shown
  void update();
  void age();

  Environment& environment_;
  bool visible_ = false;
  std::optional<Seconds> arrived_;  ///< the latest record, by the stopwatch
  Freshness freshness_ = Freshness::fresh;
  Label ageLabel_;
  ImageView ageImageView_;
  Label noReportLabel_;
  Label speedLabel_;  ///< as the service writes it
  Label speedUnitLabel_;
  ImageView courseImageView_;  ///< an arrow, turned
  Label motionLabel_;          ///< "Driving", "Standing"; empty: not known
  Label motionSinceLabel_;     ///< "for 12 min", "for over 1 h 5 min", "since 14:05"
  std::shared_ptr<const VehicleWatch> watch_;
  WakeUp wakeUp_;
  BackgroundWatch background_;
};

}  // namespace fleetor
