#pragma once

#include "exports/day_record.h"
#include "exports/export_words.h"
#include "platform/documents.h"

namespace fleetor {

// A day as a file that other programs read, without the points that have no position. Any thread; about 100
// ms for 86,400 points. False: the sink refused a piece. The service names no time zone, so no format gets a
// time in its standard form: times are descriptions as the service writes them.

/// GPX 1.1: the track as one segment, the parking stops as waypoints.
bool writeGpx(const DayRecord& record, const PieceSink& sink);

/// KML 2.2: the track as a line in the vehicle's colour, the parking stops as places.
bool writeKml(const DayRecord& record, const PieceSink& sink);

/// A feature collection: the track with its seconds since midnight and its kilometres where they are
/// understood, and the parking stops.
bool writeGeoJson(const DayRecord& record, const PieceSink& sink);

/// The trips and stops, a line each, in UTF-8 with a byte order mark, which spreadsheets need.
bool writeCsv(const DayRecord& record, const ExportWords& words, const PieceSink& sink);

}  // namespace fleetor
