#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "map/camera.h"
#include "platform/coordinate.h"
#include "ui/component.h"
#include "ui/geometry.h"

namespace fleetor {

/// A place that a map marks. It must not change while it is on a map.
class MapAnnotation {
 public:
  virtual ~MapAnnotation() = default;
  virtual Coordinate coordinate() const = 0;
  virtual std::string title() const = 0;     ///< first line of the callout; may be empty
  virtual std::string subtitle() const = 0;  ///< second line; may be empty

  /// What is at the place. Override it if a later annotation may show the same thing at another place.
  virtual std::string subject() const { return {}; }
};

enum class AnnotationViewDragState { none };

/// The marker of one annotation: an image of 40 by 40 points at the annotation's coordinate, the same size at
/// every zoom, and the callout that a tap on it opens. Its accessible name is the one that the program has
/// set, the kind of place, followed by the callout's texts.
class MapAnnotationView : public Component {
 public:
  explicit MapAnnotationView(std::string reuseIdentifier) : reuseIdentifier_(std::move(reuseIdentifier)) {}

  const std::string& reuseIdentifier() const { return reuseIdentifier_; }  ///< empty: never reused

  /// Null while the view waits to be reused.
  const std::shared_ptr<MapAnnotation>& annotation() const { return annotation_; }
  void setAnnotation(std::shared_ptr<MapAnnotation> annotation) {
    assign(annotation_, std::move(annotation));
  }

  /// Name of the image resource; empty, or a name without a resource: nothing is drawn.
  const std::string& image() const { return image_; }
  void setImage(std::string name) { assign(image_, std::move(name)); }

  /// From the coordinate to the middle of the image. Set before the marker is on the map.
  ScreenPoint centerOffset() const { return centerOffset_; }
  void setCenterOffset(ScreenPoint offset) { assign(centerOffset_, offset); }

  /// Where an arrow at the image's edge points, in degrees clockwise from north; none: no arrow.
  std::optional<double> course() const { return course_; }
  void setCourse(std::optional<double> degrees) { assign(course_, degrees); }

  /// A disc below the image has an edge of that colour; none: no disc.
  const std::optional<Color>& ringColor() const { return ringColor_; }
  void setRingColor(std::optional<Color> color) { assign(ringColor_, color); }

  bool enabled() const { return enabled_; }  ///< whether it takes taps
  void setEnabled(bool enabled) { assign(enabled_, enabled); }

  bool canShowCallout() const { return canShowCallout_; }
  void setCanShowCallout(bool can) { assign(canShowCallout_, can); }

  bool draggable() const { return draggable_; }
  void setDraggable(bool draggable) { assign(draggable_, draggable); }

  AnnotationViewDragState dragState() const { return dragState_; }
  void setDragState(AnnotationViewDragState state) { assign(dragState_, state); }

  /// Of two markers in one place the higher one is on top; of two of the same height, the one added later.
  double zPosition() const { return zPosition_; }
  void setZPosition(double position) { assign(zPosition_, position); }

  std::string accessibleName() const override {
    if (!annotation_) return {};
    std::string name = Component::accessibleName();
    for (const std::string& text : {annotation_->title(), annotation_->subtitle()})
      if (!text.empty()) name += (name.empty() ? "" : ", ") + text;
    return name;
  }

 private:
  std::string reuseIdentifier_;
  std::shared_ptr<MapAnnotation> annotation_;
  std::string image_;
  ScreenPoint centerOffset_;
  std::optional<double> course_;
  std::optional<Color> ringColor_;
  bool enabled_ = true;
  bool canShowCallout_ = false;
  bool draggable_ = false;
  AnnotationViewDragState dragState_ = AnnotationViewDragState::none;
  double zPosition_ = 0;
};

using MapAnnotations = std::vector<std::shared_ptr<MapAnnotation>>;
using MapAnnotationViews = std::vector<std::shared_ptr<MapAnnotationView>>;

}  // namespace fleetor
