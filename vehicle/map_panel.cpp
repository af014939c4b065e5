#include "vehicle/map_panel.h"

#include <utility>

namespace fleetor {

MapPanel::MapPanel(const Environment& environment, Outlets& screen) {
  const auto localized = [&environment](const char* key) { return environment.device.localizedString(key); };
  screen.outlet("mapView", map);
  screen.outlet("loadingIndicator", loadingIndicator);
  screen.outlet("noteLabel", noteLabel);
  map.setAccessibleName(localized("Map"));
  map.setCovered(true);
  loadingIndicator.setAccessibleName(localized("Loading"));
  const auto equip = [&screen](const char* name, Button& button, const char* image,
                               std::string accessibleName, Action action) {
    screen.outlet(name, button);
    button.setImage(image);
    button.setAccessibleName(std::move(accessibleName));
    button.setAction(std::move(action));
  };
  equip("changeTypeButton", changeTypeButton, "BtnMapType", localized("Satellite map"),
        [this](Component&) { changeMapType(); });
  equip("wholeTrackButton", wholeTrackButton, "BtnWholeTrack", localized("Show the whole track"),
        [this](Component&) { map.showAll(true); });
  equip("zoomInButton", zoomInButton, "BtnZoomIn", localized("Zoom in"),
        [this](Component&) { map.zoomBy(1); });
  equip("zoomOutButton", zoomOutButton, "BtnZoomOut", localized("Zoom out"),
        [this](Component&) { map.zoomBy(-1); });
}

void MapPanel::changeMapType() {
  const bool satellite = !changeTypeButton.selected();
  changeTypeButton.setSelected(satellite);
  changeTypeButton.setImage(satellite ? "BtnMapTypeSelected" : "BtnMapType");
  map.setMapType(satellite ? MapType::satellite : MapType::standard);
}

}  // namespace fleetor
