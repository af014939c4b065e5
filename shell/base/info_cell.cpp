#include "shell/base/info_cell.h"

namespace fleetor {

namespace {
constexpr const char* infoCell = "InfoCell";
}

void registerInfoCell(TableView& tableView) {
  tableView.registerMaker(infoCell, [](const std::string& identifier) {
    auto cell = std::make_shared<TableViewCell>(identifier);
    cell->setSelectable(false);
    return cell;
  });
}

std::shared_ptr<TableViewCell> dequeueInfoCell(TableView& tableView, const std::string& value,
                                               const std::string& caption) {
  auto cell = tableView.dequeueReusableCellWithIdentifier(infoCell);
  cell->textLabel().setText(value);
  cell->detailTextLabel().setText(caption);
  return cell;
}

}  // namespace fleetor
