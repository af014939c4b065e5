#pragma once

#include <optional>
#include <string>

#include "model/vehicle_records.h"
#include "ui/environment.h"
#include "ui/table/table_view_cell.h"
#include "vehicle/watch/last_readings.h"
#include "vehicle/watch/reading_age.h"

namespace fleetor {

/// The card of one vehicle: its picture in the colour of its line, its name, where it heads, its speed,
/// whether it drives or stands, the address, how old that is, and "followButton". What the vehicle does is
/// left out when its record is older than a minute, and what is not understood always.
class BoardCell final : public TableViewCell {
 public:
  BoardCell(Environment& environment, const Vehicle& vehicle, Action follow);

  /// `entry`: none: nothing has been received yet. `failed`: its last request has.
  void show(const LastReadings::Entry* entry, bool failed);

  /// When a text of it changes by the passing of time; none: never.
  std::optional<Seconds> changesIn() const { return changesIn_; }

  Button& followButton() { return followButton_; }
  Label& speedLabel() { return speedLabel_; }    ///< "52 km/h"
  Label& motionLabel() { return motionLabel_; }  ///< "Driving", "Standing"; or why there is nothing
  Label& ageLabel() { return ageLabel_; }
  Freshness freshness() const { return freshness_; }

  std::string accessibleName() const override { return spoken_; }
  std::string copiedText() const override { return spoken_; }

 private:
  void spell();

  Environment& environment_;
  std::string registration_;
  ImageView photoImageView_;
  ImageView courseImageView_;
  Label speedLabel_;
  Label motionLabel_;
  Label ageLabel_;
  ImageView ageImageView_;
  Button followButton_;
  std::string spoken_;
  Freshness freshness_ = Freshness::fresh;
  std::optional<Seconds> changesIn_;
};

}  // namespace fleetor
