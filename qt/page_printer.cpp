#include "qt/page_printer.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>

#include "qt/components/component_item.h"

namespace fleetor {

namespace {

constexpr int dotsPerInch = 600;
constexpr double dots = dotsPerInch / 25.4;  ///< a millimetre
constexpr double smallestShare = 0.75;       ///< of its size, to which a long text shrinks before it is cut

QRectF rectOf(const PageBox& box) {
  return {box.x * dots, box.y * dots, box.width * dots, box.height * dots};
}

QColor colourOf(std::uint32_t rgb) {
  return QColor::fromRgb(0xff000000u | rgb);
}

void drawText(QPainter& painter, const PageText& text, double pageWidth, bool mirrored) {
  PageBox box = text.box;
  if (mirrored && text.align != PageText::Align::centre) box.x = pageWidth - box.x - box.width;
  QFont font = QGuiApplication::font();
  font.setBold(text.bold);
  font.setPointSizeF(text.points);
  QString words = toQString(text.text).simplified();
  const QRectF at = rectOf(box);
  const double needed = QFontMetricsF(font, painter.device()).horizontalAdvance(words);
  if (needed > at.width()) {
    font.setPointSizeF(text.points * std::max(smallestShare, at.width() / needed));
    words = QFontMetricsF(font, painter.device()).elidedText(words, Qt::ElideRight, at.width());
  }
  const bool toTheRight = (text.align == PageText::Align::end) != mirrored;
  const Qt::Alignment align = text.align == PageText::Align::centre ? Qt::AlignHCenter
                              : toTheRight                          ? Qt::AlignRight
                                                                    : Qt::AlignLeft;
  painter.setFont(font);
  painter.setPen(colourOf(text.colour));
  painter.drawText(
      at, static_cast<int>((align | Qt::AlignAbsolute | Qt::AlignVCenter).toInt()) | Qt::TextSingleLine,
      words);
}

}  // namespace

std::string pdfOf(const Page& page) {
  QByteArray file;
  QBuffer buffer(&file);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setTitle(toQString(page.title));
  writer.setCreator(QStringLiteral("Fleetor"));
  writer.setResolution(dotsPerInch);
  writer.setPageLayout(QPageLayout(QPageSize(QSizeF(page.width, page.height), QPageSize::Millimeter),
                                   QPageLayout::Portrait, QMarginsF()));
  QPainter painter(&writer);
  for (const PageArea& area : page.areas)
    painter.fillRect(rectOf(area.box), colourOf(area.colour));
  for (const PageLine& line : page.lines) {
    QPolygonF points;
    for (const PagePoint& at : line.points)
      points << QPointF(at.x * dots, at.y * dots);
    painter.setPen(
        QPen(colourOf(line.colour), line.width * dots, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(points);
  }
  const bool mirrored = QGuiApplication::layoutDirection() == Qt::RightToLeft;
  painter.setLayoutDirection(QGuiApplication::layoutDirection());
  for (const PageText& text : page.texts)
    drawText(painter, text, page.width, mirrored);
  painter.end();
  return file.toStdString();
}

}  // namespace fleetor
