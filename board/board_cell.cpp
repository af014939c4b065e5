#include "board/board_cell.h"

#include <algorithm>
#include <utility>

#include "values/quantities.h"
#include "vehicle/detail_page_view_controller.h"
#include "vehicle/live_values.h"

namespace fleetor {

namespace {

constexpr Seconds motionKnownFor{60};

}  // namespace

BoardCell::BoardCell(Environment& environment, const Vehicle& vehicle, Action follow)
    : TableViewCell("BoardCell"), environment_(environment), registration_(vehicle.registration.str()) {
  outlet("photoImageView", photoImageView_);
  outlet("courseImageView", courseImageView_);
  outlet("speedLabel", speedLabel_);
  outlet("motionLabel", motionLabel_);
  outlet("ageLabel", ageLabel_);
  outlet("ageImageView", ageImageView_);
  outlet("followButton", followButton_);
  textLabel().setText(vehicle.name.str());
  photoImageView_.setImage(vehicle.icon.str());
  photoImageView_.setRingColor(DetailPageViewController::colorFromHexString(vehicle.mapLineColor.view()));
  ageImageView_.setAccessibleName(environment.device.localizedString("Age of the readings"));
  followButton_.setImage("RowFollow");
  followButton_.setAccessibleName(environment.device.localizedString("Follow the vehicle"));
  followButton_.setAction(std::move(follow));
}

void BoardCell::show(const LastReadings::Entry* entry, bool failed) {
  const auto localized = [this](const char* key) { return environment_.device.localizedString(key); };
  changesIn_.reset();
  if (!entry) {
    motionLabel_.setText(localized(failed ? "Nothing received yet" : "Loading"));
    return spell();
  }
  const Live& live = *entry->live;
  const Seconds age = environment_.clock.uptime() - entry->arrived;
  const ReadingAge known = readingAge(age, environment_.device);
  freshness_ = known.freshness;
  changesIn_ = age < motionKnownFor ? std::min(known.changesIn, motionKnownFor - age) : known.changesIn;
  ageLabel_.setText(known.text);
  ageImageView_.setImage(known.mark);
  const auto driving = age < motionKnownFor ? isDriving(live) : std::nullopt;
  motionLabel_.setText(driving ? localized(*driving ? "Driving" : "Standing") : "");
  speedLabel_.setText(readNumber(live.speed.view()) ? live.speed.str() + " km/h" : "");
  speedLabel_.setFaded(freshness_ == Freshness::old);
  detailTextLabel().setText(live.street.str());
  const auto course = courseOf(live);
  courseImageView_.setImage(course ? "RowCourse" : "");
  if (course) courseImageView_.setRotation(*course);
  spell();
}

// In the order in which somebody wants to hear it.
void BoardCell::spell() {
  spoken_ = textLabel().text();
  const std::string age =
      ageLabel_.text().empty() ? "" : ageImageView_.accessibleName() + ": " + ageLabel_.text();
  for (const std::string& part :
       {registration_, motionLabel_.text(), speedLabel_.text(), detailTextLabel().text(), age})
    if (!part.empty()) spoken_ += ", " + part;
  changed.emit();
}

}  // namespace fleetor
