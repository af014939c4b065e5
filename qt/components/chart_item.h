#pragma once

#include <QColor>
#include <QPointer>
#include <QQuickPaintedItem>
#include <QVariantList>

#include "qt/components/adapters.h"
#include "ui/controls/chart.h"

namespace fleetor {

/// The adapter of a chart.
class ChartItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(bool empty READ empty NOTIFY changed)
  Q_PROPERTY(QVariantList valueTicks READ valueTicks NOTIFY changed)    ///< each with "share" and "text"
  Q_PROPERTY(double momentShare READ momentShare NOTIFY momentChanged)  ///< below 0 without a moment
  Q_PROPERTY(QString momentText READ momentText NOTIFY momentChanged)

 public:
  ChartItem(Component& component, Adapters& adapters);

  QString title() const;
  bool empty() const;
  QVariantList valueTicks() const;
  double momentShare() const;
  QString momentText() const;

  Q_INVOKABLE QVariantList timeTicks(int most) const;
  Q_INVOKABLE void choose(double share);

 Q_SIGNALS:
  void momentChanged();

 private:
  Connection moves_;
};

/// Draws the curve of a chart.
class ChartCurve : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(fleetor::ChartItem* chart READ chart WRITE setChart NOTIFY chartChanged)
  Q_PROPERTY(QColor color MEMBER color_ WRITE setColor NOTIFY chartChanged)

 public:
  explicit ChartCurve(QQuickItem* parent = nullptr);

  ChartItem* chart() const { return chart_; }
  void setChart(ChartItem* chart);
  void setColor(const QColor& color);
  void paint(QPainter* painter) override;

 Q_SIGNALS:
  void chartChanged();

 private:
  QPointer<ChartItem> chart_;
  QColor color_;
};

}  // namespace fleetor
