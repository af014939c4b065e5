#include "shell/offline_list.h"

#include <chrono>
#include <cmath>
#include <utility>

#include "platform/filled_text.h"
#include "values/quantities.h"
#include "vehicle/vehicle_table_view_cell.h"
#include "vehicle/watch/reading_age.h"

namespace fleetor {

namespace {
constexpr double keptRowHeight = 68.0;
constexpr Seconds minute{60};
constexpr Seconds hour{3600};
constexpr Seconds wholeDay{86400};
}  // namespace

OfflineList::OfflineList(Environment& environment, std::shared_ptr<LastReadings> readings,
                         std::function<void(const Vehicle&)> open)
    : environment_(environment),
      readings_(std::move(readings)),
      open_(std::move(open)),
      tableView_(environment),
      ages_(environment.queues, environment.clock, [this] { update(); }),
      background_(environment.notificationCenter, [this] { update(); }),
      received_(readings_->received.connect([this](std::int64_t) { update(); })) {
  tableView_.registerMaker("VehicleCell", [](const std::string& identifier) {
    return std::make_shared<VehicleTableViewCell>(identifier);
  });
  tableView_.setTableFooterView(true);
  tableView_.setDataSource(this);
  tableView_.setDelegate(this);
}

void OfflineList::addOutletsTo(Outlets& screen) {
  screen.outlet("offlineLabel", label_);
  screen.outlet("offlineTableView", tableView_);
}

void OfflineList::show(List list) {
  if (list_ == list) return;
  list_ = std::move(list);
  if (!list_) label_.setText("");
  tableView_.reloadData();
  update();
}

void OfflineList::setVisible(bool visible) {
  visible_ = visible;
  update();
}

void OfflineList::update() {
  ages_.cancel();
  if (!list_ || !visible_ || background_.inBackground()) return;
  label_.setText(offlineText(list_->asOf, environment_.clock, environment_.device));
  tableView_.reloadData();
  ages_.after(minute);
}

// A reading from the future, by a clock that was set back, has no age.
std::string OfflineList::textOf(const KeptFleet::Entry& entry) {
  const auto* const fresh = readings_->of(entry.vehicle.vehicleId);
  const Seconds age = fresh ? environment_.clock.uptime() - fresh->arrived
                            : Seconds(environment_.clock.now() - entry.arrived);
  const auto& live = fresh ? fresh->live : entry.live;
  if (!live || age < Seconds(0)) return {};
  const Text& speed = live->speed;
  const Device& device = environment_.device;
  const auto hours = std::lround(std::floor(age / hour));
  return (readNumber(speed.view()) ? speed.str() + "km/h · " : "") +
         (age < hour       ? readingAge(age, device).text
          : age < wholeDay ? filled(device.localizedString("{} h"), "{}", std::to_string(hours))
                           : shortDay(entry.arrived, environment_.clock, device));
}

int OfflineList::tableViewNumberOfRowsInSection(TableView&, int) {
  return list_ ? static_cast<int>(list_->entries.size()) : 0;
}

const KeptFleet::Entry& OfflineList::entryAt(IndexPath path) const {
  return list_->entries.at(static_cast<std::size_t>(path.row));
}

std::shared_ptr<TableViewCell> OfflineList::tableViewCellForRowAtIndexPath(TableView& tableView,
                                                                           IndexPath path) {
  auto cell = std::static_pointer_cast<VehicleTableViewCell>(
      tableView.dequeueReusableCellWithIdentifier("VehicleCell"));
  cell->show(entryAt(path).vehicle, true);
  cell->readingLabel().setText(textOf(entryAt(path)));
  return cell;
}

double OfflineList::tableViewHeightForRowAtIndexPath(TableView&, IndexPath) {
  return keptRowHeight;
}

void OfflineList::tableViewDidSelectRowAtIndexPath(TableView&, IndexPath path) {
  open_(Vehicle(entryAt(path).vehicle));
}

}  // namespace fleetor
