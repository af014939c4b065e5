#pragma once

#include <string>

namespace fleetor {

/// Whether the Wayland compositor behind that socket offers no seat: no input device at all. False when there
/// is no compositor, or it does not answer within a second.
bool lacksSeat(const std::string& socketPath);

/// Call it before there is a QGuiApplication. In a Wayland session without a seat Qt would crash as soon as
/// the focus moves: it asks the first seat for its text input. There it composes texts by itself, which it
/// goes on to do when a seat appears later.
void prepareForMissingSeat();

}  // namespace fleetor
