#pragma once

#include "ui/containers/sw_reveal_view_controller.h"

namespace fleetor {

/// On a tablet the list and what it opens stand side by side: gives the front screen the width that the rear
/// one leaves free, and the container's height. Its origin stays.
inline void placeFrontBesideRear(SWRevealViewController& reveal) {
  const auto& front = reveal.frontViewController();
  if (!front) return;
  const Rect whole = reveal.view().frame();
  Rect frame = front->view().frame();
  frame.width = whole.width - reveal.rearViewRevealWidth();
  frame.height = whole.height;
  front->view().setFrame(frame);
}

}  // namespace fleetor
