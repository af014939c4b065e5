#pragma once

#include <memory>
#include <string>

#include "ui/table/table_view.h"

namespace fleetor {

/// The row kind "LoadingCell" of the client's lists, under that accessible name.
void registerLoadingCell(TableView& tableView, const std::string& accessibleName);

/// A "LoadingCell" whose spinner turns.
std::shared_ptr<TableViewCell> dequeueLoadingCell(TableView& tableView);

}  // namespace fleetor
