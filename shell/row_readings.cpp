#include "shell/row_readings.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "values/quantities.h"
#include "vehicle/watch/reading_age.h"

namespace fleetor {

RowReadings::RowReadings(Environment& environment, std::shared_ptr<LastReadings> readings)
    : environment_(environment),
      readings_(std::move(readings)),
      ages_(environment.queues, environment.clock, [this] { update(); }),
      background_(environment.notificationCenter,
                  [this] {
                    ages_.cancel();
                    update();
                  }),
      received_(readings_->received.connect([this](std::int64_t) { update(); })) {}

void RowReadings::setShown(bool shown) {
  shown_ = shown;
  ages_.cancel();
  update();
}

void RowReadings::follow(const std::shared_ptr<VehicleTableViewCell>& row, std::int64_t vehicleId) {
  rows_[row] = vehicleId;
  update();
}

void RowReadings::update() {
  if (!shown_ || background_.inBackground()) return;
  std::erase_if(rows_, [](const auto& row) { return row.first.expired(); });
  std::optional<Seconds> next;
  for (const auto& [weak, id] : rows_) {
    Label& label = weak.lock()->readingLabel();
    const auto* const entry = readings_->of(id);
    if (!entry) {
      label.setText("");
      continue;
    }
    const ReadingAge age = readingAge(environment_.clock.uptime() - entry->arrived, environment_.device);
    const Text& speed = entry->live->speed;
    label.setText((readNumber(speed.view()) ? speed.str() + "km/h · " : "") + age.text);
    next = std::min(next.value_or(age.changesIn), age.changesIn);
  }
  if (next) ages_.after(*next);
}

}  // namespace fleetor
