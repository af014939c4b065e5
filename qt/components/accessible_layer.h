#pragma once

#include <QQuickItem>

class QAccessibleInterface;

namespace fleetor {

/// A focus scope that is empty for assistive technology while it is disabled. What lies under a question, a
/// sheet or another screen is disabled: seen through it, but in nobody's reach. Needs an Accessible.role.
class AccessibleLayer : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT

 public:
  explicit AccessibleLayer(QQuickItem* parent = nullptr);

  /// For QAccessible::installFactory.
  static QAccessibleInterface* interfaceOf(const QString& className, QObject* object);
};

}  // namespace fleetor
