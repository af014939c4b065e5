#include "shell/row_readings.h"

#include <string>
#include <utility>

#include "values/quantities.h"
#include "vehicle/watch/reading_age.h"

namespace fleetor {

RowReadings::RowReadings(Environment& environment, std::shared_ptr<LastReadings> readings)
    : environment_(environment),
      readings_(std::move(readings)),
      ages_(
          environment.queues, environment.clock, [this] { update(); }, LastReadings::together),
      background_(environment.notificationCenter,
                  [this] {
                    ages_.cancel();
                    update();
                  }),
      received_(readings_->received.connect([this](std::int64_t) {
        if (isWatched()) ages_.after({});
      })) {}

void RowReadings::setShown(bool shown) {
  shown_ = shown;
  ages_.cancel();
  update();
}

void RowReadings::follow(const std::shared_ptr<VehicleTableViewCell>& row, std::int64_t vehicleId) {
  rows_[row] = vehicleId;
  if (isWatched()) fill(row->readingLabel(), vehicleId);
}

void RowReadings::update() {
  if (!isWatched()) return;
  std::erase_if(rows_, [](const auto& row) { return row.first.expired(); });
  for (const auto& [weak, id] : rows_)
    fill(weak.lock()->readingLabel(), id);
}

void RowReadings::fill(Label& label, std::int64_t vehicleId) {
  const auto* const entry = readings_->of(vehicleId);
  if (!entry) return label.setText("");
  const ReadingAge age = readingAge(environment_.clock.uptime() - entry->arrived, environment_.device);
  const Text& speed = entry->live->speed;
  label.setText((readNumber(speed.view()) ? speed.str() + "km/h · " : "") + age.text);
  ages_.after(age.changesIn);
}

}  // namespace fleetor
