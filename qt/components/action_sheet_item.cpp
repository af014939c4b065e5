#include "qt/components/action_sheet_item.h"

#include <QPainter>
#include <algorithm>

namespace fleetor {

namespace {

QStringList textsOf(const ActionSheet* sheet, std::string SheetEntry::*text) {
  QStringList texts;
  if (sheet)
    for (const SheetEntry& entry : sheet->content().entries)
      texts << toQString(entry.*text);
  return texts;
}

}  // namespace

QString ActionSheetItem::title() const {
  return read<ActionSheet>([](ActionSheet& c) { return toQString(c.content().title); });
}
QString ActionSheetItem::message() const {
  return read<ActionSheet>([](ActionSheet& c) { return toQString(c.content().message); });
}
QImage ActionSheetItem::picture() const {
  const auto* sheet = as<ActionSheet>();
  if (!sheet || sheet->content().picture.side == 0) return {};
  const auto& [side, dark] = sheet->content().picture;
  QImage image(side, side, QImage::Format_RGB32);
  auto isDark = dark.begin();
  for (int y = 0; y < side; ++y)
    for (int x = 0; x < side; ++x)
      image.setPixelColor(x, y, *isDark++ ? Qt::black : Qt::white);
  return image;
}
QStringList ActionSheetItem::titles() const {
  return textsOf(as<ActionSheet>(), &SheetEntry::title);
}
QStringList ActionSheetItem::details() const {
  return textsOf(as<ActionSheet>(), &SheetEntry::detail);
}
QList<QUrl> ActionSheetItem::images() const {
  QList<QUrl> images;
  if (const auto* sheet = as<ActionSheet>())
    for (const SheetEntry& entry : sheet->content().entries)
      images << Adapters::imageUrl(entry.image);
  return images;
}
void ActionSheetItem::tapEntry(int index) {
  if (auto* sheet = as<ActionSheet>()) sheet->tapEntry(index);
}
void ActionSheetItem::cancel() {
  if (auto* sheet = as<ActionSheet>()) sheet->cancel();
}

void CellPictureView::show(ActionSheetItem* sheet) {
  picture_ = sheet ? sheet->picture() : QImage();
  Q_EMIT pictureChanged();
  update();
}

void CellPictureView::paint(QPainter* painter) {
  if (picture_.isNull()) return;
  // A whole number of pixels for each cell.
  const int cell = std::max(1, static_cast<int>(std::min(width(), height())) / picture_.width());
  const int side = cell * picture_.width();
  painter->drawImage(QRectF((width() - side) / 2, (height() - side) / 2, side, side), picture_);
}

}  // namespace fleetor
