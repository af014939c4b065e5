#include "qt/components/window_item.h"

#include <algorithm>
#include <cmath>

#include "ui/appearance.h"

namespace fleetor {

namespace {

std::vector<std::shared_ptr<ViewController>> presentedFrom(const Window& window) {
  std::vector<std::shared_ptr<ViewController>> screens;
  for (auto screen = window.rootViewController(); screen; screen = screen->presentedViewController())
    screens.push_back(screen);
  return screens;
}

}  // namespace

WindowItem::WindowItem(Component& component, Adapters& registry)
    : ComponentItem(component, registry), screens_(registry) {
  refresh();
}

ProgressOverlayItem* WindowItem::progressOverlay() const {
  auto* window = as<Window>();
  return window ? adapters().itemFor<ProgressOverlayItem>(&window->progressOverlay()) : nullptr;
}

ToastItem* WindowItem::toast() const {
  const auto* window = as<Window>();
  return window ? adapters().itemFor<ToastItem>(const_cast<Toast*>(window->toast())) : nullptr;
}

AlertViewItem* WindowItem::alert() const {
  const auto* window = as<Window>();
  return window && !window->alerts().empty()
             ? adapters().itemFor<AlertViewItem>(window->alerts().back().get())
             : nullptr;
}

DatePickerItem* WindowItem::datePicker() const {
  const auto* window = as<Window>();
  return window ? adapters().itemFor<DatePickerItem>(window->datePicker().get()) : nullptr;
}

ActionSheetItem* WindowItem::actionSheet() const {
  const auto* window = as<Window>();
  return window ? adapters().itemFor<ActionSheetItem>(window->actionSheet().get()) : nullptr;
}

bool WindowItem::blocked() const {
  return read<Window>([](Window& c) {
    return !c.alerts().empty() || c.datePicker() != nullptr || c.actionSheet() != nullptr;
  });
}

bool WindowItem::pad() const {
  return adapters().environment().device.isPad();
}

AppearanceItem* WindowItem::appearance() const {
  return adapters().itemFor<AppearanceItem>(&adapters().environment().appearance);
}

bool WindowItem::leaving(ViewControllerItem* screen) const {
  const auto* controller = screen ? screen->as<ViewController>() : nullptr;
  const auto* presenter = controller ? controller->presentingViewController() : nullptr;
  const Transition* running = nullptr;
  for (; presenter && !running; presenter = presenter->presentingViewController())
    if (const Transition* one = presenter->runningPresentation(); one && one->kind == TransitionKind::dismiss)
      running = one;
  return running &&
         std::ranges::any_of(running->outgoing, [&](const auto& s) { return s.get() == controller; });
}

int WindowItem::presentationDuration() const {
  const auto* window = as<Window>();
  if (!window) return 0;
  for (const auto& screen : presentedFrom(*window))
    if (const Transition* running = screen->runningPresentation())
      return static_cast<int>(std::lround(running->duration.count() * 1000));
  return 0;
}

QString WindowItem::word(const QString& key) const {
  return adapters().localized(key.toStdString());
}

double WindowItem::keyboardHeight() const {
  return read<Window>([](Window& c) { return c.keyboard().height(); });
}

void WindowItem::setKeyboardHeight(double points) {
  if (auto* window = as<Window>()) window->keyboard().setHeight(points);
  Q_EMIT changed();
}

bool WindowItem::goBack() {
  auto* window = as<Window>();
  return window && window->goBack();
}

void WindowItem::setSize(double width, double height) {
  if (auto* window = as<Window>(); window && width > 0 && height > 0) window->setSize({width, height});
}

void WindowItem::refresh() {
  chain_.clear();
  if (const auto* window = as<Window>()) {
    const auto screens = presentedFrom(*window);
    for (const auto& screen : screens)
      chain_.push_back(screen->changed.connect([this] { refresh(); }));
    screens_.update(screens);
  } else {
    screens_.update({});
  }
  ComponentItem::refresh();
}

}  // namespace fleetor
