#include "ui/controls/time_ribbon.h"

#include <algorithm>
#include <array>
#include <utility>

namespace fleetor {

void TimeRibbon::show(std::vector<Stretch> stretches, Color color, std::optional<float> mark,
                      Describe describe) {
  stretches_ = std::move(stretches);
  color_ = color;
  mark_ = mark;
  describe_ = std::move(describe);
  moment_.reset();
  ++revision_;
  changed.emit();
}

void TimeRibbon::choose(double seconds) {
  if (stretches_.empty()) return;
  setMoment(std::clamp(seconds, 0.0, length));
  momentChosen.emit(*moment_);
}

void TimeRibbon::step(bool forward) {
  const auto count = static_cast<std::ptrdiff_t>(stretches_.size());
  const auto chosen = chosenStretch();
  auto at = chosen ? static_cast<std::ptrdiff_t>(*chosen) : forward ? -1 : count;
  do
    at += forward ? 1 : -1;
  while (at >= 0 && at < count && stretches_[static_cast<std::size_t>(at)].weight == Weight::blank);
  if (at >= 0 && at < count) choose(stretches_[static_cast<std::size_t>(at)].begin);
}

std::optional<std::size_t> TimeRibbon::chosenStretch() const {
  if (!moment_ || stretches_.empty()) return std::nullopt;
  const auto after = std::ranges::upper_bound(stretches_, *moment_, {}, &Stretch::begin);
  return static_cast<std::size_t>(std::max<std::ptrdiff_t>(after - stretches_.begin() - 1, 0));
}

std::string TimeRibbon::description() const {
  const auto index = chosenStretch();
  return index && describe_ ? describe_(*index) : std::string();
}

std::vector<TimeRibbon::Stretch> TimeRibbon::inColumns(int columns) const {
  std::vector<Stretch> drawn;
  auto stretch = stretches_.begin();
  for (int column = 0; column < columns && stretch != stretches_.end(); ++column) {
    const auto begin = static_cast<float>(length * column / columns);
    const auto end = static_cast<float>(length * (column + 1) / columns);
    std::array<float, 3> share{};
    for (; stretch != stretches_.end(); ++stretch) {
      share[static_cast<std::size_t>(stretch->weight)] +=
          std::min(end, stretch->end) - std::max(begin, stretch->begin);
      if (stretch->end > end) break;
    }
    const auto weight = static_cast<Weight>(std::ranges::max_element(share) - share.begin());
    if (!drawn.empty() && drawn.back().weight == weight)
      drawn.back().end = end;
    else
      drawn.push_back({begin, end, weight});
  }
  return drawn;
}

}  // namespace fleetor
