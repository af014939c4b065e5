#include "qt/components/appearance_item.h"

#include "ui/appearance.h"

namespace fleetor {

QColor AppearanceItem::bar() const {
  return read<Appearance>([](Appearance& c) {
    const auto& bar = c.navigationBar();
    return toQColor(bar.backgroundImageColor ? bar.backgroundImageColor : bar.barTintColor);
  });
}
QColor AppearanceItem::barButton() const {
  return read<Appearance>([](Appearance& c) { return toQColor(c.navigationBar().tintColor); });
}
QColor AppearanceItem::barTitle() const {
  return read<Appearance>([](Appearance& c) { return toQColor(c.navigationBar().titleColor); });
}
QUrl AppearanceItem::backImage() const {
  return read<Appearance>(
      [](Appearance& c) { return Adapters::imageUrl(c.navigationBar().backIndicatorImage); });
}
QUrl AppearanceItem::shadowImage() const {
  return read<Appearance>([](Appearance& c) { return Adapters::imageUrl(c.navigationBar().shadowImage); });
}
QColor AppearanceItem::tabTitle() const {
  return read<Appearance>([](Appearance& c) { return toQColor(c.tabBarItem().titleColor); });
}
QColor AppearanceItem::selectedTabTitle() const {
  return read<Appearance>([](Appearance& c) { return toQColor(c.tabBarItem().selectedTitleColor); });
}

}  // namespace fleetor
