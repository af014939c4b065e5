#pragma once

#include <QVariantList>

#include "qt/components/component_item.h"
#include "ui/controls/fact_strip.h"
#include "ui/controls/time_ribbon.h"

namespace fleetor {

/// Moments are shares of the day, from 0 to 1; a negative value means none.
class TimeRibbonItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(bool empty READ empty NOTIFY changed)
  Q_PROPERTY(QColor color READ color NOTIFY changed)
  Q_PROPERTY(double mark READ mark NOTIFY changed)
  Q_PROPERTY(double moment READ moment NOTIFY changed)
  Q_PROPERTY(QString description READ description NOTIFY changed)
  Q_PROPERTY(int columns READ columns WRITE setColumns NOTIFY piecesChanged)

  /// What is drawn in that many columns: "begin", "end" and "strong".
  Q_PROPERTY(QVariantList pieces READ pieces NOTIFY piecesChanged)

 public:
  using ComponentItem::ComponentItem;
  bool empty() const;
  QColor color() const;
  double mark() const;
  double moment() const;
  QString description() const;
  int columns() const { return columns_; }
  void setColumns(int columns);
  QVariantList pieces() const;
  Q_INVOKABLE void choose(double share);
  Q_INVOKABLE void step(bool forward);
  void refresh() override;

 Q_SIGNALS:
  void piecesChanged();

 private:
  int columns_ = 0;
  int revision_ = 0;
};

class FactStripItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QVariantList facts READ facts NOTIFY changed)  ///< "caption" and "value"

 public:
  using ComponentItem::ComponentItem;
  QVariantList facts() const;
};

}  // namespace fleetor
