#pragma once

#include <QObject>
#include <QUrl>
#include <functional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "qt/components/component_item.h"
#include "ui/environment.h"

namespace fleetor {

/// Makes one adapter for each component that QML uses, and keeps it as long as the component lives. Main
/// thread only; outlives the QML engine, and is destroyed before the environment and whatever the factories
/// refer to.
class Adapters : public QObject {
 public:
  using Factory = std::function<ComponentItem*(Component& component, Adapters& adapters)>;

  explicit Adapters(Environment& environment);

  /// From now on `factory` makes the adapter of every component of class `Kind` that no earlier call covers:
  /// name derived classes before their bases.
  template <class Kind>
  void add(Factory factory) {
    kinds_.emplace_back([](Component& component) { return dynamic_cast<Kind*>(&component) != nullptr; },
                        std::move(factory));
  }

  /// The adapter of that component; none without a component.
  ComponentItem* itemFor(Component* component);

  template <class Item>
  Item* itemFor(Component* component) {
    return qobject_cast<Item*>(itemFor(component));
  }

  /// The adapter of the owner's outlet of that name. Without such an outlet: none, and a message on standard
  /// error.
  ComponentItem* outletOf(const Outlets& owner, const QString& ownersName, const QString& name);

  /// Where the picture of that name is; empty without a picture.
  static QUrl imageUrl(const std::string& name);

  QString localized(const std::string& key) const;
  Environment& environment() const { return environment_; }

 private:
  struct Entry {
    ComponentItem* item = nullptr;
    Connection destroyed;
  };

  template <class Kind, class Item>
  void add() {
    add<Kind>([](Component& component, Adapters& adapters) { return new Item(component, adapters); });
  }
  ComponentItem* make(Component& component);

  Environment& environment_;
  std::vector<std::pair<bool (*)(Component&), Factory>> kinds_;
  std::unordered_map<const Component*, Entry> items_;
};

}  // namespace fleetor
