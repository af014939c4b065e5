#include "vehicle/info_detail_view_controller.h"

#include <any>
#include <iterator>
#include <optional>
#include <string_view>

#include "shell/base/info_cell.h"
#include "shell/base/loading_cell.h"
#include "vehicle/notifications.h"
#include "vehicle/position_sheet.h"
#include "vehicle/vehicle_table_view_cell.h"

namespace fleetor {

namespace {

constexpr const char* addressCaption = "Address";
constexpr int updateTimeRow = 1;

struct ReadingRow {
  InfoRow<Live> texts;
  const char* picture;
  std::optional<Reading> reading = {};
};

/// What comes below the vehicle's own row.
constexpr ReadingRow readingRows[] = {
    {{[](const Live& live) { return live.dateTime().str(); }, "Update time"}, "RowDuration"},
    {{[](const Live& live) { return live.speed.str() + "km/h"; }, "Speed"}, "RowSpeed", Reading::speed},
    {{[](const Live& live) { return live.rpm.str(); }, "RPM"}, "RowEngine", Reading::rpm},
    {{[](const Live& live) { return live.direction.str() + "°"; }, "Direction"}, "RowCompass"},
    {{[](const Live& live) { return live.street.str(); }, addressCaption}, "RowPlace"},
    {{[](const Live& live) { return live.powerSupply.str() + live.powerSupplyType.str(); }, "Power supply"},
     "RowPower",
     Reading::powerSupply},
    {{[](const Live& live) { return live.temp.str() + "°C"; }, "Temperature"},
     "RowTemperature",
     Reading::temp},
    {{[](const Live& live) { return live.fuel.str() + live.fuelType.str(); }, "Fuel"},
     "RowFuel",
     Reading::fuel},
    {{[](const Live& live) { return live.odometer.str(); }, "Odometer"}, "RowDistance"},
};

}  // namespace

InfoDetailViewController::InfoDetailViewController(Environment& environment)
    : DetailPageViewController(environment),
      itemsTableView_(environment),
      status_(environment),
      chart_(environment),
      aged_(status_.aged.connect([this] { refresh(); })) {
  outlet("itemsTableView", itemsTableView_);
  status_.addOutletsTo(*this);
  chart_.addOutletsTo(*this);
  itemsTableView_.registerMaker("VehicleCell", [](const std::string& identifier) {
    auto cell = std::make_shared<VehicleTableViewCell>(identifier);
    cell->setSelectable(false);
    return cell;
  });
  registerInfoCell(itemsTableView_);
  registerLoadingCell(itemsTableView_, localized("Loading"));
  itemsTableView_.setDataSource(this);
  itemsTableView_.setDelegate(this);
}

void InfoDetailViewController::viewDidLoad() {
  DetailPageViewController::viewDidLoad();
  itemsTableView_.setTableFooterView(true);
  status_.setWatch(watch());
  if (!watch() || !watch()->latest()) return;
  live_ = watch()->latest();
  status_.received(*live_, watch()->seen());
}

void InfoDetailViewController::viewDidAppear(bool animated) {
  DetailPageViewController::viewDidAppear(animated);
  addObserver(kFleetorNotificationLive,
              [this](const Notification& notification) { receivedNotification(notification); });
  status_.setVisible(true);
  refresh();
}

void InfoDetailViewController::viewDidDisappear(bool animated) {
  DetailPageViewController::viewDidDisappear(animated);
  removeFromNotificationCenter();
  status_.setVisible(false);
}

void InfoDetailViewController::receivedNotification(const Notification& notification) {
  const auto* live = std::any_cast<std::shared_ptr<const Live>>(&notification.object);
  if (!live || (*live)->vehicle().vehicleId != vehicle().vehicleId) return;
  live_ = *live;
  status_.received(*live_);
  refresh();
}

void InfoDetailViewController::refresh() {
  itemsTableView_.reloadData();
  chart_.update();
}

int InfoDetailViewController::tableViewNumberOfRowsInSection(TableView&, int) {
  return live_ ? 1 + static_cast<int>(std::size(readingRows)) : 1;
}

std::shared_ptr<TableViewCell> InfoDetailViewController::tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                                        IndexPath path) {
  if (!live_) return dequeueLoadingCell(tableView);
  if (path.row == 0) {
    auto cell = std::static_pointer_cast<VehicleTableViewCell>(
        tableView.dequeueReusableCellWithIdentifier("VehicleCell"));
    cell->show(live_->vehicle(), true);
    return cell;
  }
  const auto& [texts, picture, reading] = readingRows[path.row - 1];
  auto cell = dequeueInfoCell(tableView, texts.value(*live_), localized(texts.caption), texts.contact);
  if (std::string_view(texts.caption) == addressCaption && positionOf(*live_))
    cell->link("RowShare", localized("Share position"), [this] { sharePosition(); });
  if (reading && watch())
    cell->link(
        "RowChart", localized("Show the chart"),
        [this, shown = *reading, title = localized(texts.caption)] { chart_.toggle(shown, title, watch()); });
  cell->pictureImageView().setImage(picture);
  const bool isAged = path.row == updateTimeRow;
  cell->textLabel().setFaded(status_.freshness() == LiveStatus::Freshness::old);
  cell->noteLabel().setText(isAged ? status_.ageLabel().text() : "");
  cell->noteImageView().setImage(isAged ? status_.ageImageView().image() : "");
  return cell;
}

void InfoDetailViewController::sharePosition() {
  const auto place = positionOf(*live_);
  if (!place) return;
  showPositionSheet(environment(), {*place, live_->vehicle().name.str(),
                                    live_->street.str() + '\n' + live_->dateTime().str()});
}

double InfoDetailViewController::tableViewHeightForRowAtIndexPath(TableView&, IndexPath path) {
  if (!live_) return 60.0;
  return path.row == 0 ? 68.0 : 42.0;
}

}  // namespace fleetor
