#pragma once

#include <string>

#include "day/day_stage.h"

namespace fleetor {

/// The trip of a card that the user wants to see on the map, with the texts of its card.
struct OpenedTrip {
  std::string day;  ///< "yyyy-MM-dd"
  DayStage stage;
  std::string from;
  std::string to;
  std::string distance;
  std::string duration;
};

}  // namespace fleetor
