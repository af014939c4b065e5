#include "qt/components/view_controller_items.h"

#include <algorithm>
#include <cmath>

namespace fleetor {

int ScreenListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(items_.size());
}

QVariant ScreenListModel::data(const QModelIndex& index, int role) const {
  if (role != Qt::UserRole || !checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  return QVariant::fromValue(items_[static_cast<std::size_t>(index.row())]);
}

void ScreenListModel::update(const std::vector<std::shared_ptr<ViewController>>& screens) {
  const std::size_t before = items_.size();
  std::vector<ViewControllerItem*> wanted;
  wanted.reserve(screens.size());
  for (const auto& screen : screens)
    wanted.push_back(adapters_.itemFor<ViewControllerItem>(screen.get()));

  for (std::size_t i = items_.size(); i-- > 0;) {
    if (std::ranges::find(wanted, items_[i]) != wanted.end()) continue;
    beginRemoveRows({}, static_cast<int>(i), static_cast<int>(i));
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(i));
    endRemoveRows();
  }
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    if (i < items_.size() && items_[i] == wanted[i]) continue;
    const auto found = std::ranges::find(items_, wanted[i]);
    const int row = static_cast<int>(i);
    if (found == items_.end()) {
      beginInsertRows({}, row, row);
      items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(i), wanted[i]);
      endInsertRows();
    } else {
      const int from = static_cast<int>(found - items_.begin());
      beginMoveRows({}, from, from, {}, row);
      items_.erase(found);
      items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(i), wanted[i]);
      endMoveRows();
    }
  }
  if (items_.size() != before) Q_EMIT countChanged();
}

ViewControllerItem::ViewControllerItem(Component& component, Adapters& registry)
    : ComponentItem(component, registry), children_(registry) {
  auto* screen = as<ViewController>();
  navigationItem_ = screen->navigationItem().changed.connect([this] { refresh(); });
  children_.update(screen->childViewControllers());
  watchView();
}

void ViewControllerItem::watchView() {
  auto* screen = as<ViewController>();
  if (screen && screen->isViewLoaded() && view_.empty())
    view_.push_back(screen->view().changed.connect([this] { ComponentItem::refresh(); }));
}

QString ViewControllerItem::identifier() const {
  return read<ViewController>([](ViewController& c) { return toQString(c.storyboardIdentifier()); });
}

QString ViewControllerItem::title() const {
  return read<ViewController>([](ViewController& c) { return toQString(c.title()); });
}

bool ViewControllerItem::loaded() const {
  return read<ViewController>([](ViewController& c) { return c.isViewLoaded(); });
}

bool ViewControllerItem::interactive() const {
  return loaded() && as<ViewController>()->view().userInteractionEnabled();
}

bool ViewControllerItem::sheet() const {
  return read<ViewController>(
      [](ViewController& c) { return c.presentingViewController() && !c.coversPresenter(); });
}

bool ViewControllerItem::covered() const {
  return read<ViewController>([](ViewController& c) {
    const auto& presented = c.presentedViewController();
    return presented && presented->coversPresenter() && !c.runningPresentation();
  });
}

QList<QObject*> ViewControllerItem::buttons(const BarButtonItems& items) const {
  QList<QObject*> buttons;
  for (const auto& item : items)
    buttons << adapters().itemFor(item.get());
  return buttons;
}

QList<QObject*> ViewControllerItem::leftItems() const {
  auto* screen = as<ViewController>();
  return screen ? buttons(screen->navigationItem().leftBarButtonItems()) : QList<QObject*>();
}

QList<QObject*> ViewControllerItem::rightItems() const {
  auto* screen = as<ViewController>();
  return screen ? buttons(screen->navigationItem().rightBarButtonItems()) : QList<QObject*>();
}

void ViewControllerItem::copy(const QString& text) {
  if (auto* const screen = as<ViewController>()) screen->copy(text.toStdString());
}

double ViewControllerItem::frameX() const {
  return loaded() ? as<ViewController>()->view().frame().x : 0;
}

double ViewControllerItem::frameWidth() const {
  return loaded() ? as<ViewController>()->view().frame().width : 0;
}

bool ViewControllerItem::animating() const {
  return read<ViewController>([](ViewController& c) { return c.runningTransition() != nullptr; });
}

int ViewControllerItem::duration() const {
  const auto* screen = as<ViewController>();
  const Transition* transition = screen ? screen->runningTransition() : nullptr;
  return transition ? static_cast<int>(std::lround(transition->duration.count() * 1000)) : 0;
}

