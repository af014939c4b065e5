#include "vehicle/position_sheet.h"

#include <utility>

#include "exports/position.h"
#include "exports/qr_code.h"
#include "ui/clipboard.h"
#include "ui/containers/window.h"
#include "values/quantities.h"

namespace fleetor {

namespace {

void showQrCode(Environment& environment, const SharedPosition& position) {
  QrCode code = qrCodeOf(geoURL(position.coordinate));
  ActionSheet::show(environment,
                    {position.title,
                     environment.device.localizedString("Scan with another phone to open this place there"),
                     {code.side, std::move(code.dark)}});
}

}  // namespace

std::optional<Coordinate> positionOf(const Live& live) {
  return readCoordinate(live.location.lat.view(), live.location.lon.view());
}

void showPositionSheet(Environment& environment, const SharedPosition& position) {
  Device& device = environment.device;
  const std::string decimal = decimalText(position.coordinate);
  const std::string degrees = degreesText(position.coordinate);
  const std::string geo = geoURL(position.coordinate);
  const std::string mail =
      mailURL(position.title, position.title + '\n' + position.subtitle + '\n' + decimal + '\n' + geo + '\n');
  const auto copy = [&environment](const std::string& text) {
    return [&environment, text] { copyToClipboard(environment, text); };
  };
  const auto open = [&device](const std::string& url) { return [&device, url] { device.openURL(url); }; };

  ActionSheet::Content content{position.title, position.subtitle};
  content.entries.push_back(
      {device.localizedString("Copy the coordinates"), decimal, "RowCopy", copy(decimal)});
  content.entries.push_back({device.localizedString("Copy as degrees"), degrees, "RowCopy", copy(degrees)});
  if (device.canOpenURL(geo))
    content.entries.push_back({device.localizedString("Open in a map program"), {}, "RowPlace", open(geo)});
  if (device.canOpenURL(mail))
    content.entries.push_back({device.localizedString("Send mail"), {}, "RowMail", open(mail)});
  content.entries.push_back(
      {device.localizedString("Show a QR code"), {}, "RowCode", [&environment, position] {
         showQrCode(environment, position);
       }});
  ActionSheet::show(environment, std::move(content));
}

}  // namespace fleetor
