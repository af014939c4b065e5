#pragma once

#include <memory>
#include <string>

#include "ui/table_view.h"

namespace fleetor {

/// The row kind "InfoCell" of the client's lists: a value over its caption, not for tapping.
void registerInfoCell(TableView& tableView);

std::shared_ptr<TableViewCell> dequeueInfoCell(TableView& tableView, const std::string& value,
                                               const std::string& caption);

}  // namespace fleetor
