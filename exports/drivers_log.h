#pragma once

#include "exports/day_record.h"
#include "exports/export_words.h"
#include "platform/page.h"

namespace fleetor {

/// A day on one page of A4: vehicle, day, the line over plain ground with a scale, the 24 hours, totals, and
/// the trips and stops as a table. What the service's texts do not tell for sure is left out; of more rows
/// than fit, the last one counts the others. Any thread; milliseconds for 86,400 points.
Page driversLog(const DayRecord& record, const ExportWords& words);

}  // namespace fleetor
