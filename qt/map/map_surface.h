#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QQuickItem>
#include <QTimer>
#include <optional>
#include <utility>
#include <vector>

#include "map/gestures.h"
#include "map/tile_board.h"
#include "qt/map/base_map_node.h"
#include "qt/map/line_layer.h"
#include "qt/map/map_lines.h"
#include "qt/map/map_view_item.h"

namespace fleetor {

/// A map in the window: draws the ground, the tiles and the lines, and places the markers, which QML draws.
/// Fingers, a mouse and its wheel, and the keyboard move it. It draws a frame only if something has changed,
/// and one for each change. Main thread only.
class MapSurface : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(fleetor::MapViewItem* map READ map WRITE setMap NOTIFY mapChanged)
  Q_PROPERTY(bool dark MEMBER dark_ WRITE setDark NOTIFY darkChanged)
  Q_PROPERTY(QColor ground MEMBER ground_ NOTIFY darkChanged)  ///< where there is no tile
  Q_PROPERTY(QColor grid MEMBER grid_ NOTIFY darkChanged)
  /// Whether the program moves the map smoothly, and tiles fade in.
  Q_PROPERTY(bool animated MEMBER animated_ NOTIFY animatedChanged)
  /// Within that distance from the left and the right edge, a sideways drag does not belong to the map.
  Q_PROPERTY(double leftEdge MEMBER leftEdge_ NOTIFY edgesChanged)
  Q_PROPERTY(double rightEdge MEMBER rightEdge_ NOTIFY edgesChanged)
  /// The attribution of the tiles, empty while none shows; a message, empty unless none are available.
  Q_PROPERTY(QString attribution READ attribution NOTIFY tilesChanged)
  Q_PROPERTY(QString message READ message NOTIFY tilesChanged)
  /// A tap on it does not reach the map.
  Q_PROPERTY(QQuickItem* callout MEMBER callout_ NOTIFY calloutChanged)

 public:
  explicit MapSurface(QQuickItem* parent = nullptr);
  ~MapSurface() override;

  MapViewItem* map() const { return map_; }
  void setMap(MapViewItem* map);
  void setDark(bool dark);
  QString attribution() const;
  QString message() const;

 Q_SIGNALS:
  void mapChanged();
  void darkChanged();
  void animatedChanged();
  void edgesChanged();
  void calloutChanged();
  void tilesChanged();

 protected:
  QSGNode* updatePaintNode(QSGNode* before, UpdatePaintNodeData* data) override;
  void geometryChange(const QRectF& now, const QRectF& before) override;
  void itemChange(ItemChange change, const ItemChangeData& data) override;

  bool event(QEvent* event) override;
  void touchEvent(QTouchEvent* event) override;
  void touchUngrabEvent() override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent*) override {}  // comes after the second press, which suffices
  void mouseUngrabEvent() override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  MapView* view() const { return map_ ? map_->as<MapView>() : nullptr; }
  double now() const { return static_cast<double>(clock_.nsecsElapsed()) / 1e9; }

  void redraw();
  void step();
  void frame();
  void takePosition(const MapCamera& camera);
  bool layOut(double now);  // true when there is more to lay out in the next frame
  void follow(const std::vector<MapGestures::Finger>& fingers, MapGestures::Pointer pointer);

  QPointer<MapViewItem> map_;
  bool dark_ = false;
  QColor ground_;
  QColor grid_;
  bool animated_ = true;
  double leftEdge_ = 0;
  double rightEdge_ = 0;
  QPointer<QQuickItem> callout_;

  QElapsedTimer clock_;
  bool stale_ = true;    // the next frame differs
  bool posted_ = false;  // a step
  bool stepping_ = false;
  bool stepped_ = false;   // for the next frame
  double steppedAt_ = -1;  // when the camera was last moved on; below 0 while it rests
  double touchedAt_ = -1;  // the last input
  MapGestures gestures_;
  MapFrame frame_;
  std::pair<TileState, MapStyle> tiles_;  // that the last frame showed
  WorldPoint steadyAt_;                   // where the camera was when the zoom was last changed
  std::optional<TileBoard> board_;
  std::optional<MapLines> lines_;
  LineLayer& lineLayer_;  // the first child: everything else on the map lies above it
  QTimer retry_;
  QTimer following_;
  Connection tilesBack_;
  QMetaObject::Connection frames_;
};

}  // namespace fleetor
