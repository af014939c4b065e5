#pragma once

#include <QAbstractListModel>
#include <unordered_map>

#include "qt/adapters.h"
#include "ui/table_view.h"

namespace fleetor {

/// One row: the adapters of its labels and pictures by name.
class CellItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(QString reuseIdentifier READ reuseIdentifier CONSTANT)
  Q_PROPERTY(bool selectable READ selectable NOTIFY changed)

 public:
  CellItem(Component& component, Adapters& adapters);
  QString reuseIdentifier() const { return reuseIdentifier_; }
  bool selectable() const;
  Q_INVOKABLE fleetor::ComponentItem* outlet(const QString& name) const;

 private:
  QString reuseIdentifier_;
};

/// The rows of a table as a model. A reload becomes the smallest change: rows come and go at the end, the
/// others are only told to look again, which just those do that are on screen. The cell of a row is made when
/// it is first read.
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

  /// A row's drawing has been made or is gone. One row may be drawn twice for a moment: a list that is
  /// scrolled back makes the new drawing before the event loop has done away with the old one.
  void beginDisplaying(int row);
  void endDisplaying(int row);

  void tableDestroyed();

 private:
  void reload();

  TableView* table_;
  Adapters& adapters_;
  int rows_ = 0;
  std::unordered_map<int, int> displayed_;  // row to number of drawings
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
  Q_INVOKABLE void beginDisplaying(int row) { model_.beginDisplaying(row); }
  Q_INVOKABLE void endDisplaying(int row) { model_.endDisplaying(row); }
  void refresh() override;

 private:
  TableModel model_;
};

}  // namespace fleetor
