#pragma once

#include "kept/kept_fleet.h"
#include "platform/settings.h"
#include "ui/storyboard.h"

namespace fleetor {

/// The storyboard "Main": every screen of the client and every transition between two of them. What is handed
/// in outlives it. Without `kept` nothing is kept for a start without a network.
Storyboard makeMainStoryboard(Environment& environment, Settings& standardSettings, Settings& sharedSettings,
                              KeptFleet* kept = nullptr);

}  // namespace fleetor