ComponentItem* ViewControllerItem::outlet(const QString& name) const {
  const auto* screen = as<ViewController>();
  return screen ? adapters().outletOf(*screen, identifier(), name) : nullptr;
}

ViewControllerItem* ViewControllerItem::lastChild() const {
  const auto* screen = as<ViewController>();
  if (!screen || screen->childViewControllers().empty()) return nullptr;
  return adapters().itemFor<ViewControllerItem>(screen->childViewControllers().back().get());
}

void ViewControllerItem::refresh() {
  auto* screen = as<ViewController>();
  if (!screen) {
    children_.update({});
    ComponentItem::refresh();
    return;
  }
  watchView();
  children_.update(screen->childViewControllers());
  ComponentItem::refresh();
  // A child does not announce that it has loaded its view.
  if (as<ViewController>())
    for (const auto& child : screen->childViewControllers())
      if (auto* item = adapters().itemFor<ViewControllerItem>(child.get())) {
        item->watchView();
        item->ComponentItem::refresh();
      }
}

int NavigationControllerItem::depth() const {
  return read<NavigationController>(
      [](NavigationController& c) { return static_cast<int>(c.viewControllers().size()); });
}

QString NavigationControllerItem::backLabel() const {
  return adapters().localized("Back");
}

int NavigationControllerItem::indexOf(ViewControllerItem* screen) const {
  const auto* stack = as<NavigationController>();
  const auto* wanted = screen ? screen->as<ViewController>() : nullptr;
  if (!stack || !wanted) return -1;
  const auto& screens = stack->viewControllers();
  const auto found = std::ranges::find_if(screens, [&](const auto& s) { return s.get() == wanted; });
  return found == screens.end() ? -1 : static_cast<int>(found - screens.begin());
}

void NavigationControllerItem::pop() {
  if (auto* stack = as<NavigationController>()) stack->popViewControllerAnimated(true);
}

bool NavigationControllerItem::endDrag(double moved, double speed, double width) {
  auto* stack = as<NavigationController>();
  return stack && stack->endDrag({moved, speed}, width);
}

ViewControllerItem* RevealControllerItem::front() const {
  const auto* container = as<SWRevealViewController>();
  return container ? adapters().itemFor<ViewControllerItem>(container->frontViewController().get()) : nullptr;
}

ViewControllerItem* RevealControllerItem::rear() const {
  const auto* container = as<SWRevealViewController>();
  return container ? adapters().itemFor<ViewControllerItem>(container->rearViewController().get()) : nullptr;
}

bool RevealControllerItem::open() const {
  return read<SWRevealViewController>(
      [](SWRevealViewController& c) { return c.frontViewPosition() != FrontViewPosition::left; });
}

double RevealControllerItem::rearWidth() const {
  return read<SWRevealViewController>([](SWRevealViewController& c) { return c.rearViewRevealWidth(); });
}

double RevealControllerItem::draggableBorderWidth() const {
  return read<SWRevealViewController>([](SWRevealViewController& c) { return c.draggableBorderWidth(); });
}

bool RevealControllerItem::panShouldBegin(double x) const {
  return read<SWRevealViewController>([x](SWRevealViewController& c) { return c.panShouldBegin(x); });
}

void RevealControllerItem::beginPan() {
  if (auto* container = as<SWRevealViewController>()) container->beginPan();
  refresh();
}

void RevealControllerItem::endPan(double moved, double speed) {
  if (auto* container = as<SWRevealViewController>()) container->endPan({moved, speed});
}

bool RevealControllerItem::tapShouldBegin() const {
  return read<SWRevealViewController>([](SWRevealViewController& c) { return c.tapShouldBegin(); });
}

void RevealControllerItem::tapFront() {
  if (auto* container = as<SWRevealViewController>()) container->tapFront();
}

int SwipeTabBarControllerItem::selectedIndex() const {
  return read<SwipeTabBarController>([](SwipeTabBarController& c) { return c.selectedIndex(); });
}

int SwipeTabBarControllerItem::count() const {
  return read<SwipeTabBarController>(
      [](SwipeTabBarController& c) { return static_cast<int>(c.viewControllers().size()); });
}

void SwipeTabBarControllerItem::endDrag(double moved, double speed, double width) {
  if (auto* pager = as<SwipeTabBarController>()) pager->endDrag({moved, speed}, width);
}

}  // namespace fleetor
