#pragma once

#include <string>

#include "model/vehicle_records.h"

namespace fleetor {

/// The words of a file in the user's language.
struct ExportWords {
  std::string log, status, start, end, duration, distance, from, to;

  static ExportWords of(const Localizer& localized);
};

}  // namespace fleetor
