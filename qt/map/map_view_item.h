#pragma once

#include <QAbstractListModel>
#include <QColor>
#include <QPointF>
#include <QPointer>
#include <QUrl>
#include <memory>
#include <vector>

#include "map/marker_stacks.h"
#include "qt/components/adapters.h"
#include "qt/map/tile_source.h"
#include "ui/map/map_view.h"

namespace fleetor {

/// One marker.
class MapMarkerItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QUrl image READ image NOTIFY changed)
  Q_PROPERTY(double zPosition READ zPosition NOTIFY changed)
  Q_PROPERTY(double course READ course NOTIFY changed)        ///< degrees clockwise; NaN: no arrow
  Q_PROPERTY(QColor ringColor READ ringColor NOTIFY changed)  ///< transparent: no disc
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(QString subtitle READ subtitle NOTIFY changed)
  Q_PROPERTY(bool tappable READ tappable NOTIFY changed)  ///< a tap opens its callout
  Q_PROPERTY(QPointF place READ place NOTIFY placeChanged)
  Q_PROPERTY(bool nearby READ nearby NOTIFY placeChanged)
  Q_PROPERTY(int stacked READ stacked NOTIFY placeChanged)

 public:
  using ComponentItem::ComponentItem;
  QUrl image() const;
  double zPosition() const;
  double course() const;
  QColor ringColor() const;
  QString title() const;
  QString subtitle() const;
  bool tappable() const;

  /// Its middle, from the map's markerOrigin. It changes with the zoom and not when the map is moved.
  QPointF place() const { return place_; }
  /// On the screen or close to it; what is further away need not be drawn.
  bool nearby() const { return nearby_; }
  void setPlace(QPointF place, bool nearby);

  /// How many markers lie in its place when it is the topmost of them, itself included; else 0.
  int stacked() const { return stacked_; }
  void setStacked(int count);

 Q_SIGNALS:
  void placeChanged();

 private:
  QPointF place_;
  bool nearby_ = false;
  int stacked_ = 0;
};

/// The markers as a model of one role, "marker".
class MapMarkerModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")

 public:
  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override { return {{Qt::UserRole, "marker"}}; }

  using Items = std::vector<QPointer<MapMarkerItem>>;  ///< null once its marker has gone
  const Items& items() const { return items_; }

  /// Becomes those items, keeping the rows of the markers that stay and adding at most so many new ones.
  /// False when some are left for the next call.
  bool update(const Items& items, int most);

 private:
  Items items_;
};

/// The adapter of a map. MapSurface draws the map itself.
class MapViewItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(bool satellite READ satellite NOTIFY changed)
  Q_PROPERTY(bool covered READ covered NOTIFY changed)
  Q_PROPERTY(bool placed READ placed NOTIFY changed)
  Q_PROPERTY(fleetor::MapMarkerModel* markers READ markers CONSTANT)
  Q_PROPERTY(fleetor::MapMarkerItem* selected READ selected NOTIFY changed)  ///< whose callout is open
  Q_PROPERTY(fleetor::MapMarkerItem* current READ current NOTIFY changed)    ///< the markers' tab stop
  Q_PROPERTY(QPointF markerOrigin READ markerOrigin NOTIFY markersMoved)
  // What travels along a line: whether there is something, its middle on the map, degrees clockwise from
  // north.
  Q_PROPERTY(bool travels READ travels NOTIFY travellerMoved)
  Q_PROPERTY(QPointF travellerPlace READ travellerPlace NOTIFY travellerMoved)
  Q_PROPERTY(double travellerCourse READ travellerCourse NOTIFY travellerMoved)
  Q_PROPERTY(QUrl travellerImage READ travellerImage NOTIFY travellerMoved)

 public:
  MapViewItem(Component& component, Adapters& adapters, TileSource& tiles);

  bool satellite() const;
  bool covered() const;
  bool placed() const;
  QString attribution() const;     ///< of the tiles
  QString noTilesMessage() const;  ///< shown when there are none
  MapMarkerModel* markers() { return &markers_; }
  MapMarkerItem* selected() const;
  MapMarkerItem* current() const;

  /// Where on the map the places of the markers are measured from.
  QPointF markerOrigin() const { return markerOrigin_; }

  bool travels() const;
  QPointF travellerPlace() const { return travellerPlace_; }
  double travellerCourse() const;
  QUrl travellerImage() const;

  /// A tap on that marker opens its callout or closes it.
  Q_INVOKABLE void toggle(fleetor::MapMarkerItem* marker);
  Q_INVOKABLE void deselect();
  /// That marker has received the focus; see MapView::focusAnnotation().
  Q_INVOKABLE void reveal(fleetor::MapMarkerItem* marker);

  /// A tap there opens a callout, or closes one (see MarkerStacks). False: it touches no marker.
  bool tap(QPointF point);

  /// Applies changes of the annotations and puts the markers where the camera shows them; with a pixel ratio
  /// above 0, onto whole pixels. Call it once per frame: a marker that is removed and added again in between,
  /// as that of a moving vehicle, keeps its drawing and the focus. Of a crowd, only markers that can be
  /// distinguished are drawn, among them always the first, the last, the one with the callout and the current
  /// one. True if more follow in the next frame.
  bool placeMarkers(double pixelRatio);

  /// Puts what travels where the camera shows it. Call it once per frame.
  void placeTraveller();

  TileSource& tiles() const { return tiles_; }
  Queues& queues() const { return adapters().environment().queues; }

 Q_SIGNALS:
  void markersMoved();
  void cameraChanged();
  void overlaysChanged();
  void markersChanged();
  void travellerChanged();  ///< a frame is due
  void travellerMoved();    ///< the frame has been laid out

 private:
  MapMarkerItem* itemFor(const MapView& map, const std::shared_ptr<MapAnnotation>& annotation) const;
  void chooseMarkers(MapView& map);
  void stackMarkers();

  TileSource& tiles_;
  MapMarkerModel markers_;
  bool markersStale_ = true;
  std::vector<WorldPoint> places_;  // of a crowd's annotations
  MapMarkerModel::Items wanted_;    // what the model is to become
  bool complete_ = true;            // it has
  WorldRect window_;                // what wanted_ was chosen for, and for which whole zoom
  double windowZoom_ = -1;
  WorldPoint origin_;       // of markerOrigin_
  double placedZoom_ = -1;  // for which the markers were placed; below 0: none yet
  bool placedOnPixels_ = false;
  bool placedGliding_ = false;
  QPointF markerOrigin_;
  QPointF travellerPlace_;
  bool travellerStale_ = false;
  MapMarkerModel::Items touchable_;  // by their indices in stacks_
  MarkerStacks stacks_;
  std::vector<Connection> connections_;
};

/// Makes the adapters of maps and markers; maps show tiles of that source, which outlives them.
void addMapAdapters(Adapters& adapters, TileSource& tiles);

}  // namespace fleetor
