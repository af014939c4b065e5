#include "qt/map/tile_addresses.h"

#include <QString>

namespace fleetor {

TileAddresses TileAddresses::compiledIn(const std::string& serviceURL) {
  const auto at = [service = QString::fromStdString(serviceURL)](const char* pattern) {
    return QString::fromUtf8(pattern).replace(QLatin1String("{service}"), service).toStdString();
  };
  return {.standard = at(FLEETOR_TILES_STANDARD),
          .dark = at(FLEETOR_TILES_DARK),
          .satellite = at(FLEETOR_TILES_SATELLITE),
          .attribution = FLEETOR_TILES_ATTRIBUTION,
          .satelliteAttribution = FLEETOR_TILES_SATELLITE_ATTRIBUTION,
          .userAgent = FLEETOR_TILES_USER_AGENT,
          .maximumZoom = FLEETOR_TILES_MAXIMUM_ZOOM};
}

const std::string& TileAddresses::urlTemplate(MapStyle style) const {
  if (style == MapStyle::satellite) return satellite;
  return style == MapStyle::dark && !dark.empty() ? dark : standard;
}

}  // namespace fleetor
