#include "qt/outlined_pictures.h"

#include <QImageReader>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace fleetor {

namespace {

struct Outline {
  QRgb color;
  double width;  // points
};
constexpr Outline onDark{qRgb(255, 255, 255), 1};
constexpr Outline onLight{qRgb(59, 74, 89), 0.7};  // a wider one would fill the spokes of a motorcycle
constexpr int drawnAt = 40;                        // points
constexpr int directions = 16;

}  // namespace

QImage OutlinedPictures::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
  QImageReader reader(QStringLiteral(":/images/") + id.section(u'/', 1));
  const QSize whole = requestedSize.isEmpty() ? reader.size() : requestedSize;
  *size = whole;
  if (!reader.canRead() || whole.isEmpty()) return {};

  const Outline& outline = id.startsWith(u"on-dark") ? onDark : onLight;
  const double width = outline.width * std::max(1.0, 1.0 * whole.width() / drawnAt);
  const int inset = static_cast<int>(std::ceil(width));
  reader.setScaledSize(whole - QSize(2 * inset, 2 * inset));
  const QImage picture = reader.read();
  QImage shape = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  QPainter dye(&shape);
  dye.setCompositionMode(QPainter::CompositionMode_SourceIn);
  dye.fillRect(shape.rect(), QColor(outline.color));
  dye.end();

  QImage outlined(whole, QImage::Format_ARGB32_Premultiplied);
  outlined.fill(Qt::transparent);
  QPainter painter(&outlined);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  for (int i = 0; i < directions; ++i) {
    const double angle = 2 * std::numbers::pi * i / directions;
    painter.drawImage(QPointF(inset + width * std::cos(angle), inset + width * std::sin(angle)), shape);
  }
  painter.drawImage(inset, inset, picture);
  return outlined;
}

}  // namespace fleetor
