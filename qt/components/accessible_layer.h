#pragma once

#include <QQuickItem>

class QAccessibleInterface;

namespace fleetor {

/// A focus scope that is empty for assistive technology while it is disabled: what lies under an alert, a
/// sheet or another screen is visible but out of reach. Needs an Accessible.role.
class AccessibleLayer : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT

 public:
  explicit AccessibleLayer(QQuickItem* parent = nullptr);

  /// For QAccessible::installFactory.
  static QAccessibleInterface* interfaceOf(const QString& className, QObject* object);
};

}  // namespace fleetor
