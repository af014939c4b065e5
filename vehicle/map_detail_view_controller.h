#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "day/day_points.h"
#include "ui/controls/time_ribbon.h"
#include "vehicle/chosen_day.h"
#include "vehicle/day_bar.h"
#include "vehicle/day_charts.h"
#include "vehicle/day_export.h"
#include "vehicle/day_replay.h"
#include "vehicle/track_page_view_controller.h"
#include "vehicle/trip_on_map.h"

namespace fleetor {

struct DayTrack;

/// The vehicle's track of one day: that chosen in the pager when this page loads, then that of the day chosen
/// in the pager while this page is visible. A line through all points, a marker where it begins, where it
/// ends and at each parking stop between. "loadingIndicator" spins while a request is in flight. Until a
/// track has been drawn, the map is covered while one is loading, and after that while no position of the
/// vehicle is known.
///
/// The loading flag is the only guard: a day chosen while a request is in flight is not loaded, the answer
/// belongs to another day and is dropped, and the map keeps its content until the next selection or day. A
/// day without points keeps the content, a day with one point keeps the line.
///
/// Where nothing is known for more than ten minutes the line is faint and dashed.
///
/// "stopCardButton" leads from the open callout of a stop to its card on Trips. "shareMomentButton" offers
/// the place at the moment that is replayed to be taken along.
///
/// The global queue turns an answer into a line and markers, the main queue shows them at once; the request
/// counts as in flight until then and keeps the page alive. So a day of 86,400 points drops no frame. Only
/// then are the texts of the points read.
class MapDetailViewController final : public TrackPageViewController {
 public:
  explicit MapDetailViewController(Environment& environment);

  DayReplay& replay() { return replay_; }

  /// The day shown, "yyyy-MM-dd"; none while the program is in the background.
  const std::optional<std::string>& date() const { return day_.date(); }

  /// The points of the track that is shown, some milliseconds after it; null without a track.
  const std::shared_ptr<const DayPoints>& dayPoints() const { return dayPoints_; }
  Signal<> dayChanged;

  /// The hours of that day, as far as they are known.
  TimeRibbon& dayRibbon() { return dayRibbon_; }

  void viewDidLoad() override;
  void viewDidAppear(bool animated) override;
  void viewDidDisappear(bool animated) override;
  void setDayChoice(const std::shared_ptr<DayChoice>& days) override;
  void firstSelected() override;
  void clearView() override;
  void receivedPosition(Coordinate position) override;
  void continueFrom(const DetailPageViewController& before) override;  ///< with the opened trip
  void receivedNotification(const Notification& notification);

  std::shared_ptr<MapPolylineRenderer> mapViewRendererForOverlay(
      MapView& mapView, const std::shared_ptr<MapPolyline>& overlay) override;
  std::shared_ptr<MapAnnotationView> mapViewViewForAnnotation(
      MapView& mapView, const std::shared_ptr<MapAnnotation>& annotation) override;
  void mapViewDidAddAnnotationViews(MapView& mapView, const MapAnnotationViews& views) override;

 private:
  void wilEnterForeground() override { day_.putBack(); }
  std::optional<Coordinate> placeOf(const MapAnnotation& annotation) const override;

  /// Without a day nothing is requested.
  void loadItems(const std::optional<std::string>& day);
  bool show(std::shared_ptr<const DayTrack> track);  ///< false: there is nothing on that day
  void setDayPoints(std::shared_ptr<const DayPoints> points);
  void drawGaps();
  void drawTrip();
  std::optional<float> timeOfOpenStop();  ///< of the stop whose callout is open
  void updateStopCardButton();
  void shareMoment();
  void drawRoute(std::shared_ptr<MapPolyline> polyline);
  void endLoading();
  void loaded(const std::string& day, DayBar::Outcome outcome);
  void updateCover();
  ExportableDay exportableDay() const;

  bool wasDrawn_ = false;                  ///< a track has been drawn at least once
  std::shared_ptr<const DayTrack> track_;  ///< the one that is shown
  std::shared_ptr<const DayPoints> dayPoints_;
  TimeRibbon dayRibbon_;
  ChosenDay day_;
  DayBar bar_;
  DayExportButton export_;
  TripOnMap trip_{environment(), *this, mapView()};
  Connection tripOpened_;
  Button stopCardButton_;  ///< of the open callout
  Connection mapChanged_;
  DayReplay replay_{mapView(), environment().device};
  Button replayButton_;
  Button shareMomentButton_;
  DayCharts charts_{replay_, environment().device};
  Connection chosen_;   ///< a moment, on the ribbon
  Connection replays_;  ///< the moment, onto the ribbon
};

}  // namespace fleetor
