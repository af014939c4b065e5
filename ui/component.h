#pragma once

#include <map>
#include <string>
#include <utility>

#include "ui/signal.h"

namespace fleetor {

/// Observable state that an adapter may draw. Main thread only. `changed` follows every change that a user
/// could notice; several changes may share one emission. `destroyed` is emitted by the destructor: an adapter
/// drops its reference then and calls nothing on the component any more.
class Component {
 public:
  Component() = default;
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;
  virtual ~Component() { destroyed.emit(); }

  /// The name for assistive technology, in the user's language.
  virtual std::string accessibleName() const { return accessibleName_; }
  void setAccessibleName(std::string name) { assign(accessibleName_, std::move(name)); }

  Signal<> changed;
  Signal<> destroyed;

 protected:
  /// Sets the field and emits `changed` if the value differs.
  template <class T>
  bool assign(T& field, T value) {
    if (field == value) return false;
    field = std::move(value);
    changed.emit();
    return true;
  }

 private:
  std::string accessibleName_;
};

/// The named components of a screen or a row. Names are unique; the components belong to the same owner as
/// the table.
class Outlets {
 public:
  /// Registers the component, in place of an earlier one of that name.
  void outlet(const std::string& name, Component& component) { outlets_[name] = &component; }

  /// The component of that name, or null.
  Component* findOutlet(const std::string& name) const {
    const auto found = outlets_.find(name);
    return found == outlets_.end() ? nullptr : found->second;
  }

  const std::map<std::string, Component*>& outlets() const { return outlets_; }

 private:
  std::map<std::string, Component*> outlets_;
};

}  // namespace fleetor
