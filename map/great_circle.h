#pragma once

#include "platform/coordinate.h"

namespace fleetor {

/// Along the great circle of a sphere of the Earth's mean radius, 6,371,008.8 m (IUGG's R1 = (2a + b) / 3 for
/// GRS 80; H. Moritz, "Geodetic Reference System 1980"), by the haversine formula (R. W. Sinnott, "Virtues of
/// the Haversine", Sky and Telescope 68, 1984), which is exact to the millimetre for nearby points, too. Up
/// to 0.6 % off the ellipsoid. Any longitude; a number that is not finite counts as 0, as in project(). Never
/// NaN.
double distanceInMetres(Coordinate from, Coordinate to);

}  // namespace fleetor
