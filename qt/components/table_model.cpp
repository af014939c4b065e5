#include "qt/components/table_model.h"

#include <QQuickWindow>
#include <algorithm>
#include <utility>

namespace fleetor {

CellItem::CellItem(Component& component, Adapters& registry) : ComponentItem(component, registry) {
  reuseIdentifier_ = toQString(as<TableViewCell>()->reuseIdentifier());
}

bool CellItem::tappable() const {
  return read<TableViewCell>([](TableViewCell& c) { return c.selectable() || c.action(); });
}

ComponentItem* CellItem::outlet(const QString& name) const {
  const auto* cell = as<TableViewCell>();
  return cell ? adapters().outletOf(*cell, reuseIdentifier_, name) : nullptr;
}

TableModel::TableModel(TableView& table, Adapters& adapters) : table_(&table), adapters_(adapters) {
  reloaded_ = table.reloaded.connect([this] {
    stale_ = true;
    Q_EMIT stale();
  });
}

int TableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
  if (!table_ || !checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  if (role == HeightRole) return table_->heightForRow(index.row());
  if (role != CellRole) return {};
  withCells_.insert(index.row());
  return QVariant::fromValue(adapters_.itemFor<CellItem>(table_->cellForRow(index.row()).get()));
}

QHash<int, QByteArray> TableModel::roleNames() const {
  return {{CellRole, "cell"}, {HeightRole, "rowHeight"}};
}

void TableModel::beginDisplaying(int row) {
  ++displayed_[row];
  if (row < rows_ && !withCells_.contains(row)) Q_EMIT dataChanged(index(row), index(row));
}

void TableModel::endDisplaying(int row) {
  const auto found = displayed_.find(row);
  if (found == displayed_.end() || --found->second > 0) return;
  displayed_.erase(found);
  withCells_.erase(row);
  if (table_) table_->didEndDisplayingRow(row);
}

void TableModel::update() {
  if (!table_ || !std::exchange(stale_, false)) return;
  const int before = rows_;
  const int now = table_->numberOfRows();
  withCells_.clear();
  if (now > before) {
    beginInsertRows({}, before, now - 1);
    rows_ = now;
    endInsertRows();
  } else if (now < before) {
    beginRemoveRows({}, now, before - 1);
    rows_ = now;
    endRemoveRows();
  }
  if (displayed_.empty()) return;
  const int last = std::min({displayed_.rbegin()->first, before - 1, now - 1});
  if (const int first = displayed_.begin()->first; first <= last)
    Q_EMIT dataChanged(index(first), index(last));
}

void TableModel::tableDestroyed() {
  table_ = nullptr;
  beginResetModel();
  rows_ = 0;
  endResetModel();
}

TableItem::TableItem(Component& component, Adapters& registry)
    : ComponentItem(component, registry), model_(*as<TableView>(), registry) {
  rowWanted_ = as<TableView>()->rowWanted.connect([this](int row) {
    model_.update();  // the row may have come with the latest reload
    Q_EMIT rowWanted(row);
  });
}

bool TableItem::emptyFooter() const {
  return read<TableView>([](TableView& c) { return c.tableFooterView(); });
}

int TableItem::selectedRow() const {
  const auto* table = as<TableView>();
  const auto path = table ? table->indexPathForSelectedRow() : std::nullopt;
  return path ? path->row : -1;
}

void TableItem::tap(int row) {
  if (auto* table = as<TableView>()) table->tap(row);
}

bool TableItem::copy(int row) {
  auto* table = as<TableView>();
  return table && table->copy(row);
}

void TableUpdates::setTable(TableItem* table) {
  if (table == table_) return;
  if (table_) table_->model()->disconnect(this);
  table_ = table;
  if (table) connect(table->model(), &TableModel::stale, this, &TableUpdates::schedule);
  polish();
  Q_EMIT tableChanged();
}

// What changes within a frame asks for another one after it.
void TableUpdates::schedule() {
  if (isVisible() && window() && window()->isExposed())
    QMetaObject::invokeMethod(this, &TableUpdates::updatePolish, Qt::QueuedConnection);
  else
    polish();
}

void TableUpdates::updatePolish() {
  if (table_ && isVisible()) table_->model()->update();
}

void TableUpdates::itemChange(ItemChange change, const ItemChangeData& data) {
  QQuickItem::itemChange(change, data);
  if (change == ItemVisibleHasChanged) polish();
}

}  // namespace fleetor
