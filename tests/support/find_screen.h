#pragma once

#include "ui/containers/view_controller.h"

namespace fleetor::test {

/// The first screen of that class at or below this one, presented ones included; nothing when there is none.
template <class Screen>
Screen* findScreen(ViewController* top) {
  for (; top; top = top->presentedViewController().get()) {
    if (auto* screen = dynamic_cast<Screen*>(top)) return screen;
    for (const auto& child : top->childViewControllers())
      if (Screen* found = findScreen<Screen>(child.get())) return found;
  }
  return nullptr;
}

/// What a screen or a row has drawn under that name.
template <class Kind, class Owner>
Kind& outletOf(Owner& owner, const char* name) {
  return dynamic_cast<Kind&>(*owner.findOutlet(name));
}

}  // namespace fleetor::test
