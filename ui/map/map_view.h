#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "map/camera.h"
#include "ui/component.h"
#include "ui/map/map_annotation.h"
#include "ui/map/map_polyline.h"

namespace fleetor {

class MapView;

enum class MapType { standard, satellite };

class MapViewDelegate {
 public:
  virtual ~MapViewDelegate() = default;

  /// The marker of an annotation, new or dequeued from the map; null: a marker without an image.
  virtual std::shared_ptr<MapAnnotationView> mapViewViewForAnnotation(
      MapView& mapView, const std::shared_ptr<MapAnnotation>& annotation) = 0;

  /// These markers have just been put on the map.
  virtual void mapViewDidAddAnnotationViews(MapView& /*mapView*/, const MapAnnotationViews& /*views*/) {}

  /// How an overlay is drawn; null: not at all.
  virtual std::shared_ptr<MapPolylineRenderer> mapViewRendererForOverlay(
      MapView& mapView, const std::shared_ptr<MapPolyline>& overlay) = 0;
};

/// Something that moves along a line on a map. The part of the line behind it is drawn strong, the rest
/// faint.
struct MapTraveller {
  std::shared_ptr<MapPolyline> line;
  WorldPoint place;
  double course = 0;  ///< degrees clockwise from north
  double passed = 0;  ///< of the line's points: 2.25 is a quarter of the way from the third to the fourth
  std::string image;  ///< name of the image resource

  friend bool operator==(const MapTraveller&, const MapTraveller&) = default;
};

/// A map: the part of the world that it shows, the markers and the lines on it. Main thread only.
///
/// The delegate is asked for each annotation's view and each overlay's renderer once, when they are added;
/// without a delegate, when one is set again. What the delegate gave stays drawn when the delegate is reset.
/// Of a crowd of annotations it is asked only for those that are about to be drawn.
///
/// There are several signals, so that a pan does not visit the markers: `cameraChanged` for what is shown,
/// `annotationsChanged` and `overlaysChanged` for the lists and for what belongs to them, `travellerChanged`,
/// and `changed` for the type and the callout.
class MapView : public Component {
 public:
  static constexpr double fitPadding = 64;   ///< points between the edges and what is shown
  static constexpr std::size_t crowd = 300;  ///< more annotations than this are a crowd

  /// Weak: must outlive the map or be reset.
  void setDelegate(MapViewDelegate* delegate);
  MapViewDelegate* delegate() const { return delegate_; }

  MapType mapType() const { return mapType_; }
  void setMapType(MapType type) { assign(mapType_, type); }

  /// Covered by its ground, a map shows nothing else and takes no gestures.
  bool isCovered() const { return covered_; }
  void setCovered(bool covered) { assign(covered_, covered); }

  /// Whether a region, a centre or something to fit was ever set; before that it shows the whole world.
  bool isPlaced() const { return placed_; }

  // What is shown. Animations run as the camera is advanced; a map without a size has none.
  void setRegion(Coordinate centre, double latitudinalMetres, double longitudinalMetres, bool animated);
  Coordinate centerCoordinate() const { return unproject(camera_.centre()); }  ///< at this moment
  void setCenterCoordinate(Coordinate centre, bool animated);                  ///< the zoom stays

  /// Fits the map to those annotations, which must be on it. None: it stays where it is.
  void showAnnotations(const MapAnnotations& annotations, bool animated);

  void showCoordinates(const std::vector<Coordinate>& coordinates, bool animated) {
    fit(coordinates, animated);
  }

  /// Fits the map to all annotations and lines on it. None: it stays where it is.
  void showAll(bool animated);

  /// Zooms in by that many levels, animated (below 0: out).
  void zoomBy(double levels);

  const MapCamera& camera() const { return camera_; }

  /// For gestures, changes of size and the frames of an animation: `move` changes the camera.
  template <class Move>
  void moveCamera(Move&& move) {
    move(camera_);
    cameraChanged.emit();
  }

  // Markers.
  const MapAnnotations& annotations() const { return annotations_; }  ///< in the order in which they came
  void addAnnotation(std::shared_ptr<MapAnnotation> annotation) { addAnnotations({std::move(annotation)}); }
  void addAnnotations(const MapAnnotations& annotations);  ///< those already there stay where they are
  void removeAnnotations(const MapAnnotations& annotations);

