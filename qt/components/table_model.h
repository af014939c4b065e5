#pragma once

#include <QAbstractListModel>
#include <QPointer>
#include <QQuickItem>
#include <map>
#include <set>

#include "qt/components/adapters.h"
#include "ui/table/table_view.h"

namespace fleetor {

/// One row: the adapters of its labels and pictures by name.
class CellItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QString reuseIdentifier READ reuseIdentifier CONSTANT)
  Q_PROPERTY(bool tappable READ tappable NOTIFY changed)

 public:
  CellItem(Component& component, Adapters& adapters);
  QString reuseIdentifier() const { return reuseIdentifier_; }
  bool tappable() const;
  Q_INVOKABLE fleetor::ComponentItem* outlet(const QString& name) const;

 private:
  QString reuseIdentifier_;
};

/// The rows of a table as a model. A reload becomes the smallest change, right before the table is drawn:
/// rows are inserted or removed at the end, and of the others those in view are read again. The cell of a row
/// is made when it is first read. A table that is never drawn has no rows.
class TableModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")

 public:
  enum Role { CellRole = Qt::UserRole, HeightRole };

  TableModel(TableView& table, Adapters& adapters);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  /// A row has come into view or has left it. One row may be drawn twice for a moment: a list that is
  /// scrolled back makes the new drawing before the event loop has deleted the old one.
  void beginDisplaying(int row);
  void endDisplaying(int row);

  /// Follows the table. Call it when the table is about to be drawn.
  void update();

  void tableDestroyed();

 Q_SIGNALS:
  void stale();  ///< `update` has something to do

 private:
  TableView* table_;
  Adapters& adapters_;
  int rows_ = 0;
  bool stale_ = true;
  std::map<int, int> displayed_;     // row to number of drawings in view
  mutable std::set<int> withCells_;  // rows that have read their cell and still hold it
  Connection reloaded_;
};

class TableItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(fleetor::TableModel* model READ model CONSTANT)
  Q_PROPERTY(bool emptyFooter READ emptyFooter NOTIFY changed)
  Q_PROPERTY(int selectedRow READ selectedRow NOTIFY changed)

 public:
  TableItem(Component& component, Adapters& adapters);
  TableModel* model() { return &model_; }
  bool emptyFooter() const;
  int selectedRow() const;  ///< -1: none
  Q_INVOKABLE void tap(int row);
  Q_INVOKABLE bool copy(int row);
  Q_INVOKABLE void beginDisplaying(int row) { model_.beginDisplaying(row); }
  Q_INVOKABLE void endDisplaying(int row) { model_.endDisplaying(row); }

 Q_SIGNALS:
  void rowWanted(int row);

 private:
  void forget() override { model_.tableDestroyed(); }

  TableModel model_;
  Connection rowWanted_;
};

/// A part of the drawing of a table that updates the model for the next frame. There are no frames while the
/// drawing or the window is hidden, so nothing is loaded that nobody sees.
class TableUpdates : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(fleetor::TableItem* table READ table WRITE setTable NOTIFY tableChanged)

 public:
  TableItem* table() const { return table_; }
  void setTable(TableItem* table);

 Q_SIGNALS:
  void tableChanged();

 protected:
  void updatePolish() override;
  void itemChange(ItemChange change, const ItemChangeData& data) override;

 private:
  void schedule();

  QPointer<TableItem> table_;
};

}  // namespace fleetor
