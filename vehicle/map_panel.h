#pragma once

#include "ui/controls/controls.h"
#include "ui/environment.h"
#include "ui/map/map_view.h"

namespace fleetor {

/// A map and what stands around it on every screen with one: "mapView", "changeTypeButton", which is selected
/// while the map shows satellite pictures, "zoomInButton", "zoomOutButton", "wholeTrackButton", which shows
/// all that is on the map, "loadingIndicator", which spins while the screen waits for something to show, and
/// "noteLabel", which reports that it waits, or that there is nothing. Main thread only.
class MapPanel {
 public:
  /// Gives the screen its outlets. The map is covered until there is something on it.
  MapPanel(const Environment& environment, Outlets& screen);
  MapPanel(const MapPanel&) = delete;
  MapPanel& operator=(const MapPanel&) = delete;

  MapView map;
  Button changeTypeButton;
  Button zoomInButton;
  Button zoomOutButton;
  Button wholeTrackButton;
  ActivityIndicator loadingIndicator;
  Label noteLabel;

  void changeMapType();
};

}  // namespace fleetor
