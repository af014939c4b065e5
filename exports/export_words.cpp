#include "exports/export_words.h"

namespace fleetor {

ExportWords ExportWords::of(const Localizer& localized) {
  return {.log = localized("Driver's log"),
          .status = localized("Status"),
          .start = localized("Start"),
          .end = localized("End"),
          .duration = localized("Duration"),
          .distance = localized("Distance"),
          .from = localized("From"),
          .to = localized("To")};
}

}  // namespace fleetor
