#include "qt/components/chart_item.h"

#include <QPainter>
#include <QPolygonF>

namespace fleetor {

namespace {

constexpr double curveWidth = 2;  // points

QVariantList listOf(const std::vector<ChartTick>& ticks) {
  QVariantList list;
  for (const auto& [share, text] : ticks)
    list << QVariantMap{{QStringLiteral("share"), share}, {QStringLiteral("text"), toQString(text)}};
  return list;
}

}  // namespace

ChartItem::ChartItem(Component& component, Adapters& adapters)
    : ComponentItem(component, adapters),
      moves_(as<Chart>()->momentChanged.connect([this] { Q_EMIT momentChanged(); })) {}

QString ChartItem::title() const {
  return read<Chart>([](Chart& c) { return toQString(c.title()); });
}

bool ChartItem::empty() const {
  return read<Chart>([](Chart& c) { return c.points().empty(); });
}

QVariantList ChartItem::valueTicks() const {
  return read<Chart>([](Chart& c) { return listOf(c.valueTicks()); });
}

QVariantList ChartItem::timeTicks(int most) const {
  return read<Chart>([most](Chart& c) { return listOf(c.timeTicks(most)); });
}

double ChartItem::momentShare() const {
  return read<Chart>([](Chart& c) { return c.moment() ? c.shareOf(*c.moment()) : -1; });
}

QString ChartItem::momentText() const {
  return read<Chart>([](Chart& c) { return c.moment() ? toQString(c.valueText(*c.moment())) : QString(); });
}

void ChartItem::choose(double share) {
  if (auto* chart = as<Chart>()) chart->choose(share);
}

ChartCurve::ChartCurve(QQuickItem* parent) : QQuickPaintedItem(parent) {
  setAntialiasing(true);
}

void ChartCurve::setChart(ChartItem* chart) {
  if (chart == chart_) return;
  if (chart_) chart_->disconnect(this);
  chart_ = chart;
  if (chart) connect(chart, &ComponentItem::changed, this, [this] { update(); });
  Q_EMIT chartChanged();
  update();
}

void ChartCurve::setColor(const QColor& color) {
  if (std::exchange(color_, color) == color) return;
  Q_EMIT chartChanged();
  update();
}

void ChartCurve::paint(QPainter* painter) {
  const auto* const chart = chart_ ? chart_->as<Chart>() : nullptr;
  if (!chart) return;
  painter->setPen(QPen(color_, curveWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter->translate(0, curveWidth / 2);
  for (const auto& stroke : chart->strokes(width(), height() - curveWidth)) {
    QPolygonF line;
    for (const auto& [x, y] : stroke)
      line << QPointF(x, y);
    line.size() > 1 ? painter->drawPolyline(line) : painter->drawPoints(line);
  }
}

}  // namespace fleetor
