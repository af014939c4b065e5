// How long it takes to open the replay of a full day, and a frame of it at 300 times real time.
#include "map_stage.h"
#include "vehicle/day_replay.h"

namespace fleetor {

void replayDay(const QString& service) {
  constexpr int points = 86400;
  Stage stage(service);
  auto day = std::make_shared<DayPoints>();
  for (const auto& place : pan::track(pan::longest)) {
    if (day->seconds.size() == points) break;
    day->seconds.push_back(static_cast<float>(day->seconds.size()));
    day->coordinates.push_back({place.latitude, place.longitude});
  }
  for (const auto& sight : pan::sights) {
    OneLine delegate;
    MapView map;
    map.setDelegate(&delegate);
    const auto line = MapPolyline::polylineWithCoordinates(day->coordinates);
    map.addOverlay(line);
    stage.show(map);
    DayReplay replay(map, stage.device);
    replay.setDay(day, line, "car");
    const double before = pan::now();
    replay.setOpen(true);
    pan::report("replay, opened", points, sight.name, {pan::now() - before});
    while (replay.state().rate < 300)
      replay.nextRate();
    replay.moveTo(points / 2.0);
    map.moveCamera([&](MapCamera& camera) { camera.moveTo({map.traveller()->place, sight.zoom}, false); });
    replay.follow();
    stage.rest(1.5);  // tiles and a simplified line have come
    replay.togglePlaying();

    const auto times = timesOfFrames(stage, [&](int) {
      replay.advance(1.0 / 60);
      QCoreApplication::sendPostedEvents(&stage.surface);  // what is laid out ahead of the frame
    });
    stage.surface.setMap(nullptr);
    pan::report("replay at 300 times, a frame", points, sight.name, times);
  }
}

}  // namespace fleetor
