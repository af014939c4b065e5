#include "qt/outlined_pictures.h"

#include <QImageReader>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

namespace fleetor {

namespace {

struct Outline {
  QStringView ground;
  QRgb color;
  double opacity;
  double width;  // points
  bool fits;     // the picture leaves room for it
};
constexpr Outline outlines[] = {
    {u"dark", qRgb(255, 255, 255), 1, 1, false},
    {u"light", qRgb(59, 74, 89), 1, 0.7, false},  // a wider one would fill the spokes of a motorcycle
    {u"bar", qRgb(59, 74, 89), 0.6, 1, true},
};
constexpr int drawnAt = 40;  // points
constexpr int directions = 16;

}  // namespace

QImage OutlinedPictures::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
  QImageReader reader(QStringLiteral(":/images/") + id.section(u'/', 1));
  const QSize whole = requestedSize.isEmpty() ? reader.size() : requestedSize;
  *size = whole;
  const auto outline = std::ranges::find(outlines, id.section(u'/', 0, 0), &Outline::ground);
  if (!reader.canRead() || whole.isEmpty() || outline == std::end(outlines)) return {};

  const double width = outline->width * std::max(1.0, 1.0 * whole.width() / drawnAt);
  const int inset = outline->fits ? 0 : static_cast<int>(std::ceil(width));
  reader.setScaledSize(whole - QSize(2 * inset, 2 * inset));
  const QImage picture = reader.read();
  QImage shape = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  QPainter dye(&shape);
  dye.setCompositionMode(QPainter::CompositionMode_SourceIn);
  dye.fillRect(shape.rect(), QColor(outline->color));
  dye.end();

  QImage outlined(whole, QImage::Format_ARGB32_Premultiplied);
  outlined.fill(Qt::transparent);
  QPainter painter(&outlined);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  for (int i = 0; i < directions; ++i) {
    const double angle = 2 * std::numbers::pi * i / directions;
    painter.drawImage(QPointF(inset + width * std::cos(angle), inset + width * std::sin(angle)), shape);
  }
  painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
  painter.fillRect(outlined.rect(), QColor::fromRgbF(0, 0, 0, static_cast<float>(outline->opacity)));
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  painter.drawImage(inset, inset, picture);
  return outlined;
}

}  // namespace fleetor
