#include "qt/components/adapters.h"

#include <QFile>
#include <QQmlEngine>

#include "qt/components/control_items.h"
#include "qt/components/table_model.h"
#include "qt/components/view_controller_items.h"
#include "qt/components/window_item.h"
#include "qt/map/map_view_item.h"

namespace fleetor {

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

ComponentItem* Adapters::make(Component& component) {
  Component* const c = &component;
  if (dynamic_cast<NavigationController*>(c)) return new NavigationControllerItem(component, *this);
  if (dynamic_cast<SWRevealViewController*>(c)) return new RevealControllerItem(component, *this);
  if (dynamic_cast<SwipeTabBarController*>(c)) return new SwipeTabBarControllerItem(component, *this);
  if (dynamic_cast<ViewController*>(c)) return new ViewControllerItem(component, *this);
  if (dynamic_cast<TableView*>(c)) return new TableItem(component, *this);
  if (dynamic_cast<MapView*>(c)) return new MapViewItem(component, *this);
  if (dynamic_cast<MapAnnotationView*>(c)) return new MapMarkerItem(component, *this);
  if (dynamic_cast<TableViewCell*>(c)) return new CellItem(component, *this);
  if (dynamic_cast<Button*>(c)) return new ButtonItem(component, *this);
  if (dynamic_cast<Label*>(c)) return new LabelItem(component, *this);
  if (dynamic_cast<ImageView*>(c)) return new ImageViewItem(component, *this);
  if (dynamic_cast<ActivityIndicator*>(c)) return new ActivityIndicatorItem(component, *this);
  if (dynamic_cast<TextField*>(c)) return new TextFieldItem(component, *this);
  if (dynamic_cast<WebView*>(c)) return new WebViewItem(component, *this);
  if (dynamic_cast<TabBar*>(c)) return new TabBarAdapter(component, *this);
  if (dynamic_cast<ProgressOverlay*>(c)) return new ProgressOverlayItem(component, *this);
  if (dynamic_cast<Toast*>(c)) return new ToastItem(component, *this);
  if (dynamic_cast<AlertView*>(c)) return new AlertViewItem(component, *this);
  if (dynamic_cast<ActionSheetDatePicker*>(c)) return new DatePickerItem(component, *this);
  if (dynamic_cast<LayoutConstraint*>(c)) return new LayoutConstraintItem(component, *this);
  if (dynamic_cast<Window*>(c)) return new WindowItem(component, *this);
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
