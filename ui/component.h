#pragma once

#include <map>
#include <string>
#include <utility>

#include "ui/signal.h"

namespace fleetor {

/// Observable state that somebody may draw. Main thread only. `changed` follows every change of what a user
/// could notice; several changes may share one emission. `destroyed` comes while the component is being
/// destroyed: whoever draws it lets go of it and calls nothing on it any more.
class Component {
 public:
  Component() = default;
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;
  virtual ~Component() { destroyed.emit(); }

  /// What assistive technology calls this component; already in the user's language.
  virtual std::string accessibleName() const { return accessibleName_; }
  void setAccessibleName(std::string name) { assign(accessibleName_, std::move(name)); }

  Signal<> changed;
  Signal<> destroyed;

 protected:
  /// Takes over a value and tells of it when it differs.
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
  /// Registers the component; a name that is taken already names the new component from now on.
  void outlet(const std::string& name, Component& component) { outlets_[name] = &component; }

  /// The component of that name, or none.
  Component* findOutlet(const std::string& name) const {
    const auto found = outlets_.find(name);
    return found == outlets_.end() ? nullptr : found->second;
  }

  const std::map<std::string, Component*>& outlets() const { return outlets_; }

 private:
  std::map<std::string, Component*> outlets_;
};

}  // namespace fleetor
