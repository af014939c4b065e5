#include "qt/components/accessible_layer.h"

#include <QAccessibleObject>
#include <QQuickWindow>

namespace fleetor {

namespace {

/// None for an item that is ignored: Qt keeps the interface of one that became ignored later.
QAccessibleInterface* accessibleOf(QQuickItem& item) {
  for (const QObject* part : item.children())
    if (part->inherits("QQuickAccessibleAttached") && part->property("ignored").toBool()) return nullptr;
  return QAccessible::queryAccessibleInterface(&item);
}

/// The nearest accessible items below that one.
void collect(const QQuickItem& item, QList<QAccessibleInterface*>& found) {
  for (QQuickItem* child : item.childItems())
    if (QAccessibleInterface* accessible = accessibleOf(*child))
      found << accessible;
    else
      collect(*child, found);
}

class LayerInterface final : public QAccessibleObject {
 public:
  explicit LayerInterface(AccessibleLayer* layer) : QAccessibleObject(layer) {}

  QWindow* window() const override { return layer().window(); }
  QAccessibleInterface* parent() const override {
    for (QQuickItem* above = layer().parentItem(); above; above = above->parentItem())
      if (QAccessibleInterface* accessible = accessibleOf(*above)) return accessible;
    return QAccessible::queryAccessibleInterface(layer().window());
  }
  QAccessibleInterface* child(int index) const override { return children().value(index); }
  int childCount() const override { return static_cast<int>(children().size()); }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return static_cast<int>(children().indexOf(child));
  }

  QString text(QAccessible::Text /*kind*/) const override { return {}; }
  QRect rect() const override {
    if (!window()) return {};
    const QRectF place = layer().mapRectToScene(layer().boundingRect());
    return place.toRect().translated(window()->mapToGlobal(QPoint()));
  }
  QAccessible::Role role() const override { return QAccessible::Pane; }
  QAccessible::State state() const override {
    QAccessible::State state;
    state.disabled = state.invisible = !layer().isEnabled();
    return state;
  }

 private:
  AccessibleLayer& layer() const { return *static_cast<AccessibleLayer*>(object()); }
  QList<QAccessibleInterface*> children() const {
    QList<QAccessibleInterface*> found;
    if (layer().isEnabled()) collect(layer(), found);
    return found;
  }
};

}  // namespace

AccessibleLayer::AccessibleLayer(QQuickItem* parent) : QQuickItem(parent) {
  setFlag(ItemIsFocusScope);
}

QAccessibleInterface* AccessibleLayer::interfaceOf(const QString& /*className*/, QObject* object) {
  auto* const layer = qobject_cast<AccessibleLayer*>(object);
  return layer ? new LayerInterface(layer) : nullptr;
}

}  // namespace fleetor
