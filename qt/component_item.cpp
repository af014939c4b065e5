#include "qt/component_item.h"

#include "qt/adapters.h"

namespace fleetor {

ComponentItem::ComponentItem(Component& component, Adapters& adapters)
    : QObject(&adapters), component_(&component), adapters_(adapters) {
  changed_ = component.changed.connect([this] { refresh(); });
}

QString ComponentItem::accessibleName() const {
  return read<Component>([](const Component& c) { return toQString(c.accessibleName()); });
}

void ComponentItem::componentDestroyed() {
  component_ = nullptr;
  refresh();
  deleteLater();
}

}  // namespace fleetor
