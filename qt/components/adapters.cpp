#include "qt/components/adapters.h"

#include <QDebug>
#include <QFile>
#include <QQmlEngine>

#include "qt/components/action_sheet_item.h"
#include "qt/components/appearance_item.h"
#include "qt/components/chart_item.h"
#include "qt/components/control_items.h"
#include "qt/components/day_items.h"
#include "qt/components/player_item.h"
#include "qt/components/table_model.h"
#include "qt/components/view_controller_items.h"
#include "qt/components/window_item.h"
#include "ui/appearance.h"

namespace fleetor {

Adapters::Adapters(Environment& environment) : environment_(environment) {
  add<NavigationController, NavigationControllerItem>();
  add<SWRevealViewController, RevealControllerItem>();
  add<SwipeTabBarController, SwipeTabBarControllerItem>();
  add<ViewController, ViewControllerItem>();
  add<TableView, TableItem>();
  add<TableViewCell, CellItem>();
  add<Button, ButtonItem>();
  add<Label, LabelItem>();
  add<ImageView, ImageViewItem>();
  add<ActivityIndicator, ActivityIndicatorItem>();
  add<Player, PlayerItem>();
  add<Chart, ChartItem>();
  add<TextField, TextFieldItem>();
  add<WebView, WebViewItem>();
  add<TabBar, TabBarAdapter>();
  add<TimeRibbon, TimeRibbonItem>();
  add<FactStrip, FactStripItem>();
  add<ProgressOverlay, ProgressOverlayItem>();
  add<Toast, ToastItem>();
  add<AlertView, AlertViewItem>();
  add<ActionSheet, ActionSheetItem>();
  add<ActionSheetDatePicker, DatePickerItem>();
  add<Window, WindowItem>();
  add<Appearance, AppearanceItem>();
}

ComponentItem* Adapters::itemFor(Component* component) {
  if (!component) return nullptr;
  if (const auto found = items_.find(component); found != items_.end()) return found->second.item;
  ComponentItem* item = make(*component);
  QQmlEngine::setObjectOwnership(item, QQmlEngine::CppOwnership);
  items_[component] = {item, component->destroyed.connect([this, component] {
                         const auto entry = items_.extract(component);
                         if (!entry.empty()) entry.mapped().item->componentDestroyed();
                       })};
  return item;
}

ComponentItem* Adapters::outletOf(const Outlets& owner, const QString& ownersName, const QString& name) {
  Component* const component = owner.findOutlet(name.toStdString());
  if (!component) {
    QStringList names;
    for (const auto& [known, outlet] : owner.outlets())
      names << QString::fromStdString(known);
    qWarning().noquote().nospace() << ownersName << " has no outlet \"" << name << "\": expected one of "
                                   << names.join(QStringLiteral(", "));
  }
  return itemFor(component);
}

ComponentItem* Adapters::make(Component& component) {
  for (const auto& [isOfKind, factory] : kinds_)
    if (isOfKind(component)) return factory(component, *this);
  return new ComponentItem(component, *this);
}

QUrl Adapters::imageUrl(const std::string& name) {
  QString file = toQString(name);
  if (file.endsWith(QLatin1String(".png"))) file.chop(4);
  file = QStringLiteral("/images/%1.svg").arg(file);
  return !name.empty() && QFile::exists(QLatin1Char(':') + file) ? QUrl(QStringLiteral("qrc:") + file)
                                                                 : QUrl();
}

QString Adapters::localized(const std::string& key) const {
  return toQString(environment_.device.localizedString(key));
}

}  // namespace fleetor
