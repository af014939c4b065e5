#include "vehicle/watch/live_status.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/filled_text.h"
#include "values/quantities.h"
#include "vehicle/live_values.h"

namespace fleetor {

namespace {

constexpr Seconds noReportAfter{120};
constexpr Seconds minute{60};
constexpr const char* speedUnit = "km/h";

Seconds untilNextMinute(Seconds time) {
  return minute - Seconds(std::fmod(time.count(), minute.count()));
}

}  // namespace

LiveStatus::LiveStatus(Environment& environment)
    : environment_(environment),
      wakeUp_(environment.queues, environment.clock,
              [this] {
                if (isShown()) age();
              }),
      background_(environment.notificationCenter, [this] {
        if (!background_.inBackground()) age();
      }) {
  ageImageView_.setAccessibleName(localized("Age of the readings"));
}

void LiveStatus::addOutletsTo(Outlets& page) {
  page.outlet("ageLabel", ageLabel_);
  page.outlet("ageImageView", ageImageView_);
  page.outlet("noReportLabel", noReportLabel_);
  page.outlet("speedLabel", speedLabel_);
  page.outlet("speedUnitLabel", speedUnitLabel_);
  page.outlet("courseImageView", courseImageView_);
  page.outlet("motionLabel", motionLabel_);
  page.outlet("motionSinceLabel", motionSinceLabel_);
}

void LiveStatus::setVisible(bool visible) {
  visible_ = visible;
  age();
}

void LiveStatus::received(const Live& live, Seconds arrived) {
  arrived_ = arrived;
  showMovement(live);
  update();
}

void LiveStatus::showMovement(const Live& live) {
  const bool hasSpeed = readNumber(live.speed).has_value();
  speedLabel_.setText(hasSpeed ? live.speed.str() : "");
  speedUnitLabel_.setText(hasSpeed ? speedUnit : "");
  const auto course = courseOf(live);
  courseImageView_.setImage(course ? "RowCourse" : "");
  if (course) courseImageView_.setRotation(*course);
}

const VehicleWatch::Earlier* LiveStatus::earlier() const {
  const bool isLatest = !arrived_ && watch_ && !watch_->latest() && watch_->earlier();
  return isLatest ? &*watch_->earlier() : nullptr;
}

void LiveStatus::clear() {
  arrived_.reset();
  speedLabel_.setText("");
  speedUnitLabel_.setText("");
  courseImageView_.setImage("");
  update();
}

std::string LiveStatus::withTime(const char* key, const std::string& time) const {
  return filled(localized(key), "{time}", time);
}

// What the vehicle does is not known any more when its records stay away.
Seconds LiveStatus::showMotion(Seconds age) {
  const auto* const motion = watch_ && watch_->motion() ? &*watch_->motion() : nullptr;
  const bool isKnown = motion && arrived_ && age < minute;
  motionLabel_.setText(!isKnown ? "" : motion->drives ? localized("Driving") : localized("Standing"));
  const Seconds lasting = isKnown ? now() - motion->since : Seconds(0);
  motionSinceLabel_.setText(!isKnown                         ? ""
                            : !motion->reportedSince.empty() ? withTime("since {time}", motion->reportedSince)
                            : lasting < minute               ? ""
                            : motion->seenToBegin
                                ? withTime("for {time}", durationText(lasting, environment_.device))
                                : withTime("for over {time}", durationText(lasting, environment_.device)));
  return untilNextMinute(lasting);
}

std::string LiveStatus::earlierText(bool withSpeed) const {
  const auto* const before = earlier();
  if (!before) return {};
  const Live& live = *before->live;
  std::string text = offlineText(before->arrived, environment_.clock, environment_.device);
  if (withSpeed && readNumber(live.speed)) text += " · " + live.speed.str() + speedUnit;
  if (!live.street.empty()) text += " · " + live.street.str();
  return text;
}

void LiveStatus::update() {
  if (const auto* const before = earlier()) {
    showMovement(*before->live);
    speedLabel_.setFaded(true);
    noReportLabel_.setText(earlierText(false));
    return;
  }
  const Seconds age = arrived_ ? now() - *arrived_ : Seconds(0);
  const Seconds silence = arrived_ && watch_ ? now() - watch_->reported() : Seconds(0);
  const ReadingAge known = readingAge(age, environment_.device);
  freshness_ = known.freshness;
  ageLabel_.setText(arrived_ ? known.text : "");
  ageImageView_.setImage(arrived_ ? known.mark : "");
  noReportLabel_.setText(silence < noReportAfter ? ""
                                                 : withTime("no new report for {time}",
                                                            durationText(silence, environment_.device)));
  speedLabel_.setFaded(freshness_ == Freshness::old);
  const Seconds motionChanges = showMotion(age);
  if (!isShown()) return;
  wakeUp_.after(std::min({motionChanges, known.changesIn,
                          silence < noReportAfter ? noReportAfter - silence : untilNextMinute(silence)}));
}

void LiveStatus::age() {
  const std::string ageBefore = ageLabel_.text(), noReportBefore = noReportLabel_.text();
  update();
  if (ageLabel_.text() != ageBefore || noReportLabel_.text() != noReportBefore) aged.emit();
}

}  // namespace fleetor
