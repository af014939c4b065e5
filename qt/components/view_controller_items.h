#pragma once

#include <QAbstractListModel>
#include <memory>
#include <vector>

#include "qt/components/adapters.h"
#include "ui/containers/navigation_controller.h"
#include "ui/containers/sw_reveal_view_controller.h"
#include "ui/containers/swipe_tab_bar_controller.h"
#include "ui/containers/view_controller.h"

namespace fleetor {

class ViewControllerItem;

/// Screens as a model of one role, "screen". An update keeps the rows of the screens that stay, so that their
/// drawings stay too.
class ScreenListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(int count READ count NOTIFY countChanged)

 public:
  explicit ScreenListModel(Adapters& adapters) : adapters_(adapters) {}

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override { return {{Qt::UserRole, "screen"}}; }

  int count() const { return rowCount(); }
  void update(const std::vector<std::shared_ptr<ViewController>>& screens);

 Q_SIGNALS:
  void countChanged();

 private:
  Adapters& adapters_;
  std::vector<ViewControllerItem*> items_;
};

/// A screen, drawn by the QML file of its identifier. The containers have separate classes below.
class ViewControllerItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QString identifier READ identifier NOTIFY changed)
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(bool loaded READ loaded NOTIFY changed)
  Q_PROPERTY(bool interactive READ interactive NOTIFY changed)
  Q_PROPERTY(bool sheet READ sheet NOTIFY changed)      ///< lies over its presenter as a panel
  Q_PROPERTY(bool covered READ covered NOTIFY changed)  ///< hidden by the screen that it presents
  Q_PROPERTY(QList<QObject*> leftItems READ leftItems NOTIFY changed)
  Q_PROPERTY(QList<QObject*> rightItems READ rightItems NOTIFY changed)
  Q_PROPERTY(double frameX READ frameX NOTIFY changed)
  Q_PROPERTY(double frameWidth READ frameWidth NOTIFY changed)
  Q_PROPERTY(bool animating READ animating NOTIFY changed)  ///< its children change
  Q_PROPERTY(int duration READ duration NOTIFY changed)     ///< of that change, in milliseconds
  Q_PROPERTY(fleetor::ScreenListModel* children READ children CONSTANT)

 public:
  ViewControllerItem(Component& component, Adapters& adapters);

  QString identifier() const;
  QString title() const;
  bool loaded() const;
  bool interactive() const;
  bool sheet() const;
  bool covered() const;
  QList<QObject*> leftItems() const;
  QList<QObject*> rightItems() const;
  double frameX() const;
  double frameWidth() const;
  bool animating() const;
  int duration() const;
  ScreenListModel* children() { return &children_; }

  /// The adapter of the screen's component of that name; none, and a message, when there is no such outlet.
  Q_INVOKABLE fleetor::ComponentItem* outlet(const QString& name) const;

  /// The user copies a text of the screen.
  Q_INVOKABLE void copy(const QString& text);

  /// The last child, or none.
  Q_INVOKABLE fleetor::ViewControllerItem* lastChild() const;

  void refresh() override;

 private:
  void watchView();
  QList<QObject*> buttons(const BarButtonItems& items) const;

  ScreenListModel children_;
  Connection navigationItem_;
  std::vector<Connection> view_;  ///< none before the view is loaded
};

class NavigationControllerItem : public fleetor::ViewControllerItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(int depth READ depth NOTIFY changed)
  Q_PROPERTY(QString backLabel READ backLabel CONSTANT)  ///< accessible name of the bar's back button

 public:
  using ViewControllerItem::ViewControllerItem;
  int depth() const;
  QString backLabel() const;

  /// Index from the bottom of the stack, or -1 when the screen has been popped.
  Q_INVOKABLE int indexOf(fleetor::ViewControllerItem* screen) const;
  Q_INVOKABLE void pop();
  /// Whether that popped the top screen; points, those a second, and the width of a screen.
  Q_INVOKABLE bool endDrag(double moved, double speed, double width);
};

class RevealControllerItem : public fleetor::ViewControllerItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(fleetor::ViewControllerItem* front READ front NOTIFY changed)
  Q_PROPERTY(fleetor::ViewControllerItem* rear READ rear NOTIFY changed)
  Q_PROPERTY(bool open READ open NOTIFY changed)
  Q_PROPERTY(double rearWidth READ rearWidth NOTIFY changed)
  Q_PROPERTY(double draggableBorderWidth READ draggableBorderWidth NOTIFY changed)

 public:
  using ViewControllerItem::ViewControllerItem;
  ViewControllerItem* front() const;
  ViewControllerItem* rear() const;
  bool open() const;  ///< the rear screen shows
  double rearWidth() const;
  double draggableBorderWidth() const;

  Q_INVOKABLE bool panShouldBegin(double x) const;
  Q_INVOKABLE void beginPan();
  Q_INVOKABLE void endPan(double moved,
                          double speed);  ///< points from where the front screen stands, and a second
  Q_INVOKABLE bool tapShouldBegin() const;
  Q_INVOKABLE void tapFront();
};

class SwipeTabBarControllerItem : public fleetor::ViewControllerItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(int selectedIndex READ selectedIndex NOTIFY changed)
  Q_PROPERTY(int count READ count NOTIFY changed)

 public:
  using ViewControllerItem::ViewControllerItem;
  int selectedIndex() const;
  int count() const;
  /// Points, those a second, and the width of a page; positive towards the page before.
  Q_INVOKABLE void endDrag(double moved, double speed, double width);
};

}  // namespace fleetor