  /// Removes all and adds these. An open callout moves to the first of these that has the same subject.
  void replaceAnnotations(const MapAnnotations& annotations);

  /// Puts `next` where `earlier` is, which must be on this map. Its marker, its callout and the focus pass on
  /// to `next`; the delegate is asked for the view once more.
  void replaceAnnotation(const std::shared_ptr<MapAnnotation>& earlier, std::shared_ptr<MapAnnotation> next);

  /// From now on an annotation of that subject glides to the place of the one that replaces it, in step with
  /// a camera that follows it. Both move as the map is advanced.
  void setGlidingSubject(std::string subject) { glidingSubject_ = std::move(subject); }

  /// Where the marker of an annotation on this map is at this moment.
  WorldPoint placeOf(const MapAnnotation& annotation) const;
  bool isGliding() const { return glide_.has_value(); }

  bool isMoving() const { return camera_.moving() || isGliding(); }
  void advance(double seconds);  ///< that have passed since the frame before

  /// Makes the missing markers of these annotations, which are on this map and about to be drawn.
  void needViews(const MapAnnotations& annotations);

  /// The marker of an annotation; null before a delegate has made it, and if it is not on this map.
  std::shared_ptr<MapAnnotationView> viewForAnnotation(const MapAnnotation& annotation) const;

  /// A marker that was removed from the map, with its height and offset reset; or null.
  std::shared_ptr<MapAnnotationView> dequeueReusableAnnotationViewWithIdentifier(
      const std::string& identifier);

  /// Opens the callout, and closes any other. A marker that is not enabled or has no callout does nothing.
  void selectAnnotation(const std::shared_ptr<MapAnnotation>& annotation);
  void deselectAnnotation() { assign(selected_, {}); }
  const std::shared_ptr<MapAnnotation>& selectedAnnotation() const { return selected_; }  ///< or null

  /// The annotation whose marker is the tab stop of all markers: the one that had the focus last, or the
  /// first one. None on an empty map.
  std::shared_ptr<MapAnnotation> currentAnnotation() const;
  /// The marker of that annotation, which is on this map, has received the focus: makes it the current one,
  /// and centres the map on it unless it is well within the edges.
  void focusAnnotation(const std::shared_ptr<MapAnnotation>& annotation);

  // Lines.
  const std::vector<std::shared_ptr<MapPolyline>>& overlays() const { return overlays_; }  ///< lowest first
  void addOverlay(std::shared_ptr<MapPolyline> overlay);
  void removeOverlay(const std::shared_ptr<MapPolyline>& overlay);  ///< null, or not on this map: nothing

  void redrawOverlays() { overlaysChanged.emit(); }  ///< their renderers have changed

  /// Null without a delegate, or if that gave none.
  std::shared_ptr<MapPolylineRenderer> rendererForOverlay(const MapPolyline& overlay) const;

  /// None: every line is drawn strong. Costs the same whatever the length of its line.
  void setTraveller(const std::optional<MapTraveller>& traveller);
  const std::optional<MapTraveller>& traveller() const { return traveller_; }

  Signal<> cameraChanged;
  Signal<> annotationsChanged;
  Signal<> overlaysChanged;
  Signal<> travellerChanged;

 private:
  struct Glide {
    std::shared_ptr<MapAnnotation> annotation;
    WorldPoint from;
    double elapsed = 0;
  };

  void fit(const std::vector<Coordinate>& coordinates, bool animated);
  bool isCrowded() const { return annotations_.size() > crowd; }
  void makeViews(const MapAnnotations& annotations);

  MapViewDelegate* delegate_ = nullptr;
  MapType mapType_ = MapType::standard;
  bool covered_ = false;
  bool placed_ = false;
  MapCamera camera_;
  MapAnnotations annotations_;
  std::unordered_map<const MapAnnotation*, std::shared_ptr<MapAnnotationView>> views_;  ///< of all; or none
  std::map<std::string, MapAnnotationViews> reusable_;
  std::shared_ptr<MapAnnotation> selected_;
  std::shared_ptr<MapAnnotation> current_;
  std::string glidingSubject_;
  std::optional<Glide> glide_;
  std::vector<std::shared_ptr<MapPolyline>> overlays_;
  std::unordered_map<const MapPolyline*, std::shared_ptr<MapPolylineRenderer>> renderers_;
  std::optional<MapTraveller> traveller_;
};

}  // namespace fleetor
