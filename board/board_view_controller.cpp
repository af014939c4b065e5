#include "board/board_view_controller.h"

#include <algorithm>
#include <utility>

#include "service/api.h"
#include "service/envelopes.h"
#include "vehicle/position_sheet.h"
#include "vehicle/vehicle_view_controller.h"

namespace fleetor {

namespace {

constexpr double cardHeight = 88.0;
constexpr int vehiclesPerPage = 20;

}  // namespace

BoardViewController::BoardViewController(Environment& environment, std::shared_ptr<PinnedVehicles> pins,
                                         std::shared_ptr<HeldVehicles> held,
                                         std::shared_ptr<LastReadings> readings,
                                         std::shared_ptr<FleetPoll> poll)
    : PageViewController(environment),
      pins_(std::move(pins)),
      held_(std::move(held)),
      readings_(std::move(readings)),
      poll_(std::move(poll)),
      map_(environment, *this),
      boardTableView_(environment),
      refresh_(
          environment.queues, environment.clock, [this] { refresh(); }, LastReadings::together),
      background_(environment.notificationCenter, [this] { setShown(shown_); }) {
  setTitle(localized("Fleet"));
  outlet("boardTableView", boardTableView_);
  outlet("failureLabel", failureLabel_);
  outlet("reloadButton", reloadButton_);
  outlet("openVehicleButton", openVehicleButton_);
  outlet("sharePositionButton", sharePositionButton_);
  outlet("newsLabel", newsLabel_);
  boardTableView_.setDataSource(this);
  boardTableView_.setDelegate(this);
  reloadButton_.setTitle(localized("Try again"));
  reloadButton_.setAction([this](Component&) {
    listFailed_ = false;
    update();
  });
  openVehicleButton_.setAccessibleName(localized("Open the vehicle"));
  openVehicleButton_.setAction([this](Component&) {
    if (const Live* const selected = map_.selected()) openVehicle(selected->vehicle());
  });
  sharePositionButton_.setImage("RowShare");
  sharePositionButton_.setAccessibleName(localized("Share position"));
  sharePositionButton_.setAction([this](Component&) { sharePosition(); });
}

BoardViewController::~BoardViewController() {
  poll_->leave(this);
}

void BoardViewController::viewDidLoad() {
  PageViewController::viewDidLoad();
  showMenuButton();
  pinsChanged_ = pins_->changed.connect([this] { update(); });
  heldChanged_ = held_->changed.connect([this] { update(); });
  received_ = readings_->received.connect([this](std::int64_t id) { receive(id); });
  failed_ = poll_->failed.connect([this](std::int64_t id) { show(id); });
  onMap_ = map_.changed.connect([this] { showFollowed(); });
  showFollowed();
  update();
}

void BoardViewController::viewDidAppear(bool animated) {
  PageViewController::viewDidAppear(animated);
  boardTableView_.reloadData();  // drops the mark of the card that was opened
  setShown(true);
}

void BoardViewController::viewDidDisappear(bool animated) {
  PageViewController::viewDidDisappear(animated);
  setShown(false);
}

void BoardViewController::setShown(bool shown) {
  shown_ = shown;
  refresh_.cancel();
  if (isWatched())
    update();
  else
    poll_->leave(this);
}

std::optional<Vehicle> BoardViewController::recordOf(std::int64_t vehicleId) {
  const auto& held = held_->vehicles();
  if (const auto found = std::ranges::find(held, vehicleId, &Vehicle::vehicleId); found != held.end())
    return *found;
  const auto* const entry = readings_->of(vehicleId);
  return entry ? std::optional(entry->live->vehicle()) : std::nullopt;
}

// A pin may be of a vehicle that the account has no more.
std::vector<std::int64_t> BoardViewController::wantedIds() {
  std::vector<std::int64_t> ids;
  for (const std::int64_t id : pins_->ids())
    if (ids.size() < most && (!held_->isComplete() || recordOf(id))) ids.push_back(id);
  if (!ids.empty()) return ids;
  for (const Vehicle& vehicle : held_->vehicles())
    if (ids.size() < most) ids.push_back(vehicle.vehicleId);
  return ids;
}

void BoardViewController::update() {
  if (session_.hasEnded()) return;
  ids_ = wantedIds();
  std::vector<Card> cards;
  for (const std::int64_t id : ids_) {
    const auto known = std::ranges::find(cards_, id, [](const Card& card) { return card.vehicle.vehicleId; });
    if (known != cards_.end()) {
      cards.push_back(*known);
    } else if (auto record = recordOf(id)) {
      auto cell = std::make_shared<BoardCell>(environment(), *record, [this, id](Component&) {
        map_.follow(map_.followed() == id ? std::nullopt : std::optional(id));
      });
      cards.push_back({std::move(*record), std::move(cell)});
    }
  }
  const auto idOf = [](const Card& card) { return card.vehicle.vehicleId; };
  const bool same = std::ranges::equal(cards, cards_, {}, idOf, idOf);
  cards_ = std::move(cards);
  map_.keepOnly(ids_);
  refresh();
  if (!same) boardTableView_.reloadData();
  if (isWatched()) poll_->watch(this, ids_);
  fetchList();
}

// An account that had no vehicles may have some by now: each new board asks for them once.
void BoardViewController::fetchList() {
  const std::size_t offset = held_->vehicles().size();
  const bool allKnown = (!pins_->ids().empty() && cards_.size() == ids_.size()) || offset >= most ||
                        (held_->isComplete() && (offset > 0 || listAsked_));
  if (!isWatched() || listFailed_ || isLoading() || allKnown) return;
  setLoading(true);
  showState();
  const auto self = sharedFrom(this);
  API::getWithPath("/vehicles", {{"offset", static_cast<std::int64_t>(offset)}, {"limit", vehiclesPerPage}},
                   modelClass<VehiclesResponse>, {}, [self, offset](auto response, auto kind, long, auto&) {
                     self->setLoading(false);
                     if (self->session_.hasEnded()) return;
                     const bool isNew = kind == ResponseKindSuccess &&
                                        (!response->vehicles->empty() || response->total <= 0);
                     self->listFailed_ = !isNew;
                     self->listAsked_ = true;
                     if (isNew) self->held_->take(*response, offset);
                     self->update();
                   });
}

void BoardViewController::receive(std::int64_t vehicleId) {
  if (isWatched() && map_.has(vehicleId))
    refresh_.after({});
  else
    show(vehicleId);
}

// A vehicle of which only the id was known has a card from its first record on.
void BoardViewController::show(std::int64_t vehicleId) {
  const auto card =
      std::ranges::find(cards_, vehicleId, [](const Card& each) { return each.vehicle.vehicleId; });
  if (card == cards_.end()) {
    if (readings_->of(vehicleId) && std::ranges::find(ids_, vehicleId) != ids_.end()) return update();
    return showState();
  }
  if (const auto* const entry = readings_->of(vehicleId)) map_.show(*entry);
  fill(*card);
  showState();
  showFollowed();
}

// Wakes up when a text of the card is about to change.
void BoardViewController::fill(const Card& card) {
  card.cell->show(readings_->of(card.vehicle.vehicleId), poll_->hasFailed(card.vehicle.vehicleId));
  const auto change = card.cell->changesIn();
  if (change && isWatched()) refresh_.after(*change);
}

void BoardViewController::refresh() {
  for (const Card& card : cards_) {
    if (const auto* const entry = readings_->of(card.vehicle.vehicleId)) map_.show(*entry);
    fill(card);
  }
  showState();
  showFollowed();
}

void BoardViewController::showState() {
  const bool none = cards_.empty() && !isLoading() && held_->isComplete();
  const bool inVain = cards_.empty() && !ids_.empty() &&
                      std::ranges::all_of(ids_, [this](std::int64_t id) { return poll_->hasFailed(id); });
  const bool waits = map_.isEmpty() && !none && !inVain && !listFailed_;
  map_.map().setCovered(map_.isEmpty());
  map_.panel().noteLabel.setText(none             ? localized("No vehicles")
                                 : inVain         ? localized("Nothing received yet")
                                 : !waits         ? ""
                                 : cards_.empty() ? localized("Loading")
                                                  : localized("Waiting for the next position"));
  if (waits)
    map_.panel().loadingIndicator.startAnimating();
  else
    map_.panel().loadingIndicator.stopAnimating();
  failureLabel_.setText(listFailed_ ? localized("The list of vehicles is incomplete") : "");
}

void BoardViewController::showFollowed() {
  openVehicleButton_.setEnabled(map_.selected() != nullptr);
  sharePositionButton_.setEnabled(map_.selected() != nullptr);
  std::string news;
  for (const Card& card : cards_) {
    BoardCell& cell = *card.cell;
    const bool followed = map_.followed() == card.vehicle.vehicleId;
    cell.followButton().setSelected(followed);
    cell.followButton().setImage(followed ? "RowFollowing" : "RowFollow");
    if (followed) news = cell.motionLabel().text() + " " + std::to_string(static_cast<int>(cell.freshness()));
    if (followed && news != news_) newsLabel_.setText(cell.accessibleName());
  }
  news_ = std::move(news);
}

void BoardViewController::sharePosition() {
  const Live* const selected = map_.selected();
  const auto place = selected ? positionOf(*selected) : std::nullopt;
  if (place)
    showPositionSheet(environment(), {*place, selected->vehicle().name.str(),
                                      selected->street.str() + '\n' + selected->dateTime().str()});
}

void BoardViewController::openVehicle(const Vehicle& vehicle) {
  performSegueWithIdentifier("BoardDetailSegue", vehicle);
}

void BoardViewController::prepareForSegue(Segue& segue, const std::any& sender) {
  const auto pager = std::dynamic_pointer_cast<VehicleViewController>(segue.destinationViewController);
  if (const auto* const vehicle = std::any_cast<Vehicle>(&sender); pager && vehicle)
    pager->setVehicle(*vehicle);
}

int BoardViewController::tableViewNumberOfRowsInSection(TableView&, int) {
  return static_cast<int>(cards_.size());
}

std::shared_ptr<TableViewCell> BoardViewController::tableViewCellForRowAtIndexPath(TableView&,
                                                                                   IndexPath path) {
  return cards_[static_cast<std::size_t>(path.row)].cell;
}

double BoardViewController::tableViewHeightForRowAtIndexPath(TableView&, IndexPath) {
  return cardHeight;
}

void BoardViewController::tableViewDidSelectRowAtIndexPath(TableView&, IndexPath path) {
  openVehicle(cards_[static_cast<std::size_t>(path.row)].vehicle);
}

}  // namespace fleetor
