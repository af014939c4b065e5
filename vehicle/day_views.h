#pragma once

#include <functional>
#include <string>
#include <vector>

#include "day/day_timeline.h"
#include "day/day_totals.h"
#include "model/vehicle_records.h"
#include "platform/device.h"
#include "ui/controls/fact_strip.h"
#include "ui/controls/time_ribbon.h"

namespace fleetor {

/// Names the place of a stretch: where the vehicle stood, or where the drive ended. May be empty.
using PlaceOf = std::function<std::string(const DayStretch& stretch)>;

/// Shows the day in that colour: drives strong, stops light. Describes a stretch as "07:03 to 07:46, driving,
/// Mill Lane 5".
void showTimeline(TimeRibbon& ribbon, DayTimeline day, Color color, Localizer localized, PlaceOf placeOf);

/// What is known of the totals, as texts in the device's language.
std::vector<FactStrip::Fact> factsOf(const DayTotals& totals, const Device& device);

}  // namespace fleetor
