#include "shell/base/loading_cell.h"

namespace fleetor {

namespace {
constexpr const char* loadingCell = "LoadingCell";
}

void registerLoadingCell(TableView& tableView, const std::string& accessibleName) {
  tableView.registerMaker(loadingCell, [accessibleName](const std::string& identifier) {
    auto cell = std::make_shared<LoadingTableViewCell>(identifier);
    cell->setAccessibleName(accessibleName);
    return cell;
  });
}

std::shared_ptr<TableViewCell> dequeueLoadingCell(TableView& tableView) {
  auto cell = tableView.dequeueReusableCellWithIdentifier(loadingCell);
  if (auto* spinner = dynamic_cast<ActivityIndicator*>(cell->viewWithTag(LoadingTableViewCell::indicatorTag)))
    spinner->startAnimating();
  return cell;
}

}  // namespace fleetor
