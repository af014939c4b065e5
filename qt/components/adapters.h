#pragma once

#include <QObject>
#include <QUrl>
#include <string>
#include <unordered_map>

#include "qt/components/component_item.h"
#include "qt/map/tile_source.h"
#include "ui/environment.h"

namespace fleetor {

/// Makes the adapter of every component that QML asks for, one each, and keeps it for as long as the
/// component lives. Main thread only; outlives the QML engine that shows the adapters, and is destroyed
/// before the environment and the tile source.
class Adapters : public QObject {
 public:
  Adapters(Environment& environment, TileSource& tiles) : environment_(environment), tiles_(tiles) {}

  /// The adapter of that component; none for none.
  ComponentItem* itemFor(Component* component);

  template <class Item>
  Item* itemFor(Component* component) {
    return qobject_cast<Item*>(itemFor(component));
  }

  /// Where the picture of that name is; empty when there is none.
  static QUrl imageUrl(const std::string& name);

  QString localized(const std::string& key) const;
  Environment& environment() const { return environment_; }
  TileSource& tiles() const { return tiles_; }

 private:
  struct Entry {
    ComponentItem* item = nullptr;
    Connection destroyed;
  };

  ComponentItem* make(Component& component);

  Environment& environment_;
  TileSource& tiles_;
  std::unordered_map<const Component*, Entry> items_;
};

}  // namespace fleetor
