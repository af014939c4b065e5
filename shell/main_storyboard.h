#pragma once

#include "platform/settings.h"
#include "ui/storyboard.h"

namespace fleetor {

/// The storyboard "Main": every screen of the client and every transition between two of them. What is handed
/// in outlives it.
Storyboard makeMainStoryboard(Environment& environment, Settings& standardSettings, Settings& sharedSettings);

}  // namespace fleetor
