#include "map/marker_stacks.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace fleetor {

namespace {

constexpr double onePlace = 12;  // points, a quarter of what a finger touches
constexpr double reach = 24;     // of a fingertip, from the middle of a picture

double squaredDistance(ScreenPoint a, ScreenPoint b) {
  return (a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y);
}

}  // namespace

MarkerStacks::MarkerStacks(std::span<const MarkerSpot> spots)
    : spots_(spots.begin(), spots.end()), stackOf_(spots.size()) {
  std::vector<std::size_t> fromTheTop(spots.size());
  std::iota(fromTheTop.rbegin(), fromTheTop.rend(), 0);
  std::ranges::stable_sort(fromTheTop, std::greater(), [&](std::size_t each) { return spots[each].height; });
  for (const std::size_t marker : fromTheTop) {
    const auto beneath = std::ranges::find_if(stacks_, [&](const auto& stack) {
      return squaredDistance(spots[stack.front()].place, spots[marker].place) <= onePlace * onePlace;
    });
    stackOf_[marker] = static_cast<std::size_t>(beneath - stacks_.begin());
    if (beneath == stacks_.end())
      stacks_.push_back({marker});
    else
      beneath->push_back(marker);
  }
}

std::size_t MarkerStacks::sizeBelow(std::size_t marker) const {
  const auto& stack = stacks_[stackOf_[marker]];
  return stack.front() == marker ? stack.size() : 0;
}

std::optional<std::size_t> MarkerStacks::touched(ScreenPoint finger) const {
  std::optional<std::size_t> nearest;
  double least = reach * reach;
  for (const auto& stack : stacks_) {  // a higher stack first: of several as near the topmost one is touched
    for (const std::size_t marker : stack) {
      const double away = squaredDistance(spots_[marker].picture, finger);
      if (away > least || (nearest && away == least)) continue;
      nearest = marker;
      least = away;
    }
  }
  return nearest;
}

std::optional<std::size_t> MarkerStacks::toOpen(std::size_t touched, std::optional<std::size_t> open) const {
  const auto& stack = stacks_[stackOf_[touched]];
  if (!open || stackOf_[*open] != stackOf_[touched]) return touched;
  if (stack.size() == 1) return std::nullopt;
  const auto at = std::ranges::find(stack, *open);
  return at + 1 == stack.end() ? stack.front() : at[1];
}

}  // namespace fleetor
