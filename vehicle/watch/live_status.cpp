#include "vehicle/watch/live_status.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/filled_text.h"
#include "ui/notification_center.h"
#include "values/quantities.h"

namespace fleetor {

namespace {

constexpr Seconds lateAfter{30};
constexpr Seconds oldAfter{300};
constexpr Seconds noReportAfter{120};
constexpr Seconds firstSteps{5};
constexpr Seconds minute{60};
constexpr const char* speedUnit = "km/h";

Seconds untilNext(Seconds step, Seconds age) {
  return step - Seconds(std::fmod(age.count(), step.count()));
}

std::string withNumber(std::string text, long number) {
  return filled(std::move(text), "{}", std::to_string(number));
}

}  // namespace

LiveStatus::LiveStatus(Environment& environment) : environment_(environment) {
  ageImageView_.setAccessibleName(localized("Age of the readings"));
  auto& center = environment.notificationCenter;
  center.addObserver(this, UIApplicationDidEnterBackgroundNotification,
                     [this](const Notification&) { inBackground_ = true; });
  center.addObserver(this, UIApplicationWillEnterForegroundNotification, [this](const Notification&) {
    inBackground_ = false;
    age();
  });
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

LiveStatus::~LiveStatus() {
  environment_.notificationCenter.removeObserver(this);
}

void LiveStatus::setVisible(bool visible) {
  visible_ = visible;
  age();
}

void LiveStatus::received(const Live& live, Seconds arrived) {
  arrived_ = arrived;
  const bool hasSpeed = readNumber(live.speed).has_value();
  speedLabel_.setText(hasSpeed ? live.speed.str() : "");
  speedUnitLabel_.setText(hasSpeed ? speedUnit : "");
  const auto course = readNumber(live.direction);
  const bool hasCourse = course && *course >= 0 && *course <= 360;
  courseImageView_.setImage(hasCourse ? "RowCourse" : "");
  if (hasCourse) courseImageView_.setRotation(*course);
  update();
}

void LiveStatus::clear() {
  arrived_.reset();
  speedLabel_.setText("");
  speedUnitLabel_.setText("");
  courseImageView_.setImage("");
  update();
}

std::string LiveStatus::duration(Seconds time) const {
  const long minutes = std::lround(std::floor(time / minute));
  const std::string rest = withNumber(localized("{} min"), minutes % 60);
  return minutes < 60 ? rest : withNumber(localized("{} h"), minutes / 60) + " " + rest;
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
                            : motion->seenToBegin            ? withTime("for {time}", duration(lasting))
                                                  : withTime("for over {time}", duration(lasting)));
  return untilNext(minute, lasting);
}

void LiveStatus::update() {
  const Seconds age = arrived_ ? now() - *arrived_ : Seconds(0);
  const Seconds silence = arrived_ && watch_ ? now() - watch_->reported() : Seconds(0);
  freshness_ = age < lateAfter ? Freshness::fresh : age < oldAfter ? Freshness::late : Freshness::old;
  const long fives = std::lround(std::floor(age / firstSteps));
  ageLabel_.setText(!arrived_        ? ""
                    : age < freshFor ? localized("now")
                    : age < minute   ? withNumber(localized("{} s"), 5 * fives)
                                     : duration(age));
  const char* const marks[] = {"AgeFresh", "AgeLate", "AgeOld"};
  ageImageView_.setImage(arrived_ ? marks[static_cast<int>(freshness_)] : "");
  noReportLabel_.setText(silence < noReportAfter ? ""
                                                 : withTime("no new report for {time}", duration(silence)));
  speedLabel_.setFaded(freshness_ == Freshness::old);
  const Seconds motionChanges = showMotion(age);
  if (!isShown()) return;
  waitFor(std::min({motionChanges,
                    age < freshFor ? freshFor - age : untilNext(age < minute ? firstSteps : minute, age),
                    silence < noReportAfter ? noReportAfter - silence : untilNext(minute, silence)}));
}

void LiveStatus::age() {
  const std::string ageBefore = ageLabel_.text(), noReportBefore = noReportLabel_.text();
  update();
  if (ageLabel_.text() != ageBefore || noReportLabel_.text() != noReportBefore) aged.emit();
}

// A delayed call cannot be cancelled: one that is due earlier stays, and waits again when its time comes.
void LiveStatus::waitFor(Seconds delay) {
  constexpr Seconds rounding{0.001};
  const Seconds due = now() + delay + rounding;
  if (wakesAt_ && *wakesAt_ <= due) return;
  wakesAt_ = due;
  environment_.queues.mainAfter(delay + rounding, [this, due, alive = std::weak_ptr(alive_)] {
    if (alive.expired() || wakesAt_ != due) return;
    wakesAt_.reset();
    if (isShown()) age();
  });
}

}  // namespace fleetor
