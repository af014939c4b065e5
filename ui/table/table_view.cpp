#include "ui/table/table_view.h"

#include <algorithm>
#include <utility>

#include "ui/clipboard.h"
#include "ui/programming_error.h"

namespace fleetor {

namespace {
constexpr std::size_t spareCells = 64;
}  // namespace

std::shared_ptr<TableViewCell> TableView::dequeueReusableCellWithIdentifier(const std::string& identifier) {
  if (const auto before = before_.find(asked_);
      before != before_.end() && before->second->reuseIdentifier() == identifier)
    return std::move(before_.extract(before).mapped());
  auto& spare = reusable_[identifier];
  const auto unused = std::ranges::find_if(spare, [](const auto& cell) { return cell.use_count() == 1; });
  if (unused != spare.end()) {
    auto cell = std::move(*unused);
    spare.erase(unused);
    return cell;
  }
  const auto maker = makers_.find(identifier);
  if (maker == makers_.end())
    programmingError("table has no cell \"" + identifier + "\": expected a registered identifier");
  return maker->second(identifier);
}

void TableView::reloadData() {
  if (asking_ == 0) {
    reloadNow();
    return;
  }
  if (reloadPending_) return;
  reloadPending_ = true;
  environment_.queues.main([this, alive = std::weak_ptr(alive_)] {
    if (!alive.expired() && reloadPending_) reloadNow();
  });
}

void TableView::reloadNow() {
  reloadPending_ = false;
  rows_.reset();
  const bool hadSelection = std::exchange(selected_, std::nullopt).has_value();
  for (auto& [row, cell] : std::exchange(before_, std::exchange(cells_, {})))
    keepSpare(std::move(cell));
  reloaded.emit();
  if (hadSelection && !selected_) changed.emit();
}

void TableView::keepSpare(std::shared_ptr<TableViewCell> cell) {
  if (auto& spare = reusable_[cell->reuseIdentifier()]; spare.size() < spareCells)
    spare.push_back(std::move(cell));
}

int TableView::numberOfRows() {
  if (!rows_) {
    ++asking_;
    rows_ = dataSource_ ? dataSource_->tableViewNumberOfRowsInSection(*this, 0) : 0;
    --asking_;
  }
  return *rows_;
}

double TableView::heightForRow(int row) {
  return delegate_ && contains(row) ? delegate_->tableViewHeightForRowAtIndexPath(*this, {0, row}) : 0;
}

double TableView::estimatedHeightForRow(int row) {
  return delegate_ && contains(row) ? delegate_->tableViewEstimatedHeightForRowAtIndexPath(*this, {0, row})
                                    : 0;
}

std::shared_ptr<TableViewCell> TableView::cellForRow(int row) {
  if (const auto found = cells_.find(row); found != cells_.end()) return found->second;
  if (!dataSource_ || !contains(row)) return nullptr;
  ++asking_;
  asked_ = row;
  auto cell = dataSource_->tableViewCellForRowAtIndexPath(*this, {0, row});
  asked_ = -1;
  --asking_;
  cells_[row] = cell;
  return cell;
}

void TableView::didEndDisplayingRow(int row) {
  for (auto* cells : {&cells_, &before_})
    if (auto node = cells->extract(row)) keepSpare(std::move(node.mapped()));
}

void TableView::tap(int row) {
  const auto cell = cellForRow(row);
  if (!cell) return;
  if (const auto action = cell->action()) return action();
  if (!cell->selectable()) return;
  selected_ = IndexPath{0, row};
  changed.emit();
  if (delegate_) delegate_->tableViewDidSelectRowAtIndexPath(*this, {0, row});
}

bool TableView::copy(int row) {
  const auto cell = cellForRow(row);
  const std::string text = cell ? cell->copiedText() : std::string();
  if (text.empty()) return false;
  copyToClipboard(environment_, text);
  return true;
}

}  // namespace fleetor
