#pragma once

#include <memory>
#include <optional>
#include <string>

#include "day/replay.h"
#include "platform/device.h"
#include "ui/controls/player.h"
#include "ui/map/map_view.h"

namespace fleetor {

/// The replay of a day on a map. While it is open, the vehicle stands on the map where it was at the moment,
/// and the way up to there is strong. The map follows as far as it must to keep the vehicle well within its
/// edges, until the user moves it. While it is closed it holds nothing but the day. Main thread only.
class DayReplay final : public Player {
 public:
  /// Both outlive it.
  DayReplay(MapView& map, const Device& device);

  /// The day on the map, its line, and the name of the vehicle's picture. There is nothing to replay without
  /// a day, without times, and when the line is that of another day. What is open stays open, at the
  /// beginning.
  void setDay(std::shared_ptr<const DayPoints> day, std::shared_ptr<MapPolyline> line, std::string image);
  void pause();

  void setOpen(bool open) override;
  void togglePlaying() override;
  void nextRate() override;
  void step(int points) override;
  void moveTo(double moment) override;
  void follow() override;
  void advance(double seconds) override;

  /// Where the vehicle was at the moment; none while it is closed, and where the positions of the points
  /// around the moment are not understood.
  std::optional<Coordinate> place() const;

  /// Null while it is closed.
  const DayPath* path() const { return replay_ ? &replay_->path() : nullptr; }

 private:
  void present(bool withTexts);
  void presentTexts(const DayPlace& place);
  void keepInSight(WorldPoint place);
  void cameraMoved();

  MapView& map_;
  const Device& device_;
  std::shared_ptr<const DayPoints> day_;
  MapTraveller traveller_;
  std::optional<Replay> replay_;
  int rate_;
  double sinceTexts_ = 0;  ///< seconds of playing
  CameraPosition seen_;    ///< what the map showed last
  bool isPlaced_ = false;
  bool reopens_ = false;    ///< it was open when its day went, and opens with the next one
  bool movesMap_ = false;   ///< the replay itself moves the map, not the user
  bool returns_ = false;    ///< the map is on its way to the vehicle
  Connection cameraMoves_;  ///< while it is open
};

}  // namespace fleetor
